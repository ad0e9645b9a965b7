#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/cms/ContentInfo.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// Evidence that data existed, renewed as its algorithms age (RFC 4998). Tags are implicit.

// ArchiveTimeStamp ::= SEQUENCE {
//     digestAlgorithm  [0] AlgorithmIdentifier OPTIONAL,
//     attributes       [1] Attributes OPTIONAL,     -- SET OF Attribute
//     reducedHashtree  [2] SEQUENCE OF PartialHashtree OPTIONAL,     -- SEQUENCE OF OCTET STRING
//     timeStamp        ContentInfo }     RFC 4998, 4.1
class CAsn1ArchiveTimeStamp : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ArchiveTimeStamp");
    /// Null for the one of the time stamp.
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1AlgorithmIdentifier, DigestAlgorithm, "digestAlgorithm");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SetOf<CAsn1Any>, Attributes, "attributes");
    CA_ASN1_OPTIONAL_IMPLICIT(2, CAsn1SequenceOf<CAsn1SequenceOf<CAsn1OctetString>>,
                              ReducedHashtree, "reducedHashtree");
    CA_ASN1_REQUIRED(CAsn1ContentInfo, TimeStamp, "timeStamp");
    CA_ASN1_END;
};

// EvidenceRecord ::= SEQUENCE {
//     version                   INTEGER,
//     digestAlgorithms          SEQUENCE OF AlgorithmIdentifier,
//     cryptoInfos               [0] CryptoInfos OPTIONAL,     -- SEQUENCE OF Attribute
//     encryptionInfo            [1] EncryptionInfo OPTIONAL,     -- SEQUENCE
//     archiveTimeStampSequence  SEQUENCE OF ArchiveTimeStampChain }   -- SEQUENCE OF
//     ArchiveTimeStamp
// RFC 4998, 3.1
class CAsn1EvidenceRecord : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("EvidenceRecord");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1AlgorithmIdentifier>, DigestAlgorithms,
                     "digestAlgorithms");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1SequenceOf<CAsn1Any>, CryptoInfos, "cryptoInfos");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SequenceOf<CAsn1Any>, EncryptionInfo, "encryptionInfo");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1SequenceOf<CAsn1ArchiveTimeStamp>>,
                     ArchiveTimeStampSequence, "archiveTimeStampSequence");
    CA_ASN1_END;
};
