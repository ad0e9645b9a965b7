#include "records/objects/ObjectKinds.h"

#include "asn1/Elements.h"
#include "asn1/TruncatedObject.h"
#include "common/DecimalText.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "records/AnswerBudget.h"
#include "records/objects/Describers.h"
#include "records/scan/ObjectShape.h"
#include "records/scan/ObjectTests.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

namespace ca {

namespace {

using Content = CContentTypes;

constexpr ObjectKind kKinds[] = {
#define CA_KIND(name, english, russian, labels, contentTypes, shapes, test, reader, describe) \
    {name, english, russian, labels, contentTypes, shapes, test, ObjectReader::reader, describe},
#include "records/objects/ObjectKindTable.inc"
#undef CA_KIND
};

// Takes the next item of a list with "|" between.
std::string_view TakeItem(std::string_view& list) {
    const std::size_t end = std::min(list.find('|'), list.size());
    const std::string_view item = list.substr(0, end);
    list.remove_prefix(std::min(end + 1, list.size()));
    return item;
}

bool HasItem(std::string_view list, std::string_view item) {
    while (!list.empty()) {
        if (TakeItem(list) == item) {
            return true;
        }
    }
    return false;
}

// An object that is looked at.
struct Candidate {
    CAsn1Element root;
    const unsigned char* cutAt = nullptr;
};

bool HasAnyShape(const Candidate& object, std::string_view shapes) {
    while (!shapes.empty()) {
        if (HasShape(object.root, TakeItem(shapes), object.cutAt)) {
            return true;
        }
    }
    return false;
}

bool Passes(const ObjectKind& kind, const Candidate& object) {
    return kind.test == nullptr || kind.test(object.root, object.cutAt);
}

// A label says what a shape that several kinds have is meant to be.
bool Fits(const ObjectKind& kind, const Candidate& object, bool isLabelled) {
    // A kind without shapes is known by its test alone.
    if (kind.shapes.empty()) {
        return kind.test != nullptr && Passes(kind, object);
    }
    // With a label the test is not asked: it tells look-alikes apart, which the label has done.
    return HasAnyShape(object, kind.shapes) && (isLabelled || Passes(kind, object));
}

const ObjectKind* FindByLabel(std::string_view label) {
    const auto* const found = std::ranges::find_if(kKinds, [&](const ObjectKind& kind) {
        return !label.empty() && HasItem(kind.labels, label);
    });
    return found != std::end(kKinds) ? found : nullptr;
}

const ObjectKind* FindByContent(const Candidate& object) {
    const OidInfo* const type = ContentTypeOf(object.root);
    // The first row wins: kinds of one content type stand in the order in which they are tested.
    const auto* const found = std::ranges::find_if(kKinds, [&](const ObjectKind& kind) {
        return kind.contentTypes.Has(type) && Passes(kind, object);
    });
    return found != std::end(kKinds) ? found : nullptr;
}

// A trust list without its own identifier and length: what the signature of a PKCS #7 message is
// made over (RFC 2315, 9.3), and what programs save as the content of one.
const ObjectKind* FindByMembers(std::span<const unsigned char> octets) {
    const ObjectKind* const list = FindObjectKind("trustList");
    const CAsn1Element whole{kAsn1Sequence, /*indefinite=*/false, octets, octets};
    return HasShape(whole, list->shapes) ? list : nullptr;
}

// RFC 1421, 4.6.1.1: what is in such a block is nobody's to read.
bool IsEncryptedPem(const ObjectSource& source) {
    return source.label.ends_with("PRIVATE KEY") &&
           source.headers.find("ENCRYPTED") != std::string_view::npos;
}

}  // namespace

const wchar_t* ObjectKind::Name() const noexcept {
    return IsRussian() ? russian : english;
}

std::span<const ObjectKind> AllObjectKinds() noexcept {
    return kKinds;
}

const ObjectKind* FindObjectKind(std::string_view name) noexcept {
    const auto* const found =
        std::ranges::find_if(kKinds, [&](const ObjectKind& kind) { return name == kind.name; });
    return found != std::end(kKinds) ? found : nullptr;
}

const ObjectKind* RecogniseObject(const ObjectSource& source) {
    if (IsEncryptedPem(source)) {
        return FindObjectKind("encryptedPrivateKey");
    }
    auto cut = MendTruncated(source.octets);
    Candidate object;
    object.root = FirstElement(cut ? std::span(cut->octets) : source.octets);
    object.cutAt = cut ? cut->octets.data() + cut->end : nullptr;
    const ObjectKind* const labelled = FindByLabel(source.label);
    if (object.root.raw.empty()) {
        // Octets that are not an element: only the label says what they are meant to be.
        return labelled;
    }
    // Messages are told by their content type, whatever their label says: CMS, PKCS7 and
    // CERTIFICATE are mixed up.
    if (labelled != nullptr && labelled->contentTypes.IsEmpty() &&
        Fits(*labelled, object, /*isLabelled=*/true)) {
        return labelled;
    }
    if (const ObjectKind* message = FindByContent(object)) {
        return message;
    }
    for (const ObjectKind& kind : kKinds) {
        if (Fits(kind, object, /*isLabelled=*/false)) {
            return &kind;
        }
    }
    // A label that fits nothing is believed after all: the description tells the faults.
    return labelled != nullptr ? labelled : FindByMembers(source.octets);
}

ObjectDescription DescribeObject(const ObjectKind& kind, const ObjectSource& source) {
    const CAnswerBudget budget(
        CAnswerBudget::Rest{kDescriptionAlways + kDescriptionPerOctet * source.octets.size()});
    CDescriptionBuilder builder(source.octets);
    ObjectSource object = source;
    // What follows the object is told at the end, not described.
    const std::span<const unsigned char> element = FirstElement(source.octets).raw;
    // A list of bare members is more than its first element.
    if (!element.empty() && FindByMembers(source.octets) != &kind) {
        object.octets = element;
    }
    if (kind.describe != nullptr) {
        try {
            kind.describe(object, builder);
        } catch (const Exception& fault) {  // of a part that is only ever read as a whole
            builder.Fault(fault.message);
        }
    }
    if (object.octets.size() < source.octets.size()) {
        builder.Fault(WordText(Word::kBehindObject) +
                      ca::DecimalText(source.octets.size() - object.octets.size()));
    }
    return builder.Take(kind);
}

}  // namespace ca
