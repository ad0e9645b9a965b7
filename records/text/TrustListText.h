#pragma once

#include "records/text/TextLines.h"

#include <span>
#include <vector>

class CAsn1EncapsulatedContentInfo;

namespace ca {

/// The encoding of a message's content, whether an OCTET STRING wraps it (RFC 5652, 5.2) or not
/// (RFC 2315, 9.1); empty when the content is not enclosed. \param joined  gets the octets of a
/// string in segments, which are viewed then.
/// Throws ca::Exception for segments that cannot be read.
std::span<const unsigned char> ContentEncoding(const CAsn1EncapsulatedContentInfo& content,
                                               std::vector<unsigned char>& joined);

/// Says what a certificate trust list or a catalogue is about when this is its content: what it is
/// for, its identifier and times, how many entries it has. The entries are not said. False for
/// other content, which says nothing. Throws ca::Exception for one that cannot be read.
bool SayTrustList(const CAsn1EncapsulatedContentInfo& content, CTextLines& lines);

}  // namespace ca
