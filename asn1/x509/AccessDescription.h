#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"

/// AccessDescription ::= SEQUENCE {                            RFC 5280, 4.2.2.1
///     accessMethod    OBJECT IDENTIFIER,
///     accessLocation  GeneralName }
class CAsn1AccessDescription : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AccessDescription");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, AccessMethod, "accessMethod");
    CA_ASN1_REQUIRED(CAsn1Any, AccessLocation, "accessLocation");
    CA_ASN1_END;
};
