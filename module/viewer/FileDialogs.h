#pragma once

#include <QFileDialog>
#include <QString>
#include <QVector>

namespace ca {

/// One kind of file that a dialog offers.
struct FileFilter {
    QString caption;
    const char* pattern;  ///< "(*.der *.cer)"
    const char* suffix;   ///< of files without one
};

/// Dialogs in the viewer's words, which delete themselves when closed. Opened, not run: the viewer
/// may be closed meanwhile, and goes away with its dialogs.
QFileDialog* MakeSaveDialog(QWidget* parent, const QString& title,
                            const QVector<FileFilter>& filters, const QString& name);
QFileDialog* MakeOpenDialog(QWidget* parent);

/// Which of its filters the user chose.
int ChosenFilter(const QFileDialog& dialog);

}  // namespace ca
