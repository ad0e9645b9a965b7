#include "host/ViewCommand.h"

#include "common/Json.h"
#include "host/FileIo.h"
#include "host/GuiApplication.h"
#include "host/HostError.h"
#include "host/ModuleOptions.h"
#include "host/StandardStreams.h"
#include "host/Terminal.h"

#include <QByteArray>
#include <QDialog>
#include <QPointer>
#include <QString>
#include <QVariant>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using host::CHostError;

// createCertInfoDlg() of module/mod_foo.h, as the Itanium C++ ABI decorates it.
constexpr const char* kViewerSymbol = "_Z17createCertInfoDlgv";

// In the order of the viewer's pages.
const std::vector<std::string> kPages = {"general", "details", "path", "asn1", "entries"};

constexpr const char* kExamples =
    R"(The window lists what the files hold: signed messages with their signatures and
time stamps, certificates, revocation lists, attribute certificates, recipients
(DER, PEM, bare Base64, S/MIME); of other ASN.1 data the structure is shown. A file
may be a certificate's record as JSON too (an answer with "certInfo"); - is the
standard input.

The program ends with its window; SIGINT and SIGTERM close it, and the exit code is
0 all the same. It is 1 when a file holds nothing that could be shown, 2 when one
cannot be read, 3 when the module has no viewer, 4 when there is no display. Ctrl+F searches, F3 goes on,
Ctrl+O opens, Ctrl+S saves, Escape closes. The size of the window is kept in
ZORNA/CertificateViewer.ini below the user's configuration folder.

Examples:
  cmhost view certificate.pem
  cmhost view message.p7s chain.pem --language ru
  cmhost view list.crl --page entries
  cmhost call GetCertInfo2 | cmhost view -)";

struct ViewOptions {
    host::ModuleOptions module;
    std::vector<std::string> files;
    std::string page;
    bool structure = false;
};

using CreateViewer = decltype(&createCertInfoDlg);

CreateViewer FindViewer(const host::CModuleLibrary& library) {
    void* const found = library.Find(kViewerSymbol);
    if (found == nullptr) {
        throw CHostError(
            host::kExitNoModule,
            library.GetPath() + " has no certificate viewer: there is no " + kViewerSymbol);
    }
    return reinterpret_cast<CreateViewer>(found);
}

// A provider's viewer, known as the header describes it: a dialog that is filled through its
// meta-object and deletes itself when it is closed.
class Viewer {
  public:
    explicit Viewer(CreateViewer create) {
        {
            const host::CModuleTask task("createCertInfoDlg");
            m_dialog = reinterpret_cast<QDialog*>(create());
        }
        if (m_dialog == nullptr) {
            throw CHostError(host::kExitNoModule, "the module gives no window");
        }
        // The dialog deletes itself when it is closed, which is the end of the command.
        QObject::connect(m_dialog, &QObject::destroyed, qApp, &QCoreApplication::quit);
    }
    Viewer(const Viewer&) = delete;
    Viewer& operator=(const Viewer&) = delete;
    ~Viewer() { const std::unique_ptr<QDialog> neverClosed(m_dialog.data()); }

    // False when there is nothing in the octets that it could show, beside what it shows already.
    bool Fill(const QByteArray& content, const std::string& name, bool asStructure) {
        const QByteArray operation = m_hasFiles ? "addFile" : "showFile";
        // Providers differ in what their viewers offer; what is missing is known before it is
        // called.
        const bool takesFiles =
            m_dialog->metaObject()->indexOfMethod(operation + "(QByteArray,QString)") >= 0;
        bool isDone = false;
        if (asStructure) {
            isDone = Call("setStructure", Q_ARG(QByteArray, content));
        } else if (takesFiles) {
            isDone = Call(operation, Q_ARG(QByteArray, content),
                          Q_ARG(QString, QString::fromStdString(name)));
        } else {
            isDone = FillOne(content);
            SetFileName(QString::fromStdString(name));
        }
        m_hasFiles = m_hasFiles || isDone;
        return isDone;
    }

    std::string GetFault() const {
        return m_dialog->property("lastErrorCode").toString().toStdString() + " " +
               m_dialog->property("lastError").toString().toStdString();
    }

    void SetPage(int page) { m_dialog->setProperty("page", page); }

    void Show() { m_dialog->show(); }

  private:
    bool Call(const char* operation, QGenericArgument first, QGenericArgument second = {}) {
        const host::CModuleTask task(operation);
        bool isDone = false;
        if (!QMetaObject::invokeMethod(m_dialog, operation, Qt::DirectConnection,
                                       Q_RETURN_ARG(bool, isDone), first, second)) {
            throw CHostError(host::kExitNoModule,
                             std::string("the module's viewer has no operation ") + operation);
        }
        return isDone;
    }

    // A viewer that knows no files shows the certificate of one, or the structure of its octets.
    bool FillOne(const QByteArray& content) {
        const auto octets = Q_ARG(QByteArray, content);
        if (ca::BeginsJsonObject({content.constData(), static_cast<std::size_t>(content.size())})) {
            return Call("setRecordJson", octets);
        }
        return Call("setCertificate", octets) || Call("setStructure", octets);
    }

    // Such a window titles itself anew with every certificate and language.
    void SetFileName(const QString& name) {
        if (name.isEmpty()) {
            return;
        }
        QDialog* const dialog = m_dialog;
        const QString start = name + QString::fromUtf8(" \u2013 ");
        const auto complete = [dialog, start](const QString& title) {
            if (!title.startsWith(start)) {
                dialog->setWindowTitle(start + title);
            }
        };
        QObject::connect(dialog, &QWidget::windowTitleChanged, dialog, complete);
        complete(dialog->windowTitle());
    }

    QPointer<QDialog> m_dialog;  // null once it was closed
    bool m_hasFiles = false;
};

std::string NameOf(const std::string& file) {
    return file == "-" ? "" : host::Harmless(std::filesystem::path(file).filename().string());
}

// What to show of each file, and how the command ends because of the others.
struct Contents {
    std::vector<std::pair<std::string, std::string>> files;  // name and octets
    host::ExitCode code = host::kExitDone;
};

// Of one file the fault ends the command; of several it is told, and the others are shown.
void Complain(const ViewOptions& options, const CHostError& fault, Contents& contents) {
    if (options.files.size() == 1) {
        throw fault;
    }
    host::Note(fault.what());
    contents.code = std::max(contents.code, fault.GetExitCode());
}

Contents ReadAll(const ViewOptions& options) {
    Contents contents;
    for (const std::string& file : options.files) {
        try {
            contents.files.emplace_back(
                file,
                host::ReadFile(file, std::numeric_limits<int>::max()));  // as Qt counts octets
        } catch (const CHostError& fault) {
            Complain(options, fault, contents);
        }
    }
    return contents;
}

void FillAll(Viewer& viewer, const ViewOptions& options, Contents& contents) {
    bool isAny = false;
    for (const auto& [file, octets] : contents.files) {
        const QByteArray content(octets.data(), static_cast<int>(octets.size()));
        if (viewer.Fill(content, NameOf(file), options.structure)) {
            isAny = true;
        } else {
            Complain(options, {host::kExitAnsweredBad, file + ": " + viewer.GetFault()}, contents);
        }
    }
    if (!isAny) {
        throw CHostError(contents.code, "none of the files can be shown");
    }
}

int View(const ViewOptions& options) {
    if (options.structure && options.files.size() > 1) {
        throw CHostError(host::kExitUsage, "--structure takes one file");
    }
    Contents contents = ReadAll(options);
    const host::CLoadedModule module(options.module);
    const CreateViewer create = FindViewer(module.GetLibrary());

    const host::CGuiApplication application(module.IsRussian());
    Viewer viewer(create);
    FillAll(viewer, options, contents);
    // The viewer keeps its own copies; large files need not be held twice while it is open.
    contents.files.clear();
    if (const auto page = std::ranges::find(kPages, options.page); page != kPages.end()) {
        viewer.SetPage(static_cast<int>(page - kPages.begin()));
    }
    viewer.Show();
    // No limit of time: how long the window is open is up to the user.
    const host::CModuleTask task("its window", host::CModuleTask::Limit::kNone);
    host::CGuiApplication::Run();
    return contents.code;
}

}  // namespace

namespace host {

void AddViewCommand(CLI::App& program, int& exitCode) {
    CLI::App* const command =
        program.add_subcommand("view", "Show files in the module's viewer, a window");
    const auto options = std::make_shared<ViewOptions>();
    command->add_option("files", options->files, "Files to show; - is the standard input")
        ->required()
        ->type_name("FILE");
    command
        ->add_option("--page", options->page,
                     "Page to begin with: general, details, path, asn1, entries")
        ->type_name("PAGE")
        ->check(CLI::IsMember(kPages).description(""));
    command->add_flag("--structure", options->structure,
                      "The ASN.1 structure alone, of certificates and signed messages too");
    options->module.AddTo(*command);
    // The one thing this command is for is a window.
    command->remove_option(command->get_option("--silent"));
    command->footer(kExamples);
    command->callback([options, &exitCode] { exitCode = View(*options); });
}

}  // namespace host
