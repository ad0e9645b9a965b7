// The block parser over what real issuers write, beside OpenSSL's reading of the same octets.

#include "asn1/CryptAsn1Parser.h"
#include "common/Encode.h"
#include "tests/asn1/Asn1Testing.h"

#include <openssl/asn1.h>

#include <filesystem>
#include <fstream>
#include <iterator>

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
