#pragma once

#include "asn1/Asn1Block.h"
#include "asn1/TagNames.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace ca {

/// The value of a primitive block as people read it, texts in quotes and with the characters they
/// have, hidden ones too: the caller makes them visible. "" for NULL and a constructed block.
/// Numbers are signed, times ISO 8601, identifiers dotted with their name in the current language;
/// octets are hexadecimal. The buffer is not changed. \param longest  characters that are wanted:
/// of long contents only a beginning is looked at.
std::wstring BlockText(const CAsn1Block& block, std::size_t longest);

/// Octets of identifier and length as they stand in the file; 0 for a block cut before its length.
std::size_t HeaderLength(const CAsn1Block& block);

/// Content octets as the file announces them (a parsed block's own length is that of the shortest
/// encoding); nothing for the indefinite form. Of more than 4 length octets the last 4 count.
std::optional<std::uint32_t> AnnouncedLength(const CAsn1Block& block);

/// The octets of a block as they stand in the file.
std::span<const unsigned char> FileOctets(const CAsn1Block& block);

}  // namespace ca
