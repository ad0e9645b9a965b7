#pragma once

#include "records/SignInfo.h"
#include "records/fill/SignatureJudge.h"

#include <cstddef>
#include <optional>
#include <span>

namespace ca {

/// Signatures that are described of one message, countersignatures included.
inline constexpr std::size_t kMaxSignatures = 10000;
/// Countersignatures nested in one another that are described.
inline constexpr unsigned kMaxCountersigned = 16;

/// The SignedData (RFC 5652, 5.1, RFC 2315, 9.1) in one object: a ContentInfo's, that of the token
/// in a time-stamp response which grants one (RFC 3161, 2.4.2), or the object itself. A view; empty
/// when there is none.
std::span<const unsigned char> FindSignedData(std::span<const unsigned char> object);

/// Describes the signatures of a message, in order; countersignatures are nested. Nothing is
/// verified, and the results say so.
///
/// SignInfo has no place for faults of its own: they are in "Error" of its "SignCert", those of the
/// message in that of the first signature. A signer that cannot be read has a record all the same.
/// Costs are linear in the octets but for the certificate that many signatures name: it is
/// described again only as far as that adds a few times the message. What there is no room for
/// (CAnswerBudget) is counted in "Error" of the first.
/// \param object      what may hold a message, see FindSignedData(); kept as it is. Offsets in
///                    texts count from its first octet.
/// \param signatures  gets the signatures, at most kMaxSignatures with all that is nested. Those
///                    after the first one of all are kept as text.
/// \param judge       is asked for each signature, those on others too; null: none is.
/// \return whether the message encloses its content, be it empty; none for no signed data.
std::optional<bool> FillSignInfos(std::span<const unsigned char> object, SignInfos& signatures,
                                  ISignatureJudge* judge = nullptr);

/// Describes one signature of a message, as FillSignInfos() does among the others.
/// \param signer  its SignerInfo as encoded, inside `object`; that of a countersignature too.
/// \param record  a fresh one.
/// \return false for no signed data.
bool FillSignInfo(std::span<const unsigned char> object, std::span<const unsigned char> signer,
                  SignInfo& record);

}  // namespace ca
