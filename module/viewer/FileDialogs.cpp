#include "module/viewer/FileDialogs.h"

#include "module/viewer/ViewerText.h"

#include <algorithm>

namespace {

using namespace ca;

constexpr int kLongestName = 60;  // characters

QFileDialog* MakeDialog(QWidget* parent, const QString& title, const QString& accept) {
    auto* dialog = new QFileDialog(parent, title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setLabelText(QFileDialog::LookIn, MessageText(kMsgDlgLookIn));
    dialog->setLabelText(QFileDialog::FileName, MessageText(kMsgDlgFileName));
    dialog->setLabelText(QFileDialog::FileType, MessageText(kMsgDlgFileType));
    dialog->setLabelText(QFileDialog::Accept, accept);
    dialog->setLabelText(QFileDialog::Reject, MessageText(kMsgDlgCancel));
    return dialog;
}

// Without what file systems or shells take amiss.
QString SafeName(const QString& text) {
    QString name = text.left(kLongestName);
    for (QChar& c : name) {
        c = c.isLetterOrNumber() ? c : QChar('_');
    }
    return name;
}

}  // namespace

namespace ca {

QFileDialog* MakeSaveDialog(QWidget* parent, const QString& title,
                            const QVector<FileFilter>& filters, const QString& name) {
    QFileDialog* const dialog = MakeDialog(parent, title, MessageText(kMsgDlgAccept));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    QStringList lines;
    for (const FileFilter& filter : filters) {
        lines += filter.caption + " " + filter.pattern;
    }
    dialog->setNameFilters(lines);
    const auto setSuffix = [dialog, filters](const QString& chosen) {
        dialog->setDefaultSuffix(
            filters[std::max(dialog->nameFilters().indexOf(chosen), 0)].suffix);
    };
    setSuffix(lines.front());
    QObject::connect(dialog, &QFileDialog::filterSelected, dialog, setSuffix);
    dialog->selectFile(SafeName(name));
    return dialog;
}

QFileDialog* MakeOpenDialog(QWidget* parent) {
    QFileDialog* const dialog =
        MakeDialog(parent, Word(ViewerWord::kOpenTitle), Word(ViewerWord::kAccept));
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setNameFilters(
        {Word(ViewerWord::kFilterAll) +
             " (*.cer *.crt *.der *.pem *.crl *.p7b *.p7c *.p7m *.p7s *.sig *.sgn *.cms *.tsr "
             "*.tsq *.tst *.ors *.orq *.ers *.csr *.req *.p10 *.p12 *.pfx *.key *.pub *.cat *.stl "
             "*.eml *.ac *.json)",
         Word(ViewerWord::kFilterAny) + " (*)"});
    return dialog;
}

int ChosenFilter(const QFileDialog& dialog) {
    return std::max(dialog.nameFilters().indexOf(dialog.selectedNameFilter()), 0);
}

}  // namespace ca
