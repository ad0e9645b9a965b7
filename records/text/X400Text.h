#pragma once

#include "asn1/x400/OrAddress.h"
#include "records/text/TextLines.h"

namespace ca {

/// Says an address of X.400 (RFC 5280, A.1), an attribute a line under the labels of ITU-T F.401
/// annex B: "C: RU", "A: 400net", "S: Ivanov", "DDA:type: value". What could not be read of it is
/// left out.
void SayOrAddress(const CAsn1OrAddress& address, CTextLines& lines);

}  // namespace ca
