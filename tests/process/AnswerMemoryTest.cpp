// What one answer may cost, whatever a stranger hands in: by families of requests that are small
// and become large records. In a process of its own, whose peak of memory is the system's word.

#include "tests/asn1/DerWriter.h"
#include "tests/module/ModuleLibrary.h"

#include <fstream>
#include <functional>
#include <malloc.h>

namespace {

constexpr std::size_t kTimes = 20;            // of the request
constexpr std::size_t kAlways = 1 << 20;      // octets
constexpr std::size_t kMeasured = 256 << 10;  // pages that a fresh peak counts too many
constexpr std::size_t kSize = 1 << 20;        // of each family's payload, about

std::size_t StatusOctets(const char* field) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == field) {
            std::size_t kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    ADD_FAILURE() << "no " << field;
    return 0;
}

Octets Repeat(const Octets& one, std::size_t count) {
    Octets all;
    all.reserve(one.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        all.insert(all.end(), one.begin(), one.end());
    }
    return all;
}

Octets Times(const Octets& one) {
    return Repeat(one, kSize / one.size());
}

const Octets kEmpty{0x30, 0x00};
const Octets kVersion{0x02, 0x01, 0x01};
const Octets kSignedDataType{0x06, 0x09, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x07, 0x02};
const Octets kEnvelopedDataType{0x06, 0x09, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x07, 0x03};

// The least that passes for a certificate.
Octets LeastCertificate() {
    return Tlv(0x30, {Tlv(0x30, {kVersion, Repeat(kEmpty, 5)})});
}

Octets Message(const Octets& type, const Octets& content) {
    return Tlv(0x30, {type, Tlv(0xA0, {content})});
}

Octets SignedMessage(const Octets& certificates, const Octets& signers) {
    const Octets data =
        Tlv(0x30, {{0x06, 0x09, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x07, 0x01}});
    return Message(
        kSignedDataType,
        Tlv(0x30, {kVersion, {0x31, 0x00}, data, Tlv(0xA0, certificates), Tlv(0x31, signers)}));
}

// A signer of the serial number 1 and the empty name, which LeastCertificate() has.
Octets LeastSigner() {
    return Tlv(0x30, {kVersion, Tlv(0x30, {kEmpty, kVersion}), kEmpty, kEmpty, {0x04, 0x01, 0x00}});
}

std::string Base64(const Octets& octets) {
    static constexpr char kDigits[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < octets.size(); i += 3) {
        unsigned group = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            group = group << 8 | (i + k < octets.size() ? octets[i + k] : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            text += i + k > octets.size() ? '=' : kDigits[group >> (18 - 6 * k) & 0x3F];
        }
    }
    return text;
}

std::string Raw(int mode, const Octets& payload) {
    std::string request = "{\"fileDataSize\":" + std::to_string(payload.size()) +
                          ",\"mode\":" + std::to_string(mode) + "}";
    request += '\0';
    request.append(payload.begin(), payload.end());
    return request;
}

Octets PemBlocks() {
    const std::string block =
        "-----BEGIN X-----\n" + Base64(LeastCertificate()) + "\n-----END X-----\n";
    return Times(Text(block));
}

std::string ManySignatures() {
    const std::string one = '"' + Base64(SignedMessage({}, LeastSigner())) + "\",";
    std::string request = R"({"mode":57,"signatures":[)";
    while (request.size() < kSize) {
        request += one;
    }
    request.back() = ']';
    return request + '}';
}

struct Family {
    const char* name;
    std::function<std::string()> request;
};

TEST_F(LibraryTest, AnswersInMemoryThatTheRequestPays) {
    const Family families[] = {
        {"recipients of nothing",
         [] {
             return Raw(41, Message(kEnvelopedDataType,
                                    Tlv(0x30, {kVersion, Tlv(0x31, Times(kEmpty)), kEmpty})));
         }},
        {"the least certificates", [] { return Raw(22, Times(LeastCertificate())); }},
        {"PEM blocks of them", [] { return Raw(22, PemBlocks()); }},
        {"signatures of the least messages", &ManySignatures},
        {"the least signers", [] { return Raw(29, SignedMessage({}, Times(LeastSigner()))); }},
        {"signers of one large certificate",
         [] {
             const Octets extension = Tlv(0x30, {{0x06, 0x01, 0x2A}, {0x04, 0x00}});
             const Octets certificate =
                 Tlv(0x30, {Tlv(0x30, {kVersion, Repeat(kEmpty, 5),
                                       Tlv(0xA3, {Tlv(0x30, Repeat(extension, 1000))})}),
                            kEmpty,
                            {0x03, 0x01, 0x00}});
             return Raw(29, SignedMessage(certificate, Repeat(LeastSigner(), 100)));
         }},
        {"revoked entries of nothing", [] {
             return Raw(23, Tlv(0x30, {Tlv(0x30, {kEmpty, kEmpty, Tlv(0x17, Text("260101000000Z")),
                                                  Tlv(0x30, Times(kEmpty))}),
                                       kEmpty,
                                       {0x03, 0x01, 0x00}}));
         }}};
    Init();
    for (const Family& family : families) {
        SCOPED_TRACE(family.name);
        std::string request = family.request();
        const std::size_t allowed = kTimes * request.size() + kAlways + kMeasured;
        ::malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << "5";  // the peak begins here
        const std::size_t before = StatusOctets("VmRSS:");
        const CMPacket packet = Process(request.data(), request.size());
        const std::size_t peak = StatusOctets("VmHWM:");
        EXPECT_LE(peak - std::min(peak, before), allowed);
        EXPECT_LE(packet.responseSize, allowed);
        EXPECT_GT(packet.responseSize, request.size() / 100);  // it was described
        EXPECT_EQ(Answer(packet).Code(), 0U);
    }
}

}  // namespace
