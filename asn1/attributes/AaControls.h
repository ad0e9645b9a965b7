#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"

// AAControls ::= SEQUENCE {
//     pathLenConstraint  INTEGER (0..MAX) OPTIONAL,
//     permittedAttrs     [0] AttrSpec OPTIONAL,
//     excludedAttrs      [1] AttrSpec OPTIONAL,
//     permitUnSpecified  BOOLEAN DEFAULT TRUE }
// AttrSpec ::= SEQUENCE OF OBJECT IDENTIFIER     RFC 5755, 7.4
class CAsn1AaControls : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "AAControls";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* PathLenConstraint() const { return m_pathLenConstraint; }
    CAsn1SequenceOf<CAsn1ObjectIdentifier>* PermittedAttrs() const { return m_permittedAttrs; }
    CAsn1SequenceOf<CAsn1ObjectIdentifier>* ExcludedAttrs() const { return m_excludedAttrs; }
    bool PermitsUnspecified() const { return m_permitUnSpecified; }

  private:
    CAsn1Integer* m_pathLenConstraint = nullptr;
    CAsn1SequenceOf<CAsn1ObjectIdentifier>* m_permittedAttrs = nullptr;
    CAsn1SequenceOf<CAsn1ObjectIdentifier>* m_excludedAttrs = nullptr;
    bool m_permitUnSpecified = true;
};
