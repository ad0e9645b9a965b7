#include "common/Encode.h"

#include "common/WideTextLock.h"

#include <QUuid>

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <cwctype>

namespace {

template <class Text>
void RTrimT(Text& text, const Text& chars) {
    text.erase(text.find_last_not_of(chars) + 1);  // npos + 1 is 0: all of it goes
}

template <class Text>
void TrimT(Text& text, const Text& chars) {
    RTrimT(text, chars);
    text.erase(0, text.find_first_not_of(chars));
}

void EachThrough(std::wstring& text, std::wint_t (*convert)(std::wint_t)) {
    for (wchar_t& c : text) {
        c = static_cast<wchar_t>(convert(static_cast<std::wint_t>(c)));
    }
}

}  // namespace

namespace ca {

void trim(std::wstring& text, const std::wstring& chars) {
    TrimT(text, chars);
}

void trim(std::string& text, const std::string& chars) {
    TrimT(text, chars);
}

std::wstring tail(const std::wstring& text, std::size_t n) {
    return n < text.size() ? text.substr(text.size() - n) : text;
}

void tolower(std::wstring& text) {
    EachThrough(text, std::towlower);
}

void toupper(std::wstring& text) {
    EachThrough(text, std::towupper);
}

bool iequals(const std::wstring& a, const std::wstring& b) {
    return wcscasecmp(a.c_str(), b.c_str()) == 0;
}

template <class Text>
void SplitT(const Text& text, const Text& delimiters, std::vector<Text>& out) {
    // Runs of delimiters leave no empty items.
    out.clear();
    std::size_t start = 0;
    while ((start = text.find_first_not_of(delimiters, start)) != Text::npos) {
        const std::size_t end = std::min(text.find_first_of(delimiters, start), text.size());
        out.push_back(text.substr(start, end - start));
        start = end;
    }
}

void Split(const std::wstring& text, const std::wstring& delimiters,
           std::vector<std::wstring>& out) {
    SplitT(text, delimiters, out);
}

void SplitA(const std::string& text, const std::string& delimiters, std::vector<std::string>& out) {
    SplitT(text, delimiters, out);
}

unsigned char ReverseByte(unsigned char octet) {
    // Halves, quarters, single bits: each step swaps neighbours of half the size.
    unsigned bits = octet;
    bits = (bits & 0xF0) >> 4 | (bits & 0x0F) << 4;
    bits = (bits & 0xCC) >> 2 | (bits & 0x33) << 2;
    bits = (bits & 0xAA) >> 1 | (bits & 0x55) << 1;
    return static_cast<unsigned char>(bits);
}

std::string UuidGenerate() {
    return QUuid::createUuid().toString().toStdString();
}

}  // namespace ca

std::string wstr_to_str(const std::wstring& text) {
    std::string result(text.size(), '\0');
    // The C library's conversion takes a lock of its own, which a fork must find free.
    const ca::CWideTextLock lock;
    // Text that the locale cannot convert ends there: the rest stays NUL.
    std::wcstombs(result.data(), text.c_str(), result.size());
    return result;
}

std::wstring str_to_wstr(const std::string& text) {
    std::wstring result(text.size(), L'\0');
    const ca::CWideTextLock lock;
    std::mbstowcs(result.data(), text.c_str(), result.size());
    return result;
}

void RTrim(std::string& text, const std::string& chars) {
    RTrimT(text, chars);
}
