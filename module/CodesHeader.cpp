// Writes mod_foo_codes.h, the C header of what hosts would otherwise copy out of documents: modes,
// error codes and keys, from the tables that the module itself is made of.
// Usage: codes_header FILE

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

enum Gate : bool { kOpen = false, kGated = true };

struct Mode {
    std::uint32_t number;
    std::string_view name;
    Gate gate;
    std::string_view english;
    std::string_view russian;
};
// The order of the table is ascending, which the header promises.
constexpr Mode kModes[] = {
#define CA_MODE(number, name, gate, english, russian) {number, #name, gate, english, russian},
#define CA_MODE_EMPTY(number, gate, english, russian) {number, "", gate, english, russian},
#include "module/ModeTable.inc"
#undef CA_MODE_EMPTY
#undef CA_MODE
};

struct Code {
    std::string_view constant;
    std::uint32_t code;
    std::string_view meaning;
};
// The texts of the tables are wide literals; the English ones have ASCII characters only.
template <std::size_t N>
struct Narrow {
    std::array<char, N> text{};
    constexpr explicit Narrow(const wchar_t (&wide)[N]) {
        for (std::size_t i = 0; i < N; ++i) {
            text[i] = wide[i] >= 0 && wide[i] < 0x80 ? static_cast<char>(wide[i]) : throw "ASCII";
        }
    }
};
template <Narrow text>
constexpr std::string_view kNarrow{text.text.data(), text.text.size() - 1};

// The tables that the module itself is made of, so that both cannot differ.
constexpr Code kCodes[] = {
#define CA_FIXED_ERROR(name, code, meaning) {#name, code, meaning},
#include "common/FixedErrorTable.inc"
#undef CA_FIXED_ERROR
#define CA_ERROR(name, code, english, russian) {#name, code, kNarrow<Narrow(english)>},
#include "common/ErrorTable.inc"
#undef CA_ERROR
#define CA_MODULE_ERROR(name, code, english, russian) {#name, code, kNarrow<Narrow(english)>},
#include "common/ModuleErrorTable.inc"
#undef CA_MODULE_ERROR
#define CA_CHAIN_ERROR(name, code, english, russian) {#name, code, kNarrow<Narrow(english)>},
#include "common/ChainErrorTable.inc"
#undef CA_CHAIN_ERROR
};

struct Key {
    std::string_view key;
    std::string_view type;
    std::string_view meaning;
};
constexpr Key kKeys[] = {
#define CA_REQUEST_MEMBER(key, member, presence, json, meaning) {key, json, meaning},
#define CA_REQUEST_KEY(name, key, json, meaning) {key, json, meaning},
#define CA_ANSWER_MEMBER CA_REQUEST_MEMBER
#include "module/KeyTable.inc"
#undef CA_ANSWER_MEMBER
#undef CA_REQUEST_KEY
#undef CA_REQUEST_MEMBER
#define CA_RECORD(name, type, key, json, meaning) {key, json, meaning},
#include "common/RecordTable.inc"
#undef CA_RECORD
};

bool IsLower(char c) {
    return std::islower(static_cast<unsigned char>(c)) != 0;
}
bool IsUpper(char c) {
    return std::isupper(static_cast<unsigned char>(c)) != 0;
}

// "GetCRL" as GET_CRL, "PKIConfig" as PKI_CONFIG, "Asn1BadTag" as ASN1_BAD_TAG.
std::string UpperSnake(std::string_view name) {
    std::string out;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool startsWord =
            // A word begins at a capital after a small letter, and at the last of several capitals
            // before one.
            i != 0 && IsUpper(name[i]) &&
            (!IsUpper(name[i - 1]) || (i + 1 < name.size() && IsLower(name[i + 1])));
        out += startsWord ? "_" : "";
        out += static_cast<char>(std::toupper(static_cast<unsigned char>(name[i])));
    }
    return out;
}

// On one line, without what would end a comment.
std::string Comment(std::string_view text) {
    std::string out;
    for (const char c : text) {
        const bool endsComment = c == '/' && !out.empty() && out.back() == '*';
        if (c == '\n' || c == '\r' || endsComment) {
            // A line break or the end of a comment inside a text becomes a blank.
            out += out.ends_with(' ') ? "" : " ";
        } else {
            out += c;
        }
    }
    return out.substr(0, out.find_last_not_of(' ') + 1);
}

void WriteDefine(std::ostream& out, std::string_view comment, std::string_view name,
                 std::string_view value) {
    out << "/** " << Comment(comment) << " */\n#define " << name << ' ' << value << '\n';
}

void WriteModes(std::ostream& out) {
    out << "\n/* ---- Values of \"mode\" in a request. Gated ones use a private key or show a "
           "window: "
           "they need an\n * interactive request, or the configuration's permission. */\n\n";
    // "" is the name of modes without one, each of which has its number.
    std::set<std::string_view> seen = {""};
    for (const Mode& mode : kModes) {
        // Another number of a name has it in its own.
        const std::string name = mode.name.empty() ? "NOTHING" : UpperSnake(mode.name);
        const std::string number = std::to_string(mode.number);
        const bool isFirst = seen.insert(mode.name).second;
        WriteDefine(out, std::string(mode.english) + (mode.gate == kGated ? " (gated)" : ""),
                    "CM_MODE_" + name + (isFirst ? "" : "_" + number), number);
    }
    out << "\n/** All modes by ascending number: X(number, name, gated, english, russian) for "
           "each.\n * `gated` "
           "is 0 or 1, a name \"\" where there is none; the texts say what it does, UTF-8. "
           "*/\n#define CM_MODES(X)";
    for (const Mode& mode : kModes) {
        out << " \\\n    X(" << mode.number << ", \"" << mode.name << "\", " << mode.gate << ", \""
            << mode.english << "\", \"" << mode.russian << "\")";
    }
    out << '\n';
}

void WriteCodes(std::ostream& out) {
    constexpr std::uint32_t kEngineCodes = 0x80000000;
    out << "\n/* ---- Values of \"errorCode\" in an answer, and of results in records; 32 bits. "
           "From\n"
           " * 16400 to 16402 a module has a reading of its own beside the service's. */\n\n";
    std::vector<Code> codes(std::begin(kCodes), std::end(kCodes));
    // Stable: constants of one number stay in the order of the tables.
    std::ranges::stable_sort(codes, {}, &Code::code);
    for (const Code& each : codes) {
        std::string_view constant = each.constant;
        constant.remove_prefix(constant.starts_with("kErr") ? 4 : 1);
        std::ostringstream value;
        each.code < kEngineCodes ? value << each.code
                                 : value << std::hex << std::uppercase << "0x" << each.code;
        WriteDefine(out, each.meaning, "CM_ERR_" + UpperSnake(constant), value.str() + "u");
    }
}

void WriteKeys(std::ostream& out) {
    out << "\n/* ---- Keys of requests and answers. */\n\n";
    std::set<std::string_view> seen;
    // A key of a request may be one of an answer, too.
    for (const Key& each : kKeys) {
        if (seen.insert(each.key).second) {
            std::string comment(each.type);
            comment.append(comment.empty() ? "" : ": ").append(each.meaning);
            WriteDefine(out, comment, "CM_KEY_" + UpperSnake(each.key),
                        "\"" + std::string(each.key) + "\"");
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("Usage: codes_header FILE\n", stderr);
        return 2;
    }
    std::ofstream out(argv[1], std::ios::binary);
    out << "#ifndef MOD_FOO_CODES_H\n#define MOD_FOO_CODES_H\n\n"
           "/**\n * Modes, error codes and keys of requests and answers: C11 and C++, macros "
           "only.\n"
           " * Made by the build from the tables that the module is made of.\n */\n";
    WriteModes(out);
    WriteCodes(out);
    WriteKeys(out);
    out << "\n#endif  /* MOD_FOO_CODES_H */\n";
    return out.flush() ? 0 : 1;
}
