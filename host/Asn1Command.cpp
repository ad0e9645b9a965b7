#include "host/Asn1Command.h"

#include "asn1/BlockText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "host/Asn1Listing.h"
#include "host/Configuration.h"
#include "host/FileIo.h"
#include "host/HostError.h"
#include "host/JsonEvents.h"
#include "host/LogSink.h"
#include "host/ModuleOptions.h"
#include "host/StandardStreams.h"
#include "host/Terminal.h"
#include "records/Payload.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

using host::CHostError;

constexpr std::size_t kWidthOfFiles = 120;  // columns when the output is not a terminal
// Less than this leaves no room for a value after place, lengths and tag.
constexpr std::size_t kLeastWidth = 40;
// Octets of JSON that are escaped and written at a time.
constexpr std::size_t kJsonPiece = std::size_t{1} << 16U;

constexpr const char* kExamples =
    R"(A file is DER or BER, PEM (all of its blocks) or bare Base64; - is the standard
input. A line of the listing shows: offset, header+content length, tag, value. What
is encoded inside an OCTET STRING or a BIT STRING stands below it.
--raw and --rebuild write the octets of all nodes one after another. A line of
--json begins with "file", and "item" and "label" in a PEM file. The exit code is 2
when a file cannot be read or has no such node, else 1 when something does not
decode or ends too early; what can be read is shown.

Examples:
  cmhost asn1 certificate.pem
  cmhost asn1 certificate.pem --path 0/0/3 --language ru
  cmhost asn1 bundle.pem --raw bundle.der
  cmhost asn1 message.p7s --rebuild message.der
  cmhost asn1 certificate.pem --json)";

struct Asn1Options {
    std::vector<std::string> files;
    bool json = false;
    std::string path;
    std::string raw;
    std::string rebuild;
    std::size_t width = 0;
    std::string language;
    bool log = false;
};

// Words of the tool for the usual faults; others by the module's texts.
std::string FaultText(std::uint32_t code) {
    switch (code) {
        case ca::kErrAsn1UnexpectedEnd:
            return "the data end too early";
        case ca::kErrAsn1Corrupted:
            return "the data are corrupted";
        default:
            return "error " + std::to_string(code) + " " +
                   ca::u16u8(GetErrorMessage(code, /*prefix=*/false));
    }
}

// Goes through the files and does what the options ask for with each node.
class Asn1Run {
  public:
    explicit Asn1Run(const Asn1Options& options)
        : m_options(options),
          m_lists(!options.json && options.raw != "-" && options.rebuild != "-"),
          m_width(options.width != 0 ? options.width
                                     : host::TerminalWidth(STDOUT_FILENO, kWidthOfFiles)) {}

    int Run() {
        for (const std::string& file : m_options.files) {
            DoFile(file);
        }
        if (!m_options.raw.empty()) {
            // One output for all files, written last: a file that is read may be the one written
            // to.
            host::WriteFile(m_options.raw, m_raw);
        }
        if (!m_options.rebuild.empty()) {
            host::WriteFile(m_options.rebuild, m_rebuilt);
        }
        host::Flush();
        return m_exitCode;
    }

  private:
    // A piece of a file, as people and programs are told of it.
    struct Place {
        std::string text;
        std::string members;
    };

    void Complain(const std::string& text, host::ExitCode code = host::kExitAnsweredBad) {
        m_exitCode = std::max(m_exitCode, code);
        host::Flush();  // after what it is about
        host::Note(text);
    }

    void DoFile(const std::string& file) {
        std::string content;
        try {
            content = host::ReadFile(file);
        } catch (const CHostError& error) {
            Complain(error.what(), error.GetExitCode());
            return;
        }
        const std::vector<ca::PayloadItem> items =
            ca::DecodePayload({reinterpret_cast<unsigned char*>(content.data()), content.size()});
        if (items.empty()) {
            Complain(file + ": no ASN.1 data");
        }
        for (std::size_t i = 0; i < items.size(); ++i) {
            Place place{file, host::FileMembers(file)};
            if (!items[i].label.empty()) {
                const std::string number = std::to_string(i + 1);
                place.text += ", " + items[i].label + " " + number;
                place.members +=
                    ",\"item\":" + number + ",\"label\":" + host::QuoteJson(items[i].label);
            }
            // A fault of one item does not keep the others from being listed.
            try {
                // A title tells apart what one file, or several, hold; one item of one file needs
                // none.
                DoItem(place, items[i].octets, m_options.files.size() + items.size() > 2);
            } catch (const ca::Exception& error) {
                Complain(place.text + ": " + FaultText(error.errorCode));
            }
        }
    }

    void DoItem(const Place& place, std::span<unsigned char> octets, bool withTitle) {
        if (octets.empty()) {
            Complain(place.text + ": does not decode");
            return;
        }
        CCryptAsn1Parser parser;
        parser.Parse(octets.data(), static_cast<unsigned>(octets.size()),
                     /*stopAtTruncation=*/true, /*continueOnLengthMismatch=*/false,
                     /*singleRoot=*/false);
        // What could be read is shown even when the end is missing; the fault is told after it.
        const std::vector<CAsn1Block*> nodes = SelectNodes(parser);
        if (withTitle && m_lists && !nodes.empty()) {
            host::Put(host::Harmless(place.text) + ":\n");
        }
        for (CAsn1Block* const node : nodes) {
            DoNode(*node, octets.data(), place);
        }
        if (const std::uint32_t code = parser.GetLastErrorCode(); code != 0) {
            Complain(place.text + ": " + FaultText(code));
        }
        if (nodes.empty() && !m_options.path.empty()) {
            Complain(place.text + ": there is no node " + m_options.path, host::kExitUsage);
        }
    }

    std::vector<CAsn1Block*> SelectNodes(const CCryptAsn1Parser& parser) const {
        if (m_options.path.empty()) {
            return {parser.GetRoots().begin(), parser.GetRoots().end()};
        }
        try {
            CAsn1Block* const node = parser.GetBlockByPath(ca::u8u16(m_options.path));
            return node != nullptr ? std::vector{node} : std::vector<CAsn1Block*>();
        } catch (const std::logic_error&) {
            throw CHostError(host::kExitUsage,
                             "--path takes numbers as in 0/2/1, not \"" + m_options.path + "\"");
        }
    }

    void DoNode(CAsn1Block& node, const unsigned char* base, const Place& place) {
        if (!m_options.raw.empty()) {
            const std::span<const unsigned char> octets = ca::FileOctets(node);
            m_raw.append(octets.begin(), octets.end());
        }
        if (!m_options.rebuild.empty()) {
            Rebuild(node);
        }
        if (m_options.json) {
            PutJson(node, place);
        } else if (m_lists) {
            host::ListAsn1(node, base, std::max(m_width, kLeastWidth), stdout);
        }
    }

    static void PutJson(CAsn1Block& node, const Place& place) {
        std::size_t length = 0;
        const ca::BytePtr text = node.ToJson(&length);
        std::string_view rest(reinterpret_cast<const char*>(text.Get()), length);
        rest.remove_prefix(1);  // the brace of the object
        host::Put("{" + place.members + ",");
        // In pieces: the text may be many times the file.
        while (!rest.empty()) {
            std::size_t count = std::min(rest.size(), kJsonPiece);
            while (count < rest.size() &&
                   (static_cast<unsigned char>(rest[count]) & 0xC0U) == 0x80U) {
                ++count;  // no character is cut in two
            }
            host::Put(host::EscapeHidden(std::string(rest.substr(0, count))));
            rest.remove_prefix(count);
        }
        host::Put("\n");
    }

    void Rebuild(CAsn1Block& node) {
        // The room as the tree needs it; what was written may be less after damage.
        const std::size_t start = m_rebuilt.size();
        m_rebuilt.resize(start + node.GetTotalLength(/*recompute=*/true));
        unsigned position = 0;
        node.GetAsn1Data(reinterpret_cast<unsigned char*>(m_rebuilt.data()) + start, &position);
        m_rebuilt.resize(start + position);
    }

    const Asn1Options& m_options;
    bool m_lists;  // a listing for people goes to the standard output
    std::size_t m_width;
    std::string m_raw;
    std::string m_rebuilt;
    host::ExitCode m_exitCode = host::kExitDone;
};

void CheckOutputs(const Asn1Options& options) {
    const int count =
        (options.json ? 1 : 0) + (options.raw == "-" ? 1 : 0) + (options.rebuild == "-" ? 1 : 0);
    if (count > 1) {
        throw CHostError(
            host::kExitUsage,
            "only one of --json, --raw - and --rebuild - can have the standard output");
    }
}

int ListFiles(const Asn1Options& options) {
    CheckOutputs(options);
    const bool russian = host::IsRussian(options.language, host::FindConfiguration(""));
    SetZORNALng(russian ? L"ru" : L"en");
    host::ShowLog(options.log);
    std::vector<std::wstring> noTexts;
    LogInit(&host::PrintLogLine, noTexts);
    return Asn1Run(options).Run();
}

}  // namespace

namespace host {

void AddAsn1Command(CLI::App& program, int& exitCode) {
    CLI::App* const command = program.add_subcommand("asn1", "List files of ASN.1 data");
    const auto options = std::make_shared<Asn1Options>();
    command->add_option("files", options->files, "Files to list; - is the standard input")
        ->required()
        ->type_name("FILE");
    command->add_flag("--json", options->json, "The structure as JSON, a line for each node");
    command->add_option("--path", options->path, "One node: indices from the root, as in 0/2/1")
        ->type_name("PATH");
    command
        ->add_option("--raw", options->raw,
                     "Write the octets of the node to a file, as they stand; - is the standard "
                     "output, without a listing")
        ->type_name("FILE");
    command
        ->add_option("--rebuild", options->rebuild,
                     "Write the octets of the node anew from the tree, lengths in their shortest "
                     "form; - as above")
        ->type_name("FILE");
    host::AddWidthOption(*command, options->width);
    AddLanguageOption(*command, options->language);
    command->add_flag("--log", options->log, "Show the parser's log lines on the standard error");
    command->footer(kExamples);
    command->callback([options, &exitCode] { exitCode = ListFiles(*options); });
}

}  // namespace host
