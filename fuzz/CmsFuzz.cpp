// Strangers' octets as a signed message, as an enveloped one, and as an attribute's value.

#include "asn1/x509/Attribute.h"
#include "common/Exception.h"
#include "common/Json.h"
#include "records/fill/RecipientsFill.h"
#include "records/fill/SignInfoFill.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

// Characters that an octet may become, and what the keys and a few texts take at the least.
constexpr std::size_t kTextPerOctet = 4096;
constexpr std::size_t kTextOfKeys = 65536;

void RequireBounded(std::size_t written, std::size_t size) {
    if (written > kTextOfKeys + size * kTextPerOctet) {
        std::fprintf(stderr, "%zu characters about %zu octets\n", written, size);
        std::abort();
    }
}

template <class Record>
void RequireBoundedText(const Record& record, std::size_t size) {
    ca::JsonBuffer text;
    ca::JsonWriter writer(text);
    record.ToJson(writer);
    RequireBounded(text.GetSize(), size);
}

void DescribeSignatures(std::span<const unsigned char> message) {
    ca::SignInfos signatures;
    if (ca::FillSignInfos(message, signatures)) {
        RequireBoundedText(signatures, message.size());
    }
}

void DescribeRecipients(std::span<const unsigned char> message) {
    const std::span<const unsigned char> envelope = ca::FindEnvelope(message);
    if (!envelope.empty()) {
        RequireBoundedText(ca::DescribeRecipients(envelope).records, message.size());
    }
}

// Attribute ::= SEQUENCE { type, values }: so every formatter is one step away.
void DescribeAttribute(std::span<const unsigned char> octets) {
    const ca::CDecoded<CAsn1Attribute> attribute(octets);
    ca::CTextLines lines;
    std::wstring error;
    ca::SayAttributeValues(OctetsOf(attribute->Type()), *attribute->Values(), lines, error);
    RequireBounded(lines.Take().size(), octets.size());
}

template <class Describe>
void Try(Describe describe, std::vector<unsigned char> octets) {
    const std::vector<unsigned char> before = octets;
    try {
        describe(octets);
    } catch (const ca::Exception&) {
        return;  // no such object
    }
    if (before != octets) {
        std::fprintf(stderr, "describing changed the octets\n");
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<unsigned char> octets(data, data + size);
    Try(DescribeSignatures, octets);
    Try(DescribeRecipients, octets);
    Try(DescribeAttribute, octets);
    return 0;
}
