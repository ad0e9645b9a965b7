#pragma once

#include "asn1/Oid.h"
#include "asn1/views/AlgorithmViews.h"
#include "asn1/views/MessageViews.h"
#include "records/scan/SignerCertificates.h"
#include "records/text/TextLines.h"

#include <string>

class CAsn1Accuracy;
class CAsn1EncapsulatedContentInfo;
class CAsn1IssuerAndSerialNumber;
class CAsn1IssuerSerial;
class CAsn1OctetString;
class CAsn1SignerIdentifier;
class CAsn1SignerInfo;

// Parts that the texts of several attributes of signatures have in common.

namespace ca {

/// The octets of an OCTET STRING, its segments joined, in hexadecimal digits.
std::wstring OctetsText(const CAsn1OctetString* octets);

/// "1.5 s" (RFC 3161, 2.4.2). Parts that do not fit a number count as nothing.
std::wstring AccuracyText(const CAsn1Accuracy& accuracy);

/// "SHA-256: hex"
std::wstring DigestText(const CAsn1AlgorithmView& algorithm, const CAsn1OctetString* digest);
/// The same for an algorithm that is implied.
std::wstring DigestText(COid algorithm, const CAsn1OctetString* digest);

/// "C=RU, CN=Authority, 0a1b": issuer and serial number in a line. What could not be read is added
/// to the faults of `lines`.
std::wstring IssuerSerialText(const CAsn1IssuerSerial& certificate, CTextLines& lines);
std::wstring IssuerSerialText(const CAsn1IssuerAndSerialNumber& certificate);

/// "Certificates: 3"
void SayCount(Sentence label, std::size_t count, CTextLines& lines);

/// What names a signer or a recipient, in a line: IssuerSerialText(), or "Key: hex".
std::wstring SignerIdText(const CAsn1SignerIdentifier& id);

/// Says a signer: its name where its certificate is known to `own` or to the message that the text
/// is about, how it is named in the message, its algorithms and, where it is signed, the time.
/// \param own  the certificates that came with the signature; null for none.
void SaySigner(const CAsn1SignerInfo& signer, CSignerCertificates* own, CTextLines& lines);

/// Says what a time-stamp token stamps (RFC 3161, 2.4.2) when this is its content; false for other
/// content, which says nothing. Throws ca::Exception for one that cannot be read.
bool SayTimeStamp(const CAsn1EncapsulatedContentInfo& content, CTextLines& lines);

/// The token of a TimeStampResp (RFC 3161, 2.4.2) that grants one; without octets for anything
/// else.
CAsn1ContentInfoView GrantedToken(const CAsn1TimeStampRespView& response);

/// Says a signed message that is an attribute's value: a time-stamp token (RFC 3161, 2.4.2) with
/// what it stamps, or what any other message holds; its signers and the count of certificates. It
/// may be wrapped: in the response it came in, in an OCTET STRING, in an explicit tag.
/// Throws ca::Exception for what is not a signed message.
void SaySignedMessage(std::span<const unsigned char> contentInfo, CTextLines& lines);

}  // namespace ca
