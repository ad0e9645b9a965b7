#include "asn1/CryptAsn1Parser.h"
#include "common/ErrorCodes.h"
#include "tests/asn1/Asn1Testing.h"

#include <algorithm>
#include <random>

namespace {

class BlockRulesTest : public Asn1Test {};

// A literal, recursive telling of the rules, for small inputs: what the parser's own stack must
// come to.
class LiteralParser {
  public:
    struct Fault {
        std::uint32_t code;
    };

    explicit LiteralParser(std::size_t size) : m_blocksLeft(size) {}

    std::string Roots(const unsigned char* data, unsigned size, std::uint32_t& error) {
        std::string drawn;
        unsigned position = 0;
        unsigned offset = 0;
        try {
            do {
                const std::string root = Block(data, position, offset, size).drawn;
                drawn += (drawn.empty() ? "" : " ") + root;
            } while (position < size);
        } catch (const Fault& fault) {
            error = fault.code;
        }
        return drawn;
    }

  private:
    struct Read {
        std::uint64_t content;
        std::uint64_t written;
        std::string drawn;
    };

    static void Need(bool there) {
        if (!there) {
            throw Fault{ca::kErrAsn1UnexpectedEnd};
        }
    }

    Read Block(const unsigned char* data, unsigned& position, unsigned& offset, unsigned size) {
        if (m_blocksLeft-- == 0) {
            throw Fault{ca::kErrAsn1Corrupted};
        }
        Need(size - position >= 2 && position <= size);
        const unsigned remaining = size - position;
        const unsigned char* start = data + position;
        const unsigned at = offset;
        const bool indefinite = start[1] == 0x80;
        const unsigned count = start[1] > 0x80 ? start[1] & 0x7FU : 0;
        const unsigned header = 2 + count;
        Need(remaining >= header);
        std::uint32_t content = start[1] < 0x80 ? start[1] : 0;
        for (unsigned i = 0; i < count; ++i) {
            content += std::uint32_t{start[2 + i]} << 8 * (count - 1 - i) % 32;
        }
        const unsigned char* octets = start + header;
        std::uint64_t written = content;
        std::string children;
        if ((start[0] & 0x20) != 0) {
            if (content > 0 || indefinite) {
                offset += header;
                content = Children(octets, remaining, header, indefinite, content, offset, written,
                                   children);
            }
        } else if (indefinite) {
            unsigned i = 1;
            for (;; ++i) {
                Need(header + 1 + i <= remaining);
                if (octets[i] == 0 && header + i + 1 < remaining && octets[i + 1] == 0) {
                    break;
                }
            }
            written = content = i;
            offset += header + i + 2;
        } else {
            Need(content <= remaining - header);
            offset += header + content;
        }
        position += header + content + (indefinite ? 2 : 0);
        return Finished(start[0], content, written, at, indefinite, children);
    }

    std::uint32_t Children(const unsigned char* octets, unsigned remaining, unsigned header,
                           bool indefinite, std::uint32_t content, unsigned& offset,
                           std::uint64_t& written, std::string& children) {
        unsigned local = 0;
        std::uint64_t sum = 0;
        written = 0;
        for (;;) {
            Need(local + header + 2 <= remaining);
            const Read child = Block(octets, local, offset, remaining - header);
            children += (children.empty() ? "" : " ") + child.drawn;
            written += child.written;
            sum += child.content;
            if (!indefinite) {
                if (sum > std::uint64_t{content} + header || local >= content) {
                    return content;
                }
                continue;
            }
            Need(local + 2 <= remaining - header);
            if (octets[local] == 0 && octets[local + 1] == 0) {
                offset += 2;
                return local;
            }
        }
    }

    static Read Finished(unsigned char tag, std::uint64_t content, std::uint64_t written,
                         unsigned at, bool indefinite, const std::string& children) {
        unsigned bits = 0;
        while (written >> bits != 0) {
            ++bits;
        }
        const std::uint64_t total = written + (indefinite      ? 4
                                               : written < 128 ? 2
                                                               : 2 + (bits + 7) / 8);
        char text[80];
        std::snprintf(text, sizeof text, "%02X+%u/%u@%u", tag, static_cast<unsigned>(written),
                      static_cast<unsigned>(total), at);
        return {content, total,
                std::string(text) + (indefinite ? "~" : "") +
                    (children.empty() ? "" : "(" + children + ")")};
    }

    std::size_t m_blocksLeft;
};

TEST_F(BlockRulesTest, AgreesWithALiteralReadingOfTheRules) {
    std::mt19937 random(20261121);
    const unsigned char frequent[] = {0x30, 0x31, 0xA0, 0x02, 0x04, 0x00, 0x00, 0x80,
                                      0x81, 0x01, 0x02, 0x03, 0x05, 0x08, 0x24, 0x0A};
    unsigned whole = 0;
    for (int round = 0; round < 40000; ++round) {
        Bytes data(random() % 40);
        for (unsigned char& octet : data) {
            octet = random() % 8 == 0 ? static_cast<unsigned char>(random())
                                      : frequent[random() % std::size(frequent)];
        }
        const GuardedBuffer guarded(data);
        CCryptAsn1Parser parser;
        parser.Parse(guarded.Data(), guarded.Size(), kStop, /*continueOnLengthMismatch=*/false,
                     /*singleRoot=*/false);
        std::uint32_t error = 0;
        const std::string tree = LiteralParser(std::max<std::size_t>(data.size(), 1))
                                     .Roots(guarded.Data(), guarded.Size(), error);
        ASSERT_EQ(parser.GetLastErrorCode(), error) << testing::PrintToString(data);
        if (error == 0) {
            ASSERT_EQ(Draw(parser), tree) << testing::PrintToString(data);
            ++whole;
        }
    }
    EXPECT_GT(whole, 800U);
}

}  // namespace
