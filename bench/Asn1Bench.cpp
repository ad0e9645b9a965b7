// The ASN.1 engine beside OpenSSL, Botan and libtasn1, and beside a bare walk over the headers into
// a flat vector. Every line of one input counts the same octets.

#include "asn1/Asn1BlockPool.h"
#include "asn1/CryptAsn1Parser.h"
#include "bench/Asn1Inputs.h"
#include "bench/Asn1Tasn1.h"

#include <benchmark/benchmark.h>
#include <botan/ber_dec.h>
#include <openssl/asn1.h>
#include <openssl/bio.h>

#include <algorithm>
#include <malloc.h>
#include <memory>
#include <string>
#include <vector>

namespace {

void Count(benchmark::State& state, const Octets& data) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(data.size()));
}

std::size_t HeapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void Parse(CCryptAsn1Parser& parser, Octets& data) {
    parser.Parse(data.data(), static_cast<unsigned>(data.size()), /*stopAtTruncation=*/true,
                 /*continueOnLengthMismatch=*/false, /*singleRoot=*/false);
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

void ParseTree(benchmark::State& state, const Asn1Input& input) {
    Octets data = input.make();
    for (auto _ : state) {
        auto parser = std::make_unique<CCryptAsn1Parser>();
        Parse(*parser, data);
        state.PauseTiming();
        parser.reset();
        state.ResumeTiming();
    }
    Count(state, data);
    // What is kept of earlier trees must not make this one look smaller.
    constexpr std::size_t kBlocksBeyondKept = CAsn1BlockPool::kKeptOctets / sizeof(CAsn1Block) + 1;
    Octets filler = Nested(kBlocksBeyondKept, true);
    CCryptAsn1Parser taker;
    Parse(taker, filler);
    const std::size_t before = HeapInUse();
    CCryptAsn1Parser parser;
    Parse(parser, data);
    const std::size_t after = HeapInUse();
    const auto blocks = static_cast<double>(CountBlocks(parser));
    state.counters["blocks"] = blocks;
    state.counters["octets/block"] = static_cast<double>(after - before) / blocks;
}

void DestroyTree(benchmark::State& state, const Asn1Input& input) {
    Octets data = input.make();
    for (auto _ : state) {
        state.PauseTiming();
        auto parser = std::make_unique<CCryptAsn1Parser>();
        Parse(*parser, data);
        state.ResumeTiming();
        parser.reset();
    }
    Count(state, data);
}

// Trees one after the other, parsed and destroyed, as requests bring them.
void ParseAndDestroy(benchmark::State& state, const Asn1Input& input, std::size_t kept) {
    Octets data = input.make();
    CAsn1BlockPool::KeepAtMost(kept);
    for (auto _ : state) {
        CCryptAsn1Parser parser;
        Parse(parser, data);
    }
    CAsn1BlockPool::KeepAtMost(CAsn1BlockPool::kKeptOctets);
    Count(state, data);
}

void ParseKept(benchmark::State& state, const Asn1Input& input) {
    ParseAndDestroy(state, input, CAsn1BlockPool::kKeptOctets);
}

// What the memory that is kept between trees brings: the same without.
void ParseUnkept(benchmark::State& state, const Asn1Input& input) {
    ParseAndDestroy(state, input, /*kept=*/0);
}

// The memory of the tree written once by a plain loop: what of a parse is not the engine's.
void TouchTree(benchmark::State& state, const Asn1Input& input) {
    Octets data = input.make();
    std::size_t words = 0;
    {
        CCryptAsn1Parser parser;
        Parse(parser, data);
        words = CountBlocks(parser) * (sizeof(CAsn1Block) / sizeof(std::size_t) + 1);
    }
    constexpr std::size_t kSlabWords = 65000;  // about as large as the engine's
    for (auto _ : state) {
        std::vector<std::unique_ptr<std::size_t[]>> slabs;
        for (std::size_t left = words; left != 0; left -= std::min(left, kSlabWords)) {
            slabs.push_back(std::make_unique_for_overwrite<std::size_t[]>(kSlabWords));
            for (std::size_t i = 0; i < std::min(left, kSlabWords); ++i) {
                slabs.back()[i] = i;
                benchmark::ClobberMemory();
            }
        }
        state.PauseTiming();
        slabs.clear();
        state.ResumeTiming();
    }
    Count(state, data);
}

// What stands for the least that a flat reader does: every header into a growing vector.
void ParseFlat(benchmark::State& state, const Asn1Input& input) {
    struct Node {
        const unsigned char* start;
        std::uint32_t tag, header, length, parent;
    };
    const Octets data = input.make();
    for (auto _ : state) {
        std::vector<Node> nodes;
        for (std::size_t i = 0; i + 2 <= data.size();) {
            const unsigned tag = data[i];
            std::uint32_t length = data[i + 1];
            std::uint32_t header = 2;
            if ((length & 0x80) != 0) {
                header += length & 0x7F;
                length = 0;
                for (std::size_t k = 2; k < header; ++k) {
                    length = length << 8 | data[i + k];
                }
            }
            nodes.push_back({&data[i], tag, header, length, 0});
            i += header + ((tag & 0x20) != 0 ? 0 : length);
        }
        benchmark::DoNotOptimize(nodes.data());
    }
    Count(state, data);
}

struct BotanNode {
    Botan::BER_Object object;
    std::vector<std::unique_ptr<BotanNode>> children;
};

void ReadBotan(Botan::BER_Decoder& decoder, std::vector<std::unique_ptr<BotanNode>>& out) {
    for (;;) {
        auto node = std::make_unique<BotanNode>();
        node->object = decoder.get_next_object();
        if (!node->object.is_set()) {
            return;
        }
        if ((static_cast<unsigned>(node->object.get_class()) & 0x20U) != 0) {
            Botan::BER_Decoder inner(node->object.bits(), node->object.length());
            ReadBotan(inner, node->children);
        }
        out.push_back(std::move(node));
    }
}

void ParseBotan(benchmark::State& state, const Asn1Input& input) {
    const Octets data = input.make();
    for (auto _ : state) {
        std::vector<std::unique_ptr<BotanNode>> roots;
        Botan::BER_Decoder decoder(data.data(), data.size());
        ReadBotan(decoder, roots);
        state.PauseTiming();
        roots.clear();
        state.ResumeTiming();
    }
    Count(state, data);
}

struct OpensslNode {
    ASN1_SEQUENCE_ANY* members = nullptr;
    std::vector<std::unique_ptr<OpensslNode>> children;

    OpensslNode() = default;
    OpensslNode(const OpensslNode&) = delete;
    OpensslNode& operator=(const OpensslNode&) = delete;
    ~OpensslNode() { sk_ASN1_TYPE_pop_free(members, ASN1_TYPE_free); }
};

// Members of SEQUENCEs and SETs as ASN1_TYPE, level by level.
std::unique_ptr<OpensslNode> ReadOpenssl(const unsigned char* data, long size, bool isSet) {
    auto node = std::make_unique<OpensslNode>();
    node->members = isSet ? d2i_ASN1_SET_ANY(nullptr, &data, size)
                          : d2i_ASN1_SEQUENCE_ANY(nullptr, &data, size);
    for (int i = 0; i < sk_ASN1_TYPE_num(node->members); ++i) {
        const ASN1_TYPE* member = sk_ASN1_TYPE_value(node->members, i);
        if (member->type == V_ASN1_SEQUENCE || member->type == V_ASN1_SET) {
            const ASN1_STRING* octets = member->value.sequence;
            node->children.push_back(ReadOpenssl(ASN1_STRING_get0_data(octets),
                                                 ASN1_STRING_length(octets),
                                                 member->type == V_ASN1_SET));
        }
    }
    return node;
}

void ParseOpenssl(benchmark::State& state, const Asn1Input& input) {
    const Octets data = input.make();
    for (auto _ : state) {
        std::vector<std::unique_ptr<OpensslNode>> roots;
        for (std::size_t at = 0; at < data.size();) {
            const unsigned char* next = data.data() + at;
            long length = 0;
            int tag = 0;
            int tagClass = 0;
            const auto left = static_cast<long>(data.size() - at);
            const int form = ASN1_get_object(&next, &length, &tag, &tagClass, left);
            const auto header = next - (data.data() + at);
            const long total = form == 0x21 ? left : static_cast<long>(header) + length;
            roots.push_back(ReadOpenssl(data.data() + at, total, false));
            at += static_cast<std::size_t>(total);
        }
        state.PauseTiming();
        roots.clear();
        state.ResumeTiming();
    }
    Count(state, data);
}

void ParseTasn1(benchmark::State& state, const Asn1Input& input) {
    const Octets data = input.make();
    ParseTasn1Crl(state, data);
    Count(state, data);
}

void Build(benchmark::State& state, const Asn1Input& input) {
    Octets data = input.make();
    CCryptAsn1Parser parser;
    Parse(parser, data);
    Octets out(parser.GetTotalLength());
    for (auto _ : state) {
        parser.Build(out.data());
        benchmark::DoNotOptimize(out.data());
    }
    Count(state, data);
}

void DumpJson(benchmark::State& state, const Asn1Input& input) {
    Octets data = input.make();
    CCryptAsn1Parser parser;
    Parse(parser, data);
    std::size_t length = 0;
    for (auto _ : state) {
        const ca::BytePtr text = parser.GetAsn1Structure(&length);
        benchmark::DoNotOptimize(text.Get());
    }
    state.counters["text"] = static_cast<double>(length);
    Count(state, data);
}

void DumpOpenssl(benchmark::State& state, const Asn1Input& input) {
    const Octets data = input.make();
    for (auto _ : state) {
        const std::unique_ptr<BIO, int (*)(BIO*)> text(BIO_new(BIO_s_mem()), BIO_free);
        ASN1_parse_dump(text.get(), data.data(), static_cast<long>(data.size()), 0, 0);
        benchmark::DoNotOptimize(text.get());
    }
    Count(state, data);
}

void Register(const char* what, const Asn1Input& input,
              void (*run)(benchmark::State&, const Asn1Input&)) {
    benchmark::RegisterBenchmark((std::string(what) + "/" + input.name).c_str(),
                                 [run, &input](benchmark::State& state) { run(state, input); })
        ->Unit(benchmark::kMillisecond);
}

const bool kRegistered = [] {
    for (const Asn1Input& input : Asn1Inputs()) {
        Register("Parse", input, ParseTree);
        Register("TouchTree", input, TouchTree);
        Register("Destroy", input, DestroyTree);
        Register("ParseKept", input, ParseKept);
        Register("ParseUnkept", input, ParseUnkept);
        Register("Build", input, Build);
        Register("Json", input, DumpJson);
        if (input.peers) {
            Register("ParseFlat", input, ParseFlat);
            Register("ParseBotan", input, ParseBotan);
            Register("ParseOpenssl", input, ParseOpenssl);
            Register("JsonOpenssl", input, DumpOpenssl);
        }
        if (input.quadratic) {
            Register("ParseTasn1", input, ParseTasn1);
        }
    }
    return true;
}();

}  // namespace
