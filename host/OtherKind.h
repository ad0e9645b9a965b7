#pragma once

#include "asn1/Asn1Element.h"

#include <string_view>

namespace host {

/// What a file may be that no operation describes.
struct OtherKind {
    std::string_view shape;  ///< its form; what it means is the table's own
    const char* kind;        ///< as "kind" has it
    const char* english;
    const char* russian;
};

/// Judges an object by the label of its PEM block, its content type or the first members of its
/// structure; null when it is nothing that is known. Reads no further.
const OtherKind* FindOtherKind(std::string_view label, const CAsn1Element& root);

}  // namespace host
