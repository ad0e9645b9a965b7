#pragma once

#include "records/CrlInfo.h"
#include "records/text/VisibleText.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace ca {

class InitString;

/// Which entries of a list are described; all are counted.
struct CrlPage {
    std::size_t first = 0;           ///< index of the first one
    std::size_t count = kMaxListed;  ///< how many from there on
    /// Describe the entries of this serial number instead, however they encode it: the content of
    /// an INTEGER with no octet too many. A list of several issuers may have more than one; `first`
    /// is not looked at then.
    std::optional<std::vector<unsigned char>> serial;
};

/// The page that a call's parameters ask for: CRL_FIRST, CRL_COUNT (decimal), CRL_SERIAL
/// (hexadecimal digits as SerialText() shows them, with "-" in front of a negative number; blanks
/// and colons between them allowed).
/// Throws ca::Exception 16268, with a message that names the item, for a value that is not such a
/// number.
CrlPage ReadCrlPage(const InitString& parameters);

/// The list in one object: the object itself, or the first list that a SignedData carries. A view;
/// empty when there is none.
std::span<const unsigned char> FindCrl(std::span<const unsigned char> object);

/// Describes a certificate revocation list (RFC 5280, 5).
///
/// The record holds a copy of the octets, from which the entries are described when it is written;
/// what is not described costs no memory. What cannot be read leaves its fields empty, or as
/// "Unreadable value: " and digits, and is named in `record.error`; everything else is filled, as
/// far as there is room for it (CAnswerBudget). Cost is linear in the octets.
/// \param der     the list as received; kept as it is. Octets after it are named as a fault.
/// \param record  a fresh one.
/// Throws ca::Exception 16306 for octets that do not look like a list.
void FillCrlInfo(std::span<const unsigned char> der, const CrlPage& page, CrlInfo& record);

}  // namespace ca
