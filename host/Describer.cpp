#include "host/Describer.h"

#include "common/Encode.h"
#include "common/Json.h"
#include "host/AnswerPrinter.h"
#include "host/FileIo.h"
#include "host/FileObjects.h"
#include "host/HostError.h"
#include "host/JsonEvents.h"
#include "host/ModeTable.h"
#include "host/Request.h"
#include "host/Terminal.h"
#include "records/text/TextLines.h"

#include <optional>
#include <string_view>
#include <thread>

namespace {

using host::CAnswer;

struct MemberRow {
    std::string_view member;  // of the answer
    std::string_view kind;
};

// The member says the kind; an envelope has the one of certificates, and is told by the operation.
constexpr MemberRow kMembers[] = {
    {"attrCertInfo", "attributeCertificate"},
    {"certInfo", "certificate"},
    {"certInfos", "certificates"},
    {"crlInfo", "crl"},
    {"signInfo", "signature"},
};
// The recipients of an envelope come as certificates.
constexpr std::string_view kEnvelope = "envelope";

// Finds which record an answer holds, and the text of its error.
class AnswerLook : public host::CJsonEvents {
  public:
    // Only the root's keys: records inside have members of the same names.
    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        if (GetDepth() == 1) {
            m_key.assign(text, length);
            for (const MemberRow& row : kMembers) {
                kind = row.member == m_key ? row.kind : kind;
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

    std::string_view kind;
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

std::string NameOf(const ca::ObjectKind& kind) {
    return ca::u16u8(kind.Name());
}

std::string DescriptionJson(const ca::ObjectKind& kind, const ca::ObjectSource& source) {
    ca::JsonBuffer buffer;
    ca::JsonWriter writer(buffer);
    ca::DescribeObject(kind, source).ToJson(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

}  // namespace

namespace host {

// What came of one part of a file.
struct CDescriber::Outcome {
    const ca::ObjectKind* kind = nullptr;  // what it seems or turned out to be
    std::optional<CAnswer> answer;         // the module's last one, good or not
    std::string description;               // JSON, of an object that no operation describes
    std::string fault;                     // "" for a good answer and for a description
    bool isRead = true;
    std::optional<std::uint32_t> errorCode;

    bool IsGood() const { return fault.empty(); }
};

CDescriber::CDescriber(const CModule& module, COrderedOutput& output, CProgressBar& progress,
                       DescribeForm form, const DescribeRequest& request)
    : m_module(module),
      m_output(output),
      m_progress(progress),
      m_form(form),
      m_listParams(request.listParams),
      m_text(request.text) {}

void CDescriber::Describe(const std::vector<ListedFile>& files, unsigned threads) {
    // The caller works as one of the threads, so that one thread needs no other.
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
        // The first failure is the one that is told; the others are mostly its consequences. Those
        // who wait for their turn to write must not wait for a piece that never comes.
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
    const std::vector<Outcome> outcomes = Ask(file);
    OutputPiece piece;
    std::string worst;
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        const Outcome& outcome = outcomes[i];
        piece.text += Write(file.path, outcome, {i + 1, outcomes.size()});
        if (!outcome.isRead) {
            piece.note = outcome.fault;
        }
        // A file counts once, by its first fault, however many of its objects have one.
        if (!outcome.IsGood() && worst.empty()) {
            worst = outcome.isRead ? outcome.fault : WithoutPath(outcome.fault, file.path);
            if (outcome.errorCode) {
                worst.insert(0, std::to_string(*outcome.errorCode) + " ");
            }
        }
    }
    if (!worst.empty()) {
        const std::lock_guard lock(m_mutex);
        ++m_faults[worst];
        m_unreadable = m_unreadable || !piece.note.empty();
    }
    return piece;
}

CDescriber::Outcome CDescriber::Judge(ca::ObjectReader asked, CAnswer answer) {
    AnswerLook look;
    // The answer was found to be JSON, or its fault says that it is not.
    static_cast<void>(ReadJsonEvents(answer.GetText(), look));
    Outcome outcome;
    outcome.kind =
        ca::FindObjectKind(asked == ca::ObjectReader::kRecipients ? kEnvelope : look.kind);
    outcome.errorCode = answer.GetErrorCode();
    if (!answer.IsGood()) {
        outcome.fault = answer.GetFault().empty() ? look.message : answer.GetFault();
        // A provider need not say why.
        if (outcome.fault.empty()) {
            outcome.fault = "the module gives no reason";
        }
    } else if (look.kind.empty()) {
        outcome.fault = "the answer describes nothing";
    }
    outcome.answer.emplace(std::move(answer));
    return outcome;
}

// The first good answer; when there is none, what the likeliest operation says.
CDescriber::Outcome CDescriber::AskModule(const std::vector<ca::ObjectReader>& order,
                                          const std::string& octets,
                                          const std::string& path) const {
    Outcome outcome;
    for (const ca::ObjectReader each : order) {
        CRequestBuilder builder;
        builder.Set("mode", std::to_string(ModeOf(each)));
        if (each == ca::ObjectReader::kCrl && !m_listParams.empty()) {
            builder.Set("extInitParams", QuoteJson(m_listParams));
        }
        CRequest request{.octets = builder.Build(&octets, PayloadForm::kBinary),
                         .name = Harmless(path) + ", " + NameMode(ModeOf(each))};
        Outcome next = Judge(each, m_module.Ask(request));
        // The operations come in the order of their likelihood: the refusal of the first says most.
        if (next.IsGood() || !outcome.answer) {
            outcome = std::move(next);
        }
        if (outcome.IsGood()) {
            break;
        }
    }
    return outcome;
}

CDescriber::Outcome CDescriber::DescribePart(const FileObjects& file, const FilePart& part,
                                             const std::string& content,
                                             const std::string& path) const {
    Outcome outcome;
    // Kinds that no operation describes are described here, without a request.
    if (part.kind != nullptr && part.kind->reader == ca::ObjectReader::kDescription) {
        outcome.kind = part.kind;
        outcome.description = DescriptionJson(*part.kind, PartSource(file, part));
        return outcome;
    }
    // A file of one part is the module's as it is.
    outcome = AskModule(part.order, file.parts.size() > 1 ? PartOctets(file, part) : content, path);
    if (part.order.empty() || !outcome.IsGood()) {
        outcome.kind = part.kind;
        outcome.fault = ReasonOf(file, part, outcome.fault);
    }
    return outcome;
}

std::vector<CDescriber::Outcome> CDescriber::Ask(const ListedFile& file) const {
    std::vector<Outcome> outcomes;
    try {
        if (!file.fault.empty()) {
            throw CHostError(kExitUsage, file.fault);
        }
        std::string content = ReadFile(file.path);
        const FileObjects objects = ReadObjects(content);
        for (const FilePart& part : objects.parts) {
            outcomes.push_back(DescribePart(objects, part, content, file.path));
        }
        if (objects.leftOut != 0) {
            // Said as an outcome of its own, so that a program sees it, too.
            outcomes.emplace_back().fault = ca::u16u8(ca::MoreText(objects.leftOut));
        }
    } catch (const CHostError& error) {
        Outcome& outcome = outcomes.emplace_back();
        outcome.fault = error.what();
        outcome.isRead = false;
    }
    return outcomes;
}

// What a line of JSON begins with.
std::string CDescriber::MembersOf(const std::string& path, Place place) {
    // A number only where there are several: most files have one object.
    return FileMembers(path) +
           (place.count > 1 ? ",\"object\":" + std::to_string(place.number) : "");
}

std::string CDescriber::WriteLine(const std::string& path, const Outcome& outcome, Place place) {
    std::string line = "{" + MembersOf(path, place);
    if (outcome.kind != nullptr) {
        line += ",\"kind\":" + QuoteJson(outcome.kind->name);
    }
    if (!outcome.IsGood()) {
        return line + ",\"error\":" + QuoteJson(outcome.fault) +
               (outcome.errorCode ? ",\"errorCode\":" + std::to_string(*outcome.errorCode) : "") +
               "}\n";
    }
    // Descriptions are made here, of strangers' texts as answers are.
    return outcome.answer ? line + ",\"answer\":" + LineAnswer(*outcome.answer) + "}\n"
                          : line + ",\"description\":" + EscapeHidden(outcome.description) + "}\n";
}

std::string CDescriber::WriteJson(const std::string& path, const Outcome& outcome, Place place) {
    const std::string members = MembersOf(path, place);
    if (outcome.answer) {
        return PrettyAnswer(*outcome.answer, members);
    }
    if (outcome.IsGood()) {
        return PrettyJson("{" + members + ",\"kind\":" + QuoteJson(outcome.kind->name) +
                              ",\"description\":" + outcome.description + "}",
                          /*longest=*/0);
    }
    return WithMembers(members, LineError(outcome.fault)) + "\n";
}

std::string CDescriber::WriteText(const std::string& path, const Outcome& outcome,
                                  Place place) const {
    if (!outcome.isRead) {
        return "";  // the note says it
    }
    std::string title = Harmless(path);
    if (place.count > 1) {
        title += " " + std::to_string(place.number) + "/" + std::to_string(place.count);
    }
    title += ": ";
    if (!outcome.IsGood()) {
        const std::string code =
            outcome.errorCode ? " (" + std::to_string(*outcome.errorCode) + ")" : "";
        return title + (m_text.russian ? "нет описания: " : "not described: ") +
               Harmless(outcome.fault) + code + "\n";
    }
    RecordTextOptions options = m_text;
    options.isEnvelope = outcome.kind->name == kEnvelope;
    options.isDescription = !outcome.answer;
    return title + NameOf(*outcome.kind) + "\n" +
           RecordText(outcome.answer ? outcome.answer->GetText() : outcome.description, options) +
           "\n\n";
}

std::string CDescriber::Write(const std::string& path, const Outcome& outcome, Place place) const {
    switch (m_form) {
        case DescribeForm::kLines:
            return WriteLine(path, outcome, place);
        case DescribeForm::kJson:
            return WriteJson(path, outcome, place);
        case DescribeForm::kText:
            break;
    }
    return WriteText(path, outcome, place);
}

}  // namespace host
