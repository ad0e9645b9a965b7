// The block parser over what real issuers write, beside OpenSSL's reading of the same octets, and
// over all the ways in which such files are damaged.

#include "asn1/CryptAsn1Parser.h"
#include "common/Encode.h"
#include "tests/asn1/Asn1Testing.h"
#include "tests/common/SampleObjects.h"

#include <openssl/asn1.h>
#include <openssl/cms.h>
#include <openssl/pem.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

namespace {

constexpr const char* kSystemFolder = "/usr/share/ca-certificates";

struct Node {
    unsigned offset;
    unsigned tag;
    unsigned contentLength;

    bool operator==(const Node&) const = default;
};

// The octets of the first PEM block of a text.
Bytes FromPem(std::string_view text) {
    const std::size_t begin = text.find('\n', text.find("-----BEGIN ")) + 1;
    const std::string_view body = text.substr(begin, text.find("-----END ") - begin);
    Bytes octets(body.size());
    octets.resize(base64_decode_run(body.data(), body.size(), octets.data()).written);
    return octets;
}

// All elements in the order of the file, as OpenSSL cuts them. Recursive: for trusted files.
void WalkBeside(const unsigned char* base, const unsigned char* at, const unsigned char* end,
                std::vector<Node>& nodes) {
    while (at < end) {
        const unsigned char* content = at;
        long length = 0;
        int number = 0;
        int octetClass = 0;
        const int form = ASN1_get_object(&content, &length, &number, &octetClass, end - at);
        ASSERT_EQ(form & 0x81, 0) << "indefinite or malformed at " << at - base;
        nodes.push_back({static_cast<unsigned>(at - base), *at, static_cast<unsigned>(length)});
        if ((form & V_ASN1_CONSTRUCTED) != 0) {
            WalkBeside(base, content, content + length, nodes);
        }
        at = content + length;
    }
}

void WalkOurs(const CAsn1Block& block, std::vector<Node>& nodes) {
    nodes.push_back({block.offset, block.tag, block.contentLength});
    for (const CAsn1Block* child : block.GetInnerBlocks()) {
        WalkOurs(*child, nodes);
    }
}

std::vector<std::filesystem::path> SystemCertificates() {
    std::vector<std::filesystem::path> paths;
    std::error_code failure;
    for (std::filesystem::recursive_directory_iterator at(kSystemFolder, failure), end;
         !failure && at != end; at.increment(failure)) {
        if (at->path().extension() == ".crt") {
            paths.push_back(at->path());
        }
    }
    return paths;
}

// A SignedData that carries the sample certificate, as OpenSSL writes it.
Bytes SampleMessage() {
    const std::unique_ptr<BIO, decltype(&BIO_free)> pem(
        BIO_new_mem_buf(kSampleCertificate, sizeof kSampleCertificate - 1), BIO_free);
    X509* certificate = PEM_read_bio_X509(pem.get(), nullptr, nullptr, nullptr);
    STACK_OF(X509)* certificates = sk_X509_new_null();
    sk_X509_push(certificates, certificate);
    const std::unique_ptr<BIO, decltype(&BIO_free)> content(BIO_new_mem_buf("content", 7),
                                                            BIO_free);
    CMS_ContentInfo* message = CMS_sign(nullptr, nullptr, certificates, content.get(), CMS_BINARY);
    unsigned char* octets = nullptr;
    const int size = i2d_CMS_ContentInfo(message, &octets);
    const Bytes result(octets, octets + size);
    OPENSSL_free(octets);
    CMS_ContentInfo_free(message);
    sk_X509_pop_free(certificates, X509_free);
    return result;
}

// Everything the engine does with octets from outside. The blocks stay bounded, and what is written
// reads the same again.
void Exercise(std::span<const unsigned char> octets, bool stopAtTruncation) {
    const GuardedBuffer held(octets);
    CCryptAsn1Parser parser;
    parser.Parse(held.Data(), held.Size(), stopAtTruncation, /*continueOnLengthMismatch=*/false,
                 /*singleRoot=*/false);
    std::vector<Node> nodes;
    for (const CAsn1Block* root : parser.GetRoots()) {
        WalkOurs(*root, nodes);
    }
    // No octets at all leave the one root that could not be read.
    ASSERT_LE(nodes.size(), std::max<std::size_t>(octets.size(), 1));
    parser.GetAsn1Structure();
    if (parser.GetLastErrorCode() != 0) {
        return;
    }
    Bytes written = Build(parser);
    CCryptAsn1Parser again;
    again.Parse(written.data(), static_cast<unsigned>(written.size()), /*stopAtTruncation=*/true,
                /*continueOnLengthMismatch=*/false, /*singleRoot=*/false);
    ASSERT_LE(again.GetTotalLength(), written.size());
}

}  // namespace

class RealFilesTest : public Asn1Test {};

TEST_F(RealFilesTest, CutsSystemCertificatesAsOpenSslDoesAndWritesThemBack) {
    const std::vector<std::filesystem::path> paths = SystemCertificates();
    if (paths.empty()) {
        GTEST_SKIP() << "no certificates in " << kSystemFolder;
    }
    for (const std::filesystem::path& path : paths) {
        SCOPED_TRACE(path.filename());
        std::ifstream file(path, std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(file)), {});
        Bytes octets = FromPem(text);
        std::vector<Node> expected;
        WalkBeside(octets.data(), octets.data(), octets.data() + octets.size(), expected);

        CCryptAsn1Parser parser;
        parser.Parse(octets.data(), static_cast<unsigned>(octets.size()),
                     /*stopAtTruncation=*/true, /*continueOnLengthMismatch=*/false,
                     /*singleRoot=*/false);
        std::vector<Node> nodes;
        ASSERT_EQ(parser.GetRootCount(), 1U);
        WalkOurs(*parser.GetRoot(0), nodes);
        ASSERT_EQ(nodes.size(), expected.size());
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            ASSERT_EQ(nodes[i], expected[i]) << "element " << i << " at " << expected[i].offset;
        }
        ASSERT_EQ(Build(parser), octets);
    }
}

TEST_F(RealFilesTest, SurvivesEveryTruncationAndEverySingleBitFlip) {
    const Bytes samples[] = {FromPem(kSampleCertificate), FromPem(kSampleCrl), SampleMessage()};
    for (const Bytes& sample : samples) {
        for (std::size_t size = 0; size <= sample.size(); ++size) {
            SCOPED_TRACE(size);
            Exercise(std::span(sample).first(size), /*stopAtTruncation=*/size % 2 == 0);
        }
        Bytes flipped = sample;
        for (std::size_t bit = 0; bit < 8 * sample.size(); ++bit) {
            SCOPED_TRACE(bit);
            const auto mask = static_cast<unsigned char>(1U << (bit % 8));
            flipped[bit / 8] ^= mask;
            Exercise(flipped, /*stopAtTruncation=*/bit % 2 == 0);
            flipped[bit / 8] ^= mask;
        }
    }
}
