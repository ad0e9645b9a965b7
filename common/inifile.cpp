#include "common/inifile.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <fstream>
#include <istream>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>
#include <sstream>
#include <string_view>
#include <strings.h>

namespace {

// Every literal of the format is ASCII, so widening it is a plain copy.
template <class Char>
std::basic_string<Char> Ascii(std::string_view text) {
    return std::basic_string<Char>(text.begin(), text.end());
}

template <class String>
void EraseLeft(String& text, const String& chars) {
    text.erase(0, std::min(text.find_first_not_of(chars), text.size()));
}

template <class String>
void EraseRight(String& text, const String& chars) {
    text.erase(text.find_last_not_of(chars) + 1);  // npos + 1 is 0: all of it
}

// Sections whose every line is an item of a list, also a line with "=".
constexpr std::array<std::string_view, 3> kListSections = {"Dll extensions", "Custom CDP list",
                                                           "Custom error handlers"};

// Deliberate: letter case counts here, unlike everywhere else in the engine.
template <class Char>
bool IsListSection(const std::basic_string<Char>& name) {
    return std::ranges::any_of(
        kListSections, [&](std::string_view section) { return std::ranges::equal(name, section); });
}

template <class Char>
bool IsSectionHeader(const std::basic_string<Char>& line) {
    const std::size_t last = line.find_last_not_of(Ascii<Char>(" \t\r\n"));
    return line.front() == Char('[') && line[last] == Char(']');
}

// Octets, converted as a whole: a character may be cut by any border of a buffer.
std::optional<std::string> ReadText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in.is_open()) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(in), {});
}

std::optional<std::wstring> ReadText(const std::wstring& path) {
    const std::optional<std::string> text = ReadText(wstr_to_str(path));
    return text ? std::optional(ca::u8u16(*text)) : std::nullopt;
}

}  // namespace

void LTrim(std::wstring& text, const std::wstring& chars) {
    EraseLeft(text, chars);
}

void LTrim(std::string& text, const std::string& chars) {
    EraseLeft(text, chars);
}

void RTrim(std::wstring& text, const std::wstring& chars) {
    EraseRight(text, chars);
}

void Trim(std::wstring& text, const std::wstring& chars) {
    ca::trim(text, chars);
}

void Trim(std::string& text, const std::string& chars) {
    ca::trim(text, chars);
}

namespace ini {

int CompareNoCase(const std::wstring& a, const std::wstring& b) {
    return wcscasecmp(a.c_str(), b.c_str());
}

int CompareNoCase(const std::string& a, const std::string& b) {
    return strcasecmp(a.c_str(), b.c_str());
}

template <class Item, class Char>
Item* NamedSet<Item, Char>::Find(const String& name) const {
    const auto found = m_items.find(name);
    return found != m_items.end() ? *found : nullptr;
}

template <class Item, class Char>
template <class Parent>
Item* NamedSet<Item, Char>::Add(Parent* parent, String name) {
    Trim(name, Ascii<Char>(" \t"));
    if (Item* const existing = Find(name)) {
        return existing;
    }
    auto item = std::make_unique<Item>(parent, std::move(name));
    m_items.insert(item.get());
    return item.release();  // the set owns it now
}

template <class Item, class Char>
void NamedSet<Item, Char>::Remove(Item* item) {
    const auto found = item != nullptr ? m_items.find(item) : m_items.end();
    if (found != m_items.end() && *found == item) {
        const std::unique_ptr<Item> owner(item);
        m_items.erase(found);
    }
}

template <class Item, class Char>
void NamedSet<Item, Char>::Clear() {
    while (!m_items.empty()) {
        const std::unique_ptr<Item> owner(*m_items.begin());
        m_items.erase(m_items.begin());
    }
}

template <class Item, class Char>
bool NamedSet<Item, Char>::Rename(String oldName, String newName) {
    Trim(oldName, Ascii<Char>(" \t"));
    Trim(newName, Ascii<Char>(" \t"));
    Item* const item = Find(oldName);
    Item* const holder = Find(newName);
    if (item == nullptr || (holder != nullptr && holder != item)) {
        return false;
    }
    // Taken out while its name changes: the set is ordered by it.
    auto node = m_items.extract(item);
    item->m_name = std::move(newName);
    m_items.insert(std::move(node));
    return true;
}

template <class Char>
std::basic_string<Char> SectionT<Char>::GetKeyValue(const String& key) const {
    const Key* const found = GetKey(key);
    return found != nullptr ? found->GetValue() : String();
}

template <class Char>
void FileT<Char>::Load(std::basic_istream<Char>& in, bool merge) {
    if (!merge) {
        RemoveAllSections();
    }
    Section* current = nullptr;
    String line;
    while (std::getline(in, line)) {
        // Blanks before a line are indentation; those after it belong to a value.
        EraseLeft(line, Ascii<Char>(" \t"));
        EraseRight(line, Ascii<Char>("\n\r"));
        if (!line.empty()) {
            current = LoadLine(line, current);
        }
    }
}

template <class Char>
bool FileT<Char>::Load(const String& path, bool merge) {
    std::optional<String> text = ReadText(path);
    if (!text) {
        return false;
    }
    std::basic_istringstream<Char> in(std::move(*text));
    Load(in, merge);
    return true;
}

// Takes one line, not empty, and returns the section that the next line belongs to.
template <class Char>
SectionT<Char>* FileT<Char>::LoadLine(const String& line, Section* current) {
    if (IsSectionHeader(line)) {
        // Deliberate: the length is counted on the whole line, so with blanks after the header the
        // name keeps its "]".
        return AddSection(line.substr(1, line.size() - 2));
    }
    const std::size_t equals = line.find(Char('='));
    const bool isKey = equals != String::npos && equals != 0;
    // Deliberate: "#" marks a comment only where there is no key; "#Port=5" is a key.
    if (current == nullptr || (!isKey && line.front() == Char('#'))) {
        return current;
    }
    if (isKey && !IsListSection(current->GetSectionName())) {
        current->SetKeyValue(line.substr(0, equals), line.substr(equals + 1));
    } else {
        current->AddLine(line);
    }
    return current;
}

template <class Char>
void FileT<Char>::Save(std::basic_ostream<Char>& out) const {
    for (const Section* const section : GetSections()) {
        out << Char('[') << section->GetSectionName() << Char(']') << Char('\n');
        for (const auto* const key : section->GetKeys()) {
            out << key->GetKeyName() << Char('=') << key->GetValue() << Char('\n');
        }
    }
}

template <class Char>
std::basic_string<Char> FileT<Char>::GetKeyValue(const String& section, const String& key) const {
    const Section* const found = GetSection(section);
    return found != nullptr ? found->GetKeyValue(key) : String();
}

template <class Char>
bool FileT<Char>::RenameKey(String section, String oldName, String newName) {
    Trim(section, Ascii<Char>(" \t"));
    Section* const found = GetSection(section);
    return found != nullptr && found->RenameKey(std::move(oldName), std::move(newName));
}

// The two forms that the interface has.
template class NamedSet<KeyT<wchar_t>, wchar_t>;
template class NamedSet<KeyT<char>, char>;
template class NamedSet<SectionT<wchar_t>, wchar_t>;
template class NamedSet<SectionT<char>, char>;
template class SectionT<wchar_t>;
template class SectionT<char>;
template class FileT<wchar_t>;
template class FileT<char>;

}  // namespace ini
