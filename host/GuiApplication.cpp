#include "host/GuiApplication.h"

#include "host/HostError.h"
#include "host/StandardStreams.h"

#include <QLibraryInfo>
#include <QSocketNotifier>
#include <QTranslator>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

constexpr int kClosingSignals[] = {SIGINT, SIGTERM, SIGHUP};

// Qt's own words for why it does not start: the first that its platform plugins say.
std::string& StartFault() {
    static std::string fault;
    return fault;
}

bool IsSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

[[noreturn]] void EndWithoutDisplay(const std::string& lastWords) {
    const std::string& text = StartFault().empty() ? lastWords : StartFault();
    // Qt names all plugins that it has on the lines after.
    std::string reason = text.substr(0, text.find('\n'));
    if (!IsSet("QT_QPA_PLATFORM") && !IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY")) {
        reason = "neither DISPLAY nor WAYLAND_DISPLAY is set";
    }
    host::Note("no window can be opened: " + reason);
    // Qt would abort the process next, which would read as a crash of the module.
    std::_Exit(host::kExitNoDisplay);
}

// What Qt says while it starts. Only why it does not start is of interest to anybody.
void OnStartMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type == QtFatalMsg) {
        EndWithoutDisplay(text.toStdString());
    }
    const std::string_view category = context.category != nullptr ? context.category : "";
    if (category.starts_with("qt.qpa") && type != QtDebugMsg && StartFault().empty()) {
        StartFault() = text.toStdString();
    }
}

int signalPipe[2] = {-1, -1};

// Only async-signal-safe calls: the event loop does the rest.
extern "C" void OnClosingSignal(int /*signal*/) {
    const int error = errno;
    [[maybe_unused]] const auto ignored = ::write(signalPipe[1], "", 1);
    errno = error;
}

}  // namespace

namespace host {

CGuiApplication::CGuiApplication(bool russian) {
    // Before the application is made, as Qt wants these two.
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QtMessageHandler old = qInstallMessageHandler(&OnStartMessage);
    m_application = std::make_unique<QApplication>(m_argumentCount, m_arguments);
    qInstallMessageHandler(old);
    if (russian) {
        Translate();
    }
    CloseWindowsOnSignals();
}

void CGuiApplication::Translate() {
    auto* const translator = new QTranslator(m_application.get());
    if (translator->load("qtbase_ru", QLibraryInfo::location(QLibraryInfo::TranslationsPath))) {
        // Without the file Qt's own buttons stay English, which is no reason to fail.
        QCoreApplication::installTranslator(translator);
    }
}

void CGuiApplication::CloseWindowsOnSignals() {
    // The handler must not wait, and no child may keep the pipe open.
    if (::pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        throw CHostError(kExitUsage,
                         std::string("cannot wait for signals: ") + std::strerror(errno));
    }
    auto* const notifier =
        new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, m_application.get());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier] {
        // Once is enough: the first signal closes, whatever follows it.
        notifier->setEnabled(false);
        QApplication::closeAllWindows();
    });
    for (const int number : kClosingSignals) {
        if (std::signal(number, &OnClosingSignal) == SIG_IGN) {
            std::signal(number, SIG_IGN);  // as nohup and shells want it for what they start
        }
    }
}

}  // namespace host
