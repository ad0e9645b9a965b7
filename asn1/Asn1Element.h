#pragma once

#include "asn1/Asn1Tags.h"
#include "common/Exception.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

// Elements (tag, length, value) as they stand in the octets, read strictly: an element ends inside
// what holds it. Here nothing is built, copied or changed; the block parser with its rules of its
// own stands beside this.

/// Further identifier octets and their bits (ITU-T X.680, 8.4, X.690, 8.1.2).
enum Asn1TagOctet : unsigned char {
    kAsn1Enumerated = 0x0A,
    kAsn1UniversalString = 0x1C,
    kAsn1ConstructedBit = 0x20,
    kAsn1ContextBit = 0x80,
};

/// One element. The spans view the octets it was read from; nobody writes them.
struct CAsn1Element {
    unsigned char tag = 0;
    bool indefinite = false;  ///< Of indefinite length: `raw` ends with end-of-contents.
    std::span<const unsigned char>
        raw;  ///< The whole element as received; what digests are made of.
    std::span<const unsigned char> content;  ///< Without end-of-contents.

    bool IsConstructed() const { return (tag & kAsn1ConstructedBit) != 0; }
};

/// What keeps octets from being an element.
enum class Asn1Fault : unsigned char {
    kNone,
    kTruncated,  ///< It would end past the octets.
    kMalformed,  ///< No tag or length this engine knows: a high tag number, a reserved length, an
                 ///< indefinite length on a primitive element, end-of-contents out of place.
};

/// Walks elements that follow each other. Time and memory: constant for an element of definite
/// length; linear in its octets for one of indefinite length, whatever its depth.
class CAsn1Cursor {
  public:
    CAsn1Cursor() = default;
    explicit CAsn1Cursor(std::span<const unsigned char> octets) : m_rest(octets) {}

    bool AtEnd() const { return m_rest.empty(); }
    /// What was not read yet.
    std::span<const unsigned char> Rest() const { return m_rest; }
    /// Identifier octet of the next element. Not at the end.
    unsigned char PeekTag() const { return m_rest[0]; }

    /// Reads the next element and steps past it; at a fault `element` is left alone and the
    /// cursor stays. Not at the end.
    Asn1Fault Next(CAsn1Element& element) noexcept;

    // For lists, whose elements are all of one type.

    /// Next() of one more element; false at the end and in front of what is not an element, which
    /// Rest() has then.
    bool Step(CAsn1Element& element) noexcept {
        return !AtEnd() && Next(element) == Asn1Fault::kNone;
    }
    /// The same, with all that is not an element as the last one: of tag 0, which no element has,
    /// and without content. False at the end only.
    bool StepOrRest(CAsn1Element& element) noexcept {
        if (AtEnd()) {
            return false;
        }
        if (Next(element) != Asn1Fault::kNone) {
            element = {};
            element.raw = m_rest;
            m_rest = {};
        }
        return true;
    }

  private:
    std::span<const unsigned char> m_rest;
};

// What is thrown or kept for octets that are not what was to be read. `name` is that of the ASN.1
// definition ("Validity.notBefore"), `offset` the place in the outermost octets; both are in the
// exception's text, which is in the current language.

/// kErrAsn1UnexpectedEnd for a truncated element, kErrAsn1Corrupted for a malformed one.
ca::Exception MakeAsn1Fault(Asn1Fault fault, std::string_view name, std::size_t offset);
/// kErrAsn1Corrupted: there is no element where `name` is required.
ca::Exception MakeAsn1Missing(std::string_view name, std::size_t offset);
/// kErrAsn1BadTag: another element stands where `name` is to be, or after the last member.
ca::Exception MakeAsn1WrongTag(std::string_view name, unsigned char tag, std::size_t offset);
