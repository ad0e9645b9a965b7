#include "module/viewer/CertInfoDlg.h"

#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "module/MessageBox.h"
#include "module/viewer/CertExport.h"
#include "module/viewer/ViewerText.h"
#include "ui_CertInfoDlg.h"

#include <exception>
#include <span>
#include <utility>

namespace {

using ca::MessageText;

std::span<const unsigned char> OctetsOf(const QByteArray& bytes) {
    return {reinterpret_cast<const unsigned char*>(bytes.constData()),
            static_cast<std::size_t>(bytes.size())};
}

}  // namespace

CCertInfoDlg::CCertInfoDlg(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::CertInfoDlg>()) {
    m_ui->setupUi(this);
    Translate();
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
    Attempt([this] {
        m_document.Translate();
        Translate();
    });
}

void CCertInfoDlg::SetCurrentCertificate(int index) {
    if (index >= 0 && index < CertificateCount()) {
        m_current = index;
        ShowCurrent();
    }
}

int CCertInfoDlg::Page() const {
    return 0;
}

void CCertInfoDlg::SetPage(int) {}

// Nothing is thrown into the event loop or a host's call.
bool CCertInfoDlg::Attempt(const std::function<void()>& operation) {
    const ca::CLanguageScope scope(m_language);
    try {
        try {
            operation();
            m_lastErrorCode = ca::kErrNone;
            m_lastError.clear();
            return true;
        } catch (const ca::Exception& fault) {
            m_lastErrorCode = fault.errorCode;
        } catch (const std::exception&) {
            m_lastErrorCode = ca::kErrExecution;
        }
        m_lastError = QString::fromStdWString(GetErrorMessage(m_lastErrorCode, /*prefix=*/false));
    } catch (const std::exception&) {
        m_lastError.clear();  // without memory even for its text
    }
    return false;
}

void CCertInfoDlg::ShowDocument(ca::CCertDocument document) {
    m_document = std::move(document);
    m_current = 0;
    ShowCurrent();
}

void CCertInfoDlg::ShowCurrent() {
    if (m_document.Count() == 0) {
        return;
    }
    const ca::CertInfo2& info = m_document.Record(static_cast<std::size_t>(m_current));
    m_ui->subjectText->setText(ca::ShownText(info.description));
    m_ui->issuerText->setText(ca::ShownText(info.issuer));
    m_ui->validityText->setText(ca::ShownText(info.validFrom + L" \u2013 " + info.validTo));
}

void CCertInfoDlg::Translate() {
    setWindowTitle(MessageText(kMsgDlgTitle));
    m_ui->subjectCaption->setText(MessageText(kMsgDlgSubject));
    m_ui->issuerCaption->setText(MessageText(kMsgDlgIssuer));
    m_ui->validityCaption->setText(MessageText(kMsgDlgValidity));
    ShowCurrent();
}
