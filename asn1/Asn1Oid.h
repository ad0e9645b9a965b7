#pragma once

#include "asn1/Asn1Primitives.h"

#include <span>
#include <string>

/// The value is the dotted text.
class CAsn1ObjectIdentifier : public CAsn1Primitive<kAsn1ObjectIdentifier> {
  public:
    using CAsn1Primitive::CAsn1Primitive;

    void Decode() override;
    std::wstring GetFormattedString(unsigned int flags) const override;
    /// Throws std::invalid_argument or std::out_of_range for an arc that is not a number.
    void _Encode() override;

    const std::wstring& GetValue() const { return m_text; }
    void SetValue(std::wstring text);

    /// The dotted text of content octets; an unfinished last arc is left out.
    /// Deliberate: the octets of the first subidentifier are summed instead of read base 128, and
    /// the arcs after it wrap at 32 bits and print as signed numbers.
    static std::string GetDottedText(std::span<const unsigned char> content);

  private:
    std::wstring m_text;
};
