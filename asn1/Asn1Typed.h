#pragma once

#include "asn1/Asn1Element.h"
#include "asn1/CryptAsn1Base.h"

#include <cstdint>
#include <span>
#include <type_traits>
#include <vector>

// The base of the typed classes: objects whose members are declared. A class names itself (kName),
// says what it is bound to (kTag, or Accepts() for a CHOICE) and lists its members in Decode(); see
// FieldReader.h.
//
// Describing goes on after a fault: a member that cannot be read never keeps the others from being
// read. Decode() throws the first fault when all is read; what could be read is there.

/// An object of declared members, bound to one element.
/// It views the octets it was made of, which outlive it, and never changes them.
class CAsn1TypedObject : public CAsn1Object {
  public:
    using CAsn1Object::CAsn1Object;

    /// The members keep their values in their own blocks.
    void _Encode() override {}

    /// The element as received. For an object made over a parser's block the octets the parser
    /// counts; they fall short of the element where its lengths were not minimal.
    std::span<const unsigned char> Raw() const { return RawOctets(); }
    /// The content as received, without end-of-contents.
    std::span<const unsigned char> ContentOctets() const;

    /// True when Decode() met a fault in this object or in a member's member.
    bool HasFault() const { return m_hasFault; }

    /// Ties the object to the element its block was made for; done by what creates both.
    void SetElement(const CAsn1Element& element) { m_element = element; }

  private:
    friend class CFieldReader;

    std::span<const unsigned char> RawOctets() const;

    CAsn1Element m_element;
    bool m_hasFault = false;
};

/// Which elements a class is bound to: those with its kTag, or what its Accepts() takes (a CHOICE).
template <class T>
struct Asn1TypeOf {
    static constexpr const char* kName = T::kName;
    static constexpr bool kIsChoice = !requires { T::kTag; };
    static constexpr bool Accepts(unsigned char tag) {
        if constexpr (kIsChoice) {
            return T::Accepts(tag);
        } else {
            return tag == T::kTag;
        }
    }
    static constexpr bool AcceptsAs(unsigned char implicitTag, unsigned char tag) {
        static_assert(!kIsChoice, "the tag of a CHOICE is always explicit (X.680, 31.2.7)");
        return tag == (implicitTag | (T::kTag & kAsn1ConstructedBit));
    }
};

/// The primitive classes. A string may be segmented: the constructed bit is then set.
template <unsigned char Tag, bool MayBeSegmented>
struct Asn1PrimitiveType {
    static constexpr bool Accepts(unsigned char tag) { return AcceptsAs(Tag, tag); }
    static constexpr bool AcceptsAs(unsigned char wanted, unsigned char tag) {
        return tag == wanted || (MayBeSegmented && tag == (wanted | kAsn1ConstructedBit));
    }
};
#define CA_ASN1_PRIMITIVE(type, tag, mayBeSegmented, name)             \
    class type;                                                        \
    template <>                                                        \
    struct Asn1TypeOf<type> : Asn1PrimitiveType<tag, mayBeSegmented> { \
        static constexpr const char* kName = name;                     \
    };
// clang-format off
CA_ASN1_PRIMITIVE(CAsn1Boolean, kAsn1Boolean, false, "BOOLEAN")
CA_ASN1_PRIMITIVE(CAsn1Integer, kAsn1Integer, false, "INTEGER")
CA_ASN1_PRIMITIVE(CAsn1BitString, kAsn1BitString, false, "BIT STRING")
CA_ASN1_PRIMITIVE(CAsn1OctetString, kAsn1OctetString, true, "OCTET STRING")
CA_ASN1_PRIMITIVE(CAsn1Null, kAsn1Null, false, "NULL")
CA_ASN1_PRIMITIVE(CAsn1ObjectIdentifier, kAsn1ObjectIdentifier, false, "OBJECT IDENTIFIER")
CA_ASN1_PRIMITIVE(CAsn1UTF8String, kAsn1Utf8String, false, "UTF8String")
CA_ASN1_PRIMITIVE(CAsn1NumericString, kAsn1NumericString, false, "NumericString")
CA_ASN1_PRIMITIVE(CAsn1PrintableString, kAsn1PrintableString, false, "PrintableString")
CA_ASN1_PRIMITIVE(CAsn1TeletexString, kAsn1TeletexString, false, "TeletexString")
CA_ASN1_PRIMITIVE(CAsn1IA5String, kAsn1Ia5String, false, "IA5String")
CA_ASN1_PRIMITIVE(CAsn1UTCTime, kAsn1UtcTime, false, "UTCTime")
CA_ASN1_PRIMITIVE(CAsn1GeneralizedTime, kAsn1GeneralizedTime, false, "GeneralizedTime")
CA_ASN1_PRIMITIVE(CAsn1UnicodeString, kAsn1UnicodeString, false, "BMPString")
// clang-format on
#undef CA_ASN1_PRIMITIVE

/// UTCTime or GeneralizedTime.
class CAsn1Time;
template <>
struct Asn1TypeOf<CAsn1Time> {
    static constexpr const char* kName = "Time";
    static constexpr bool Accepts(unsigned char tag) {
        return tag == kAsn1UtcTime || tag == kAsn1GeneralizedTime;
    }
};

/// ANY: an element of whatever type, so without members.
class CAsn1Any : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ANY";
    static bool Accepts(unsigned char) { return true; }
    void Decode() override {}

    unsigned char Tag() const { return GetBlock()->tag; }
};

/// Makes `block` a node over `element`, without children.
/// \param offset  where the element stands in the octets the outermost block was read from.
void BindBlock(CAsn1Block& block, const CAsn1Element& element, std::uint32_t offset);

/// Reads the element at the front of `octets`, which is to be a `name`. Throws ca::Exception
/// kErrAsn1UnexpectedEnd, kErrAsn1Corrupted (also for no octets, and for 4 GiB and more).
CAsn1Element ReadElement(std::span<const unsigned char> octets, std::string_view name);

/// Which blocks an outermost object has.
enum class Asn1Blocks {
    kAll,   ///< The whole tree, where the octets can be cut into one: for what walks blocks.
    kRead,  ///< Only those of members that are read. For lists of a million elements.
};

/// Makes `block` the root over `element`, as Asn1Blocks has it. Octets that cannot be cut into a
/// tree give a block without children: the members that can be read are read all the same.
void BindRoot(CAsn1Block& block, const CAsn1Element& element, Asn1Blocks blocks);

/// A typed or primitive object over octets, with its block: the outermost object of what is read.
template <class T>
class CAsn1Root {
  public:
    /// Binds the element at the front of `octets`, which outlive this; Decode() is the caller's.
    /// Throws as ReadElement(), and kErrAsn1BadTag for an element that is not a T.
    explicit CAsn1Root(std::span<const unsigned char> octets,
                       Asn1Blocks blocks = Asn1Blocks::kAll) {
        const CAsn1Element element = ReadElement(octets, Asn1TypeOf<T>::kName);
        if (!Asn1TypeOf<T>::Accepts(element.tag)) {
            throw MakeAsn1WrongTag(Asn1TypeOf<T>::kName, element.tag, 0);
        }
        BindRoot(m_block, element, blocks);
        if constexpr (std::is_base_of_v<CAsn1TypedObject, T>) {
            m_object.SetElement(element);
        }
        m_rest = octets.subspan(element.raw.size());
    }
    CAsn1Root(const CAsn1Root&) = delete;
    CAsn1Root& operator=(const CAsn1Root&) = delete;

    T& operator*() { return m_object; }
    T* operator->() { return &m_object; }
    const T& operator*() const { return m_object; }
    const T* operator->() const { return &m_object; }
    /// The octets after the element.
    std::span<const unsigned char> Rest() const { return m_rest; }

  private:
    CAsn1Block m_block;
    T m_object{&m_block};
    std::span<const unsigned char> m_rest;
};

// Values of bound members, straight from their octets: nothing is decoded or changed. All accept
// null, for members that are absent.

/// Content octets; empty for null. (An INTEGER: two's complement, most significant first.)
std::span<const unsigned char> OctetsOf(const CAsn1Object* object);

/// The octets of an OCTET STRING, its segments joined when it is constructed (X.690, 8.7.3; in
/// segments at any depth). Throws ca::Exception kErrAsn1Corrupted for segments that cannot be read.
std::vector<unsigned char> OctetStringOf(const CAsn1Object* object);
/// The same of an element of that type, with or without the constructed bit.
std::vector<unsigned char> OctetStringOf(const CAsn1Element& element);

/// A BIT STRING as it stands; bits after the last one are as received, not cleared.
struct CAsn1Bits {
    std::span<const unsigned char> octets;
    unsigned unused = 0;  ///< Bits without a meaning at the end of the last octet, 0 to 7.

    /// Bit 0 is the first: the most significant of the first octet. False beyond the last one.
    bool operator[](std::size_t bit) const;
};

/// Empty for null and for a count of unused bits that cannot be.
CAsn1Bits BitsOf(const CAsn1Object* object);

/// False for null and for an empty content, else whether the first octet is not zero.
bool BooleanOf(const CAsn1Object* object);

/// The value of an INTEGER or ENUMERATED of up to eight octets; `otherwise` for any other.
std::int64_t IntegerOf(const CAsn1Object* object, std::int64_t otherwise);
