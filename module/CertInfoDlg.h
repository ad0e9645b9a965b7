#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class CertInfoDlg;
}

namespace ca {
class CertInfo2;
}

/// Shows one certificate. Widgets belong to the GUI thread, so every operation does.
class CCertInfoDlg : public QDialog {
  public:
    explicit CCertInfoDlg(QWidget* parent = nullptr);
    CCertInfoDlg(const CCertInfoDlg&) = delete;
    CCertInfoDlg& operator=(const CCertInfoDlg&) = delete;
    ~CCertInfoDlg() override;

    /// A dialog that deletes itself when closed, stays on top and takes the focus, for the caller
    /// to show; null where ca::CanShowWidgets() is false.
    static CCertInfoDlg* Create();

    /// Shows a filled record: names and validity.
    void SetCertInfo(const ca::CertInfo2& info);

  private:
    std::unique_ptr<Ui::CertInfoDlg> m_ui;
};
