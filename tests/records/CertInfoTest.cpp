#include "common/ErrorCodes.h"
#include "records/Payload.h"
#include "records/fill/CertInfoFill.h"
#include "tests/asn1/DerWriter.h"
#include "tests/common/EnglishTest.h"
#include "tests/common/SampleObjects.h"
#include "tests/records/RecordTesting.h"

#include <string>

namespace {

using CertInfoTest = EnglishTest;

Octets Sample() {
    const std::string pem = kSampleCertificate;
    Octets text(pem.begin(), pem.end());
    const auto items = ca::DecodePayload(text);
    return {items.at(0).octets.begin(), items.at(0).octets.end()};
}

ca::CertInfo Describe(Octets der) {
    ca::CertInfo record;
    ca::FillCertInfo(der, record);
    return record;
}

// Wherever a certificate is cut off, the fields in front of the cut are those of the whole one.
TEST_F(CertInfoTest, FillsWhatStandsInFrontOfACut) {
    const Octets whole = Sample();
    const ca::CertInfo all = Describe(whole);
    std::size_t filled = 0;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        SCOPED_TRACE(size);
        Octets cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        if (!ca::LooksLikeCutCertificate(cut)) {
            EXPECT_EQ(0U, filled) << "once it is known what it is, it stays known";
            EXPECT_EQ(ca::kErrCertificate, ErrorOf([&] { Describe(cut); }));
            continue;
        }
        const ca::CertInfo part = Describe(cut);
        EXPECT_EQ(0U, part.error.find(L"The object is cut off; its octets end at " +
                                      std::to_wstring(size) + L"\n"))
            << part.error;
        EXPECT_NE(0U, part.validityNumber) << "reads as a good one";
        const std::pair<const std::wstring*, const std::wstring*> fields[] = {
            {&part.serial, &all.serial},
            {&part.signatureAlg, &all.signatureAlg},
            {&part.issuer.readable, &all.issuer.readable},
            {&part.validTo.local, &all.validTo.local},
            {&part.description.readable, &all.description.readable},
            {&part.publicKeyParams, &all.publicKeyParams}};
        std::size_t same = 0;
        while (same < std::size(fields) && *fields[same].first == *fields[same].second) {
            ++same;
        }
        same += part.extensions.items.size();
        EXPECT_GE(same, filled) << "a longer part never tells less";
        filled = same;
    }
    EXPECT_EQ(6 + all.extensions.items.size(), filled);
}

TEST_F(CertInfoTest, TellsCutCertificatesFromOtherThings) {
    Octets whole = Sample();
    EXPECT_FALSE(ca::LooksLikeCutCertificate(whole));
    const std::string list = kSampleCrl;
    Octets text(list.begin(), list.end());
    const auto items = ca::DecodePayload(text);
    for (std::size_t size = 0; size < items.at(0).octets.size(); ++size) {
        EXPECT_FALSE(ca::LooksLikeCutCertificate(items[0].octets.first(size)));
    }
}

TEST_F(CertInfoTest, SaysWhatAVersionDoesNotHave) {
    const Octets rsa = Tlv(0x30, {{0x06, 9, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 1, 1, 1}, {5, 0}});
    const Octets time = Tlv(0x17, Text("240101000000Z"));
    const Octets key = {0x03, 9, 0, 0x30, 6, 2, 1, 5, 2, 1, 3};
    const Octets front = Join(
        {{2, 1, 1}, rsa, {0x30, 0}, Tlv(0x30, {time, time}), {0x30, 0}, Tlv(0x30, {rsa, key})});
    const Octets id = Tlv(0x81, {0x00, 0xAB});
    const Octets extensions =
        Tlv(0xA3, Tlv(0x30, Tlv(0x30, {{0x06, 2, 0x2A, 3}, Tlv(0x04, {5, 0})})));
    const std::wstring noId = L"Unique identifier: no part of this version";
    const std::wstring noExtensions = L"Extensions: no part of this version";
    const struct {
        Octets version;
        Octets end;
        std::wstring error;
    } cases[] = {
        {{}, Join({id, extensions}), noId + L'\n' + noExtensions},
        {Tlv(0xA0, {2, 1, 1}), Join({id, extensions}), noExtensions},
        {Tlv(0xA0, {2, 1, 2}), Join({id, extensions}), L""},
        {Tlv(0xA0, {2, 1, 1}), id, L""},
        {{}, {}, L""},
    };
    for (const auto& c : cases) {
        const Octets tbs = Tlv(0x30, {c.version, front, c.end});
        EXPECT_EQ(c.error, Describe(Tlv(0x30, {tbs, rsa, {3, 1, 0}})).error);
    }
}

}  // namespace
