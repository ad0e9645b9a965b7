// What the user can do in the viewer, beside looking.

#include "common/Lng.h"
#include "module/viewer/CertInfoDlg.h"
#include "module/viewer/DetailsPage.h"
#include "module/viewer/EntriesPage.h"
#include "module/viewer/FileDialogs.h"
#include "module/viewer/FileModel.h"
#include "module/viewer/PathPage.h"
#include "module/viewer/Printout.h"
#include "module/viewer/StructurePage.h"
#include "module/viewer/ViewerText.h"
#include "ui_CertInfoDlg.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrinter>
#include <QShortcut>
#include <QUrl>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

namespace {

using ca::ItemFormat;
using ca::ItemIndex;
using ca::MessageText;
using ca::ViewerWord;
using ca::Word;

constexpr int kMaxCopied = 64 << 20;  // characters of all descriptions

struct FormatRow {
    ItemFormat format;
    ViewerWord caption;
    const char* pattern;
    const char* suffix;
};
constexpr FormatRow kFormats[] = {
    {ItemFormat::kDer, ViewerWord::kFilterOctets, "(*.der *.cer *.crt *.crl *.p7s)", "der"},
    {ItemFormat::kPem, ViewerWord::kFilterPem, "(*.pem)", "pem"},
    {ItemFormat::kText, ViewerWord::kFilterText, "(*.txt)", "txt"},
    {ItemFormat::kJson, ViewerWord::kFilterJson, "(*.json)", "json"},
};

}  // namespace

void CCertInfoDlg::ConnectParts() {
    using ca::CViewerToolBar;
    const auto add = [this](void (CViewerToolBar::*wanted)(), auto action) {
        connect(m_ui->toolBar, wanted, this, [this, action] { Run([&] { action(); }); });
    };
    add(&CViewerToolBar::OpenWanted, [this] { AskWhatToOpen(); });
    add(&CViewerToolBar::SaveWanted, [this] { AskWhereToSave(); });
    add(&CViewerToolBar::PrintWanted, [this] { Print(); });
    add(&CViewerToolBar::CopyPemWanted, [this] { CopyAs(ItemFormat::kPem); });
    add(&CViewerToolBar::CopyTextWanted, [this] { CopyAs(ItemFormat::kText); });
    add(&CViewerToolBar::CopyJsonWanted, [this] { CopyAs(ItemFormat::kJson); });
    add(&CViewerToolBar::CopyAllWanted, [this] { CopyAll(); });
    add(&CViewerToolBar::LanguageWanted, [this] { SwitchLanguage(); });
    connect(m_ui->closeButton, &QPushButton::clicked, this, &CCertInfoDlg::reject);
    connect(m_ui->splitter, &QSplitter::splitterMoved, this, [this] { m_isListMoved = true; });
    connect(m_ui->pages, &QTabWidget::currentChanged, this,
            [this] { Run([this] { FillPage(); }); });
    connect(m_ui->itemTree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& row) {
                const ItemIndex item = ca::CFileModel::ItemOf(row);
                if (item != m_shown) {
                    Run([&] { ShowItem(item); });
                }
            });
    const auto goTo = [this](int index) {
        SetCurrentCertificate(index);
        SetPage(ca::kGeneralPage);
    };
    // Queued: the page is filled anew by what its signal asks for.
    connect(m_pathPage, &ca::CPathPage::Chosen, this, goTo, Qt::QueuedConnection);
    connect(m_structure, &ca::CStructurePage::SaveWanted, this,
            [this] { Run([this] { AskWhereToSaveElement(); }); });
}

void CCertInfoDlg::AddShortcuts() {
    const auto add = [this](QKeySequence::StandardKey key, auto action) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, action);
    };
    add(QKeySequence::Find, [this] { StartSearch(); });
    add(QKeySequence::FindNext, [this] { FindNext(/*forward=*/true); });
    add(QKeySequence::FindPrevious, [this] { FindNext(/*forward=*/false); });
}

// On the page in sight; where that has nothing to search, in the details.
void CCertInfoDlg::StartSearch() {
    if (Page() == ca::kGeneralPage || Page() == ca::kPathPage) {
        SetPage(ca::kDetailsPage);
    }
    switch (Page()) {
        case ca::kDetailsPage:
            return m_details->Search().Start();
        case ca::kEntriesPage:
            return m_entries->Search().Start();
        case ca::kStructurePage:
            return m_structure->Search().Start();
        default:
            return;
    }
}

void CCertInfoDlg::FindNext(bool forward) {
    if (Page() == ca::kGeneralPage || Page() == ca::kPathPage) {
        SetPage(ca::kDetailsPage);
    }
    switch (Page()) {
        case ca::kDetailsPage:
            return m_details->FindNext(forward);
        case ca::kEntriesPage:
            return m_entries->FindNext(forward);
        case ca::kStructurePage:
            return m_structure->FindNext(forward);
        default:
            return;
    }
}

void CCertInfoDlg::AskWhatToOpen() {
    QFileDialog* const dialog = ca::MakeOpenDialog(this);
    connect(dialog, &QFileDialog::filesSelected, this, &CCertInfoDlg::openFiles);
    dialog->open();
}

void CCertInfoDlg::dragEnterEvent(QDragEnterEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!urls.isEmpty() && std::ranges::all_of(urls, &QUrl::isLocalFile)) {
        event->acceptProposedAction();
    }
}

void CCertInfoDlg::dropEvent(QDropEvent* event) {
    QStringList paths;
    for (const QUrl& url : event->mimeData()->urls()) {
        paths += url.toLocalFile();
    }
    event->acceptProposedAction();
    openFiles(paths);
}

void CCertInfoDlg::AskWhereToSave() {
    QVector<ca::FileFilter> filters;
    std::vector<ItemFormat> formats;
    for (const FormatRow& row : kFormats) {
        if (ca::HasFormat(m_document, m_shown, row.format)) {
            filters.push_back({Word(row.caption), row.pattern, row.suffix});
            formats.push_back(row.format);
        }
    }
    QFileDialog* const dialog =
        ca::MakeSaveDialog(this, MessageText(kMsgDlgSaveTitle), filters, Description().title);
    connect(dialog, &QFileDialog::fileSelected, this, [this, dialog, formats](const QString& path) {
        Save(path, formats[static_cast<std::size_t>(ca::ChosenFilter(*dialog))]);
    });
    dialog->open();
}

void CCertInfoDlg::Save(const QString& path, ItemFormat format) {
    const bool isSaved = Attempt(
        [&] { ca::WriteWhole(path.toStdString(), ca::ItemContent(m_document, m_shown, format)); });
    const ca::CLanguageScope scope(m_language);
    Say(isSaved ? MessageText(kMsgDlgSaved) + path : m_lastError);
}

void CCertInfoDlg::AskWhereToSaveElement() {
    QFileDialog* const dialog =
        ca::MakeSaveDialog(this, Word(ViewerWord::kSaveNodeTitle),
                           {{Word(ViewerWord::kFilterOctets), "(*.der)", "der"}}, "element");
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
        const bool isSaved = Attempt([&] {
            const auto octets = m_structure->SelectedOctets();
            ca::WriteWhole(path.toStdString(),
                           {reinterpret_cast<const char*>(octets.data()), octets.size()});
        });
        const ca::CLanguageScope scope(m_language);
        Say(isSaved ? MessageText(kMsgDlgSaved) + path : m_lastError);
    });
    dialog->open();
}

void CCertInfoDlg::Print() {
    const auto printer = std::make_shared<QPrinter>();
    auto* dialog = new QPrintDialog(printer.get(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(Word(ViewerWord::kPrintTitle));
    connect(
        dialog, qOverload<QPrinter*>(&QPrintDialog::accepted), this,
        [this, printer](QPrinter* chosen) {
            Run([&] { ca::PrintText(*chosen, windowTitle(), ca::ItemText(m_document, m_shown)); });
        });
    dialog->open();
}

void CCertInfoDlg::CopyAs(ItemFormat format) {
    QGuiApplication::clipboard()->setText(
        format == ItemFormat::kText
            ? ca::ItemText(m_document, m_shown)
            : QString::fromStdString(ca::ItemContent(m_document, m_shown, format)));
    Say(Word(ViewerWord::kCopied));
}

void CCertInfoDlg::CopyAll() {
    QString text;
    ItemIndex item = 0;
    for (; item < m_document.Count() && text.size() < kMaxCopied; ++item) {
        const ca::ItemKind kind = m_document[item].kind;
        if (kind == ca::ItemKind::kSignature || kind == ca::ItemKind::kCountersignature) {
            continue;  // said with their message, each at a fraction of the cost
        }
        text += ca::ListedName(m_document, item) + "\n" + ca::ItemText(m_document, item) + "\n";
    }
    if (const std::size_t left = m_document.Count() - item; left != 0) {
        text += MessageText(kMsgAndMore).replace('N', QString::number(left)) + "\n";
    }
    QGuiApplication::clipboard()->setText(text);
    Say(Word(ViewerWord::kCopied));
}
