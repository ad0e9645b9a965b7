#include "asn1/cmp/PkiMessage.h"
#include "records/objects/Describers.h"
#include "records/objects/DescriptionParts.h"
#include "records/objects/Reading.h"
#include "records/text/AttributeText.h"
#include "records/text/SharedFormatters.h"

#include <iterator>

// Messages between authorities and those who want certificates (RFC 4210, RFC 9810). Of a body it
// is said what it is; a request of PKCS #10 has a description of its own.

namespace {

using ca::CDescriptionBuilder;
using ca::FieldId;
using ca::Of;
using ca::Word;

constexpr unsigned kPkcs10Request = 4;

// PKIBody, by the number of its tag (RFC 4210, 5.1.2).
constexpr Word kBodies[] = {
    Word::kCmpIr,      Word::kCmpIp,      Word::kCmpCr,   Word::kCmpCp,     Word::kCmpP10cr,
    Word::kCmpPopdecc, Word::kCmpPopdecr, Word::kCmpKur,  Word::kCmpKup,    Word::kCmpKrr,
    Word::kCmpKrp,     Word::kCmpRr,      Word::kCmpRp,   Word::kCmpCcr,    Word::kCmpCcp,
    Word::kCmpCkuann,  Word::kCmpCann,    Word::kCmpRann, Word::kCmpCrlann, Word::kCmpPkiconf,
    Word::kCmpNested,  Word::kCmpGenm,    Word::kCmpGenp, Word::kCmpError,  Word::kCmpCertConf,
    Word::kCmpPollReq, Word::kCmpPollRep,
};

void SayParty(CDescriptionBuilder& builder, FieldId id, const CAsn1GeneralName* name) {
    if (name != nullptr) {
        ca::CTextLines faults;
        builder.Text(id, ca::GeneralNameLine(*name, faults));
        builder.Fault(faults.TakeFaults());
    }
}

// PKIHeader (RFC 4210, 5.1.1); nonces and key identifiers say nothing to people.
void SayHeader(CDescriptionBuilder& builder, const CAsn1PkiHeader& header) {
    ca::SayNumber(builder, FieldId::kVersion, header.Pvno());
    SayParty(builder, FieldId::kSender, header.Sender());
    SayParty(builder, FieldId::kRecipient, header.Recipient());
    ca::SayTime(builder, FieldId::kTime, header.MessageTime());
    ca::SayAlgorithm(builder, FieldId::kProtection, header.ProtectionAlg());
    ca::SayOctets(builder, FieldId::kTransaction, header.TransactionId());
    ca::SayList(builder, FieldId::kStatusText, header.FreeText(),
                [&](const CAsn1Any& text) { builder.Element(ca::MemberText(&text)); });
}

void SayBody(CDescriptionBuilder& builder, const CAsn1Any* body) {
    if (body == nullptr) {
        return;
    }
    // The bodies' tags are explicit, so that each is constructed; other tags fall out of the table.
    constexpr unsigned kContextConstructed = 0xA0;
    const unsigned number = body->Tag() - kContextConstructed;
    if (number < std::size(kBodies)) {
        builder.Text(FieldId::kType, kBodies[number]);
    }
    if (number == kPkcs10Request) {
        builder.Object(FieldId::kContent, *ca::FindObjectKind("certificationRequest"),
                       body->ContentOctets(), {});
    } else {
        // Its size only: bodies are structures of their own, each for another protocol step.
        builder.Text(FieldId::kContentSize, ca::OctetsCountText(body->ContentOctets().size()));
    }
}

}  // namespace

namespace ca {

void DescribeCmpMessage(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CReading<CAsn1PkiMessage> message(source.octets, builder);
    if (const CAsn1PkiHeader* header = Of(message.Get(), &CAsn1PkiMessage::Header)) {
        SayHeader(builder, *header);
    }
    SayBody(builder, Of(message.Get(), &CAsn1PkiMessage::Body));
    SaySignedObjects(builder, FieldId::kCertificates,
                     Of(message.Get(), &CAsn1PkiMessage::ExtraCerts));
}

}  // namespace ca
