#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"

/// DistributionPoint ::= SEQUENCE {                            RFC 5280, 4.2.1.13
///     distributionPoint  [0] DistributionPointName OPTIONAL,    -- a CHOICE, so explicit
///     reasons            [1] ReasonFlags OPTIONAL,
///     cRLIssuer          [2] GeneralNames OPTIONAL }
class CAsn1DistributionPoint : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("DistributionPoint");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Any, Name, "distributionPoint");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1BitString, Reasons, "reasons");
    CA_ASN1_OPTIONAL_IMPLICIT(2, CAsn1SequenceOf<CAsn1Any>, CrlIssuer, "cRLIssuer");
    CA_ASN1_END;
};

/// IssuingDistributionPoint ::= SEQUENCE {                     RFC 5280, 5.2.5
///     distributionPoint          [0] DistributionPointName OPTIONAL,
///     onlyContainsUserCerts      [1] BOOLEAN DEFAULT FALSE,
///     onlyContainsCACerts        [2] BOOLEAN DEFAULT FALSE,
///     onlySomeReasons            [3] ReasonFlags OPTIONAL,
///     indirectCRL                [4] BOOLEAN DEFAULT FALSE,
///     onlyContainsAttributeCerts [5] BOOLEAN DEFAULT FALSE }
class CAsn1IssuingDistributionPoint : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("IssuingDistributionPoint");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Any, Name, "distributionPoint");
    CA_ASN1_DEFAULT_IMPLICIT(1, OnlyContainsUserCerts, "onlyContainsUserCerts", false);
    CA_ASN1_DEFAULT_IMPLICIT(2, OnlyContainsCaCerts, "onlyContainsCACerts", false);
    CA_ASN1_OPTIONAL_IMPLICIT(3, CAsn1BitString, OnlySomeReasons, "onlySomeReasons");
    CA_ASN1_DEFAULT_IMPLICIT(4, IndirectCrl, "indirectCRL", false);
    CA_ASN1_DEFAULT_IMPLICIT(5, OnlyContainsAttributeCerts, "onlyContainsAttributeCerts", false);
    CA_ASN1_END;
};

/// AAissuingDistPointSyntax ::= SEQUENCE {     X.509, extensions of attribute revocation lists
///     distributionPoint           [0] DistributionPointName OPTIONAL,
///     onlySomeReasons             [1] ReasonFlags OPTIONAL,
///     indirectCRL                 [2] BOOLEAN DEFAULT FALSE,
///     containsUserAttributeCerts  [3] BOOLEAN DEFAULT TRUE,
///     containsAACerts             [4] BOOLEAN DEFAULT TRUE,
///     containsSOAPublicKeyCerts   [5] BOOLEAN DEFAULT TRUE }
class CAsn1AaIssuingDistributionPoint : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AAissuingDistPointSyntax");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Any, Name, "distributionPoint");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1BitString, OnlySomeReasons, "onlySomeReasons");
    CA_ASN1_DEFAULT_IMPLICIT(2, IndirectCrl, "indirectCRL", false);
    CA_ASN1_DEFAULT_IMPLICIT(3, ContainsUserAttributeCerts, "containsUserAttributeCerts", true);
    CA_ASN1_DEFAULT_IMPLICIT(4, ContainsAaCerts, "containsAACerts", true);
    CA_ASN1_DEFAULT_IMPLICIT(5, ContainsSoaPublicKeyCerts, "containsSOAPublicKeyCerts", true);
    CA_ASN1_END;
};
