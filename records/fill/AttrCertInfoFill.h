#pragma once

#include "records/AttrCertInfo.h"

#include <span>

namespace ca {

/// Describes an attribute certificate, version 2 (RFC 5755, 4) or 1 (RFC 5652, 10.2.7, X.509-1997).
///
/// What cannot be read leaves its fields empty, or as "Unreadable value: " and digits, and is named
/// in `record.error`; everything else is filled, as far as there is room for it (CAnswerBudget).
/// Cost is linear in the octets.
/// \param der     one element, as received; never changed. Octets after it are named as a fault.
/// \param record  a fresh one; owns all it gets.
/// Throws only std::bad_alloc.
void FillAttrCertInfo(std::span<const unsigned char> der, AttrCertInfo& record);

}  // namespace ca
