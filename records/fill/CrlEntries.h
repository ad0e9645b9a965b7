#pragma once

#include "asn1/views/CrlViews.h"
#include "records/fill/CrlInfoFill.h"
#include "records/text/TimeText.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace ca {

/// One entry of a revocation list as it stands (RFC 5280, 5.1.2.6), nothing decoded.
struct CrlEntry {
    std::span<const unsigned char> raw;
    CAsn1RevokedCertificateView members;
    std::size_t index = 0;  ///< place in the list
    /// GeneralNames of the certificate's issuer: from this entry or from the last one before it
    /// that has them (RFC 5280, 5.3.3). Empty for the issuer of the list.
    std::span<const unsigned char> certificateIssuer;

    const CAsn1Element& Serial() const { return members.UserCertificate(); }
    bool HasExtensions() const { return !members.CrlEntryExtensions().raw.empty(); }
};

/// Walks the entries of a list and stops at those that a page asks for. What lies in front of them
/// is stepped over once; memory is constant.
class CCrlWalk {
  public:
    /// \param entries  the content of revokedCertificates; outlives the walk, as `page` does.
    CCrlWalk(std::span<const unsigned char> entries, const CrlPage& page);
    /// Goes on where another walk stood: \param entries  from `reached` on, an entry of it.
    CCrlWalk(std::span<const unsigned char> entries, const CrlPage& page, const CrlEntry& reached);

    /// Steps to the next entry of the page; false when there is no more. Octets that are not an
    /// element are the last entry, which is not whole then.
    bool Next();
    const CrlEntry& Entry() const { return m_entry; }

    /// Entries of the whole list. The walk is over then.
    std::size_t CountAll();
    /// True when the walk met octets that are not an element.
    bool IsBroken() const { return m_isBroken; }

  private:
    bool Step(CAsn1Element& element);
    bool IsAskedFor() const;

    CAsn1Cursor m_cursor;
    const CrlPage& m_page;
    CrlEntry m_entry;
    std::size_t m_walked = 0;
    std::size_t m_found = 0;
    bool m_isBroken = false;
};

/// Describes the entries of one list, in the order of a walk.
class CCrlDescriber {
  public:
    /// \param listIssuer  the encoding of the list's issuer; outlives this.
    explicit CCrlDescriber(std::span<const unsigned char> listIssuer) : m_listIssuer(listIssuer) {}

    /// Fills a record, whose strings are reused; faults are added to `error`.
    void Describe(const CrlEntry& entry, RevokedCert& record, std::wstring& error);

    /// Octets of JSON that an entry becomes.
    std::size_t TextOctets(const RevokedCert& record);
    /// The same of one of which IsPlainCrlEntry() is true, without describing it.
    std::size_t PlainTextOctets(const CrlEntry& entry);

  private:
    const std::wstring& IssuerOf(const CrlEntry& entry);

    std::span<const unsigned char> m_listIssuer;
    // Entries that follow each other mostly share their issuer: its text is made once.
    const unsigned char* m_issuerOctets = nullptr;
    std::wstring m_issuer;
    std::size_t m_plainOctets = 0;  // of an entry without a serial number
    CLocalOffsets m_offsets;
    JsonBuffer m_scratch;
};

/// What is wrong with an entry, for the record's "Error".
std::wstring CrlEntryFault(std::size_t index, const std::wstring& fault);

/// True when CCrlDescriber::Describe() is sure to find no fault.
bool IsPlainCrlEntry(const CrlEntry& entry);

}  // namespace ca
