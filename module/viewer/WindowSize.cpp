#include "module/viewer/WindowSize.h"

#include "common/ConfigFile.h"

#include <QScreen>
#include <QSettings>
#include <QStyle>
#include <QTimer>
#include <QWidget>

#include <algorithm>

namespace {

const QString kKey = QStringLiteral("size");

// What window systems put around a window, as far as the style knows; the real one shows later.
QSize FrameSize(const QStyle& style) {
    const int border = style.pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    return {2 * border, style.pixelMetric(QStyle::PM_TitleBarHeight) + border};
}

// Its own file: the host's application name and format do not matter.
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
    const QSize most =
        screen != nullptr ? screen->availableSize() - FrameSize(*window.style()) : first;
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

void FitIntoScreen(QWidget& window) {
    // The frame is there once the window system has answered.
    QTimer::singleShot(0, &window, [&window] {
        const QScreen* screen = window.screen();
        if (screen == nullptr || window.isMaximized() || window.isFullScreen()) {
            return;
        }
        const QRect room = screen->availableGeometry();
        const QSize frame = window.frameGeometry().size() - window.size();
        window.resize(window.size().boundedTo(room.size() - frame));
        QRect outer = window.frameGeometry();
        outer.moveRight(std::min(outer.right(), room.right()));
        outer.moveBottom(std::min(outer.bottom(), room.bottom()));
        outer.moveTopLeft({std::max(outer.left(), room.left()), std::max(outer.top(), room.top())});
        if (outer != window.frameGeometry()) {
            window.move(outer.topLeft());
        }
    });
}

void StoreWindowSize(const QWidget& window) {
    if (!IsSecureExecution()) {
        CViewerSettings().setValue(kKey, window.size());
    }
}

}  // namespace ca
