#pragma once

#include "module/viewer/FileDocument.h"
#include "module/viewer/ItemExport.h"
#include "module/viewer/ItemKinds.h"

#include <QByteArray>
#include <QDialog>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
class QFileDialog;
class QTreeView;

namespace Ui {
class CertInfoDlg;
}  // namespace Ui

namespace ca {
class CDetailsPage;
class CEntriesPage;
class CFileModel;
class CGeneralPage;
class CPathPage;
class CSearchBar;
class CStructurePage;
}  // namespace ca

/// The viewer of certificates and of the files that hold them. A host fills it through Qt's
/// meta-object alone, because no symbol of it is exported: the properties and invokable operations
/// below are the interface, and mod_foo.h describes them for the host. Widgets belong to the GUI
/// thread, so every operation does.
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
    /// The one shown: 0 the certificate itself, 1 its issuer. -1 while a signature is shown, whose
    /// signer's path it is. Other numbers change nothing.
    Q_PROPERTY(int currentCertificate READ CurrentCertificate WRITE SetCurrentCertificate)
    /// 0 general, 1 details, 2 path, 3 structure, 4 entries of a revocation list. Other numbers,
    /// and those of pages that an item does not have, change nothing.
    Q_PROPERTY(int page READ Page WRITE SetPage)
    /// Rows of the list of what the files hold, and the one that is shown, from 0 on.
    Q_PROPERTY(int itemCount READ ItemCount)
    Q_PROPERTY(int currentItem READ CurrentItem WRITE SetCurrentItem)
    /// What the files are, in a line.
    Q_PROPERTY(QString headline READ HeadlineText)

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
    /// Shows BER octets of any kind; the structure page first.
    Q_INVOKABLE bool setStructure(const QByteArray& octets);
    /// Shows whatever a file holds, or adds it to what is shown. \param name  "" for none.
    Q_INVOKABLE bool showFile(const QByteArray& octets, const QString& name);
    Q_INVOKABLE bool addFile(const QByteArray& octets, const QString& name);
    /// Shows files of this machine in the place of what is shown. False when one of them cannot be
    /// shown; the others are.
    Q_INVOKABLE bool openFiles(const QStringList& paths);
    /// Writes the item that is shown to a file, which is replaced as a whole or not at all.
    /// \param format  "der", "pem", "text" or "json"; "" goes by the file name's ending.
    Q_INVOKABLE bool exportTo(const QString& path, const QString& format);

    /// The same for a record of this library.
    bool SetCertInfo(const ca::CertInfo2& info);

    QString Language() const;
    void SetLanguage(const QString& language);
    QString LastError() const { return m_lastError; }
    uint LastErrorCode() const { return m_lastErrorCode; }
    int CertificateCount() const { return static_cast<int>(m_path.items.size()); }
    int CurrentCertificate() const;
    void SetCurrentCertificate(int index);
    int Page() const;
    void SetPage(int page);
    int ItemCount() const;
    int CurrentItem() const;
    void SetCurrentItem(int row);
    QString HeadlineText() const;

  protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void BuildPages();
    void ConnectParts();
    void AddShortcuts();
    uint Run(const std::function<void()>& operation) const;
    bool Attempt(const std::function<void()>& operation);
    void ShowDocument(ca::CFileDocument document, ca::ItemIndex item);
    void FillList();
    void ShowItem(ca::ItemIndex item);
    void ShowCurrent();
    void ShowPages();
    void SelectInList();
    void FillPage();
    const ca::ItemDescription& Description();
    void TranslateIfNeeded();
    void Translate();
    int FirstRow() const;
    void Say(const QString& message);
    void SwitchLanguage();

    void StartSearch();
    void FindNext(bool forward);
    void AskWhatToOpen();
    void AskWhereToSave();
    void AskWhereToSaveElement();
    void Save(const QString& path, ca::ItemFormat format);
    void Print();
    void CopyAs(ca::ItemFormat format);
    void CopyAll();

    std::unique_ptr<Ui::CertInfoDlg> m_ui;
    ca::CFileModel* m_items;
    ca::CGeneralPage* m_general;
    ca::CDetailsPage* m_details;
    ca::CPathPage* m_pathPage;
    ca::CEntriesPage* m_entries;
    ca::CStructurePage* m_structure;
    QWidget* m_pages[ca::kPages] = {};

    ca::CFileDocument m_document;
    ca::ItemIndex m_shown = ca::kNoItem;
    ca::ItemPath m_path;                               // of what was chosen in the list
    std::optional<ca::ItemDescription> m_description;  // of what is shown, once it is asked for
    bool m_isListMoved = false;                        // by the user
    bool m_isFilled[ca::kPages] = {};                  // a page is filled when it is looked at
    std::uint32_t m_language = 0;                      // 0: the process's
    std::uint32_t m_shownLanguage = 0;                 // of the captions
    QString m_lastError;
    uint m_lastErrorCode = 0;
};
