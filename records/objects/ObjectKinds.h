#pragma once

#include "asn1/Asn1Element.h"
#include "asn1/Oid.h"
#include "records/Payload.h"
#include "records/objects/ObjectDescription.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>
#include <vector>

// Which kinds of objects there are, how they are told from each other and who describes them: one
// table for whoever opens files.

namespace ca {

class CDescriptionBuilder;

/// One object as it came: its octets and, of a PEM block, the label and the headers.
struct ObjectSource {
    std::string_view label;
    std::string_view headers;
    std::span<const unsigned char> octets;
};

/// Who describes an object.
enum class ObjectReader : std::uint8_t {
    kNone,         ///< Nobody: its kind can be named, nothing more.
    kDescription,  ///< DescribeObject()
    // Operations of the protocol, and the records that they are made of.
    kCertificates,  ///< Certificates and attribute certificates.
    kCrl,
    kSignatures,
    kRecipients,
};

/// What is special about an object whose shape is that of several kinds.
/// \param cutAt  as HasShape() has it.
using ObjectTest = bool (*)(const CAsn1Element& object, const unsigned char* cutAt);

/// The types of content that make a ContentInfo an object of a kind.
class CContentTypes {
  public:
    template <class... Names>
    explicit consteval CContentTypes(const Names&... shortNames) : m_types{COid(shortNames)...} {}

    /// False for null.
    bool Has(const OidInfo* type) const {
        return type != nullptr && std::ranges::find(m_types, type) != std::end(m_types);
    }
    bool IsEmpty() const { return m_types[0] == nullptr; }

  private:
    const OidInfo* m_types[4] = {};
};

/// One row of the table.
struct ObjectKind {
    const char* name;  ///< for programs: "ocspResponse"
    const wchar_t* english;
    const wchar_t* russian;
    std::string_view labels;     ///< PEM labels (RFC 7468), "|" between
    CContentTypes contentTypes;  ///< of a ContentInfo
    std::string_view shapes;     ///< as HasShape() has them, "|" between
    ObjectTest test;             ///< null: the shape is enough
    ObjectReader reader;
    void (*describe)(const ObjectSource& source, CDescriptionBuilder& builder);

    /// Its name in the current language.
    const wchar_t* Name() const noexcept;
};

/// The table, in the order in which an object is tried.
std::span<const ObjectKind> AllObjectKinds() noexcept;
/// Null for a name that no kind has.
const ObjectKind* FindObjectKind(std::string_view name) noexcept;

/// Finds the kind of an object by what is in it; its label decides between kinds of one shape, and
/// for octets of no kind. Of an object that ends too early the beginning is enough.
/// Null for nothing that is known. Looks at the first elements only; cost is linear at worst.
const ObjectKind* RecogniseObject(const ObjectSource& source);

/// The same for one of several objects.
inline ObjectSource SourceOf(const PayloadItem& item) {
    return {item.label, item.headers, item.octets};
}

/// Describes an object of a kind whose reader is kDescription. Reads on after every fault; what is
/// secret (private keys, passwords) is never shown. Words are in the current language.
/// \param source  views that outlive the call only.
/// Throws only std::bad_alloc. Cost is linear in the octets.
ObjectDescription DescribeObject(const ObjectKind& kind, const ObjectSource& source);

}  // namespace ca
