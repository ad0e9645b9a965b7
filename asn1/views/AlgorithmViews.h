#pragma once

#include "asn1/views/Asn1View.h"

class CAsn1AlgorithmIdentifier;
class CAsn1DssParms;
class CAsn1EncryptedPrivateKeyInfo;
class CAsn1PrivateKeyInfo;
class CAsn1RsaPublicKey;
class CAsn1SubjectPublicKeyInfo;

/// AlgorithmIdentifier; see x509/AlgorithmIdentifier.h.
class CAsn1AlgorithmView : public CAsn1ViewOf<CAsn1AlgorithmIdentifier> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// Content octets of the identifier; empty where none is.
    ca::Octets Algorithm() const { return OidMember(0); }
    CAsn1Element Parameters() const { return Member(1); }
};

/// SubjectPublicKeyInfo; see x509/SubjectPublicKeyInfo.h.
class CAsn1PublicKeyInfoView : public CAsn1ViewOf<CAsn1SubjectPublicKeyInfo> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1AlgorithmView Algorithm() const { return Member(0); }
    CAsn1Element SubjectPublicKey() const { return Member(1); }
};

/// PrivateKeyInfo; see keys/PrivateKeyInfo.h.
class CAsn1PrivateKeyInfoView : public CAsn1ViewOf<CAsn1PrivateKeyInfo> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1AlgorithmView PrivateKeyAlgorithm() const { return Member(1); }
};

/// EncryptedPrivateKeyInfo; see keys/PrivateKeyInfo.h.
class CAsn1EncryptedKeyView : public CAsn1ViewOf<CAsn1EncryptedPrivateKeyInfo> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1AlgorithmView EncryptionAlgorithm() const { return Member(0); }
};

/// RSAPublicKey; see algorithms/RsaParameters.h.
class CAsn1RsaPublicKeyView : public CAsn1ViewOf<CAsn1RsaPublicKey> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1Element Modulus() const { return Member(0); }
    CAsn1Element PublicExponent() const { return Member(1); }
};

/// Dss-Parms; see algorithms/DomainParameters.h.
class CAsn1DssParmsView : public CAsn1ViewOf<CAsn1DssParms> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1Element P() const { return Member(0); }
    CAsn1Element Q() const { return Member(1); }
    CAsn1Element G() const { return Member(2); }
};

/// A group of Diffie-Hellman of either kind: DHParameter (PKCS #3) or DomainParameters (X9.42),
/// which begin alike; see algorithms/DomainParameters.h.
class CAsn1DhGroupView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1Element Prime() const { return Member(0); }
    CAsn1Element Base() const { return Member(1); }
    /// privateValueLength of the first kind, the order of the subgroup of the second.
    CAsn1Element LengthOrOrder() const { return Member(2); }
};
