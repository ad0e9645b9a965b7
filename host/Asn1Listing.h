#pragma once

#include "asn1/CryptAsn1Parser.h"

#include <cstddef>
#include <cstdio>

namespace host {

/// Writes the tree below `root` for people, one block a line: offset from `base`, header and
/// content length as the file has them, then, indented by depth up to a bound, tag and value. Below
/// an OCTET or BIT STRING stands what is encoded in it.
/// \param base    the first octet of what was parsed
/// \param width   columns of a line; what is longer is cut
/// Time is proportional to the octets, memory to the depth. Throws what Put() throws.
void ListAsn1(const CAsn1Block& root, const unsigned char* base, std::size_t width,
              std::FILE* stream);

}  // namespace host
