#include "asn1/x509/AddressBlocks.h"
#include "asn1/x509/CabfExtensions.h"
#include "asn1/x509/ProxyCertInfo.h"
#include "asn1/x509/SctList.h"
#include "asn1/x509/TnEntry.h"
#include "common/DecimalText.h"
#include "common/Exception.h"
#include "records/text/AlgorithmText.h"
#include "records/text/Decoded.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"
#include "records/text/PolicyText.h"
#include "records/text/SharedFormatters.h"
#include "records/text/SignatureParts.h"
#include "records/text/TimeText.h"

#include <iterator>
#include <vector>

// TLS, transparency, routing and telephone numbers.

namespace {

using ca::CTextLines;
using ca::Octets;
using Value = std::span<const unsigned char>;

// ---- Certificate transparency (RFC 6962) ----

// Names of RFC 5246, 7.4.1.4.1, by number.
constexpr const wchar_t* kHashes[] = {L"none",    L"MD5",     L"SHA-1",  L"SHA-224",
                                      L"SHA-256", L"SHA-384", L"SHA-512"};
constexpr const wchar_t* kSignatures[] = {L"anonymous", L"RSA", L"DSA", L"ECDSA"};

template <std::size_t Count>
std::wstring NameOf(const wchar_t* const (&names)[Count], unsigned char number) {
    return number < Count ? names[number] : ca::DecimalText(number);
}

// "01.02.2024 07:00:00.123 UTC"
std::wstring StampTime(std::uint64_t milliseconds) {
    // The first millisecond that four digits of a year cannot say.
    constexpr std::uint64_t kYear10000 = 253402300800ULL * 1000;
    if (milliseconds >= kYear10000) {
        return ca::DecimalText(milliseconds);
    }
    const ca::TimeForms time = ca::DescribeTime(static_cast<std::int64_t>(milliseconds / 1000));
    const std::wstring fraction = ca::DecimalText(1000 + milliseconds % 1000);
    return time.utc + L'.' + fraction.substr(1) + L" UTC";
}

// A stamp of another version is named only: nobody knows what follows.
void SayStamp(const CSignedCertificateTimestamp& stamp, CTextLines& lines) {
    lines.Line(kMsgStamp, L"v" + ca::DecimalText(stamp.version + 1));
    // v1 is the number 0 (RFC 6962, 3.2).
    if (stamp.version != 0) {
        return;
    }
    const CTextLines::Level level(lines);
    lines.Line(kMsgLogId, ca::Hex(stamp.logId));
    lines.Line(kMsgTime, StampTime(stamp.timestamp));
    lines.Line(kMsgStampSignature, NameOf(kHashes, stamp.hashAlgorithm) + L", " +
                                       NameOf(kSignatures, stamp.signatureAlgorithm));
}

// SignedCertificateTimestampList in an OCTET STRING (RFC 6962, 3.3).
void SayStamps(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1OctetString> octets(value);
    const std::vector<unsigned char> joined = OctetStringOf(&*octets);
    CSctList list(joined);
    Octets stamp;
    std::size_t count = 0;
    // Counted on a copy, so that the end of the list can say how many it leaves out.
    for (CSctList counted = list; counted.Next(stamp);) {
        ++count;
    }
    for (std::size_t index = 0; lines.Shows(index, count) && list.Next(stamp); ++index) {
        try {
            // One that cannot be read has its length all the same: the others are said.
            SayStamp(CSctList::Read(stamp), lines);
        } catch (const ca::Exception&) {
            lines.Unreadable(SetZORNAMessage(kMsgStamp), stamp);
        }
    }
}

// ---- TLS ----

// Features ::= SEQUENCE OF INTEGER     -- numbers of TLS extensions     RFC 7633, 4.1
void SayTlsFeatures(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1Integer>> features(value);
    ca::SayEach(*features, lines, [&](const CAsn1Integer& feature) {
        const std::wstring number = ca::NumberText(&feature);
        const std::int64_t type = IntegerOf(&feature, -1);
        const wchar_t* name = type == 5 ? L"status_request (" : L"status_request_v2 (";
        // status_request (RFC 6066, 8) and status_request_v2 (RFC 6961) are what issuers use it
        // for.
        lines.Line(type == 5 || type == 17 ? name + number + L')' : number);
    });
}

// CA/B Forum EV Guidelines, appendix F.
void SayOnionService(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1TorServiceDescriptorHash>> services(value);
    ca::SayEach(*services, lines, [&](const CAsn1TorServiceDescriptorHash& service) {
        lines.Line(ca::MemberText(service.OnionURI()));
        const CTextLines::Level level(lines);
        lines.Line(ca::AlgorithmText(*service.Algorithm()),
                   ca::Hex(BitsOf(service.SubjectPublicKeyHash()).octets));
    });
}

// ProxyCertInfo (RFC 3820, 3.8).
void SayProxy(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1ProxyCertInfo> proxy(value);
    const CAsn1Integer* length = proxy->PCPathLenConstraint();
    lines.Line(kMsgPathLength,
               length != nullptr ? ca::NumberText(length) : SetZORNAMessage(kMsgNotLimited));
    const CAsn1ProxyPolicy& policy = *proxy->ProxyPolicy();
    lines.Line(kMsgPolicyLanguage, ca::OidWithName(OctetsOf(policy.PolicyLanguage())));
    if (policy.Policy() != nullptr) {
        // In the language's own form: a text as a rule.
        const std::wstring text = ca::HiddenText(policy.Policy());
        const bool isText = text.find(L'\uFFFD') == std::wstring::npos;
        lines.Line(kMsgPolicy, isText ? text : ca::OctetsText(policy.Policy()));
    }
}

// ---- Addresses and autonomous systems (RFC 3779) ----

// Octets of an address; the families are numbered 1 and 2 (RFC 3779, 2.2.3.3).
constexpr std::size_t kIpv4Octets = 4;
constexpr std::size_t kIpv6Octets = 16;

// The address that begins with these bits, the others being all zeros or all ones. A string that
// BitsOf() cannot read is refused: as one without bits it would stand for all addresses.
std::vector<unsigned char> Address(const CAsn1BitString& string, std::size_t length, bool ones) {
    const CAsn1Bits bits = BitsOf(&string);
    if (bits.octets.size() > length || bits.octets.size() + 1 != OctetsOf(&string).size()) {
        throw MakeAsn1Fault(Asn1Fault::kMalformed, "IPAddress", 0);
    }
    std::vector<unsigned char> address(bits.octets.begin(), bits.octets.end());
    if (!address.empty()) {
        const unsigned unused = (1U << bits.unused) - 1;
        address.back() =
            static_cast<unsigned char>(ones ? address.back() | unused : address.back() & ~unused);
    }
    address.resize(length, ones ? 0xFF : 0x00);
    return address;
}

std::wstring AddressText(const std::vector<unsigned char>& address) {
    return ca::IpAddressText(address);
}

// IPAddressOrRange (RFC 3779, 2.2.3): a prefix is bits, a range its first and its last address,
// each without the bits that follow from that.
void SayAddresses(const CAsn1Any& element, std::size_t length, CTextLines& lines) {
    const Value octets = element.Raw();
    if (element.Tag() == kAsn1BitString) {
        const ca::CDecoded<CAsn1BitString> prefix(octets);
        const CAsn1Bits bits = BitsOf(&*prefix);
        lines.Line(AddressText(Address(*prefix, length, /*ones=*/false)) + L'/' +
                   ca::DecimalText(8 * bits.octets.size() - bits.unused));
        return;
    }
    const ca::CDecoded<CAsn1IpAddressRange> range(octets);
    lines.Line(AddressText(Address(*range->Min(), length, /*ones=*/false)) + L'-' +
               AddressText(Address(*range->Max(), length, /*ones=*/true)));
}

void SayAddressBlocks(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1IpAddressFamily>> families(value);
    ca::SayEach(*families, lines, [&](const CAsn1IpAddressFamily& family) {
        // addressFamily: two octets of the family, and one of what it is used for where that is
        // limited.
        const Octets type = OctetsOf(family.AddressFamily());
        const bool isV4 = type.size() >= 2 && type[0] == 0 && type[1] == 1;
        const bool isV6 = type.size() >= 2 && type[0] == 0 && type[1] == 2;
        if (!isV4 && !isV6) {
            throw MakeAsn1Fault(Asn1Fault::kMalformed, "IPAddressFamily.addressFamily", 0);
        }
        std::wstring name = isV4 ? L"IPv4" : L"IPv6";
        if (type.size() > 2) {
            name += L", SAFI " + ca::DecimalText(type[2]);
        }
        // inherit: the addresses are those of the issuer.
        if (family.IpAddressChoice()->Tag() == kAsn1Null) {
            lines.Line(name, SetZORNAMessage(kMsgInherited));
            return;
        }
        lines.Line(name, L"");
        const CTextLines::Level level(lines);
        const ca::CDecoded<CAsn1SequenceOf<CAsn1Any>> list(family.IpAddressChoice()->Raw());
        ca::SayEach(*list, lines, [&](const CAsn1Any& element) {
            SayAddresses(element, isV4 ? kIpv4Octets : kIpv6Octets, lines);
        });
    });
}

// ASIdOrRange (RFC 3779, 3.2.3).
void SayAsNumber(const CAsn1Any& element, CTextLines& lines) {
    if (element.Tag() == kAsn1Integer) {
        lines.Line(ca::NumberText(&element));
        return;
    }
    const ca::CDecoded<CAsn1AsRange> range(element.Raw());
    lines.Line(ca::NumberText(range->Min()) + L'-' + ca::NumberText(range->Max()));
}

// ASIdentifierChoice: inherited, or a list.
void SayAsNumbers(const wchar_t* label, const CAsn1Any* choice, CTextLines& lines) {
    if (choice == nullptr) {
        return;
    }
    if (choice->Tag() == kAsn1Null) {
        lines.Line(label, SetZORNAMessage(kMsgInherited));
        return;
    }
    lines.Line(label, L"");
    const CTextLines::Level level(lines);
    const ca::CDecoded<CAsn1SequenceOf<CAsn1Any>> list(choice->Raw());
    ca::SayEach(*list, lines, [&](const CAsn1Any& element) { SayAsNumber(element, lines); });
}

// Autonomous systems, and the identifiers of routing domains (RDI).
void SayAutonomousSystems(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1AsIdentifiers> systems(value);
    SayAsNumbers(L"AS", systems->Asnum(), lines);
    SayAsNumbers(L"RDI", systems->Rdi(), lines);
}

// ---- Telephone numbers (RFC 8226) ----

// TNEntry (RFC 8226, 9): a provider's code, a block of numbers, or one of them.
void SayTelephoneNumbers(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1TnEntry>> entries(value);
    ca::SayEach(*entries, lines, [&](const CAsn1TnEntry& entry) {
        if (entry.Spc() != nullptr) {
            lines.Line(kMsgServiceProvider, ca::MemberText(entry.Spc()));
        } else if (const CAsn1TelephoneNumberRange* range = entry.Range()) {
            lines.Line(kMsgTelephoneNumber, ca::MemberText(range->Start()) + L", " +
                                                SetZORNAMessage(kMsgNumberCount) + L": " +
                                                ca::NumberText(range->Count()));
        } else {
            lines.Line(kMsgTelephoneNumber, ca::MemberText(entry.One()));
        }
    });
}

constexpr ca::ExtensionRow kRows[] = {
    {"sctList", SayStamps},
    {"ocspSctList", SayStamps},
    {"ctPoison", ca::SayPresent},
    {"ocspNoCheck", ca::SayPresent},
    {"tlsFeature", SayTlsFeatures},
    {"torServiceDescriptor", SayOnionService},
    {"acmeIdentifier", ca::SayOctetString},
    {"proxyCertInfo", SayProxy},
    {"sbgp-ipAddrBlock", SayAddressBlocks},
    {"ipAddrBlocks-v2", SayAddressBlocks},
    {"sbgp-autonomousSysNum", SayAutonomousSystems},
    {"autonomousSysIds-v2", SayAutonomousSystems},
    {"TNAuthList", SayTelephoneNumbers},
};

}  // namespace

namespace ca {

std::span<const ExtensionRow> NetworkExtensionRows() {
    return kRows;
}

}  // namespace ca
