// Strangers' octets as certificates: whatever form and number of them a payload holds.

#include "common/Exception.h"
#include "common/Json.h"
#include "common/Lng.h"
#include "records/Payload.h"
#include "records/fill/CertInfoFill.h"
#include "records/fill/CertificateBundle.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <vector>

namespace {

// Characters that an octet may become, and what the keys and a few texts take at the least.
constexpr std::size_t kTextPerOctet = 4096;
constexpr std::size_t kTextOfKeys = 65536;
constexpr std::size_t kDescribed = 8;  // certificates of one payload

// Names the property that does not hold and stops.
void Require(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "property broken: %s\n", property);
        std::abort();
    }
}

void CheckText(const ca::CertInfo2& record, std::size_t size) {
    ca::JsonBuffer text;
    ca::JsonWriter writer(text);
    record.ToJson(writer);
    Require(text.GetSize() <= kTextOfKeys + size * kTextPerOctet, "the text is bounded");
    ca::JsonDocument read;
    read.Parse<ca::kJsonParseFlags | rapidjson::kParseValidateEncodingFlag>(text.GetString(),
                                                                            text.GetSize());
    Require(!read.HasParseError(), "it is JSON of valid UTF-8");
    for (const char* key : {"Issuer", "Description", "X500Description", "SubjectTags"}) {
        const char* const value = read[key].GetString();
        const char* const end = value + read[key].GetStringLength();
        Require(std::all_of(value, end, [](unsigned char c) { return c >= 0x20 && c != 0x7F; }),
                "names hold no control characters");
    }
}

void Describe(std::span<unsigned char> payload) {
    ca::CertificateBundle bundle;
    const std::vector<ca::PayloadItem> items = ca::DecodePayload(payload);
    for (const ca::PayloadItem& item : items) {
        ca::CollectCertificates(item.octets, bundle);
    }
    ca::FindLeaf(bundle);
    for (std::size_t i = 0; i < std::min(bundle.certificates.size(), kDescribed); ++i) {
        ca::CertInfo2 record;
        try {
            ca::FillWithIssuers(bundle, i, record);
        } catch (const ca::Exception&) {
            continue;
        }
        CheckText(record, payload.size());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const wchar_t* language : {L"en", L"ru"}) {
        SetZORNALng(language);
        std::vector<unsigned char> payload(data, data + size);
        Describe(payload);
    }
    return 0;
}
