#pragma once

#include "records/fill/CertificateBundle.h"
#include "records/scan/CertificateNames.h"

#include <cstddef>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace ca {

/// Certificates of issuers that lie on this machine. They help to describe a path; nothing is
/// verified by them. Filled once, then only read: Extend() is safe from any thread.
class CKnownIssuers {
  public:
    CKnownIssuers() = default;
    CKnownIssuers(const CKnownIssuers&) = delete;
    CKnownIssuers& operator=(const CKnownIssuers&) = delete;

    /// Adds the certificates of a file, or of the files of a directory (not of those below it) by
    /// their names: DER, PEM, Base64 or a PKCS #7 message. What cannot be read and what holds no
    /// certificate is passed over, and so is what exceeds the bounds of docs/limits.md.
    void AddPlace(const std::wstring& path);

    std::size_t Count() const noexcept { return m_certificates.size(); }

    /// Nests the records of further issuers after the last one of `record`, as far as they are
    /// known and to a bounded depth. An issuer is found by name, and by key identifier where both
    /// certificates have one; where that leaves several, none is taken.
    void Extend(CertInfo2& record) const;

  private:
    struct Certificate {
        std::vector<unsigned char> der;
        CertificateNames names;  // views of `der`
        std::string_view key;    // likewise; empty: none
    };

    void AddFile(const std::string& path);
    const Certificate* FindIssuer(std::span<const unsigned char> certificate) const;

    std::deque<Certificate> m_certificates;
    std::multimap<std::string_view, const Certificate*> m_bySubject;
    std::size_t m_files = 0;   // looked at
    std::size_t m_octets = 0;  // read
};

}  // namespace ca
