#include "module/viewer/CertInfoDlg.h"

#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "module/MessageBox.h"
#include "module/viewer/DetailsPage.h"
#include "module/viewer/EntriesPage.h"
#include "module/viewer/FileHeadline.h"
#include "module/viewer/FileModel.h"
#include "module/viewer/FileOpening.h"
#include "module/viewer/GeneralPage.h"
#include "module/viewer/PathPage.h"
#include "module/viewer/StructurePage.h"
#include "module/viewer/ViewerText.h"
#include "module/viewer/WindowSize.h"
#include "ui_CertInfoDlg.h"

#include <QEvent>
#include <QStyle>

#include <algorithm>
#include <exception>
#include <iterator>
#include <memory>
#include <span>
#include <utility>

namespace {

using ca::CFileDocument;
using ca::ItemIndex;
using ca::MessageText;
using ca::ViewerWord;
using ca::Word;

std::span<const unsigned char> OctetsOf(const QByteArray& bytes) {
    return {reinterpret_cast<const unsigned char*>(bytes.constData()),
            static_cast<std::size_t>(bytes.size())};
}

constexpr QSize kFirstSize(1000, 640);
constexpr int kListShare = 30;         // percent of the width
constexpr std::size_t kAllOpen = 500;  // items up to which all of them are opened in the list

}  // namespace

CCertInfoDlg::CCertInfoDlg(QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::CertInfoDlg>()),
      m_items(new ca::CFileModel(this)),
      m_general(new ca::CGeneralPage),
      m_details(new ca::CDetailsPage),
      m_pathPage(new ca::CPathPage),
      m_entries(new ca::CEntriesPage),
      m_structure(new ca::CStructurePage) {
    m_ui->setupUi(this);
    BuildPages();
    ConnectParts();
    AddShortcuts();
    Run([this] {
        Translate();
        ShowCurrent();
    });
    ca::RestoreWindowSize(*this, kFirstSize);
}

CCertInfoDlg::~CCertInfoDlg() = default;

CCertInfoDlg* CCertInfoDlg::Create() {
    if (!ca::CanShowWidgets()) {
        return nullptr;
    }
    auto dialog = std::make_unique<CCertInfoDlg>();
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowFlags(dialog->windowFlags() | Qt::WindowStaysOnTopHint);
    dialog->setFocusPolicy(Qt::StrongFocus);
    return dialog.release();  // it deletes itself when closed
}

bool CCertInfoDlg::setCertificate(const QByteArray& octets) {
    return Attempt([&] {
        CFileDocument document = CFileDocument::OfCertificate(OctetsOf(octets));
        const ItemIndex first = document.FirstCertificate();
        ShowDocument(std::move(document), first);
    });
}

bool CCertInfoDlg::setRecordJson(const QByteArray& utf8) {
    return Attempt([&] {
        const auto size = static_cast<std::size_t>(utf8.size());
        // Row 0 of a document is the file itself; what a record holds begins after it.
        ShowDocument(CFileDocument::OfRecord(std::string_view(utf8.constData(), size)), 1);
    });
}

bool CCertInfoDlg::setStructure(const QByteArray& octets) {
    return Attempt([&] { ShowDocument(CFileDocument::OfStructure(OctetsOf(octets)), 1); });
}

bool CCertInfoDlg::showFile(const QByteArray& octets, const QString& name) {
    return Attempt([&] {
        CFileDocument document = CFileDocument::OfFile(OctetsOf(octets), name);
        const ItemIndex first = document.FirstItem();
        ShowDocument(std::move(document), first);
    });
}

bool CCertInfoDlg::addFile(const QByteArray& octets, const QString& name) {
    if (m_document.IsEmpty()) {
        return showFile(octets, name);
    }
    return Attempt([&] {
        if (m_document.Files().size() >= std::size_t{ca::kMaxFiles}) {
            throw ca::Exception(ca::kErrBadData);
        }
        CFileDocument added = CFileDocument::OfFile(OctetsOf(octets), name);
        m_items->SetDocument(nullptr, m_language);
        m_document.Append(std::move(added));
        FillList();
        ShowCurrent();
    });
}

bool CCertInfoDlg::openFiles(const QStringList& paths) {
    QStringList faults;
    const bool isShown = Attempt([&] {
        ca::OpenedFiles opened = ca::OpenFiles(paths);
        faults = opened.faults;
        if (!opened.document.IsEmpty()) {
            const ItemIndex first = opened.document.FirstItem();
            ShowDocument(std::move(opened.document), first);
        }
        if (opened.code != 0) {
            throw ca::Exception(opened.code);
        }
    });
    // After ShowDocument(), which clears the line.
    Say(faults.join("; "));
    return isShown;
}

bool CCertInfoDlg::exportTo(const QString& path, const QString& format) {
    return Attempt([&] {
        const std::string file = path.toStdString();
        const ca::ItemFormat wanted = ca::FormatOf(format.toStdString(), file);
        ca::WriteWhole(file, ca::ItemContent(m_document, m_shown, wanted));
    });
}

bool CCertInfoDlg::SetCertInfo(const ca::CertInfo2& info) {
    return Attempt([&] { ShowDocument(CFileDocument::OfRecord(info), 1); });
}

QString CCertInfoDlg::Language() const {
    return m_language == 0 ? "" : m_language == Ru::LangID ? "ru" : "en";
}

void CCertInfoDlg::SetLanguage(const QString& language) {
    const bool isRussian = language.compare("ru", Qt::CaseInsensitive) == 0;
    m_language = language.isEmpty() ? 0 : isRussian ? Ru::LangID : En::LangID;
    TranslateIfNeeded();
}

int CCertInfoDlg::CurrentCertificate() const {
    // -1 is a signature or another item beside the path; 0 stands for an empty window, too.
    const auto place = std::ranges::find(m_path.items, m_shown);
    return m_path.items.empty()          ? 0
           : place == m_path.items.end() ? -1
                                         : static_cast<int>(place - m_path.items.begin());
}

void CCertInfoDlg::SetCurrentCertificate(int index) {
    if (index >= 0 && index < CertificateCount() && index != CurrentCertificate()) {
        Run([&] {
            m_shown = m_path.items[static_cast<std::size_t>(index)];
            ShowCurrent();
        });
    }
}

int CCertInfoDlg::Page() const {
    return static_cast<int>(std::ranges::find(m_pages, m_ui->pages->currentWidget()) - m_pages);
}

void CCertInfoDlg::SetPage(int page) {
    if (page >= 0 && page < ca::kPages &&
        m_ui->pages->isTabVisible(m_ui->pages->indexOf(m_pages[page]))) {
        m_ui->pages->setCurrentWidget(m_pages[page]);
    }
}

// The item of a single file has no row.
int CCertInfoDlg::FirstRow() const {
    return m_document.Files().size() == 1 ? 1 : 0;
}

int CCertInfoDlg::ItemCount() const {
    return static_cast<int>(m_document.Count()) - FirstRow();
}

int CCertInfoDlg::CurrentItem() const {
    return m_shown == ca::kNoItem ? -1 : static_cast<int>(m_shown) - FirstRow();
}

void CCertInfoDlg::SetCurrentItem(int row) {
    if (row >= 0 && row < ItemCount()) {
        Run([&] { ShowItem(static_cast<ItemIndex>(row + FirstRow())); });
    }
}

QString CCertInfoDlg::HeadlineText() const {
    return m_ui->headlineText->text();
}

void CCertInfoDlg::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    // The host may have changed the language of the process while another window was in front.
    if (event->type() == QEvent::LanguageChange || event->type() == QEvent::ActivationChange) {
        TranslateIfNeeded();
    }
}

// The list keeps its share until the user gives it another one.
void CCertInfoDlg::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    if (!m_isListMoved) {
        const int list = width() * kListShare / 100;
        m_ui->splitter->setSizes({list, width() - list});
    }
}

void CCertInfoDlg::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    ca::FitIntoScreen(*this);
}

void CCertInfoDlg::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    // Otherwise the next window would be as large as the screen without being maximised.
    if (!isMaximized() && !isFullScreen()) {
        ca::StoreWindowSize(*this);
    }
}

void CCertInfoDlg::BuildPages() {
    m_pages[ca::kGeneralPage] = m_general;
    m_pages[ca::kDetailsPage] = m_details;
    m_pages[ca::kPathPage] = m_pathPage;
    m_pages[ca::kStructurePage] = m_structure;
    m_pages[ca::kEntriesPage] = m_entries;
    // In the order in which they are of interest.
    for (const int page : {ca::kGeneralPage, ca::kDetailsPage, ca::kEntriesPage, ca::kPathPage,
                           ca::kStructurePage}) {
        m_ui->pages->addTab(m_pages[page], QString());
    }
    m_items->SetDamageIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this));
    m_ui->itemTree->setModel(m_items);
}

// Nothing is thrown into the event loop or a host's call: the code instead.
uint CCertInfoDlg::Run(const std::function<void()>& operation) const {
    const ca::CLanguageScope scope(m_language);
    try {
        operation();
        return ca::kErrNone;
    } catch (const ca::Exception& fault) {
        return fault.errorCode;
    } catch (const std::exception&) {
        return ca::kErrExecution;
    }
}

bool CCertInfoDlg::Attempt(const std::function<void()>& operation) {
    m_lastErrorCode = Run(operation);
    m_lastError.clear();
    if (m_lastErrorCode == ca::kErrNone) {
        return true;
    }
    Run([this] {
        m_lastError = QString::fromStdWString(GetErrorMessage(m_lastErrorCode, /*prefix=*/false));
    });
    return false;
}

void CCertInfoDlg::ShowDocument(CFileDocument document, ItemIndex item) {
    m_items->SetDocument(nullptr, m_language);
    m_document = std::move(document);
    m_shown = ca::kNoItem;
    Say({});
    FillList();
    m_ui->pages->setCurrentWidget(m_pages[ca::kGeneralPage]);
    ShowItem(item);
    if (item != ca::kNoItem && m_document[item].kind == ca::ItemKind::kStructure) {
        SetPage(ca::kStructurePage);
    }
}

// Anew: the document, or the language of its names, has changed.
void CCertInfoDlg::FillList() {
    m_items->SetDocument(&m_document, m_language);
    m_ui->itemTree->setVisible(ItemCount() > 1);
    if (m_document.Count() <= kAllOpen) {
        m_ui->itemTree->expandAll();
    } else {
        m_ui->itemTree->expandToDepth(0);
    }
}

void CCertInfoDlg::ShowItem(ItemIndex item) {
    if (item != ca::kNoItem) {
        m_shown = item;
        m_path = m_document.PathOf(item);
        ShowCurrent();
    }
}

void CCertInfoDlg::ShowCurrent() {
    // Pages are filled when they come into sight: outlines and lists of a large item take their
    // time.
    std::ranges::fill(m_isFilled, false);
    m_description.reset();
    m_ui->headlineText->setText(ca::Headline(m_document, m_shown));
    const bool hasItem = m_shown != ca::kNoItem;
    const auto has = [this](ca::ItemFormat format) {
        return ca::HasFormat(m_document, m_shown, format);
    };
    m_ui->toolBar->SetPossible(hasItem, has(ca::ItemFormat::kText), has(ca::ItemFormat::kPem),
                               has(ca::ItemFormat::kJson));
    QString title = Word(ViewerWord::kCertificate);
    if (hasItem) {
        const QString dash = QString::fromWCharArray(L" \u2013 ");
        const ca::ItemKindRow& row = ca::KindRow(m_document[m_shown].kind);
        const QString name = row.name != nullptr ? row.name(m_document, m_shown) : QString();
        const QString file = ca::ShownLine(m_document.FileName(m_shown).toStdWString());
        const bool isFile = m_document[m_shown].kind == ca::ItemKind::kFile;
        title = isFile ? name
                       : (file.isEmpty() ? file : file + dash) + ca::KindText(m_document[m_shown]) +
                             (name.isEmpty() ? name : dash + name);
    }
    setWindowTitle(title);
    SelectInList();
    ShowPages();
    FillPage();
}

// What is marked in the list is what is shown, wherever it was chosen.
void CCertInfoDlg::SelectInList() {
    const QModelIndex row = m_items->IndexOf(m_shown);
    // Setting the row that is current already would scroll the list away from where the user looks.
    if (m_ui->itemTree->currentIndex() != row) {
        m_ui->itemTree->setCurrentIndex(row);
        m_ui->itemTree->scrollTo(row);
    }
}

void CCertInfoDlg::ShowPages() {
    const unsigned pages =
        m_shown != ca::kNoItem ? ca::KindRow(m_document[m_shown].kind).pages : ~0U;
    if (Page() < ca::kPages && (pages & ca::PageBit(static_cast<ca::ViewerPage>(Page()))) == 0) {
        m_ui->pages->setCurrentWidget(m_pages[ca::kGeneralPage]);
    }
    for (int page = 0; page < ca::kPages; ++page) {
        const bool isThere = (pages & ca::PageBit(static_cast<ca::ViewerPage>(page))) != 0;
        m_ui->pages->setTabVisible(m_ui->pages->indexOf(m_pages[page]), isThere);
    }
}

const ca::ItemDescription& CCertInfoDlg::Description() {
    if (!m_description) {
        m_description = ca::DescribeItem(m_document, m_shown);
    }
    return *m_description;
}

// Fills the page in sight, if that was not done yet.
void CCertInfoDlg::FillPage() {
    const int page = Page();
    if (page == ca::kPages || m_isFilled[page] || m_shown == ca::kNoItem) {
        return;
    }
    m_isFilled[page] = true;
    switch (page) {
        case ca::kGeneralPage:
            m_general->ShowItem(Description());
            break;
        case ca::kDetailsPage:
            m_details->ShowFields(Description().fields);
            break;
        case ca::kPathPage:
            m_pathPage->ShowPath(m_document, m_path, m_shown);
            break;
        case ca::kEntriesPage:
            m_entries->ShowList(m_document[m_shown].octets);
            break;
        default:
            m_structure->ShowOctets(m_document.EncodingOf(m_shown),
                                    ca::DamageText(m_document, m_shown));
            break;
    }
}

void CCertInfoDlg::TranslateIfNeeded() {
    Run([this] {
        if (GetZORNALng() != m_shownLanguage) {
            Translate();
            FillList();
            ShowCurrent();
        }
    });
}

void CCertInfoDlg::Translate() {
    m_shownLanguage = GetZORNALng();
    const auto name = [this](ca::ViewerPage page, const QString& text) {
        m_ui->pages->setTabText(m_ui->pages->indexOf(m_pages[page]), text);
    };
    name(ca::kGeneralPage, MessageText(kMsgDlgGeneral));
    name(ca::kDetailsPage, MessageText(kMsgDlgDetails));
    name(ca::kPathPage, MessageText(kMsgDlgPath));
    name(ca::kStructurePage, MessageText(kMsgDlgStructure));
    name(ca::kEntriesPage, Word(ViewerWord::kEntriesTab));
    m_ui->closeButton->setText(MessageText(kMsgDlgClose));
    m_ui->itemTree->setAccessibleName(Word(ViewerWord::kItems));
    m_ui->toolBar->Translate();
    m_details->Translate();
    m_pathPage->Translate();
    m_entries->Translate(m_language);
    m_structure->Translate(m_language);
    Say({});
}

void CCertInfoDlg::Say(const QString& message) {
    m_ui->messageText->setText(ca::LaidOut(message, ca::kMaxLineText));
    m_ui->messageText->setAccessibleName(m_ui->messageText->text());
}

void CCertInfoDlg::SwitchLanguage() {
    SetLanguage(m_shownLanguage == Ru::LangID ? "en" : "ru");
}
