#pragma once

#include "asn1/Asn1Typed.h"

#include <cstddef>
#include <utility>

// How a typed class is declared: its name, its tag and its members, each once. What a member is
// called in texts is its name in the ASN.1 definition, which stands above the class.
//
//     // Validity ::= SEQUENCE { notBefore Time, notAfter Time }     RFC 5280, 4.1.2.5
//     class CAsn1Validity : public CAsn1TypedObject {
//         CA_ASN1_SEQUENCE("Validity");
//         CA_ASN1_REQUIRED(CAsn1Time, NotBefore, "notBefore");
//         CA_ASN1_REQUIRED(CAsn1Time, NotAfter, "notAfter");
//         CA_ASN1_END;
//     };
//
// and in its .cpp, below #include "asn1/FieldReader.h":
//
//     CA_ASN1_DECODE(CAsn1Validity)
//
// Each member line gives the class an accessor: NotBefore() returns a pointer that is null where
// the member is absent or cannot be read, and that the object owns. Members are read in the order
// of their lines. A CHOICE accepts the elements that its alternatives take, and one of these is not
// null after Decode() has not thrown.
//
// The line numbers tell the members of a class apart.

/// Takes the elements of [index] IMPLICIT T.
template <class T>
struct Asn1ImplicitTag {
    unsigned index;
    constexpr bool operator()(unsigned char tag) const {
        return Asn1TypeOf<T>::AcceptsAs(static_cast<unsigned char>(kAsn1ContextBit | index), tag);
    }
};

/// Takes the elements of [index] EXPLICIT.
struct Asn1ExplicitTag {
    unsigned index;
    constexpr bool operator()(unsigned char tag) const {
        return tag == (kAsn1ContextBit | kAsn1ConstructedBit | index);
    }
};

struct Asn1NoMember {};
template <int line>
struct Asn1Line : Asn1NoMember {};

class CFieldReader;
class CChoiceReader;

// For lists of lines: what stands on one that is not a member.
#define CA_ASN1_TYPE_PARTS(name, reader)                                     \
  public:                                                                    \
    using CAsn1TypedObject::CAsn1TypedObject;                                \
    static constexpr const char* kName = name;                               \
    void Decode() override;                                                  \
                                                                             \
  private:                                                                   \
    using Reader = reader;                                                   \
    static constexpr int kFirstLine = __LINE__;                              \
    template <class Fields>                                                  \
    void ReadMember(Asn1NoMember, Fields&) {}                                \
    template <class Fields, int... lines>                                    \
    void ReadMembers(Fields& fields, std::integer_sequence<int, lines...>) { \
        (ReadMember(Asn1Line<kFirstLine + lines>{}, fields), ...);           \
        fields.End();                                                        \
    }                                                                        \
    static_assert(true)

/// A type of any tag.
#define CA_ASN1_TYPE(name, tag)             \
    CA_ASN1_TYPE_PARTS(name, CFieldReader); \
                                            \
  public:                                   \
    static constexpr unsigned char kTag = tag

#define CA_ASN1_SEQUENCE(name) CA_ASN1_TYPE(name, kAsn1Sequence)

#define CA_ASN1_CHOICE(name)                                                                    \
    CA_ASN1_TYPE_PARTS(name, CChoiceReader);                                                    \
                                                                                                \
  public:                                                                                       \
    static constexpr bool Accepts(unsigned char tag) {                                          \
        return AcceptsAny(tag, std::make_integer_sequence<int, kLastLine - kFirstLine>());      \
    }                                                                                           \
                                                                                                \
  private:                                                                                      \
    static constexpr bool AcceptsAlternative(Asn1NoMember, unsigned char) {                     \
        return false;                                                                           \
    }                                                                                           \
    template <int... lines>                                                                     \
    static constexpr bool AcceptsAny(unsigned char tag, std::integer_sequence<int, lines...>) { \
        return (AcceptsAlternative(Asn1Line<kFirstLine + lines>{}, tag) || ...);                \
    }                                                                                           \
    static_assert(true)

#define CA_ASN1_END static constexpr int kLastLine = __LINE__

#define CA_ASN1_MEMBER(value, accessor, initial, read)    \
  public:                                                 \
    value accessor() const {                              \
        return m_##accessor;                              \
    }                                                     \
                                                          \
  private:                                                \
    template <class Fields>                               \
    void ReadMember(Asn1Line<__LINE__>, Fields& fields) { \
        m_##accessor = fields.read;                       \
    }                                                     \
    value m_##accessor = initial

#define CA_ASN1_REQUIRED(type, accessor, name) \
    CA_ASN1_MEMBER(type*, accessor, nullptr, template Required<type>(name))
#define CA_ASN1_OPTIONAL(type, accessor, name) \
    CA_ASN1_MEMBER(type*, accessor, nullptr, template Optional<type>(name))
/// BOOLEAN DEFAULT: the accessor returns a value.
#define CA_ASN1_DEFAULT(accessor, name, value) \
    CA_ASN1_MEMBER(bool, accessor, false, Default(name, value))

/// [index] IMPLICIT
#define CA_ASN1_REQUIRED_IMPLICIT(index, type, accessor, name) \
    CA_ASN1_MEMBER(type*, accessor, nullptr, template RequiredImplicit<type>(index, name))
#define CA_ASN1_OPTIONAL_IMPLICIT(index, type, accessor, name) \
    CA_ASN1_MEMBER(type*, accessor, nullptr, template OptionalImplicit<type>(index, name))
#define CA_ASN1_DEFAULT_IMPLICIT(index, accessor, name, value) \
    CA_ASN1_MEMBER(bool, accessor, false, DefaultImplicit(index, name, value))

/// [index] EXPLICIT
#define CA_ASN1_REQUIRED_EXPLICIT(index, type, accessor, name) \
    CA_ASN1_MEMBER(type*, accessor, nullptr, template RequiredExplicit<type>(index, name))
#define CA_ASN1_OPTIONAL_EXPLICIT(index, type, accessor, name) \
    CA_ASN1_MEMBER(type*, accessor, nullptr, template OptionalExplicit<type>(index, name))

// The alternatives of a CHOICE.
#define CA_ASN1_TAKES(...)                                                            \
    static constexpr bool AcceptsAlternative(Asn1Line<__LINE__>, unsigned char tag) { \
        return __VA_ARGS__(tag);                                                      \
    }                                                                                 \
    static_assert(true)

#define CA_ASN1_ALTERNATIVE(type, accessor, name)                               \
    CA_ASN1_MEMBER(type*, accessor, nullptr, template Alternative<type>(name)); \
    CA_ASN1_TAKES(Asn1TypeOf<type>::Accepts)
#define CA_ASN1_ALTERNATIVE_IMPLICIT(index, type, accessor, name)                   \
    CA_ASN1_MEMBER(type*, accessor, nullptr, template Implicit<type>(index, name)); \
    CA_ASN1_TAKES(Asn1ImplicitTag<type>{index})
#define CA_ASN1_ALTERNATIVE_EXPLICIT(index, type, accessor, name)                   \
    CA_ASN1_MEMBER(type*, accessor, nullptr, template Explicit<type>(index, name)); \
    CA_ASN1_TAKES(Asn1ExplicitTag{index})

/// The definition of Decode().
#define CA_ASN1_DECODE(type)                                                            \
    void type::Decode() {                                                               \
        Reader fields(*this);                                                           \
        ReadMembers(fields, std::make_integer_sequence<int, kLastLine - kFirstLine>()); \
    }
