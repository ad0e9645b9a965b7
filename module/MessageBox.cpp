#include "module/MessageBox.h"

#include "common/CancelShield.h"
#include "common/ErrorCodes.h"

#include <QMessageBox>

#include <memory>
#include <utility>

namespace {

std::unique_ptr<QMessageBox> MakeBox(const std::wstring& text, const std::wstring& caption) {
    auto box = std::make_unique<QMessageBox>(QMessageBox::Warning, QString::fromStdWString(caption),
                                             QString::fromStdWString(text), QMessageBox::Ok);
    box->setTextFormat(Qt::PlainText);  // the text quotes a file: nothing in it is markup
    return box;
}

}  // namespace

namespace ca {

bool MessageBoxWarning(const std::wstring& text, const std::wstring& caption,
                       std::chrono::milliseconds wait) {
    if (CanShowWidgets()) {
        const CCancelShield shield;  // the event loop below is the application's, too
        const std::unique_ptr<QMessageBox> box = MakeBox(text, caption);
        box->setAttribute(Qt::WA_QuitOnClose, false);  // it may be the only visible window
        box->exec();
        return true;
    }
    const auto open = [text, caption] {
        std::unique_ptr<QMessageBox> box = MakeBox(text, caption);
        box->setModal(true);
        return static_cast<std::uint32_t>(ShowOwnWindow(std::move(box)) ? kErrNone
                                                                        : kErrServiceMode);
    };
    return RunInGuiThread(open, wait) == kErrNone;
}

}  // namespace ca
