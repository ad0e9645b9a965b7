#pragma once

#include <QApplication>

#include <memory>

namespace host {

/// The Qt application that windows need. From its construction on SIGINT, SIGTERM and SIGHUP close
/// the windows as their user would. One a process, in the main thread.
class CGuiApplication {
  public:
    /// Deliberate: without a display, or without Qt's plugin for it, the reason goes to the
    /// standard error and the process ends here, with kExitNoDisplay. Qt aborts inside its
    /// constructor then, and no exception can be thrown through it.
    /// \param russian  language of what Qt itself says, in the menus of its text fields for one; if
    ///                 its translations are installed.
    explicit CGuiApplication(bool russian);

    /// Runs the event loop until QCoreApplication::quit().
    static void Run() { QApplication::exec(); }

  private:
    void Translate();
    void CloseWindowsOnSignals();

    int m_argumentCount = 1;  // both stay Qt's as long as the application lives
    char m_name[7] = "cmhost";
    char* m_arguments[2] = {m_name, nullptr};
    std::unique_ptr<QApplication> m_application;
};

}  // namespace host
