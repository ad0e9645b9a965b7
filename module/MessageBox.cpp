#include "module/MessageBox.h"

#include <QApplication>
#include <QMessageBox>
#include <QThread>

namespace ca {

bool CanShowWidgets() {
    const auto* application = qobject_cast<QApplication*>(QCoreApplication::instance());
    return application != nullptr && QThread::currentThread() == application->thread();
}

bool MessageBoxWarning(const std::wstring& text, const std::wstring& caption) {
    if (!CanShowWidgets()) {
        return false;
    }
    QMessageBox box(QMessageBox::Warning, QString::fromStdWString(caption),
                    QString::fromStdWString(text), QMessageBox::Ok);
    box.setTextFormat(Qt::PlainText);  // the text quotes a file: nothing in it is markup
    box.exec();
    return true;
}

}  // namespace ca
