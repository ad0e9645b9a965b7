#pragma once

#include "module/viewer/ItemKinds.h"

// What ItemKinds.cpp has in its rows, by subject. Each describes from the octets of an item; what
// cannot be read is said in the record's "Error" and never hides the rest.

namespace ca {

// Certificates (DescribeCertificates.cpp).
QString CertificateName(const CFileDocument& document, ItemIndex item);
void DescribeCertificate(const CFileDocument& document, ItemIndex item, ItemDescription& out);
std::string CertificateJson(const CFileDocument& document, ItemIndex item);
QString AttributeCertificateName(const CFileDocument& document, ItemIndex item);
void DescribeAttributeCertificate(const CFileDocument& document, ItemIndex item,
                                  ItemDescription& out);
std::string AttributeCertificateJson(const CFileDocument& document, ItemIndex item);

// Revocation lists (DescribeCrls.cpp).
QString CrlName(const CFileDocument& document, ItemIndex item);
void DescribeCrl(const CFileDocument& document, ItemIndex item, ItemDescription& out);
std::string CrlJson(const CFileDocument& document, ItemIndex item);

// Signed messages, time stamps and the signatures of both (DescribeMessages.cpp).
void ReadMessage(CFileReader& reader, ItemIndex item);
void ReadSignature(CFileReader& reader, ItemIndex item);
bool IsMessage(std::span<const unsigned char> octets);
bool IsTimeStamp(std::span<const unsigned char> octets);
/// Whether a message encloses its content.
bool IsAttached(std::span<const unsigned char> octets);
QString MessageName(const CFileDocument& document, ItemIndex item);
QString TimeStampName(const CFileDocument& document, ItemIndex item);
QString SignatureName(const CFileDocument& document, ItemIndex item);
void DescribeMessage(const CFileDocument& document, ItemIndex item, ItemDescription& out);
void DescribeSignature(const CFileDocument& document, ItemIndex item, ItemDescription& out);
std::string MessageJson(const CFileDocument& document, ItemIndex item);
std::string BundleJson(const CFileDocument& document, ItemIndex item);
std::string SignatureJson(const CFileDocument& document, ItemIndex item);

// Enveloped messages and their recipients (DescribeEnvelopes.cpp).
void ReadEnvelope(CFileReader& reader, ItemIndex item);
QString RecipientName(const CFileDocument& document, ItemIndex item);
void DescribeEnvelope(const CFileDocument& document, ItemIndex item, ItemDescription& out);
void DescribeOneRecipient(const CFileDocument& document, ItemIndex item, ItemDescription& out);
std::string EnvelopeJson(const CFileDocument& document, ItemIndex item);
std::string RecipientJson(const CFileDocument& document, ItemIndex item);

// All other kinds of objects (DescribeObjects.cpp).
void ReadOtherObject(CFileReader& reader, ItemIndex item);
void DescribeOther(const CFileDocument& document, ItemIndex item, ItemDescription& out);
std::string OtherJson(const CFileDocument& document, ItemIndex item);

// What they have in common (ItemKinds.cpp).

/// What a record writes of itself.
template <class Record>
std::string BareJson(const Record& record) {
    JsonBuffer buffer;
    JsonWriter writer(buffer);
    record.ToJson(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

/// The same under its key, as answers hold it.
template <class Record>
std::string RecordJson(const char* key, const Record& record) {
    return "{\"" + std::string(key) + "\":" + BareJson(record) + "}";
}

/// A period with what is left of it; true inside of it.
bool SayPeriod(const TimeTexts& from, const TimeTexts& to, ItemDescription& out);
/// A verdict's words; the sign that goes with them.
void SayStatus(std::wstring_view words, std::uint32_t code, bool isInPeriod, ItemDescription& out);
void SayFaults(std::wstring_view error, ItemDescription& out);

}  // namespace ca
