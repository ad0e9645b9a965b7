#pragma once

#include "common/Encode.h"

#include <cstddef>
#include <iosfwd>
#include <set>
#include <string>
#include <utility>
#include <vector>

// INI files in memory. CIniFileW and CIniFileA behave alike; they differ in the character type and
// in the last letter of their nested classes' names.

/// Remove members of `chars` from one end or from both. Encode.h has the narrow RTrim().
void LTrim(std::wstring& text, const std::wstring& chars);
void LTrim(std::string& text, const std::string& chars);
void RTrim(std::wstring& text, const std::wstring& chars);
void Trim(std::wstring& text, const std::wstring& chars);
void Trim(std::string& text, const std::string& chars);

namespace ini {

/// wcscasecmp() and strcasecmp() under one name.
int CompareNoCase(const std::wstring& a, const std::wstring& b);
int CompareNoCase(const std::string& a, const std::string& b);

template <class Char>
class SectionT;
template <class Char>
class FileT;

/// Orders keys and sections by name without regard to letter case; also finds them by a bare name.
template <class Item, class Char>
struct NameLess {
    using is_transparent = void;
    using String = std::basic_string<Char>;
    bool operator()(const Item* a, const Item* b) const { return Less(a->Name(), b->Name()); }
    bool operator()(const Item* a, const String& b) const { return Less(a->Name(), b); }
    bool operator()(const String& a, const Item* b) const { return Less(a, b->Name()); }

  private:
    static bool Less(const String& a, const String& b) { return CompareNoCase(a, b) < 0; }
};

/// Owns the keys of a section or the sections of a file: unique by name, in the order of NameLess.
template <class Item, class Char>
class NamedSet {
  public:
    using String = std::basic_string<Char>;
    using Set = std::set<Item*, NameLess<Item, Char>>;

    NamedSet() = default;
    NamedSet(const NamedSet&) = delete;
    NamedSet& operator=(const NamedSet&) = delete;
    ~NamedSet() { Clear(); }

    const Set& Items() const { return m_items; }
    /// Null when absent; the name is taken as it stands.
    Item* Find(const String& name) const;
    /// The item of the trimmed name, created with `parent` when absent.
    template <class Parent>
    Item* Add(Parent* parent, String name);
    void Remove(Item* item);
    void Clear();
    /// Puts the item to the place of its new name; both names are trimmed. False, and nothing
    /// changed, when there is no such item or another one has the new name.
    bool Rename(String oldName, String newName);

  private:
    Set m_items;  // owned
};

/// One "name=value". Lives in its section, which owns it.
template <class Char>
class KeyT {
  public:
    using String = std::basic_string<Char>;

    KeyT(SectionT<Char>* section, String name) : m_section(section), m_name(std::move(name)) {}

    const String& GetKeyName() const { return m_name; }
    /// False, and nothing changed, when the section has another key of that name.
    bool SetKeyName(String name) { return m_section->RenameKey(m_name, std::move(name)); }
    const String& GetValue() const { return m_value; }
    void SetValue(String value) { m_value = std::move(value); }

    const String& Name() const { return m_name; }

  private:
    friend class NamedSet<KeyT, Char>;

    SectionT<Char>* m_section;
    String m_name;
    String m_value;
};

// The name of a section's nested key class ends in the letter of the character type.
template <class Char>
struct KeyNames;
template <>
struct KeyNames<wchar_t> {
    using CIniKeyW = KeyT<wchar_t>;
};
template <>
struct KeyNames<char> {
    using CIniKeyA = KeyT<char>;
};

/// A section: its keys, and its free lines in file order. Lives in its file, which owns it.
template <class Char>
class SectionT : public KeyNames<Char> {
  public:
    using String = std::basic_string<Char>;
    using Key = KeyT<Char>;
    using KeySet = typename NamedSet<Key, Char>::Set;

    SectionT(FileT<Char>* file, String name) : m_file(file), m_name(std::move(name)) {}

    const String& GetSectionName() const { return m_name; }
    /// False, and nothing changed, when the file has another section of that name.
    bool SetSectionName(String name) { return m_file->RenameSection(m_name, std::move(name)); }

    const KeySet& GetKeys() const { return m_keys.Items(); }
    /// Null when absent; the name is taken as it stands.
    Key* GetKey(const String& name) const { return m_keys.Find(name); }
    /// The key of the trimmed name, created when absent. Owned by the section.
    Key* AddKey(String name) { return m_keys.Add(this, std::move(name)); }
    /// Destroys a key of this section; null is ignored.
    void RemoveKey(Key* key) { m_keys.Remove(key); }
    void RemoveAllKeys() { m_keys.Clear(); }
    /// Empty when there is no such key.
    String GetKeyValue(const String& key) const;
    void SetKeyValue(const String& key, String value) { AddKey(key)->SetValue(std::move(value)); }
    /// False, and nothing changed, when there is no such key or another has the new name.
    bool RenameKey(String oldName, String newName) {
        return m_keys.Rename(std::move(oldName), std::move(newName));
    }

    const std::vector<String>& GetLines() const { return m_lines; }
    std::size_t GetLineCount() const { return m_lines.size(); }
    void AddLine(String line) { m_lines.push_back(std::move(line)); }

    const String& Name() const { return m_name; }

  private:
    friend class NamedSet<SectionT, Char>;

    FileT<Char>* m_file;
    String m_name;
    NamedSet<Key, Char> m_keys;
    std::vector<String> m_lines;
};

/// The whole file. Not for concurrent use.
template <class Char>
class FileT {
  public:
    using String = std::basic_string<Char>;
    using Section = SectionT<Char>;
    using SectionSet = typename NamedSet<Section, Char>::Set;

    /// Reads lines up to the stream's end or failure; what was read till then stays.
    /// \param merge  adds to what is there instead of replacing it.
    void Load(std::basic_istream<Char>& in, bool merge);
    /// The same from a file, read as octets; the wide variant takes them as UTF-8.
    /// False, with the sections as they were, when it cannot be opened.
    bool Load(const String& path, bool merge);
    /// Writes sections and keys in set order, each line ended by a line feed. Free lines are left
    /// to the owner of their section.
    void Save(std::basic_ostream<Char>& out) const;

    const SectionSet& GetSections() const { return m_sections.Items(); }
    /// Null when absent; the name is taken as it stands.
    Section* GetSection(const String& name) const { return m_sections.Find(name); }
    /// The section of the trimmed name, created when absent. Owned by the file.
    Section* AddSection(String name) { return m_sections.Add(this, std::move(name)); }
    /// Destroys a section of this file; null is ignored.
    void RemoveSection(Section* section) { m_sections.Remove(section); }
    void RemoveAllSections() { m_sections.Clear(); }
    /// Both names are trimmed. False, and nothing changed, when there is no such section or another
    /// has the new name.
    bool RenameSection(String oldName, String newName) {
        return m_sections.Rename(std::move(oldName), std::move(newName));
    }

    /// Empty when section or key is absent.
    String GetKeyValue(const String& section, const String& key) const;
    /// Creates section and key as needed.
    void SetKeyValue(const String& section, const String& key, String value) {
        AddSection(section)->SetKeyValue(key, std::move(value));
    }
    /// RenameKey() of that section, whose name is trimmed too.
    bool RenameKey(String section, String oldName, String newName);

  private:
    Section* LoadLine(const String& line, Section* current);

    NamedSet<Section, Char> m_sections;
};

/// A file to be read into with merging: `in >> CIniFileW::CIniMergeW(file)`.
template <class Char>
class MergeT {
  public:
    explicit MergeT(FileT<Char>& file) : m_file(file) {}
    FileT<Char>& Target() const { return m_file; }

  private:
    FileT<Char>& m_file;
};

// Load() without and with merging, and Save().
template <class Char>
std::basic_istream<Char>& operator>>(std::basic_istream<Char>& in, FileT<Char>& file) {
    file.Load(in, /*merge=*/false);
    return in;
}
template <class Char>
std::basic_istream<Char>& operator>>(std::basic_istream<Char>& in, MergeT<Char> merge) {
    merge.Target().Load(in, /*merge=*/true);
    return in;
}
template <class Char>
std::basic_ostream<Char>& operator<<(std::basic_ostream<Char>& out, const FileT<Char>& file) {
    file.Save(out);
    return out;
}

}  // namespace ini

class CIniFileW : public ini::FileT<wchar_t> {
  public:
    using CIniSectionW = ini::SectionT<wchar_t>;
    using CIniMergeW = ini::MergeT<wchar_t>;
    using ci_less_w = ini::NameLess<CIniSectionW, wchar_t>;
};

class CIniFileA : public ini::FileT<char> {
  public:
    using CIniSectionA = ini::SectionT<char>;
    using CIniMergeA = ini::MergeT<char>;
    using ci_less_a = ini::NameLess<CIniSectionA, char>;
};
