#pragma once

#include "asn1/Asn1Element.h"

#include <string_view>

namespace ca {

/// How an object begins, as a text: a letter an element, after it in parentheses how its own
/// members begin.
///
///     S SEQUENCE     T SET              I INTEGER       L BOOLEAN      E ENUMERATED
///     B BIT STRING   X OCTET STRING     N NULL          O OBJECT IDENTIFIER
///     G GeneralizedTime   t either time      F a string of characters     . anything
///     0 to 9  [0] to [9], constructed        a to j  [0] to [9], primitive
///     ? after an element: it may be missing; * any number of them; $ no further member
///
/// "S(IX0?1?$)" is an ECPrivateKey. Parentheses that the text leaves open need not be closed: what
/// follows the last letter is not looked at.
///
/// \param cutAt  where the octets of an object end that are cut; null for a whole one. What would
///        stand after that place matches when at least six elements in front of it did.
/// No recursion but on the depth of the shape; cost is linear in the elements it names.
bool HasShape(const CAsn1Element& object, std::string_view shape,
              const unsigned char* cutAt = nullptr);

}  // namespace ca
