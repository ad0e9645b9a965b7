#include "providers/openssl/MessageEvidence.h"

#include "asn1/Elements.h"
#include "asn1/views/MessageViews.h"
#include "common/Exception.h"
#include "records/fill/SignInfoFill.h"

namespace {

// Each is compared with each certificate of a path, or verified with its issuer's key: hundreds of
// them would be work without an end.
constexpr std::size_t kMaxAnswers = 64;
constexpr int kMaxValues = 256;  // certificates and lists from attributes

// The value of an unsigned attribute; empty where there is none.
ca::Octets AttributeValue(const CMS_SignerInfo* signer, int nid) {
    const int index = CMS_unsigned_get_attr_by_NID(signer, nid, -1);
    X509_ATTRIBUTE* const attribute = index >= 0 ? CMS_unsigned_get_attr(signer, index) : nullptr;
    const ASN1_TYPE* const value =
        attribute != nullptr ? X509_ATTRIBUTE_get0_type(attribute, 0) : nullptr;
    if (value == nullptr || value->type != V_ASN1_SEQUENCE) {
        return {};
    }
    return ca::OctetsOf(value->value.sequence);
}

template <class Take>
void ForEachElement(ca::Octets octets, Take take) {
    CAsn1Cursor cursor(octets);
    CAsn1Element element;
    while (!cursor.AtEnd() && cursor.Next(element) == Asn1Fault::kNone) {
        take(element);
    }
}

// RevocationValues ::= SEQUENCE { crlVals [0] EXPLICIT SEQUENCE OF CertificateList OPTIONAL,
//     ocspVals [1] EXPLICIT SEQUENCE OF BasicOCSPResponse OPTIONAL, ... }     RFC 5126, 6.3.4
void TakeRevocation(const ca::COpenSslLibrary& library, ca::Octets value,
                    ca::Companions& companions) {
    ForEachElement(ca::FirstElement(value).content, [&](const CAsn1Element& part) {
        ForEachElement(ca::FirstElement(part.content).content, [&](const CAsn1Element& each) {
            if (part.tag == ca::ContextConstructed(1)) {
                ca::AddOcspAnswer(each.raw, companions);
                return;
            }
            if (part.tag != ca::ContextConstructed(0) ||
                sk_X509_CRL_num(companions.crls.get()) >= kMaxValues) {
                return;
            }
            if (ca::CrlPtr list = library.ReadCrl(each.raw)) {
                sk_X509_CRL_push(companions.crls.get(), list.release());
            }
        });
    });
}

// CertificateValues ::= SEQUENCE OF Certificate     RFC 5126, 6.3.3
void TakeCertificates(const ca::COpenSslLibrary& library, ca::Octets value,
                      ca::Companions& companions) {
    ForEachElement(ca::FirstElement(value).content, [&](const CAsn1Element& each) {
        if (sk_X509_num(companions.certificates.get()) >= kMaxValues) {
            return;
        }
        try {
            ca::X509Ptr certificate = library.ReadCertificate(each.raw);
            sk_X509_push(companions.certificates.get(), certificate.release());
        } catch (const ca::Exception&) {
            // Deliberate: what cannot be read helps nobody.
            return;
        }
    });
}

}  // namespace

namespace ca {

bool AddOcspAnswer(std::span<const unsigned char> octets, Companions& companions) {
    OcspAnswerPtr answer =
        companions.answers.size() < kMaxAnswers ? COpenSslLibrary::ReadOcspAnswer(octets) : nullptr;
    if (answer == nullptr) {
        return false;
    }
    companions.answers.push_back(std::move(answer));
    return true;
}

void CollectEvidence(const COpenSslLibrary& library, CMS_ContentInfo* message,
                     std::span<const unsigned char> encoding, Companions& companions) {
    if (companions.certificates == nullptr) {
        companions.certificates.reset(sk_X509_new_null());
    }
    if (companions.crls == nullptr) {
        companions.crls.reset(sk_X509_CRL_new_null());
    }
    const CAsn1SignedDataView signedData(FirstElement(FindSignedData(encoding)));
    ForEachElement(signedData.Crls().content, [&](const CAsn1Element& each) {
        if (each.tag == ContextConstructed(1)) {
            AddOcspAnswer(CAsn1RevocationChoiceView(each).Info().raw, companions);
        }
    });
    const STACK_OF(CMS_SignerInfo)* const signers = CMS_get0_SignerInfos(message);
    for (int i = 0; i < sk_CMS_SignerInfo_num(signers); ++i) {
        const CMS_SignerInfo* const each = sk_CMS_SignerInfo_value(signers, i);
        TakeRevocation(library, AttributeValue(each, NID_id_smime_aa_ets_revocationValues),
                       companions);
        TakeCertificates(library, AttributeValue(each, NID_id_smime_aa_ets_certValues), companions);
    }
}

void AddCompanions(const Companions& others, Companions& companions) {
    for (int i = 0; i < sk_X509_num(others.certificates.get()); ++i) {
        X509* const each = sk_X509_value(others.certificates.get(), i);
        X509_up_ref(each);
        sk_X509_push(companions.certificates.get(), each);
    }
    for (int i = 0; i < sk_X509_CRL_num(others.crls.get()); ++i) {
        X509_CRL* const each = sk_X509_CRL_value(others.crls.get(), i);
        X509_CRL_up_ref(each);
        sk_X509_CRL_push(companions.crls.get(), each);
    }
}

}  // namespace ca
