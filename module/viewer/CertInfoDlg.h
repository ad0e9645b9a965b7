#pragma once

#include "module/viewer/CertDocument.h"

#include <QByteArray>
#include <QDialog>
#include <QString>

#include <cstdint>
#include <functional>
class QFileDialog;
class QLabel;
class QPushButton;
class QTabWidget;

namespace ca {
class CDetailsPage;
class CGeneralPage;
class CPathPage;
class CStructurePage;
}  // namespace ca

/// The certificate viewer. A host fills it through Qt's meta-object alone, because no symbol of it
/// is exported: the properties and invokable operations below are the interface, and mod_foo.h
/// describes them for the host. Widgets belong to the GUI thread, so every operation does.
class CCertInfoDlg : public QDialog {
    Q_OBJECT
    /// "en", "ru", or "" for the process's language. Names, words and captions follow at once; a
    /// record that came as JSON keeps its texts.
    Q_PROPERTY(QString language READ Language WRITE SetLanguage)
    /// What the last operation failed with, in the viewer's language; "" and 0 after a success.
    Q_PROPERTY(QString lastError READ LastError)
    Q_PROPERTY(uint lastErrorCode READ LastErrorCode)
    /// Certificates shown on the path: 0 when there is none, 1 without a known issuer.
    Q_PROPERTY(int certificateCount READ CertificateCount)
    /// The one shown: 0 the certificate itself, 1 its issuer. Other numbers change nothing.
    Q_PROPERTY(int currentCertificate READ CurrentCertificate WRITE SetCurrentCertificate)
    /// 0 general, 1 details, 2 path, 3 structure. Other numbers change nothing.
    Q_PROPERTY(int page READ Page WRITE SetPage)

  public:
    explicit CCertInfoDlg(QWidget* parent = nullptr);
    CCertInfoDlg(const CCertInfoDlg&) = delete;
    CCertInfoDlg& operator=(const CCertInfoDlg&) = delete;
    ~CCertInfoDlg() override;

    /// A dialog that deletes itself when closed, stays on top and takes the focus, for the caller
    /// to show; null where ca::CanShowWidgets() is false.
    static CCertInfoDlg* Create();

    // A failure is answered with false and lastError; what was shown before stays.

    /// Shows the certificate of DER, PEM, Base64 or PKCS #7 octets, with the issuers among them.
    Q_INVOKABLE bool setCertificate(const QByteArray& octets);
    /// Shows a record: the JSON object of a "CertInfo2", UTF-8.
    Q_INVOKABLE bool setRecordJson(const QByteArray& utf8);
    /// Shows BER octets of any kind, a revocation list or a message; the structure page alone.
    Q_INVOKABLE bool setStructure(const QByteArray& octets);
    /// Writes the current certificate to a file, which is replaced as a whole or not at all.
    /// \param format  "der", "pem" or "text"; "" goes by the file name's ending.
    Q_INVOKABLE bool exportTo(const QString& path, const QString& format);

    /// The same for a record of this library.
    bool SetCertInfo(const ca::CertInfo2& info);

    QString Language() const;
    void SetLanguage(const QString& language);
    QString LastError() const { return m_lastError; }
    uint LastErrorCode() const { return m_lastErrorCode; }
    int CertificateCount() const { return static_cast<int>(m_document.Count()); }
    int CurrentCertificate() const { return m_current; }
    void SetCurrentCertificate(int index);
    int Page() const;
    void SetPage(int page);

  protected:
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    enum { kGeneral, kDetails, kPath, kStructure, kPages };

    void BuildPages();
    void BuildButtons();
    void AddShortcuts();
    uint Run(const std::function<void()>& operation) const;
    bool Attempt(const std::function<void()>& operation);
    void ShowDocument(ca::CCertDocument document);
    void ShowCurrent();
    void FillPage();
    void Translate();
    void TranslateIfNeeded();
    void Find(const std::function<void(ca::CDetailsPage&)>& action);
    void AskWhereToSave();
    void Save(const QFileDialog& answer, const QString& path);

    QTabWidget* m_pages;
    ca::CGeneralPage* m_general;
    ca::CDetailsPage* m_details;
    ca::CPathPage* m_path;
    ca::CStructurePage* m_structure;
    QLabel* m_message;
    QPushButton* m_save;
    QPushButton* m_close;
    ca::CCertDocument m_document;
    int m_current = 0;
    bool m_isFilled[kPages] = {};       // a page is filled when it is looked at
    std::uint32_t m_language = 0;       // 0: the process's
    std::uint32_t m_shownLanguage = 0;  // of the captions
    QString m_lastError;
    uint m_lastErrorCode = 0;
};
