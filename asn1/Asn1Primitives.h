#pragma once

#include "asn1/Asn1Tags.h"
#include "asn1/Asn1Text.h"
#include "asn1/CryptAsn1Base.h"
#include "asn1/TagNames.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

/// What the classes of one universal tag share. Decode() does not look at the tag of the block, so
/// an implicitly tagged value reads the same way.
template <unsigned char Tag>
class CAsn1Primitive : public CAsn1Object {
  public:
    static constexpr unsigned char kTag = Tag;

    explicit CAsn1Primitive(CAsn1Block* block, CAsn1Object* parent = nullptr)
        : CAsn1Object(block, parent) {}
    CAsn1Primitive() : CAsn1Object(Tag) {}

    std::string GetTagName() const override { return Asn1TagName(Tag); }
};

class CAsn1Boolean : public CAsn1Primitive<kAsn1Boolean> {
  public:
    using CAsn1Primitive::CAsn1Primitive;

    void Decode() override;
    std::wstring GetFormattedString(unsigned int flags) const override;
    void _Encode() override;

    bool GetValue() const { return m_value; }
    void SetValue(bool value);

  private:
    bool m_value = false;
};

/// The value is the content octets, two's complement, most significant first.
class CAsn1Integer : public CAsn1Primitive<kAsn1Integer> {
  public:
    /// Flags of GetHexString().
    enum HexFlag : unsigned {
        kUpperCase = ca::kHexUpperCase,
        kSkipLeadingZero = ca::kHexSkipLeadingZero,
        kColons = ca::kHexColons,
    };

    using CAsn1Primitive::CAsn1Primitive;

    void Decode() override;
    /// Up to four octets as an unsigned number, more in hexadecimal.
    /// Deliberate: the sign is not regarded; FF reads 255.
    std::wstring GetFormattedString(unsigned int flags) const override;
    void _Encode() override;

    std::span<const unsigned char> GetValue() const { return m_value; }
    void SetValue(std::vector<unsigned char> octets);
    /// The number of up to four octets, read unsigned.
    std::optional<std::uint32_t> GetUInt32() const;

    std::wstring GetHexString(unsigned int flags) const;
    /// Two digits an octet, lower-case unless kUpperCase. kSkipLeadingZero leaves out a first octet
    /// of zero, kColons stands ":" between octets.
    static std::wstring GetHexString(unsigned int flags, const unsigned char* data,
                                     unsigned int size);

  private:
    std::vector<unsigned char> m_value;
};

class CAsn1BitString : public CAsn1Primitive<kAsn1BitString> {
  public:
    using CAsn1Primitive::CAsn1Primitive;

    /// Deliberate: the unused bits are cleared in the parsed buffer itself.
    void Decode() override;
    std::wstring GetFormattedString(unsigned int flags) const override;
    void _Encode() override;

    /// Number of unused low bits of the last octet, as read.
    unsigned GetUnusedBits() const { return m_unusedBits; }
    std::span<const unsigned char> GetValue() const { return m_value; }
    void SetValue(std::vector<unsigned char> octets, unsigned char unusedBits);

    /// Clears the unused bits of a BIT STRING in the parsed buffer; returns the octets after their
    /// count.
    static std::span<const unsigned char> ClearUnusedBits(const CAsn1Block& block);

  private:
    std::vector<unsigned char> m_value;
    unsigned char m_unusedBits = 0;
};

class CAsn1OctetString : public CAsn1Primitive<kAsn1OctetString> {
  public:
    using CAsn1Primitive::CAsn1Primitive;

    void Decode() override;
    std::wstring GetFormattedString(unsigned int flags) const override;
    void _Encode() override;

    std::span<const unsigned char> GetValue() const { return m_value; }
    void SetValue(std::vector<unsigned char> octets);

  private:
    std::vector<unsigned char> m_value;
};

/// An OCTET STRING in segments; the value is their concatenation, at any depth, and never longer
/// than the buffer that the block views. Written back as one segment.
class CAsn1ContructedOctetString : public CAsn1Primitive<kAsn1ConstructedOctetString> {
  public:
    using CAsn1Primitive::CAsn1Primitive;

    void Decode() override;
    std::wstring GetFormattedString(unsigned int flags) const override;
    void _Encode() override;

    std::span<const unsigned char> GetValue() const { return m_value; }
    void SetValue(std::vector<unsigned char> octets);

  private:
    std::vector<unsigned char> m_value;
};

class CAsn1Null : public CAsn1Primitive<kAsn1Null> {
  public:
    using CAsn1Primitive::CAsn1Primitive;

    void Decode() override {}
    void _Encode() override { SetContent({}); }
};

/// A block of any other tag: its raw content, never rewritten.
class CAsn1Unknown : public CAsn1Object {
  public:
    explicit CAsn1Unknown(CAsn1Block* block, CAsn1Object* parent = nullptr)
        : CAsn1Object(block, parent) {}

    void Decode() override {}
    void _Encode() override {}

    std::span<const unsigned char> GetValue() const { return Content(); }
};
