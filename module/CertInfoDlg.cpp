#include "module/CertInfoDlg.h"

#include "common/Lng.h"
#include "module/MessageBox.h"
#include "records/CertInfo.h"
#include "ui_CertInfoDlg.h"

namespace {

QString Text(ZornaMessage id) {
    return QString::fromWCharArray(SetZORNAMessage(id));
}

}  // namespace

CCertInfoDlg::CCertInfoDlg(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::CertInfoDlg>()) {
    m_ui->setupUi(this);
    setWindowTitle(Text(kMsgDlgTitle));
    m_ui->subjectCaption->setText(Text(kMsgDlgSubject));
    m_ui->issuerCaption->setText(Text(kMsgDlgIssuer));
    m_ui->validityCaption->setText(Text(kMsgDlgValidity));
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

void CCertInfoDlg::SetCertInfo(const ca::CertInfo2& info) {
    m_ui->subjectText->setText(QString::fromStdWString(info.description));
    m_ui->issuerText->setText(QString::fromStdWString(info.issuer));
    m_ui->validityText->setText(
        QString::fromStdWString(info.validFrom + L" \u2013 " + info.validTo));
}
