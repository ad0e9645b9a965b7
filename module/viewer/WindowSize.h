#pragma once

class QSize;
class QWidget;

namespace ca {

/// Gives a top-level window the size it was closed with last. A stored size that is none, smaller
/// than the window can be or larger than its screen is ignored. The place is the window system's.
/// In secure execution (see IsSecureExecution()) nothing is stored: the caller says where.
/// \param first  the size without a stored one, as far as the screen has room.
void RestoreWindowSize(QWidget& window, const QSize& first);

/// Makes a window that is shown as small as its screen, with the frame that the window system puts
/// around it, and moves it there where it reaches out.
void FitIntoScreen(QWidget& window);

/// Stores the size, "ZORNA/CertificateViewer" in the user's settings. A failure is passed over.
void StoreWindowSize(const QWidget& window);

}  // namespace ca
