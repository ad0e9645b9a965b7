#pragma once

#include "asn1/views/Asn1View.h"

#include <cstddef>

class CAsn1Extension;

/// Extension; see x509/Extension.h.
class CAsn1ExtensionView : public CAsn1ViewOf<CAsn1Extension> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// Content octets of the identifier; empty where none is.
    ca::Octets ExtnId() const { return OidMember(0); }
    bool IsCritical() const {
        const CAsn1Element critical = Critical();
        return !critical.content.empty() && critical.content[0] != 0;
    }
    /// What stands in the place of the value, of whatever type.
    CAsn1Element ExtnValue() const { return Member(Critical().raw.empty() ? 1 : 2); }

    /// All octets after the identifier and the criticality: those of the value.
    ca::Octets ValueOctets() const;
    /// The value, an OCTET STRING and the last member. Throws ca::Exception as typed objects do,
    /// with offsets from the extension.
    CAsn1Element RequireValue() const;

  private:
    // BOOLEAN DEFAULT FALSE; without octets where it is left out.
    CAsn1Element Critical() const {
        const CAsn1Element second = Member(1);
        return second.tag == kAsn1Boolean ? second : CAsn1Element();
    }
};
