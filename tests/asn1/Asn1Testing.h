#pragma once

// What the tests of the ASN.1 engine share.

#include "asn1/CryptAsn1Parser.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "tests/asn1/DerWriter.h"
#include "tests/common/GuardedBuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <random>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

using Bytes = std::vector<unsigned char>;

/// "30 80 02" to octets; blanks are free.
inline Bytes Hex(std::string_view text) {
    Bytes octets;
    std::string digits;
    for (const char c : text) {
        if (c != ' ') {
            digits += c;
        }
        if (digits.size() == 2) {
            octets.push_back(static_cast<unsigned char>(std::stoi(digits, nullptr, 16)));
            digits.clear();
        }
    }
    return octets;
}

inline void Append(Bytes& to, const Bytes& more) {
    to.insert(to.end(), more.begin(), more.end());
}

/// A tree in one line: tag+content/total@offset, "~" for the indefinite form, "!" for corrupted,
/// children in parentheses. Recursive: for shallow trees.
inline std::string Draw(const CAsn1Block& block) {
    char text[64];
    std::snprintf(text, sizeof text, "%02X+%u/%u@%u", block.tag, block.contentLength,
                  block.totalLength, block.offset);
    std::string drawn = text;
    drawn += block.isUnknownLength ? "~" : "";
    drawn += block.corrupted ? "!" : "";
    std::string children;
    for (const CAsn1Block* child : block.GetInnerBlocks()) {
        EXPECT_EQ(child->parent, &block);
        children += (children.empty() ? "" : " ") + Draw(*child);
    }
    return children.empty() ? drawn : drawn + "(" + children + ")";
}

inline std::string Draw(const CCryptAsn1Parser& parser) {
    std::string drawn;
    for (const CAsn1Block* root : parser.GetRoots()) {
        drawn += (drawn.empty() ? "" : " ") + Draw(*root);
    }
    return drawn;
}

/// Catches the lines of the log; restores the language.
class Asn1Test : public testing::Test {
  protected:
    Asn1Test() {
        s_lines.clear();
        LogInit(&Asn1Test::Catch, m_texts);
        SetZORNALng(L"en");
    }
    ~Asn1Test() override {
        LogInit(nullptr, m_texts);
        SetZORNALng(L"ru");
    }

    static const std::vector<std::wstring>& Lines() { return s_lines; }
    static std::size_t LinesWith(const std::wstring& part) {
        return static_cast<std::size_t>(std::count_if(
            s_lines.begin(), s_lines.end(),
            [&part](const std::wstring& line) { return line.find(part) != std::wstring::npos; }));
    }

  private:
    static bool Catch(const wchar_t* line, bool) {
        s_lines.emplace_back(line);
        return true;
    }

    static inline std::vector<std::wstring> s_lines;
    std::vector<std::wstring> m_texts;
};

inline constexpr bool kStop = true;   // stopAtTruncation
inline constexpr bool kRead = false;  // read on after a truncation

inline void Parse(CCryptAsn1Parser& parser, Bytes& data, bool stop = kStop) {
    parser.Parse(data.data(), static_cast<unsigned>(data.size()), stop,
                 /*continueOnLengthMismatch=*/false, /*singleRoot=*/false);
}

inline Bytes Build(CCryptAsn1Parser& parser) {
    Bytes out(parser.GetTotalLength());
    const GuardedBuffer guarded(out);
    parser.Build(guarded.Data());
    return {guarded.Data(), guarded.Data() + guarded.Size()};
}

/// Nested elements with primitive ones of random octets.
inline Bytes RandomDer(std::mt19937& random, int depth) {
    if (depth == 0 || random() % 3 == 0) {
        Bytes content(random() % 12 == 0 ? random() % 70000 : random() % 200);
        std::generate(content.begin(), content.end(), std::ref(random));
        return Tlv(static_cast<unsigned char>(random() % 31 | (random() % 4) << 6), content);
    }
    Bytes content;
    for (unsigned i = 1 + random() % 4; i-- > 0;) {
        Append(content, RandomDer(random, depth - 1));
    }
    return Tlv(static_cast<unsigned char>(0x20 | random() % 31), content);
}
