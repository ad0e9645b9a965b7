#include "records/fill/SignInfoFill.h"

#include "asn1/Oid.h"
#include "asn1/cms/SignedData.h"
#include "asn1/views/AlgorithmViews.h"
#include "asn1/views/MessageViews.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/sha1.h"
#include "records/AnswerBudget.h"
#include "records/fill/AttrCertInfoFill.h"
#include "records/fill/CertInfoFill.h"
#include "records/fill/SignatureAttributes.h"
#include "records/fill/ValidityText.h"
#include "records/scan/CertificateNames.h"
#include "records/scan/SignerCertificates.h"
#include "records/text/AlgorithmText.h"
#include "records/text/Decoded.h"
#include "records/text/DescriptionWords.h"
#include "records/text/ExtensionList.h"
#include "records/text/ExtensionText.h"
#include "records/text/OutlineText.h"
#include "records/text/SignatureParts.h"
#include "records/text/TrustListText.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <vector>

namespace {

using ca::CAnswerBudget;
using ca::CBudgetLoan;
using ca::CertInfo;
using ca::SignInfo;
using Signers = CAsn1ListCursor<CAsn1SignerInfo>;

// Octets of text that says again what was said already: a multiple of the message's octets, and as
// many as a small message may always have. Together with what its signers become, up to ten times
// its octets, that is less than the budget.
constexpr std::size_t kRepeats = 3;
constexpr std::size_t kRepeatedAlways = 256 << 10;

// A key identifier stands where a certificate would have it: among the extensions.
void FillKeyIdentifier(const CAsn1OctetString& key, CertInfo& record) {
    constexpr ca::COid kType = "subjectKeyIdentifier";
    auto extension = std::make_unique<ca::CertInfoExtension>();
    extension->oidFriendlyName = kType->Name();
    extension->oidValue = kType->dotted;
    extension->formattedData = ca::Hex(OctetStringOf(&key));
    record.extensions.items.emplace_back(std::move(extension));
}

// What the signer itself says of its certificate.
void FillFromSigner(const CAsn1SignerIdentifier& signer, CertInfo& record) {
    if (const CAsn1IssuerAndSerialNumber* name = signer.IssuerAndSerialNumber()) {
        ca::FillFromIdentifier(*name, record);
    } else if (const CAsn1OctetString* key = signer.SubjectKeyIdentifier()) {
        FillKeyIdentifier(*key, record);
    }
}

ca::CertificateNames NamesOf(const CAsn1SignerIdentifier& signer) {
    ca::CertificateNames names;
    const CAsn1IssuerAndSerialNumber* name = signer.IssuerAndSerialNumber();
    if (name != nullptr && name->Issuer() != nullptr) {
        names.issuer = ca::AsText(name->Issuer()->Raw());
        names.serial = ca::AsText(OctetsOf(name->SerialNumber()));
    }
    return names;
}

void FillAlgorithms(const CAsn1SignerInfo& signer, SignInfo& record) {
    const CAsn1AlgorithmIdentifier* digest = signer.DigestAlgorithm();
    const CAsn1AlgorithmView known = digest != nullptr ? *digest : CAsn1AlgorithmView();
    if (digest != nullptr) {
        record.hashAlg = ca::AlgorithmText(known);
    }
    if (const CAsn1AlgorithmIdentifier* signature = signer.SignatureAlgorithm()) {
        record.signAlg = ca::SignerAlgorithmText(*signature, known);
    }
}

void FillSignId(const CAsn1OctetString* signature, SignInfo& record) {
    if (signature == nullptr) {
        return;
    }
    try {
        record.signId = ca::Sha1Hex(OctetStringOf(signature));
    } catch (const ca::Exception& fault) {
        ca::AddError(record.signCert.error, fault.message);
    }
}

// Describes the signers of one message.
class CSignerDescriber {
  public:
    CSignerDescriber(std::span<const unsigned char> certificates, std::size_t messageSize,
                     bool isAttached, ca::ISignatureJudge* judge)
        : m_certificates(certificates),
          m_repeats(kRepeats * messageSize + kRepeatedAlways),
          m_isAttached(isAttached),
          m_judge(judge) {}

    // \param level  0 for the signers of the message.
    // \param value  what the signers of another level sign.
    // \return how many were not described.
    std::size_t DescribeAll(std::span<const unsigned char> signers, const CAsn1Block& list,
                            unsigned level, std::span<const unsigned char> value,
                            ca::SignInfos& records) {
        Signers at(signers, list);
        while (at.Next()) {
            if (m_count == ca::kMaxSignatures || !CAnswerBudget::HasRoomFor(at.Raw().size())) {
                const std::size_t all = ca::CountElements(CAsn1Cursor(signers));
                return all - std::min(all, records.Count());
            }
            ++m_count;
            std::unique_ptr<SignInfo> record = NewRecord();
            {
                const CBudgetLoan loan;
                Describe(at, level, *record);
                if (m_judge != nullptr && level == 0) {
                    m_judge->Judge(records.Count(), *record);
                } else if (m_judge != nullptr) {
                    m_judge->JudgeCountersignature(value, at.Raw(), *record);
                }
            }
            records.Add(std::move(record));
        }
        return 0;
    }

    // Certificates of the message that there was no room for.
    std::size_t HiddenCertificates() const { return m_certificates.Hidden(); }
    // What is among them and is not one; octets of the message.
    std::span<const unsigned char> OddCertificate() const { return m_certificates.Odd(); }

    // Describes one signer alone. \param list  what it is counted in, where offsets begin.
    void DescribeOne(std::span<const unsigned char> signer, const CAsn1Block& list,
                     SignInfo& record) {
        if (Signers at(signer, list); at.Next()) {
            Describe(at, /*level=*/0, record);
        }
    }

    // The record of a signature of which nothing is known yet.
    std::unique_ptr<SignInfo> NewRecord() const {
        auto record = std::make_unique<SignInfo>();
        ca::FillNotVerified(record->verifyResultEx);
        record->verifyResult = record->verifyResultEx.signatureVerifyResultString;
        record->isAttached = m_isAttached;
        ca::FillValidity({}, {}, record->signCert.validity, record->signCert.validityNumber);
        record->attrCert.validityNumber = ca::kErrNotVerified;  // 0 would read as a good one
        return record;
    }

  private:
    void Describe(Signers& at, unsigned level, SignInfo& record) {
        const CAsn1SignerInfo* signer = at.Item();
        if (signer == nullptr) {
            ca::AddError(record.signCert.error, ca::UnreadableText(at.Raw()));
        } else {
            FillCertificatesOf(*signer, record);
        }
        if (at.Fault() != nullptr) {
            ca::AddError(record.signCert.error, at.Fault()->message);
        }
        if (signer != nullptr) {
            FillAlgorithms(*signer, record);
            FillSignId(signer->Signature(), record);
            FillAttributes(*signer, level, record);
        }
    }

    // A key identifier in segments may be none.
    void FillCertificatesOf(const CAsn1SignerInfo& signer, SignInfo& record) {
        try {
            FillCertificates(signer.Sid(), record);
        } catch (const ca::Exception& fault) {
            ca::AddError(record.signCert.error, fault.message);
        }
    }

    // Takes octets from what may be described again.
    bool MayRepeat(std::size_t octets) {
        const bool may = octets <= m_repeats;
        m_repeats -= may ? octets : 0;
        return may;
    }

    bool MayDescribe(const ca::SignerCertificate& certificate) {
        return certificate.textOctets == 0 || MayRepeat(certificate.textOctets);
    }

    template <class Record>
    static void Note(const Record& record, ca::SignerCertificate& certificate) {
        ca::RecordOctets octets;
        record.AddOctets(octets);
        certificate.textOctets = octets.text;
    }

    void FillCertificates(const CAsn1SignerIdentifier* signer, SignInfo& record) {
        if (signer == nullptr) {
            return;
        }
        ca::SignerCertificate* certificate = m_certificates.Find(*signer);
        const bool isByKey = signer->SubjectKeyIdentifier() != nullptr;
        if (certificate != nullptr &&
            (isByKey ? certificate->sharesKey : certificate->sharesSerial)) {
            ca::AddError(record.signCert.error, ca::WordText(ca::Word::kCertNotAlone));
        }
        if (certificate != nullptr && MayDescribe(*certificate)) {
            ca::FillCertInfo(certificate->der, record.signCert);
            Note(record.signCert, *certificate);
        } else {
            FillFromSigner(*signer, record.signCert);
            ca::AddError(record.signCert.error,
                         SetZORNAMessage(certificate != nullptr ? kMsgCertDescribedEnough
                                                                : kMsgCertNotInMessage));
        }
        ca::SignerCertificate* attributes = certificate != nullptr
                                                ? m_certificates.FindAttributes(*certificate)
                                                : m_certificates.FindAttributes(NamesOf(*signer));
        if (attributes == nullptr) {
            return;
        }
        if (MayDescribe(*attributes)) {
            ca::FillAttrCertInfo(attributes->der, record.attrCert);
            Note(record.attrCert, *attributes);
        } else {
            ca::AddError(record.attrCert.error, SetZORNAMessage(kMsgCertDescribedEnough));
        }
    }

    void FillAttributes(const CAsn1SignerInfo& signer, unsigned level, SignInfo& record) {
        ca::CSignatureAttributes attributes(record, m_memo, m_certificates);
        attributes.AddSigned(signer.SignedAttrs());
        const std::vector<unsigned char> value = ValueOf(signer);
        attributes.AddUnsigned(
            signer.UnsignedAttrs(), [&](const CAsn1SetOf<CAsn1Any>& countersigners) {
                return DescribeCountersigners(countersigners, value, level, record);
            });
        attributes.Finish();
    }

    // \return whether the attribute's octets are to be given, too. They are in what holds them.
    bool DescribeCountersigners(const CAsn1SetOf<CAsn1Any>& list, ca::Octets value, unsigned level,
                                SignInfo& record) {
        if (level == ca::kMaxCountersigned) {
            ca::AddError(record.signCert.error, SetZORNAMessage(kMsgCountersignaturesTooDeep));
        } else {
            DescribeCoSigners(list, value, level, record);
        }
        return level == 0 || MayRepeat(list.ContentOctets().size() / 3 * 4);
    }

    // The value of a signature, which those on it sign; only who verifies wants it.
    std::vector<unsigned char> ValueOf(const CAsn1SignerInfo& signer) const {
        try {
            return m_judge != nullptr ? OctetStringOf(signer.Signature())
                                      : std::vector<unsigned char>();
        } catch (const ca::Exception&) {
            return {};  // FillSignId() told of it
        }
    }

    // Their texts stand twice in memory when that of the signature is made.
    void DescribeCoSigners(const CAsn1SetOf<CAsn1Any>& list, ca::Octets value, unsigned level,
                           SignInfo& record) {
        std::size_t hidden = 0;
        {
            const CBudgetLoan twice(2);
            hidden = DescribeAll(list.ContentOctets(), *list.GetBlock(), level + 1, value,
                                 record.coSigners);
        }
        CAnswerBudget::Take(CostOf(record.coSigners));
        ca::AddMore(record.signCert.error, hidden);
    }

    ca::CSignerCertificates m_certificates;
    ca::CAttributeMemo m_memo;
    std::size_t m_repeats;
    bool m_isAttached;
    ca::ISignatureJudge* m_judge;  // null: nobody judges
    std::size_t m_count = 0;
};

// A time-stamp token has one signer, and what it stamps is its content: told with the type of that.
// So is what a trust list or a catalogue is about.
void AddContent(const CAsn1EncapsulatedContentInfo& content, SignInfo& record) {
    const std::wstring contentType = ca::COid("id-contentType")->dotted;
    const auto extension = std::ranges::find(record.extensions, contentType,
                                             [](const auto& each) { return each->extensionOid; });
    if (extension == record.extensions.end()) {
        return;
    }
    ca::CTextLines lines;
    lines.Block((*extension)->extensionInterpretedString);
    const ca::CTextLines::Level level(lines);
    try {
        static_cast<void>(ca::SayTimeStamp(content, lines) || ca::SayTrustList(content, lines));
    } catch (const ca::Exception& fault) {
        lines.Fault(fault.message);
    }
    (*extension)->extensionInterpretedString = lines.Take();
    ca::AddError(record.signCert.error, lines.TakeFaults());
}

// A message as far as it could be read.
class COpenMessage {
  public:
    COpenMessage(std::span<const unsigned char> object, std::span<const unsigned char> signedData)
        : m_size(signedData.size()), m_message(signedData, Asn1Blocks::kRead) {
        m_message->GetBlock()->offset =
            static_cast<std::uint32_t>(signedData.data() - object.data());
        try {
            m_message->Decode();
        } catch (const ca::Exception& fault) {
            m_fault = fault.message;
        }
    }

    const CAsn1SignedData* operator->() const { return &*m_message; }
    const std::wstring& Fault() const { return m_fault; }
    const CAsn1EncapsulatedContentInfo* Content() const { return m_message->EncapContentInfo(); }
    bool IsAttached() const { return Content() != nullptr && Content()->EContent() != nullptr; }
    CSignerDescriber Describer(ca::ISignatureJudge* judge = nullptr) const {
        const CAsn1SetOf<CAsn1Any>* set = m_message->Certificates();
        return {set != nullptr ? set->ContentOctets() : std::span<const unsigned char>(), m_size,
                IsAttached(), judge};
    }

  private:
    std::size_t m_size;
    CAsn1Root<CAsn1SignedData> m_message;
    std::wstring m_fault;
};

}  // namespace

namespace ca {

std::span<const unsigned char> FindSignedData(std::span<const unsigned char> object) {
    CAsn1ContentInfoView outer(FirstElement(object));
    if (const auto token = GrantedToken(outer.Element()); token.IsThere()) {
        outer = token;
    }
    if (outer.Is("id-signedData")) {
        const CAsn1Element signedData = outer.Content();
        return signedData.tag == kAsn1Sequence ? signedData.raw : std::span<const unsigned char>();
    }
    const CAsn1SignedDataView bare(outer.Element());  // without its ContentInfo
    return bare.HasForm() ? bare.Element().raw : std::span<const unsigned char>();
}

namespace {

// An element in a list that is not of the list's kind, or octets that are not an element.
std::wstring OddElementFault(std::string_view list, Octets odd, std::size_t offset) {
    CAsn1Element element;
    const Asn1Fault fault = CAsn1Cursor(odd).Next(element);
    return (fault == Asn1Fault::kNone ? MakeAsn1WrongTag(list, element.tag, offset)
                                      : MakeAsn1Fault(fault, list, offset))
        .message;
}

struct MessageOutcome {
    bool isAttached;
    std::size_t hidden;  // signatures that were not described, where none was that could say so
};

// Describes one message.
MessageOutcome DescribeMessage(std::span<const unsigned char> object,
                               std::span<const unsigned char> signedData, SignInfos& described,
                               ISignatureJudge* judge) {
    const COpenMessage message(object, signedData);
    CSignerDescriber describer = message.Describer(judge);
    std::size_t hidden = 0;
    if (const CAsn1SetOf<CAsn1SignerInfo>* signers = message->SignerInfos()) {
        hidden = describer.DescribeAll(signers->ContentOctets(), *signers->GetBlock(), /*level=*/0,
                                       /*value=*/{}, described);
    } else {
        described.Add(describer.NewRecord());
    }
    if (message.Content() != nullptr && described.Count() == 1) {
        AddContent(*message.Content(), *described.items.front());
    }
    if (described.items.empty()) {
        return {message.IsAttached(), hidden};
    }
    std::wstring& told = described.items.front()->signCert.error;
    AddError(told, message.Fault());
    if (describer.HiddenCertificates() != 0) {
        AddError(told, SetZORNAMessage(kMsgCertificates) +
                           (L": " + MoreText(describer.HiddenCertificates())));
    }
    if (const auto odd = describer.OddCertificate(); !odd.empty()) {
        AddError(told, OddElementFault("SignedData.certificates", odd,
                                       static_cast<std::size_t>(odd.data() - object.data())));
    }
    AddMore(told, hidden);
    return {message.IsAttached(), 0};
}

}  // namespace

std::optional<bool> FillSignInfos(std::span<const unsigned char> object, SignInfos& signatures,
                                  ISignatureJudge* judge) {
    const std::span<const unsigned char> signedData = FindSignedData(object);
    if (signedData.empty()) {
        return std::nullopt;
    }
    const CAnswerBudget budget(signedData.size());
    if (signatures.Count() == 0) {
        return DescribeMessage(object, signedData, signatures, judge).isAttached;
    }
    SignInfos described;
    MessageOutcome outcome{};
    {
        const CBudgetLoan twice(2);  // the texts stand twice in memory when they are appended
        outcome = DescribeMessage(object, signedData, described, judge);
    }
    signatures.Append(std::move(described));
    signatures.SayMore(outcome.hidden);
    return outcome.isAttached;
}

bool FillSignInfo(std::span<const unsigned char> object, std::span<const unsigned char> signer,
                  SignInfo& record) {
    const std::span<const unsigned char> signedData = FindSignedData(object);
    if (signedData.empty()) {
        return false;
    }
    const CAnswerBudget budget(signedData.size());
    const COpenMessage message(object, signedData);
    CSignerDescriber describer = message.Describer();
    record = *describer.NewRecord();
    const CAsn1SetOf<CAsn1SignerInfo>* signers = message->SignerInfos();
    describer.DescribeOne(signer, signers != nullptr ? *signers->GetBlock() : *message->GetBlock(),
                          record);
    if (message.Content() != nullptr && signers != nullptr && signers->Count() == 1) {
        AddContent(*message.Content(), record);
    }
    AddError(record.signCert.error, message.Fault());
    return true;
}

}  // namespace ca
