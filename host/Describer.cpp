#include "host/Describer.h"

#include "host/AnswerPrinter.h"
#include "host/FileIo.h"
#include "host/HostError.h"
#include "host/JsonEvents.h"
#include "host/ModeTable.h"
#include "host/Request.h"
#include "host/Terminal.h"

#include <optional>
#include <string_view>
#include <thread>

namespace {

using host::CAnswer;
using host::Description;

struct KindRow {
    std::string_view member;  // of the answer
    const char* kind;
    const char* english;
    const char* russian;
};

constexpr KindRow kKinds[] = {
    {"attrCertInfo", "attributeCertificate", "attribute certificate", "атрибутный сертификат"},
    {"certInfo", "certificate", "certificate", "сертификат"},
    {"certInfos", "certificates", "certificates", "сертификаты"},
    {"crlInfo", "crl", "certificate revocation list", "список отозванных сертификатов"},
    {"signInfo", "signature", "signed message", "подписанное сообщение"},
};
// The recipients of an envelope come as certificates.
constexpr KindRow kEnvelope = {"certInfos", "envelope", "enveloped message",
                               "зашифрованное сообщение"};
constexpr KindRow kUnknownKind = {"", "unknown", "unknown", "неизвестно"};

// Finds which record an answer holds, and the text of its error.
class AnswerLook : public host::CJsonEvents {
  public:
    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        if (GetDepth() == 1) {
            m_key.assign(text, length);
            for (const KindRow& row : kKinds) {
                kind = row.member == m_key ? &row : kind;
            }
        }
        return true;
    }
    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        if (GetDepth() == 1 && m_key == "errorMessage") {
            message.assign(text, length);
        }
        return true;
    }

    const KindRow* kind = &kUnknownKind;
    std::string message;

  private:
    std::string m_key;
};

// Why a file cannot be read: "cannot open PATH: No such file", "PATH is too large". A group of
// faults must not split by the name of the file.
std::string WithoutPath(const std::string& text, const std::string& path) {
    if (text.starts_with(path)) {
        return "FILE" + text.substr(path.size());
    }
    const std::string inside = " " + path + ": ";
    const std::size_t at = text.find(inside);
    return at == std::string::npos
               ? text
               : text.substr(0, at) + " FILE: " + text.substr(at + inside.size());
}

}  // namespace

namespace host {

struct CDescriber::Outcome {
    std::optional<CAnswer> answer;  // the last one, good or not
    const KindRow* kind = &kUnknownKind;
    std::string fault;  // "" for a good answer
    bool isRead = true;
    std::optional<std::uint32_t> errorCode;
    const OtherKind* other = nullptr;  // what a file without a description seems to be

    bool IsGood() const { return fault.empty(); }
};

CDescriber::CDescriber(const CModule& module, COrderedOutput& output, CProgressBar& progress,
                       DescribeForm form, const RecordTextOptions& text)
    : m_module(module), m_output(output), m_progress(progress), m_form(form), m_text(text) {}

void CDescriber::Describe(const std::vector<ListedFile>& files, unsigned threads) {
    std::vector<std::jthread> others;
    for (unsigned i = 1; i < threads; ++i) {
        others.emplace_back([this, &files] { Work(files); });
    }
    Work(files);
    others.clear();  // joins
    if (m_failure) {
        std::rethrow_exception(m_failure);
    }
}

void CDescriber::Work(const std::vector<ListedFile>& files) noexcept {
    try {
        for (std::size_t number = 0; Next(files, number);) {
            m_output.Put(number, DescribeFile(files[number]));
        }
    } catch (...) {
        const std::lock_guard lock(m_mutex);
        m_failure = m_failure ? m_failure : std::current_exception();
        m_output.Abandon();
    }
}

bool CDescriber::Next(const std::vector<ListedFile>& files, std::size_t& number) {
    const std::lock_guard lock(m_mutex);
    if (m_failure || m_next == files.size()) {
        return false;
    }
    number = m_next++;
    m_progress.Show(number, static_cast<double>(number) / static_cast<double>(files.size()));
    return true;
}

OutputPiece CDescriber::DescribeFile(const ListedFile& file) {
    const Outcome outcome = Ask(file);
    OutputPiece piece{.text = Write(file.path, outcome), .note = ""};
    if (!outcome.isRead) {
        piece.note = outcome.fault;
    }
    if (!outcome.IsGood()) {
        std::string reason = outcome.isRead ? outcome.fault : WithoutPath(outcome.fault, file.path);
        if (outcome.other != nullptr) {
            reason = NameOf(*outcome.other);
        } else if (outcome.errorCode) {
            reason = std::to_string(*outcome.errorCode) + " " + reason;
        }
        const std::lock_guard lock(m_mutex);
        ++m_faults[reason];
        m_unreadable = m_unreadable || !outcome.isRead;
    }
    return piece;
}

std::string CDescriber::NameOf(const OtherKind& other) const {
    return std::string(m_text.russian ? other.russian : other.english) +
           (m_text.russian ? "; строение показывает cmhost asn1"
                           : "; cmhost asn1 shows its structure");
}

CDescriber::Outcome CDescriber::Judge(Description asked, CAnswer answer) {
    AnswerLook look;
    static_cast<void>(ReadJsonEvents(answer.GetText(), look));
    Outcome outcome;
    outcome.kind = asked == Description::kEnvelope ? &kEnvelope : look.kind;
    outcome.errorCode = answer.GetErrorCode();
    if (!answer.IsGood()) {
        outcome.fault = answer.GetFault().empty() ? look.message : answer.GetFault();
        if (outcome.fault.empty()) {
            outcome.fault = "the module gives no reason";
        }
    } else if (look.kind == &kUnknownKind) {
        outcome.fault = "the answer describes nothing";
    }
    outcome.answer.emplace(std::move(answer));
    return outcome;
}

// The first good answer; when there is none, what the likeliest operation says.
CDescriber::Outcome CDescriber::Ask(const ListedFile& file) const {
    Outcome outcome;
    outcome.fault = file.fault;
    outcome.isRead = file.fault.empty();
    if (!outcome.isRead) {
        return outcome;
    }
    try {
        std::string content = ReadFile(file.path);
        const FileGuess guess = GuessFile(content);
        for (const Description each : guess.order) {
            CRequestBuilder builder;
            builder.Set("mode", std::to_string(ModeOf(each)));
            CRequest request{.octets = builder.Build(&content, PayloadForm::kBinary),
                             .name = Visible(file.path) + ", " + NameMode(ModeOf(each))};
            Outcome next = Judge(each, m_module.Ask(request));
            if (next.IsGood() || !outcome.answer) {
                outcome = std::move(next);
            }
            if (outcome.IsGood()) {
                break;
            }
        }
        outcome.other = outcome.IsGood() ? nullptr : guess.other;
    } catch (const CHostError& error) {
        outcome.fault = error.what();
        outcome.isRead = false;
    }
    return outcome;
}

std::string CDescriber::Write(const std::string& path, const Outcome& outcome) const {
    const std::string code = outcome.errorCode ? std::to_string(*outcome.errorCode) : "";
    switch (m_form) {
        case DescribeForm::kLines: {
            const std::string line = "{" + FileMembers(path);
            if (outcome.IsGood()) {
                return line + ",\"kind\":" + QuoteJson(outcome.kind->kind) +
                       ",\"answer\":" + LineAnswer(*outcome.answer) + "}\n";
            }
            const std::string kind =
                outcome.other != nullptr ? ",\"kind\":" + QuoteJson(outcome.other->kind) : "";
            return line + kind + ",\"error\":" + QuoteJson(outcome.fault) +
                   (code.empty() ? "" : ",\"errorCode\":" + code) + "}\n";
        }
        case DescribeForm::kJson:
            return outcome.answer ? PrettyAnswer(*outcome.answer, FileMembers(path))
                                  : WithMembers(FileMembers(path), LineError(outcome.fault)) + "\n";
        case DescribeForm::kText:
            break;
    }
    if (!outcome.isRead) {
        return "";  // the note says it
    }
    const char* const kind = m_text.russian ? outcome.kind->russian : outcome.kind->english;
    const std::string title = Visible(path) + ": ";
    if (!outcome.IsGood()) {
        return title + (m_text.russian ? "нет описания: " : "not described: ") +
               (outcome.other != nullptr
                    ? NameOf(*outcome.other)
                    : Visible(outcome.fault) + (code.empty() ? "" : " (" + code + ")")) +
               "\n";
    }
    RecordTextOptions options = m_text;
    options.isEnvelope = outcome.kind == &kEnvelope;
    return title + kind + "\n" + RecordText(outcome.answer->GetText(), options) + "\n\n";
}

}  // namespace host
