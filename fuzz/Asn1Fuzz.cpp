// Parse, dump, build, parse again: strangers' octets through the whole ASN.1 engine.

#include "asn1/Asn1Collections.h"
#include "asn1/CryptAsn1Parser.h"
#include "common/Exception.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <vector>

namespace {

// Names the property that does not hold and stops.
void Require(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "property broken: %s\n", property);
        std::abort();
    }
}

std::size_t CountBlocks(const CCryptAsn1Parser& parser) {
    std::vector<const CAsn1Block*> open(parser.GetRoots().begin(), parser.GetRoots().end());
    std::size_t count = 0;
    for (; !open.empty(); ++count) {
        const auto children = open.back()->GetInnerBlocks();
        open.pop_back();
        open.insert(open.end(), children.begin(), children.end());
    }
    return count;
}

// The encoding of the tree; nothing when its length does not fit 32 bits or is unreasonable: what
// overrunning children show twice is written twice.
std::vector<unsigned char> Build(CCryptAsn1Parser& parser, std::size_t limit) {
    std::vector<unsigned char> out;
    try {
        const std::size_t length = parser.GetTotalLength();
        out.resize(length < limit ? length : 0);
    } catch (const ca::Exception&) {
    }
    if (!out.empty()) {
        parser.Build(out.data());
    }
    return out;
}

void DecodeObjects(CAsn1Block* root) {
    CAsn1Sequence objects(root);
    try {
        objects.Decode();
    } catch (const std::logic_error&) {
        // a time that is not a number
    }
}

void Run(std::vector<unsigned char> data, bool stop, bool goOn) {
    CCryptAsn1Parser parser;
    parser.Parse(data.data(), static_cast<unsigned>(data.size()), stop, goOn, false);
    Require(CountBlocks(parser) <= data.size() + (data.empty() ? 1 : 0), "blocks <= octets");
    Require(parser.GetAsn1Structure().Get() != nullptr, "a root to dump");
    DecodeObjects(parser.GetRoot(0));
    CAsn1Block holder;
    holder.AppendInnerBlock(holder.ImportInnerBlock(parser.GetRoot(0)));

    std::vector<unsigned char> written = Build(parser, data.size() * 16 + 64);
    if (parser.GetLastErrorCode() == 0 && parser.GetRootCount() == 1 && !written.empty()) {
        CCryptAsn1Parser again;
        again.Parse(written.data(), static_cast<unsigned>(written.size()), true, false, false);
        Build(again, written.size() * 16 + 64);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const bool stop : {true, false}) {
        Run({data, data + size}, stop, /*goOn=*/false);
        Run({data, data + size}, stop, /*goOn=*/true);
    }
    return 0;
}
