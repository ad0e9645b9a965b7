#include "records/fill/RecipientsFill.h"

#include "asn1/Elements.h"
#include "asn1/Oid.h"
#include "asn1/cms/RecipientInfo.h"
#include "asn1/views/AlgorithmViews.h"
#include "asn1/views/MessageViews.h"
#include "common/DecimalText.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/sha1.h"
#include "records/AnswerBudget.h"
#include "records/fill/CertInfoFill.h"
#include "records/fill/ValidityText.h"
#include "records/text/AlgorithmText.h"
#include "records/text/Decoded.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"
#include "records/text/OutlineText.h"
#include "records/text/ParametersText.h"
#include "records/text/SharedFormatters.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace {

using ca::CertInfo2;
using ca::Octets;

// Messages that have RecipientInfos (RFC 5652, 6.1 and 9.1; RFC 5083; PKCS #7).
constexpr ca::COid kEnvelopes[] = {"id-envelopedData", "id-ct-authEnvelopedData", "id-ct-authData",
                                   "signedAndEnvelopedData"};

bool IsAllZero(Octets octets) {
    return std::ranges::all_of(octets, [](unsigned char octet) { return octet == 0; });
}

// Collects the recipients, one record each.
class CCollector {
  public:
    void AddAll(const CAsn1SetOf<CAsn1RecipientInfo>& infos) {
        AddEach(infos, [this](const CAsn1RecipientInfo& info) { AddInfo(info); });
    }

    // Keeps one record, and counts the others. \param wanted  its number.
    // \return null when there are not so many.
    std::unique_ptr<CertInfo2> TakeOne(CAsn1ListCursor<CAsn1RecipientInfo> at, std::size_t wanted) {
        m_wanted = wanted;
        // How many elements are left out does not matter where one is wanted.
        Walk(
            at, [] { return std::size_t{1}; },
            [this](const CAsn1RecipientInfo& info) { AddInfo(info); });
        Finish();
        return std::move(m_only);
    }
    std::size_t Started() const { return m_started; }

    // Throws 16253 when nobody is named and nothing was unreadable.
    ca::Recipients Take() {
        Finish();
        if (m_recipients.ids.Count() == 0 && !m_hasFault) {
            throw ca::Exception(ca::kErrRecipientsHidden,
                                SetZORNAMessage(kMsgUnnamedRecipients) +
                                    ca::DecimalText(m_recipients.records.Count()));
        }
        m_recipients.records.SayMore(m_hidden);
        return std::move(m_recipients);
    }

  private:
    // Each record starts with what holds for all recipients of one structure.
    CertInfo2& Start() {
        Finish();
        m_record = std::make_unique<CertInfo2>();
        m_record->publicKeyAlg = m_algorithm;
        m_record->publicKeyParams = m_parameters;
        m_record->error = m_error;
        // A recipient has no period: the text says that nothing was checked.
        ca::FillValidity({}, {}, m_record->validity, m_record->validityNumber);
        ++m_started;
        return *m_record;
    }

    // The record of the last recipient is whole.
    void Finish() {
        if (m_record == nullptr) {
            return;
        }
        if (!m_wanted) {
            m_recipients.records.Add(std::move(m_record));
        } else if (m_started == *m_wanted + 1) {
            m_only = std::move(m_record);
        }
        m_record.reset();
    }

    // Whether the record that is wanted is whole: another one was begun after it.
    bool HasWanted() const { return m_only != nullptr; }

    // Adds what could be read of each element. A fault stands in the record of its element.
    template <class List, class AddOne>
    void AddEach(const List& list, AddOne add) {
        auto at = list.Elements();
        Walk(
            at, [&list] { return list.Count(); }, add);
    }

    // \param count  elements in all, which is asked for when some are left out.
    template <class Cursor, class Count, class AddOne>
    void Walk(Cursor& at, Count count, AddOne add) {
        for (std::size_t index = 0; !HasWanted() && at.Next(); ++index) {
            // Elements that there is no room for are counted, never dropped unsaid.
            if (!ca::CAnswerBudget::HasRoomFor(at.Raw().size())) {
                m_hidden += count() - index;
                return;
            }
            const std::size_t before = m_started;
            try {
                if (at.Item() != nullptr) {
                    add(*at.Item());
                }
                ca::Good(at);
            } catch (const ca::Exception& fault) {
                // What the structure told before the fault stays; without a record the fault has
                // one of its own.
                m_hasFault = true;
                if (m_started == before) {
                    Start().description.readable = ca::UnreadableText(at.Raw());
                }
                ca::AddError(m_record->error, fault.message);
            }
        }
    }

    // The records that follow tell this algorithm.
    void SetAlgorithm(const CAsn1AlgorithmView& algorithm) {
        ca::ParametersForms params = ca::DescribeInnerAlgorithm(algorithm);
        m_algorithm = ca::AlgorithmText(algorithm);
        m_parameters = std::move(params.text);
        m_error = std::move(params.error);
    }
    void SetAlgorithm(const CAsn1AlgorithmIdentifier* algorithm) {
        SetAlgorithm(algorithm != nullptr ? CAsn1AlgorithmView(*algorithm) : CAsn1AlgorithmView());
    }

    void AddInfo(const CAsn1RecipientInfo& info) {
        // Takes back what the structure before this one told.
        SetAlgorithm(nullptr);
        if (const CAsn1KeyTransRecipientInfo* ktri = info.Ktri()) {
            AddTransported(*ktri);
        } else if (const CAsn1KeyAgreeRecipientInfo* kari = info.Kari()) {
            // One key agreement has many recipients, which share its algorithm (RFC 5652, 6.2.2).
            SetAlgorithm(kari->KeyEncryptionAlgorithm());
            AddAgreed(kari->RecipientEncryptedKeys());
        } else if (const CAsn1KekRecipientInfo* kekri = info.Kekri()) {
            // A key that both sides had before: it has an identifier, but no owner (RFC 5652,
            // 6.2.3).
            SetAlgorithm(kekri->KeyEncryptionAlgorithm());
            if (kekri->KekId() != nullptr && kekri->KekId()->KeyIdentifier() != nullptr) {
                AddKey(*kekri->KekId()->KeyIdentifier());
            }
        } else if (const CAsn1PasswordRecipientInfo* pwri = info.Pwri()) {
            SetAlgorithm(pwri->KeyEncryptionAlgorithm());
            AddPassword(*pwri);
        } else if (const CAsn1OtherRecipientInfo* ori = info.Ori()) {
            AddOther(*ori);
        }
    }

    void AddTransported(const CAsn1KeyTransRecipientInfo& info) {
        SetAlgorithm(info.KeyEncryptionAlgorithm());
        // GOST has the cipher's parameters beside the key, not in the algorithm.
        if (info.KeyEncryptionAlgorithm() != nullptr && info.EncryptedKey() != nullptr) {
            ca::AppendListed(m_parameters, ca::GostTransportText(*info.KeyEncryptionAlgorithm(),
                                                                 *info.EncryptedKey()));
        }
        Add(info.Rid());
    }

    void AddAgreed(const CAsn1SequenceOf<CAsn1RecipientEncryptedKey>* keys) {
        if (keys == nullptr) {
            return;
        }
        AddEach(*keys, [this](const CAsn1RecipientEncryptedKey& key) {
            if (key.Rid() == nullptr) {
                return;
            }
            const CAsn1RecipientKeyIdentifier* id = key.Rid()->RKeyId();
            if (id != nullptr && id->SubjectKeyIdentifier() != nullptr) {
                // KeyAgreeRecipientIdentifier ::= CHOICE (RFC 5652, 6.2.2).
                AddKey(*id->SubjectKeyIdentifier());
            } else if (key.Rid()->IssuerAndSerialNumber() != nullptr) {
                AddCertificate(*key.Rid()->IssuerAndSerialNumber());
            }
        });
    }

    // PasswordRecipientInfo (RFC 5652, 6.2.4): nobody is named, so that the derivation stands for
    // the recipient.
    void AddPassword(const CAsn1PasswordRecipientInfo& recipient) {
        const CAsn1AlgorithmIdentifier* derivation = recipient.KeyDerivationAlgorithm();
        CertInfo2& record = Start();
        if (derivation == nullptr) {
            record.description.readable = m_algorithm;
            return;
        }
        const ca::ParametersForms params = ca::DescribeParameters(*derivation);
        record.description.readable = ca::AlgorithmText(*derivation);
        ca::AppendListed(record.description.readable, params.text);
        ca::AddError(record.error, params.error);
    }

    // OtherRecipientInfo: a type and a value of it (RFC 5652, 6.2.5).
    void AddOther(const CAsn1OtherRecipientInfo& recipient) {
        const Octets type = OctetsOf(recipient.OriType());
        const ca::OidInfo* const row = ca::FindOid(type);
        if (row == ca::COid("id-ori-kem") && recipient.OriValue() != nullptr) {
            AddEncapsulated(recipient.OriValue()->Raw());
        } else if (row == ca::COid("id-ori-keyTransPSK") && recipient.OriValue() != nullptr) {
            AddTransportedWithPsk(recipient.OriValue()->Raw());
        } else if (row == ca::COid("id-ori-keyAgreePSK") && recipient.OriValue() != nullptr) {
            AddAgreedWithPsk(recipient.OriValue()->Raw());
        } else {
            Start().description.readable = ca::OidWithName(type);
        }
    }

    // KEMRecipientInfo (RFC 9629, 3).
    void AddEncapsulated(std::span<const unsigned char> value) {
        const ca::CDecoded<CAsn1KemRecipientInfo> kem(value);
        m_algorithm = ca::AlgorithmText(*kem->Kem());
        m_parameters = ca::AlgorithmText(*kem->Wrap());
        Add(kem->Rid());
    }

    // RFC 8696, 3: recipients as in KeyTransRecipientInfo, each with a shared key mixed in.
    void AddTransportedWithPsk(std::span<const unsigned char> value) {
        const ca::CPartlyDecoded<CAsn1KeyTransPskRecipientInfo> psk(value);
        if (psk.Get() != nullptr && psk.Get()->Ktris() != nullptr) {
            AddEach(*psk.Get()->Ktris(),
                    [this](const CAsn1KeyTransRecipientInfo& info) { AddTransported(info); });
        }
        psk.ThrowFault();
    }

    // RFC 8696, 4.
    void AddAgreedWithPsk(std::span<const unsigned char> value) {
        const ca::CPartlyDecoded<CAsn1KeyAgreePskRecipientInfo> psk(value);
        if (psk.Get() != nullptr) {
            SetAlgorithm(psk.Get()->KeyEncryptionAlgorithm());
            AddAgreed(psk.Get()->RecipientEncryptedKeys());
        }
        psk.ThrowFault();
    }

    void Add(const CAsn1SignerIdentifier* id) {
        if (id == nullptr) {
            return;
        }
        if (id->IssuerAndSerialNumber() != nullptr) {
            AddCertificate(*id->IssuerAndSerialNumber());
        } else if (id->SubjectKeyIdentifier() != nullptr) {
            AddKey(*id->SubjectKeyIdentifier());
        }
    }

    void AddCertificate(const CAsn1IssuerAndSerialNumber& id) {
        CertInfo2& record = Start();
        ca::FillFromIdentifier(id, record);
        if (id.Issuer() == nullptr) {
            return;
        }
        // An empty name with the number 0 hides the recipient.
        if (!id.Issuer()->ContentOctets().empty() || !IsAllZero(OctetsOf(id.SerialNumber()))) {
            Name(record, id.Raw());
        }
    }

    void AddKey(const CAsn1OctetString& id) {
        CertInfo2& record = Start();
        const std::vector<unsigned char> key = OctetStringOf(&id);
        record.serial = ca::Hex(key);
        record.description.readable = SetZORNAMessage(kMsgKey) + (L": " + record.serial);
        // A key of zeros hides the recipient, as an empty name does.
        if (!IsAllZero(key)) {
            Name(record, key);
        }
    }

    void Name(CertInfo2& record, Octets identifier) {
        // Not a certificate's: the digest of what names the recipient, by which hosts look for it.
        record.id = ca::Sha1Hex(identifier);
        m_recipients.ids.AddAsText(record.id);
    }

    ca::Recipients m_recipients;
    std::unique_ptr<CertInfo2> m_record;  // of the recipient that is being read
    std::optional<std::size_t> m_wanted;  // the only one that is kept
    std::unique_ptr<CertInfo2> m_only;
    std::size_t m_started = 0;
    std::size_t m_hidden = 0;  // elements that there was no room for
    std::wstring m_algorithm;
    std::wstring m_parameters;
    std::wstring m_error;  // of the parameters
    bool m_hasFault = false;
};

}  // namespace

namespace ca {

std::span<const unsigned char> FindEnvelope(std::span<const unsigned char> contentInfo) {
    const CAsn1ContentInfoView message(FirstElement(contentInfo));
    const bool isEnvelope =
        std::ranges::any_of(kEnvelopes, [&](COid type) { return message.Is(type); });
    return isEnvelope && message.IsContentTagged() ? message.Content().raw
                                                   : std::span<const unsigned char>();
}

Recipients DescribeRecipients(std::span<const unsigned char> envelope) {
    const CAnswerBudget budget(envelope.size());
    const CAsn1EnvelopeView whole(FirstElement(envelope));
    const CAsn1Element infos = whole.RecipientInfos();
    if (infos.tag != kAsn1Set) {
        // The fault says which member before the recipients keeps them from being found.
        throw Exception(kErrBadData, whole.RecipientInfosFault().message);
    }
    const CDecoded<CAsn1SetOf<CAsn1RecipientInfo>> list(infos.raw, Asn1Blocks::kRead);
    CCollector collector;
    collector.AddAll(*list);
    return collector.Take();
}

std::span<const unsigned char> RecipientInfosOf(std::span<const unsigned char> envelope) {
    const CAsn1Element infos = CAsn1EnvelopeView(FirstElement(envelope)).RecipientInfos();
    return infos.tag == kAsn1Set ? infos.content : std::span<const unsigned char>();
}

std::unique_ptr<CertInfo2> DescribeRecipient(std::span<const unsigned char> info,
                                             std::size_t number) {
    // Only where it stands in the message matters to the texts of faults.
    CAsn1Block place;
    place.start = info.data();
    return CCollector().TakeOne({info, place}, number);
}

std::size_t CountRecipients(std::span<const unsigned char> info) {
    CAsn1Block place;
    place.start = info.data();
    CCollector collector;
    // No such recipient: all are walked, and none is kept.
    collector.TakeOne({info, place}, std::numeric_limits<std::size_t>::max() - 1);
    return collector.Started();
}

}  // namespace ca
