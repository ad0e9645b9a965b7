#include "host/FileGuess.h"

#include "asn1/Asn1Element.h"
#include "host/ModeTable.h"
#include "records/Payload.h"
#include "records/text/Elements.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace {

using ca::AsText;
using ca::Child;
using host::Description;

struct DescriptionRow {
    Description description;
    std::string_view operation;
};

// In the order that suits a file of which nothing is known.
constexpr DescriptionRow kDescriptions[] = {
    {Description::kCertificate, "GetCertInfo"},
    {Description::kCrl, "GetCRL"},
    {Description::kSignature, "GetSignInfo"},
    {Description::kEnvelope, "GetRecipientsList"},
};

struct TypeRow {
    std::string_view type;
    Description description;
};

// Words of PEM labels (RFC 7468), and content types (RFC 5652, RFC 5083) as encoded.
constexpr TypeRow kLabels[] = {
    {"CRL", Description::kCrl},
    {"PKCS7", Description::kSignature},
    {"PKCS #7", Description::kSignature},
    {"CMS", Description::kSignature},
};
constexpr TypeRow kContentTypes[] = {
    {"\x2a\x86\x48\x86\xf7\x0d\x01\x07\x02", Description::kSignature},
    {"\x2a\x86\x48\x86\xf7\x0d\x01\x07\x03", Description::kEnvelope},
    {"\x2a\x86\x48\x86\xf7\x0d\x01\x09\x10\x01\x02", Description::kEnvelope},
    {"\x2a\x86\x48\x86\xf7\x0d\x01\x09\x10\x01\x17", Description::kEnvelope},
};

constexpr std::size_t kMembersLookedAt = 4;

// Identifier octets of the first members.
std::string TagsOf(const CAsn1Element& parent) {
    std::string tags;
    CAsn1Cursor cursor(parent.IsConstructed() ? parent.content : std::span<unsigned char>());
    CAsn1Element member;
    while (!cursor.AtEnd() && tags.size() < kMembersLookedAt &&
           cursor.Next(member) == Asn1Fault::kNone) {
        tags += static_cast<char>(member.tag);
    }
    return tags;
}

// Signed data without signers carry certificates and lists only (RFC 5652 5.1).
bool HasSigners(const CAsn1Element& contentInfo) {
    const CAsn1Element signedData = Child(Child(contentInfo, 1), 0);
    CAsn1Cursor cursor(signedData.content);
    CAsn1Element member;
    while (!cursor.AtEnd() && cursor.Next(member) == Asn1Fault::kNone) {
    }
    return member.tag != kAsn1Set || !member.content.empty();
}

std::optional<Description> GuessMessage(const CAsn1Element& contentInfo) {
    const std::string_view type =
        AsText(ca::ContentIf(Child(contentInfo, 0), kAsn1ObjectIdentifier));
    for (const TypeRow& row : kContentTypes) {
        if (row.type == type) {
            const bool isBundle =
                row.description == Description::kSignature && !HasSigners(contentInfo);
            return isBundle ? Description::kCertificate : row.description;
        }
    }
    return std::nullopt;
}

// A list is the one signed object with a time behind algorithm and name (RFC 5280 5.1).
bool LooksLikeCrl(const CAsn1Element& signedObject) {
    std::string tags = TagsOf(Child(signedObject, 0));
    if (tags.starts_with('\x02')) {
        tags.erase(0, 1);
    }
    return tags.starts_with("\x30\x30\x17") || tags.starts_with("\x30\x30\x18");
}

std::optional<Description> GuessLabel(std::string_view label) {
    for (const TypeRow& row : kLabels) {
        if (label.find(row.type) != std::string_view::npos) {
            return row.description;
        }
    }
    return std::nullopt;
}

}  // namespace

namespace host {

std::uint32_t ModeOf(Description description) {
    const auto* const row =
        std::ranges::find(kDescriptions, description, &DescriptionRow::description);
    return FindMode(std::string(row->operation)).value();
}

FileGuess GuessFile(std::string& content) {
    FileGuess guess;
    const std::vector<ca::PayloadItem> items =
        ca::DecodePayload({reinterpret_cast<unsigned char*>(content.data()), content.size()});
    std::optional<Description> first;
    if (!items.empty()) {
        const CAsn1Element root = ca::FirstElement(items[0].octets);
        first = GuessMessage(root);
        if (!first && LooksLikeCrl(root)) {
            first = Description::kCrl;
        }
        if (!first) {
            first = GuessMessage(Child(root, 1));  // the token of a time-stamp response
        }
        if (!first) {
            first = GuessLabel(items[0].label);
        }
        guess.other = FindOtherKind(items[0].label, root);
    }
    std::ranges::transform(kDescriptions, std::back_inserter(guess.order),
                           &DescriptionRow::description);
    if (first) {
        std::stable_partition(guess.order.begin(), guess.order.end(),
                              [&first](Description each) { return each == *first; });
    }
    return guess;
}

}  // namespace host
