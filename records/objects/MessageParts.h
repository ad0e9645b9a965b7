#pragma once

#include "asn1/cms/ContentInfo.h"
#include "records/objects/Reading.h"

#include <optional>
#include <span>

// Parts of messages that several describers read.

namespace ca {

/// What a ContentInfo holds (RFC 5652, 3).
class CMessage {
  public:
    CMessage(std::span<const unsigned char> contentInfo, CDescriptionBuilder& builder)
        : m_message(contentInfo, builder) {}

    const CAsn1ObjectIdentifier* Type() const {
        return Of(m_message.Get(), &CAsn1ContentInfo::ContentType);
    }
    /// The element; empty when it is elsewhere.
    std::span<const unsigned char> Content() const {
        const CAsn1Any* content = Of(m_message.Get(), &CAsn1ContentInfo::Content);
        return content != nullptr ? content->Raw() : std::span<const unsigned char>();
    }

  private:
    CReading<CAsn1ContentInfo> m_message;
};

/// The content of a message: its type and, as far as it is enclosed, its size and what it holds: a
/// trust list and a time stamp with their fields, other objects that are known with a description
/// of their own.
void SayEncapsulated(CDescriptionBuilder& builder, const CAsn1EncapsulatedContentInfo* content);

/// What a time stamp states (RFC 3161, 2.4.2).
void SayTimeStampInfo(CDescriptionBuilder& builder, std::span<const unsigned char> octets);

/// What a trust list is about; its entries are counted.
void SayTrustListFields(CDescriptionBuilder& builder, std::span<const unsigned char> octets);

}  // namespace ca
