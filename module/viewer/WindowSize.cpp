#include "module/viewer/WindowSize.h"

#include "common/ConfigFile.h"

#include <QScreen>
#include <QSettings>
#include <QWidget>

namespace {

const QString kKey = QStringLiteral("size");

// An own file: the host's application name and format do not matter.
class CViewerSettings : public QSettings {
  public:
    CViewerSettings()
        : QSettings(IniFormat, UserScope, QStringLiteral("ZORNA"),
                    QStringLiteral("CertificateViewer")) {}
};

}  // namespace

namespace ca {

void RestoreWindowSize(QWidget& window, const QSize& first) {
    const QScreen* screen = window.screen();
    const QSize most = screen != nullptr ? screen->availableSize() : first;
    window.resize(first.boundedTo(most));
    if (IsSecureExecution()) {
        return;
    }
    const CViewerSettings settings;
    const QSize stored = settings.value(kKey).toSize();
    const QSize least = window.minimumSizeHint();
    if (stored.isValid() && stored.expandedTo(least) == stored &&
        stored.boundedTo(most) == stored) {
        window.resize(stored);
    }
}

void StoreWindowSize(const QWidget& window) {
    if (!IsSecureExecution()) {
        CViewerSettings().setValue(kKey, window.size());
    }
}

}  // namespace ca
