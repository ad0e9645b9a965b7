#pragma once

#include "asn1/Asn1Primitives.h"

#include <string>
#include <utility>

/// The text types: the value is the text; malformed input reads as U+FFFD.
class CAsn1BaseString : public CAsn1Object {
  public:
    using CAsn1Object::CAsn1Object;

    /// Reads the content as UTF-8.
    void Decode() override;
    std::wstring GetFormattedString(unsigned int flags) const override;
    void _Encode() override;

    const std::wstring& GetValue() const { return m_text; }
    void SetValue(std::wstring text);

  protected:
    void StoreText(std::wstring text) { m_text = std::move(text); }

  private:
    std::wstring m_text;
};

/// A text type of one universal tag.
template <unsigned char Tag>
class CAsn1TaggedString : public CAsn1BaseString {
  public:
    static constexpr unsigned char kTag = Tag;

    explicit CAsn1TaggedString(CAsn1Block* block, CAsn1Object* parent = nullptr)
        : CAsn1BaseString(block, parent) {}
    CAsn1TaggedString() : CAsn1BaseString(Tag) {}

    std::string GetTagName() const override { return Asn1TagName(Tag); }
};

class CAsn1UTF8String : public CAsn1TaggedString<kAsn1Utf8String> {
  public:
    using CAsn1TaggedString::CAsn1TaggedString;
};

class CAsn1NumericString : public CAsn1TaggedString<kAsn1NumericString> {
  public:
    using CAsn1TaggedString::CAsn1TaggedString;
};

class CAsn1PrintableString : public CAsn1TaggedString<kAsn1PrintableString> {
  public:
    using CAsn1TaggedString::CAsn1TaggedString;
};

class CAsn1IA5String : public CAsn1TaggedString<kAsn1Ia5String> {
  public:
    using CAsn1TaggedString::CAsn1TaggedString;
};

class CAsn1TeletexString : public CAsn1TaggedString<kAsn1TeletexString> {
  public:
    using CAsn1TaggedString::CAsn1TaggedString;

    /// Deliberate: octets 0xC2 read as apostrophes.
    void Decode() override;
};

/// BMPString: big-endian units of 16 bits; surrogate pairs are joined, an odd last octet is
/// ignored.
class CAsn1UnicodeString : public CAsn1TaggedString<kAsn1UnicodeString> {
  public:
    using CAsn1TaggedString::CAsn1TaggedString;

    void Decode() override;
    void _Encode() override;
};
