#pragma once

#include "records/CertInfo.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace ca {

/// What the viewer shows: a certificate's record and, nested in it, its issuers'. Or octets of any
/// other kind, which have a structure alone. Nothing is shared; one thread at a time.
class CCertDocument {
  public:
    /// Octets that a document may hold; more is refused with 16306. A structure takes up to fifty
    /// times its octets in memory.
    static constexpr std::size_t kMaxOctets = std::size_t{32} << 20;

    /// Reads the certificates of DER, PEM, Base64 or a PKCS #7 message: the one that issued no
    /// other, else the first, with its issuers as far as they are there.
    /// Throws ca::Exception: 16118 no octets, 16113 no certificate, 16306 too many octets.
    static CCertDocument OfCertificate(std::span<const unsigned char> octets);
    /// Reads the JSON text of a record (UTF-8), as answers carry it under "certInfo", or of a whole
    /// answer.
    /// Throws ca::Exception: 16300 for what is no such record, 16113 for one that says nothing of
    /// its certificate, 16306 for too many octets.
    static CCertDocument OfRecord(std::string_view json);
    /// A copy of a record.
    static CCertDocument OfRecord(const CertInfo2& record);
    /// BER octets of any kind, PEM and Base64 too. Damaged ones are taken where they begin as a
    /// sequence or a set.
    /// Throws ca::Exception: 16118 no octets, 16306 no BER or too many octets.
    static CCertDocument OfStructure(std::span<const unsigned char> octets);

    /// Has the texts in the current language. A record that came as one keeps the texts it has.
    void Translate();

    /// The certificate and its issuers: 0 for a structure and for an empty document.
    std::size_t Count() const { return m_path.size(); }
    /// Octets without a certificate.
    bool IsStructure() const { return m_path.empty() && !m_octets.empty(); }
    /// 0: the certificate, 1: its issuer, and so on. Below Count().
    const CertInfo2& Record(std::size_t index) const { return *m_path[index]; }
    /// The encoding of certificate `index`, or the structure's octets; empty when they are not
    /// known. Read-only in effect: the parser asks for octets that could be changed.
    std::vector<unsigned char> Octets(std::size_t index) const;

  private:
    void SetRecord(std::unique_ptr<CertInfo2> record);

    std::vector<unsigned char> m_octets;  // as received; empty for a record
    std::unique_ptr<CertInfo2> m_record;
    std::vector<const CertInfo2*> m_path;  // m_record and what it nests
};

}  // namespace ca
