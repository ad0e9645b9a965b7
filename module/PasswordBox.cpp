#include "module/PasswordBox.h"

#include "common/CancelShield.h"
#include "common/ErrorCodes.h"
#include "common/ForkMutex.h"
#include "module/GuiThread.h"

#include <QByteArray>
#include <QInputDialog>
#include <QLineEdit>

#include <chrono>
#include <memory>
#include <mutex>

namespace {

// A user has to find the password; beyond this the client's request has waited long enough.
constexpr std::chrono::milliseconds kWait(120000);

// What the window gives to the caller, who may have gone by then.
// Shared with the window: a caller that gave up leaves no reference into its own stack.
struct Given {
    ca::CForkMutex mutex;
    std::optional<std::string> password;
};

std::uint32_t Ask(const std::wstring& caption, const std::wstring& prompt, Given& given) {
    const ca::CCancelShield shield;  // the event loop below is the application's, too
    QInputDialog dialog;
    dialog.setAttribute(Qt::WA_QuitOnClose, false);  // it may be the only visible window
    dialog.setWindowTitle(QString::fromStdWString(caption));
    dialog.setLabelText(QString::fromStdWString(prompt));
    dialog.setTextEchoMode(QLineEdit::Password);
    if (dialog.exec() != QDialog::Accepted) {
        return ca::kErrPinCancelled;
    }
    const std::lock_guard lock(given.mutex);
    given.password = dialog.textValue().toStdString();
    return ca::kErrNone;
}

}  // namespace

namespace ca {

std::optional<std::string> AskPassword(const std::wstring& caption, const std::wstring& prompt) {
    const auto given = std::make_shared<Given>();
    const auto ask = [caption, prompt, given] { return Ask(caption, prompt, *given); };
    if (RunInGuiThread(ask, kWait) != kErrNone) {
        return std::nullopt;
    }
    const std::lock_guard lock(given->mutex);
    return std::move(given->password);
}

}  // namespace ca
