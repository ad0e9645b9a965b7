#pragma once

#include "module/viewer/FileItem.h"
#include "module/viewer/SignatureVerdicts.h"
#include "module/viewer/SourceFile.h"
#include "records/scan/SignerCertificates.h"

#include <QString>

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace ca {

/// Why a path of issuers ends where it does.
enum class PathEnd : std::uint8_t {
    kNone,  ///< there is no path
    kRoot,
    kNoIssuer,
    kRepeats,
    kTooLong,
    kNoSigner,
};

/// A certificate and its issuers, as far as they are in the document.
struct ItemPath {
    std::vector<ItemIndex> items;  ///< the certificate first
    PathEnd end = PathEnd::kNone;
};

/// What the viewer shows: the items of one file or several. Items are described when they are
/// looked at, so that ten thousand of them cost little more than their octets. Nothing is shared;
/// one thread at a time.
class CFileDocument {
  public:
    /// Octets of one file; more is refused with 16306. Its structure takes up to fifty times as
    /// many in memory while it is shown.
    static constexpr std::size_t kMaxOctets = std::size_t{32} << 20;

    CFileDocument() = default;

    /// Whatever is in a file: DER or BER, PEM, Base64, a MIME message; or the JSON text of a
    /// record, as OfRecord() reads it. What is damaged is shown as far as it goes.
    /// Throws ca::Exception: 16118 no octets, 16306 none that are BER, or too many; for JSON what
    /// OfRecord() throws.
    static CFileDocument OfFile(std::span<const unsigned char> octets, const QString& name);
    /// The same for octets that hold a certificate; 16113 when there is none.
    static CFileDocument OfCertificate(std::span<const unsigned char> octets);
    /// One item of BER octets of any kind.
    static CFileDocument OfStructure(std::span<const unsigned char> octets);
    /// Reads the JSON text of a record (UTF-8), as answers carry it under "certInfo", or of a whole
    /// answer.
    /// Throws ca::Exception: 16300 for what is no such record, 16113 for one that says nothing of
    /// its certificate, 16306 for too many octets.
    static CFileDocument OfRecord(std::string_view json);
    static CFileDocument OfRecord(const CertInfo2& record);

    /// Adds the files of another document after those of this one.
    void Append(CFileDocument other);

    bool IsEmpty() const { return m_items.empty(); }
    std::size_t Count() const { return m_items.size(); }
    const FileItem& operator[](ItemIndex item) const { return m_items[item]; }
    /// The items of the files.
    const std::vector<ItemIndex>& Files() const { return m_files; }
    ItemIndex FileOf(ItemIndex item) const;
    const QString& FileName(ItemIndex item) const { return SourceOf(item).name; }

    /// The item of the first file to begin with: its first signature; else the certificate that
    /// issued no other one; in the place of both the kObject that holds them; else the first item.
    /// kNoItem for an empty document.
    ItemIndex FirstItem() const;
    /// The certificate to begin with: that of the first signer, else as FirstItem() has it.
    ItemIndex FirstCertificate() const;

    /// The record of a certificate that came as one; null for the others.
    const CertInfo2* RecordOf(ItemIndex item) const;
    /// The encoding of an item; of a record the one that it carries. Empty when it is not known.
    std::vector<unsigned char> EncodingOf(ItemIndex item) const;
    /// The message that a signature, or what belongs to it, stands in; kNoItem for none.
    ItemIndex MessageOf(ItemIndex item) const;
    /// The certificate of a signature's signer in its message; kNoItem when it is not there.
    ItemIndex SignerOf(ItemIndex signature) const;
    /// What is found of a signature; see CSignatureVerdicts.
    const SignInfo* VerifiedOf(ItemIndex signature) const {
        return m_verdicts.Of(*this, signature);
    }
    /// The path of a certificate, or of a signature's signer.
    ItemPath PathOf(ItemIndex item) const;

  private:
    // Who issued whom among all certificates of the document.
    struct Issuers {
        std::vector<ItemIndex> certificates;
        std::vector<std::size_t> issuers;         // index in `certificates` for each of them
        std::map<ItemIndex, std::size_t> places;  // of an item in `certificates`
    };

    static CFileDocument OfSource(std::unique_ptr<SourceFile> source);
    static CFileDocument OfOwnRecord(std::unique_ptr<CertInfo2> record);
    const SourceFile& SourceOf(ItemIndex item) const;
    const Issuers& FindAllIssuers() const;
    ItemIndex FirstSignature() const;
    ItemIndex FindLeaf() const;
    ItemIndex IssuerOf(ItemIndex certificate) const;
    bool IsRoot(ItemIndex certificate) const;
    ItemPath PathOfCertificate(ItemIndex certificate) const;

    std::vector<std::unique_ptr<SourceFile>> m_sources;
    std::vector<ItemIndex> m_files;  // the item of each source
    std::vector<FileItem> m_items;
    // Made when they are asked for.
    mutable std::optional<Issuers> m_issuers;
    mutable std::map<ItemIndex, CSignerCertificates> m_signers;  // by message
    mutable CSignatureVerdicts m_verdicts;
};

}  // namespace ca
