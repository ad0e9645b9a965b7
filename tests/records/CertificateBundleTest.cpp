#include "records/fill/CertInfoFill.h"
#include "records/fill/CertificateBundle.h"
#include "tests/asn1/DerWriter.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const Octets kAlgorithm = Tlv(0x30, Tlv(0x06, {0x2A, 0x03}));

Octets Extension(unsigned char type, const Octets& value) {
    return Tlv(0x30, {{0x06, 0x03, 0x55, 0x1D, type}, Tlv(0x04, value)});
}
Octets OwnKey(unsigned char key) {
    return Extension(0x0E, Tlv(0x04, {key}));
}
Octets IssuerKey(unsigned char key) {
    return Extension(0x23, Tlv(0x30, Tlv(0x80, {key})));
}

Octets Certificate(unsigned char serial, const char* issuer, const char* subject,
                   const Octets& extension) {
    const Octets time = Tlv(0x17, Text("240101000000Z"));
    const Octets tbs = Tlv(0x30, {{0xA0, 0x03, 0x02, 0x01, 0x02},
                                  {0x02, 0x01, serial},
                                  kAlgorithm,
                                  Name(issuer),
                                  Tlv(0x30, {time, time}),
                                  Name(subject),
                                  Tlv(0x30, {kAlgorithm, {0x03, 0x02, 0x00, 0x01}}),
                                  Tlv(0xA3, Tlv(0x30, extension))});
    return Tlv(0x30, {tbs, kAlgorithm, {0x03, 0x01, 0x00}});
}

// Serial number of the issuer that is found for the first certificate; "" for none.
std::wstring IssuerOf(Octets certificates) {
    ca::CertificateBundle bundle;
    ca::CollectCertificates(certificates, bundle);
    ca::CertInfo2 record;
    ca::FillWithIssuers(bundle, 0, record);
    return record.issuerCert != nullptr ? record.issuerCert->serial : std::wstring();
}

TEST(CertificateBundleTest, TellsIssuersOfOneNameApartByTheirKeys) {
    const Octets old = Certificate(1, "Root", "CA", OwnKey(0xA1));
    const Octets renewed = Certificate(2, "Root", "CA", OwnKey(0xA2));
    const Octets unnamed = Certificate(3, "Root", "CA", {});
    const auto leaf = [](const Octets& extension) {
        return Certificate(9, "CA", "Leaf", extension);
    };
    EXPECT_EQ(L"02", IssuerOf(Join({leaf(IssuerKey(0xA2)), old, renewed, unnamed})));
    EXPECT_EQ(L"01", IssuerOf(Join({leaf({}), old, renewed}))) << "no key is stated";
    EXPECT_EQ(L"03", IssuerOf(Join({leaf(IssuerKey(0xA3)), old, unnamed})));
    EXPECT_EQ(L"", IssuerOf(Join({leaf(IssuerKey(0xA3)), old, renewed})));
    EXPECT_EQ(L"", IssuerOf(Join({Certificate(9, "CA", "CA", {}), old}))) << "issued by itself";
}

struct PathCase {
    const char* name;
    std::vector<const char*> certificates;  // issuer and subject of each, a letter each
    std::string path;                       // subjects from the leaf on; "" for no one path
};

// The path that stands for a whole bundle; every certificate is in it once.
TEST(CertificateBundleTest, NestsEveryCertificateOnce) {
    const PathCase cases[] = {
        {"a chain", {"RR", "RA", "AL"}, "LAR"},
        {"issuers of each other below a leaf", {"AB", "BA", "AL"}, "LAB"},
        {"and a certificate beside them", {"AB", "BA", "AC", "AD"}, ""},
        {"which nobody issued", {"AB", "BA", "AC", "XD"}, ""},
        {"issuers of each other alone", {"AB", "BA"}, ""},
        {"longer than is nested",
         {"ab", "bc", "cd", "de", "ef", "fg", "gh", "hi", "ij", "jk", "kl", "lm", "mn", "no", "op",
          "pq", "qr", "rs"},
         ""},
    };
    for (const PathCase& c : cases) {
        SCOPED_TRACE(c.name);
        Octets octets;
        for (const std::string pair : c.certificates) {
            const Octets one =
                Certificate(1, pair.substr(0, 1).c_str(), pair.substr(1).c_str(), {});
            octets.insert(octets.end(), one.begin(), one.end());
        }
        ca::CertificateBundle bundle;
        ca::CollectCertificates(octets, bundle);
        const std::size_t leaf = ca::FindLeaf(bundle);
        std::string path;
        ca::CertInfo2 record;
        if (leaf < bundle.certificates.size()) {
            ca::FillWithIssuers(bundle, leaf, record);
            for (const ca::CertInfo2* at = &record; at != nullptr; at = at->issuerCert.get()) {
                path += static_cast<char>(at->description.readable.back());
            }
        }
        EXPECT_EQ(c.path, path);
    }
}

}  // namespace
