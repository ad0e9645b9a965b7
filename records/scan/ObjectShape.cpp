#include "records/scan/ObjectShape.h"

#include "asn1/Asn1Tags.h"
#include "asn1/Charset.h"
#include "asn1/Elements.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace {

// Elements of an object that was cut off which must match, before the shape says anything.
constexpr unsigned kLeastOfCut = 6;

// Letters of a shape, beside those that stand for more than one tag.
constexpr std::pair<char, unsigned char> kTags[] = {
    {'S', kAsn1Sequence},         {'T', kAsn1Set},
    {'I', kAsn1Integer},          {'L', kAsn1Boolean},
    {'B', kAsn1BitString},        {'N', kAsn1Null},
    {'E', kAsn1Enumerated},       {'G', kAsn1GeneralizedTime},
    {'O', kAsn1ObjectIdentifier},
};

bool IsOfLetter(const CAsn1Element& element, char letter) {
    if (letter >= '0' && letter <= '9') {
        return element.tag == ca::ContextConstructed(static_cast<unsigned>(letter - '0'));
    }
    if (letter >= 'a' && letter <= 'j') {
        return element.tag == ca::ContextTag(static_cast<unsigned>(letter - 'a'));
    }
    switch (letter) {
        case '.':
            return true;
        case 'F':
            return ca::IsText(element);
        case 't':
            return element.tag == kAsn1UtcTime || element.tag == kAsn1GeneralizedTime;
        case 'X':
            return element.tag == kAsn1OctetString || element.tag == kAsn1ConstructedOctetString;
        default:
            break;
    }
    for (const auto& [known, tag] : kTags) {
        if (known == letter) {
            return element.tag == tag;
        }
    }
    return false;
}

// One element of a shape.
struct ShapePart {
    char letter = 0;
    std::string_view members;  // their shapes, from the brackets after it
    char count = 0;            // '?', '*'
};

// Takes the first part of a shape, which has one.
ShapePart TakePart(std::string_view& shape) {
    ShapePart part;
    part.letter = shape.front();
    shape.remove_prefix(1);
    if (shape.starts_with('(')) {
        std::size_t at = 1;
        // Up to its own closing bracket: members have brackets, too.
        for (std::size_t open = 1; at < shape.size(); ++at) {
            open += shape[at] == '(' ? 1U : 0U;
            open -= shape[at] == ')' ? 1U : 0U;
            if (open == 0) {
                break;
            }
        }
        part.members = shape.substr(1, at - 1);
        shape.remove_prefix(std::min(at + 1, shape.size()));
    }
    if (shape.starts_with('?') || shape.starts_with('*')) {
        part.count = shape.front();
        shape.remove_prefix(1);
    }
    return part;
}

class ShapeMatch {
  public:
    explicit ShapeMatch(const unsigned char* cutAt) : m_cutAt(cutAt) {}

    bool Element(const CAsn1Element& element, const ShapePart& part) {
        if (!IsOfLetter(element, part.letter)) {
            return false;
        }
        ++m_matched;
        return part.members.empty() || (element.IsConstructed() && Members(element, part.members));
    }

  private:
    bool Members(const CAsn1Element& parent, std::string_view shape) {
        CAsn1Cursor cursor(parent.content);
        while (!shape.empty()) {
            if (IsCutAt(cursor)) {  // what may be missing is not known to be
                return m_matched >= kLeastOfCut;
            }
            // "$": no member may follow.
            if (shape == "$") {
                return cursor.AtEnd();
            }
            if (!Part(cursor, TakePart(shape))) {
                return false;
            }
        }
        return true;
    }

    bool Part(CAsn1Cursor& cursor, const ShapePart& part) {
        for (;;) {
            // On a copy: an optional member that does not match leaves its element to the next
            // part.
            CAsn1Cursor ahead = cursor;
            CAsn1Element element;
            const bool isThere = !ahead.AtEnd() && ahead.Next(element) == Asn1Fault::kNone &&
                                 IsOfLetter(element, part.letter);
            if (!isThere || !Element(element, part)) {
                return !isThere && part.count != 0;
            }
            cursor = ahead;
            if (part.count != '*') {
                return true;
            }
        }
    }

    // A mended object has end-of-contents at most after the place where it was cut.
    bool IsCutAt(const CAsn1Cursor& cursor) const {
        return m_cutAt != nullptr && cursor.AtEnd() && cursor.Rest().data() >= m_cutAt;
    }

    const unsigned char* m_cutAt;
    unsigned m_matched = 0;
};

}  // namespace

namespace ca {

bool HasShape(const CAsn1Element& object, std::string_view shape, const unsigned char* cutAt) {
    return ShapeMatch(cutAt).Element(object, TakePart(shape));
}

}  // namespace ca
