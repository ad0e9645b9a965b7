#include "host/ViewCommand.h"

#include "host/FileIo.h"
#include "host/GuiApplication.h"
#include "host/HostError.h"
#include "host/ModuleOptions.h"
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
#include <vector>

namespace {

using host::CHostError;

// createCertInfoDlg() of module/mod_foo.h, as the Itanium C++ ABI decorates it.
constexpr const char* kViewerSymbol = "_Z17createCertInfoDlgv";

// In the order of the viewer's pages.
const std::vector<std::string> kPages = {"general", "details", "path", "asn1"};

constexpr const char* kExamples =
    R"(A file is a certificate or a bundle of them with their issuers (DER, PEM, bare
Base64, PKCS #7), a certificate's record as JSON (an answer with "certInfo" too), or
any other ASN.1 data, of which the structure is shown; - is the standard input.

The program ends with its window; SIGINT and SIGTERM close it, and the exit code is
0 all the same. It is 1 when the file holds nothing that could be shown, 3 when the
module has no viewer, 4 when there is no display. Ctrl+F searches, F3 goes on,
Escape closes. The size of the window is kept in ZORNA/CertificateViewer.ini below
the user's configuration folder.

Examples:
  cmhost view certificate.pem
  cmhost view chain.pem --page path --language ru
  cmhost view list.crl
  cmhost call GetCertInfo2 | cmhost view -)";

struct ViewOptions {
    host::ModuleOptions module;
    std::string file;
    std::string page;
    bool structure = false;
};

bool IsJsonObject(std::string_view content) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    content.remove_prefix(content.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
    const std::size_t first = content.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && content[first] == '{';
}

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
        QObject::connect(m_dialog, &QObject::destroyed, qApp, &QCoreApplication::quit);
    }
    Viewer(const Viewer&) = delete;
    Viewer& operator=(const Viewer&) = delete;
    ~Viewer() { const std::unique_ptr<QDialog> neverClosed(m_dialog.data()); }

    // False when there is nothing in the octets that it could show.
    bool Fill(const QByteArray& content, bool isRecord, bool asStructure) {
        if (isRecord) {
            return Call("setRecordJson", content);
        }
        return (!asStructure && Call("setCertificate", content)) || Call("setStructure", content);
    }

    std::string GetFault() const {
        return m_dialog->property("lastErrorCode").toString().toStdString() + " " +
               m_dialog->property("lastError").toString().toStdString();
    }

    void SetPage(int page) { m_dialog->setProperty("page", page); }

    // The viewer titles itself anew with every certificate and language.
    void SetFileName(const QString& name) {
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

    void Show() { m_dialog->show(); }

  private:
    bool Call(const char* operation, const QByteArray& octets) {
        const host::CModuleTask task(operation);
        bool isDone = false;
        if (!QMetaObject::invokeMethod(m_dialog, operation, Qt::DirectConnection,
                                       Q_RETURN_ARG(bool, isDone), Q_ARG(QByteArray, octets))) {
            throw CHostError(host::kExitNoModule,
                             std::string("the module's viewer has no operation ") + operation);
        }
        return isDone;
    }

    QPointer<QDialog> m_dialog;  // null once it was closed
};

int View(const ViewOptions& options) {
    const std::string content =
        host::ReadFile(options.file, std::numeric_limits<int>::max());  // as Qt counts octets
    const host::CLoadedModule module(options.module);
    const CreateViewer create = FindViewer(module.GetLibrary());

    const host::CGuiApplication application(module.IsRussian());
    Viewer viewer(create);
    const QByteArray octets(content.data(), static_cast<int>(content.size()));
    if (!viewer.Fill(octets, IsJsonObject(content), options.structure)) {
        throw CHostError(host::kExitAnsweredBad, options.file + ": " + viewer.GetFault());
    }
    if (const auto page = std::ranges::find(kPages, options.page); page != kPages.end()) {
        viewer.SetPage(static_cast<int>(page - kPages.begin()));
    }
    if (options.file != "-") {
        const std::string name = std::filesystem::path(options.file).filename().string();
        viewer.SetFileName(QString::fromStdString(host::Visible(name)));
    }
    viewer.Show();
    const host::CModuleTask task("its window", host::CModuleTask::Limit::kNone);
    host::CGuiApplication::Run();
    return host::kExitDone;
}

}  // namespace

namespace host {

void AddViewCommand(CLI::App& program, int& exitCode) {
    CLI::App* const command =
        program.add_subcommand("view", "Show a certificate in the module's viewer, a window");
    const auto options = std::make_shared<ViewOptions>();
    command->add_option("file", options->file, "File to show; - is the standard input")
        ->required()
        ->type_name("FILE");
    command->add_option("--page", options->page, "Page to begin with: general, details, path, asn1")
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
