#include "module/viewer/CertInfoDlg.h"

#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "module/MessageBox.h"
#include "module/viewer/CertExport.h"
#include "module/viewer/CertFields.h"
#include "module/viewer/DetailsPage.h"
#include "module/viewer/GeneralPage.h"
#include "module/viewer/PathPage.h"
#include "module/viewer/StructurePage.h"
#include "module/viewer/ViewerText.h"
#include "module/viewer/WindowSize.h"

#include <QEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <exception>
#include <iterator>
#include <memory>
#include <span>
#include <utility>

namespace {

using ca::MessageText;

std::span<const unsigned char> OctetsOf(const QByteArray& bytes) {
    return {reinterpret_cast<const unsigned char*>(bytes.constData()),
            static_cast<std::size_t>(bytes.size())};
}

constexpr QSize kFirstSize(940, 600);

// The formats in the order of the file dialog's filters.
struct FileFilter {
    ZornaMessage caption;
    const char* pattern;
    const char* suffix;
    const char* format;
};
constexpr FileFilter kFilters[] = {
    {kMsgDlgFilterDer, " (*.der *.cer *.crt)", "der", "der"},
    {kMsgDlgFilterPem, " (*.pem)", "pem", "pem"},
    {kMsgDlgFilterText, " (*.txt)", "txt", "text"},
};

// A name for the file without what file systems or shells take amiss.
QString FileName(const ca::CertInfo2& record) {
    constexpr int kLongest = 60;
    QString name = ca::ShortName(record.subjectTags, record.description).left(kLongest);
    for (QChar& c : name) {
        c = c.isLetterOrNumber() ? c : QChar('_');
    }
    return name;
}

}  // namespace

CCertInfoDlg::CCertInfoDlg(QWidget* parent)
    : QDialog(parent),
      m_pages(new QTabWidget),
      m_general(new ca::CGeneralPage),
      m_details(new ca::CDetailsPage),
      m_path(new ca::CPathPage),
      m_structure(new ca::CStructurePage),
      m_message(new QLabel),
      m_save(new QPushButton),
      m_close(new QPushButton) {
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_pages, 1);
    BuildPages();
    BuildButtons();
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
    return Attempt([&] { ShowDocument(ca::CCertDocument::OfCertificate(OctetsOf(octets))); });
}

bool CCertInfoDlg::setRecordJson(const QByteArray& utf8) {
    return Attempt([&] {
        const auto size = static_cast<std::size_t>(utf8.size());
        ShowDocument(ca::CCertDocument::OfRecord(std::string_view(utf8.constData(), size)));
    });
}

bool CCertInfoDlg::setStructure(const QByteArray& octets) {
    return Attempt([&] { ShowDocument(ca::CCertDocument::OfStructure(OctetsOf(octets))); });
}

bool CCertInfoDlg::exportTo(const QString& path, const QString& format) {
    return Attempt([&] {
        const std::string file = path.toStdString();
        ca::ExportCertificate(m_document, static_cast<std::size_t>(m_current), file,
                              ca::ExportFormat(format.toStdString(), file));
    });
}

bool CCertInfoDlg::SetCertInfo(const ca::CertInfo2& info) {
    return Attempt([&] { ShowDocument(ca::CCertDocument::OfRecord(info)); });
}

QString CCertInfoDlg::Language() const {
    return m_language == 0 ? "" : m_language == Ru::LangID ? "ru" : "en";
}

void CCertInfoDlg::SetLanguage(const QString& language) {
    const bool isRussian = language.compare("ru", Qt::CaseInsensitive) == 0;
    m_language = language.isEmpty() ? 0 : isRussian ? Ru::LangID : En::LangID;
    TranslateIfNeeded();
}

void CCertInfoDlg::SetCurrentCertificate(int index) {
    if (index >= 0 && index < CertificateCount() && index != m_current) {
        Run([&] {
            m_current = index;
            ShowCurrent();
        });
    }
}

int CCertInfoDlg::Page() const {
    return m_pages->currentIndex();
}

void CCertInfoDlg::SetPage(int page) {
    if (m_pages->isTabEnabled(page)) {
        m_pages->setCurrentIndex(page);
    }
}

void CCertInfoDlg::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange || event->type() == QEvent::ActivationChange) {
        TranslateIfNeeded();
    }
}

void CCertInfoDlg::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    if (!isMaximized() && !isFullScreen()) {
        ca::StoreWindowSize(*this);
    }
}

void CCertInfoDlg::BuildPages() {
    m_pages->setObjectName("pages");
    m_pages->addTab(m_general, QString());
    m_pages->addTab(m_details, QString());
    m_pages->addTab(m_path, QString());
    m_pages->addTab(m_structure, QString());
    connect(m_pages, &QTabWidget::currentChanged, this, [this] { Run([this] { FillPage(); }); });
    const auto goTo = [this](int index) {
        SetCurrentCertificate(index);
        SetPage(kGeneral);
    };
    connect(m_path, &ca::CPathPage::Chosen, this, goTo, Qt::QueuedConnection);
}

void CCertInfoDlg::BuildButtons() {
    m_message->setObjectName("messageText");
    m_message->setTextFormat(Qt::PlainText);
    m_message->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_save->setObjectName("saveButton");
    m_close->setObjectName("closeButton");
    m_save->setAutoDefault(false);
    m_close->setAutoDefault(false);
    auto* line = new QHBoxLayout;
    line->addWidget(m_message, 1);
    line->addWidget(m_save);
    line->addWidget(m_close);
    static_cast<QVBoxLayout*>(layout())->addLayout(line);
    connect(m_save, &QPushButton::clicked, this, &CCertInfoDlg::AskWhereToSave);
    connect(m_close, &QPushButton::clicked, this, &CCertInfoDlg::reject);
}

void CCertInfoDlg::AddShortcuts() {
    const auto add = [this](QKeySequence::StandardKey key, auto action) {
        connect(new QShortcut(key, this), &QShortcut::activated, this,
                [this, action] { Find(action); });
    };
    add(QKeySequence::Find, [](ca::CDetailsPage& page) { page.StartSearch(); });
    add(QKeySequence::FindNext, [](ca::CDetailsPage& page) { page.FindNext(/*forward=*/true); });
    add(QKeySequence::FindPrevious,
        [](ca::CDetailsPage& page) { page.FindNext(/*forward=*/false); });
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

void CCertInfoDlg::ShowDocument(ca::CCertDocument document) {
    m_document = std::move(document);
    m_current = 0;
    m_message->clear();
    const bool isCertificate = m_document.Count() != 0;
    for (const int page : {kGeneral, kDetails, kPath}) {
        m_pages->setTabEnabled(page, isCertificate);
    }
    m_pages->setCurrentIndex(isCertificate ? kGeneral : kStructure);
    ShowCurrent();
}

void CCertInfoDlg::ShowCurrent() {
    std::fill(std::begin(m_isFilled), std::end(m_isFilled), false);
    const bool isCertificate = m_document.Count() != 0;
    m_save->setEnabled(isCertificate);
    QString title = MessageText(m_document.IsStructure() ? kMsgDlgStructure : kMsgDlgTitle);
    title.remove('&');
    if (isCertificate) {
        const ca::CertInfo2& record = m_document.Record(static_cast<std::size_t>(m_current));
        const QString name = ca::ShortName(record.subjectTags, record.description);
        title += name.isEmpty() ? name : QString::fromWCharArray(L" \u2013 ") + name;
    }
    setWindowTitle(title);
    FillPage();
}

// Fills the page in sight, if that was not done yet.
void CCertInfoDlg::FillPage() {
    const int page = m_pages->currentIndex();
    if (page < 0 || m_isFilled[page]) {
        return;
    }
    const auto current = static_cast<std::size_t>(m_current);
    const ca::CertInfo2* record = m_document.Count() != 0 ? &m_document.Record(current) : nullptr;
    switch (page) {
        case kGeneral:
            m_general->ShowRecord(record);
            break;
        case kDetails:
            m_details->ShowFields(record != nullptr ? ca::CCertFields(*record) : ca::CCertFields());
            break;
        case kPath:
            m_path->ShowPath(m_document, current);
            break;
        default:
            m_structure->ShowOctets(m_document.Octets(current));
            break;
    }
    m_isFilled[page] = true;
}

void CCertInfoDlg::TranslateIfNeeded() {
    Run([this] {
        if (GetZORNALng() != m_shownLanguage) {
            m_document.Translate();
            Translate();
            ShowCurrent();
        }
    });
}

void CCertInfoDlg::Translate() {
    m_shownLanguage = GetZORNALng();
    constexpr ZornaMessage kTitles[kPages] = {kMsgDlgGeneral, kMsgDlgDetails, kMsgDlgPath,
                                              kMsgDlgStructure};
    for (int page = 0; page < kPages; ++page) {
        m_pages->setTabText(page, MessageText(kTitles[page]));
    }
    m_save->setText(MessageText(kMsgDlgSave));
    m_close->setText(MessageText(kMsgDlgClose));
    m_message->clear();
    m_general->Translate();
    m_details->Translate();
    m_path->Translate();
    m_structure->Translate(m_language);
}

void CCertInfoDlg::Find(const std::function<void(ca::CDetailsPage&)>& action) {
    if (m_pages->isTabEnabled(kDetails)) {
        m_pages->setCurrentIndex(kDetails);
        action(*m_details);
    }
}

// Opened, not run: the viewer may be closed meanwhile, and goes away with its dialogs.
void CCertInfoDlg::AskWhereToSave() {
    Run([this] {
        const ca::CertInfo2& record = m_document.Record(static_cast<std::size_t>(m_current));
        auto* dialog = new QFileDialog(this, MessageText(kMsgDlgSaveTitle));
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->setAcceptMode(QFileDialog::AcceptSave);
        dialog->setLabelText(QFileDialog::LookIn, MessageText(kMsgDlgLookIn));
        dialog->setLabelText(QFileDialog::FileName, MessageText(kMsgDlgFileName));
        dialog->setLabelText(QFileDialog::FileType, MessageText(kMsgDlgFileType));
        dialog->setLabelText(QFileDialog::Accept, MessageText(kMsgDlgAccept));
        dialog->setLabelText(QFileDialog::Reject, MessageText(kMsgDlgCancel));
        QStringList filters;
        for (const FileFilter& filter : kFilters) {
            filters += MessageText(filter.caption) + filter.pattern;
        }
        dialog->setNameFilters(filters);
        const auto setSuffix = [dialog, filters](const QString& filter) {
            dialog->setDefaultSuffix(kFilters[std::max(filters.indexOf(filter), 0)].suffix);
        };
        setSuffix(filters.front());
        connect(dialog, &QFileDialog::filterSelected, dialog, setSuffix);
        connect(dialog, &QFileDialog::fileSelected, this,
                [this, dialog](const QString& path) { Save(*dialog, path); });
        dialog->selectFile(FileName(record));
        dialog->open();
    });
}

void CCertInfoDlg::Save(const QFileDialog& answer, const QString& path) {
    const int filter = answer.nameFilters().indexOf(answer.selectedNameFilter());
    const bool isSaved = exportTo(path, kFilters[std::max(filter, 0)].format);
    const ca::CLanguageScope scope(m_language);
    const QString message = isSaved ? MessageText(kMsgDlgSaved) + path : m_lastError;
    m_message->setText(ca::LaidOut(message, ca::kMaxLineText));
    m_message->setAccessibleName(m_message->text());
}
