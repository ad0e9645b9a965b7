#pragma once

#include "asn1/views/Asn1View.h"
#include "asn1/x509/GeneralName.h"

/// AttributeTypeAndValue; see x509/Name.h.
class CAsn1TypeAndValueView : public CAsn1ViewOf<CAsn1AttributeTypeAndValue> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    ca::Octets Type() const { return OidMember(0); }
    CAsn1Element Value() const { return Member(1); }
};

/// RelativeDistinguishedName; see x509/Name.h. The tag is not looked at.
class CAsn1RdnView : public CAsn1ViewOf<CAsn1RelativeDistinguishedName> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// Walks CAsn1TypeAndValueView.
    CAsn1Cursor Attributes() const { return CAsn1Cursor(Element().content); }
};

/// Name; see x509/Name.h. Also RDNSequence under a tag of a context.
class CAsn1NameView : public CAsn1ViewOf<CAsn1Name> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// False for an element that is of another type by its tag.
    bool IsName() const {
        constexpr unsigned kClassAndForm = 0xE0;
        return Element().tag == kAsn1Sequence ||
               (Element().tag & kClassAndForm) == ca::ContextConstructed(0);
    }
    /// Walks CAsn1RdnView.
    CAsn1Cursor Rdns() const { return CAsn1Cursor(Element().content); }
};

/// OtherName; see x509/GeneralName.h.
class CAsn1OtherNameView : public CAsn1ViewOf<CAsn1OtherName> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    ca::Octets TypeId() const { return OidMember(0); }
    CAsn1Element Value() const { return InnerOf(Member(1)); }
};

/// The alternatives of GeneralName by their identifier octets.
enum class Asn1GeneralNameForm : unsigned char {
    kOtherName = ca::ContextConstructed(0),
    kRfc822Name = ca::ContextTag(1),
    kDnsName = ca::ContextTag(2),
    kX400Address = ca::ContextConstructed(3),
    kDirectoryName = ca::ContextConstructed(4),
    kEdiPartyName = ca::ContextConstructed(5),
    kUri = ca::ContextTag(6),
    kIpAddress = ca::ContextTag(7),
    kRegisteredId = ca::ContextTag(8),
};

/// GeneralName; see x509/GeneralName.h.
class CAsn1GeneralNameView : public CAsn1ViewOf<CAsn1GeneralName> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// None of the enumerators for an element that is not a general name.
    Asn1GeneralNameForm Form() const { return static_cast<Asn1GeneralNameForm>(Element().tag); }
    /// The Name inside; nothing in other forms.
    CAsn1NameView DirectoryName() const {
        return Form() == Asn1GeneralNameForm::kDirectoryName ? InnerOf(Element()) : CAsn1Element();
    }
    /// As OtherName, whose tag it replaces.
    CAsn1OtherNameView OtherName() const { return Element(); }
};

/// GeneralNames; see x509/GeneralName.h.
class CAsn1GeneralNamesView : public CAsn1ViewOf<CAsn1GeneralNames> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// Walks CAsn1GeneralNameView.
    CAsn1Cursor Names() const { return CAsn1Cursor(Element().content); }

    /// The first name of a directory; nothing where there is none.
    CAsn1NameView DirectoryName() const {
        CAsn1Element name;
        for (CAsn1Cursor names = Names(); names.Step(name);) {
            const CAsn1GeneralNameView view(name);
            if (view.Form() == Asn1GeneralNameForm::kDirectoryName) {
                return view.DirectoryName();
            }
        }
        return {};
    }
};
