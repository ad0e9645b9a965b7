#pragma once

#include "records/text/ExtensionText.h"
#include "records/text/TextLines.h"

#include <span>
#include <string>

class CAsn1ResponderId;

namespace ca {

/// Who answers for certificates: a readable name, or "Key: hex".
std::wstring ResponderText(const CAsn1ResponderId& responder);

/// Says an OCSPResponse or the BasicOCSPResponse inside one (RFC 6960, 4.2.1): the responder and
/// the time, below them what it says of each certificate, and the extensions.
/// Throws ca::Exception for what is neither.
void SayOcspResponse(std::span<const unsigned char> value, CTextLines& lines);

/// The extensions of requests and responses (RFC 6960, 4.4).
std::span<const ExtensionRow> OcspExtensionRows();

}  // namespace ca
