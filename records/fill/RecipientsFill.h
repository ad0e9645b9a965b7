#pragma once

#include "records/CertInfo.h"
#include "records/StringArray.h"

#include <cstddef>
#include <memory>
#include <span>

namespace ca {

/// Who can read an enveloped message.
struct Recipients {
    CertInfos2 records;                  ///< one for each recipient, in order
    StringArray ids{kTypeCertificates};  ///< of those that name a certificate or a key
};

/// The content of an enveloped message inside its ContentInfo: EnvelopedData, AuthenticatedData
/// (RFC 5652, 6, 9), AuthEnvelopedData (RFC 5083), SignedAndEnvelopedData (RFC 2315, 11).
/// \return empty for everything else.
std::span<const unsigned char> FindEnvelope(std::span<const unsigned char> contentInfo);

/// Describes the recipients of an enveloped message, all kinds of RFC 5652, 6.2 and RFC 9629; each
/// recipient of an agreed key is one of its own.
///
/// The message says of a certificate only what finds it: "Issuer" and "Serial", or the key
/// identifier in "Serial" and, with its caption, in "Description". "PublicKeyAlg" is the algorithm
/// of the key's encryption, "PublicKeyParams" what its parameters say. "Id" is the SHA-1 of the
/// recipient's identifier as received; empty for one that has none (a password, an empty name).
/// What cannot be read is said in "Error" and never hides the rest; how many there was no room for
/// (CAnswerBudget) is said in that of the first. Cost is linear.
/// \param envelope  what FindEnvelope() found.
/// Throws ca::Exception 16306 when the recipients cannot be found at all, 16253 when none of them
/// is named.
Recipients DescribeRecipients(std::span<const unsigned char> envelope);

/// The record of one of those whom one RecipientInfo names; one who cannot be read has a record,
/// too. \param number  from 0 on. \return null when there are not so many. Cost is linear.
std::unique_ptr<CertInfo2> DescribeRecipient(std::span<const unsigned char> info,
                                             std::size_t number);
/// How many one RecipientInfo names. Cost is linear.
std::size_t CountRecipients(std::span<const unsigned char> info);
/// The RecipientInfos of what FindEnvelope() found, one after the other; empty for none.
std::span<const unsigned char> RecipientInfosOf(std::span<const unsigned char> envelope);

}  // namespace ca
