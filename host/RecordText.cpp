#include "host/RecordText.h"

#include "common/Encode.h"
#include "common/Hex.h"
#include "common/Json.h"
#include "host/JsonEvents.h"
#include "host/RecordMembers.h"
#include "host/Terminal.h"
#include "records/RecordLabels.h"
#include "records/text/TextLines.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace {

using ca::FindNamedText;
using ca::JsonValue;
using ca::MemberForm;
using ca::NamedTextKeys;
using host::StringMember;
using host::Utf8Of;
using Label = ca::RecordLabel;

constexpr std::size_t kLeastWidth = 40;
constexpr std::size_t kLeastColumns = 16;  // of a value, however deep it stands
constexpr std::size_t kIndent = 2;
constexpr std::size_t kHanging = 2 * kIndent;
// Providers choose how deep an answer nests; Object() and Nested() call each other.
constexpr std::size_t kMaxDepth = 40;
constexpr std::size_t kWholeDigits = 128;  // of a hexadecimal number that is folded, not cut

// A list of which an answer may hold a part, and how long the whole is.
constexpr const char* kEntriesKey = "Revoked";
constexpr const char* kEntriesCount = "RevokedCount";

constexpr std::string_view kFingerprint = "SHA-256";

bool IsHex(std::wstring_view text) {
    return std::ranges::all_of(text, ca::IsHexDigit<wchar_t>);
}

// Writes lines of at most so many columns.
class RecordWriter {
  public:
    explicit RecordWriter(const host::RecordTextOptions& options)
        : m_width(std::max(options.width, kLeastWidth)),
          m_russian(options.russian),
          m_isSelection(options.isSelection),
          m_sort(options.isEnvelope      ? ca::RecordSort::kRecipient
                 : options.isDescription ? ca::RecordSort::kDescription
                                         : ca::RecordSort::kRecord) {}

    // A single record needs no heading of its own.
    void Root(const JsonValue& root) {
        std::size_t records = 0;
        const JsonValue* only = nullptr;
        for (const auto& member : root.GetObject()) {
            if (member.value.IsObject() || member.value.IsArray()) {
                ++records;
                only = &member.value;
            }
        }
        const bool isList = only != nullptr && only->IsArray() && only->Size() == 1;
        const JsonValue* const record = isList ? &(*only)[0] : only;
        if (records == 1 && record->IsObject()) {
            Object(*record, kIndent);
        } else {
            Object(root, kIndent);
        }
    }

    void Object(const JsonValue& object, std::size_t indent) {
        const std::size_t column = ValueColumn(object, indent);
        for (const auto& [key, value] : object.GetObject()) {
            const Label* const label = FindLabel(Utf8Of(key));
            if (IsHidden(label)) {
                continue;
            }
            const std::string name = NameOf(object, key, label);
            if (const std::optional<std::string> text = MemberScalar(object, key, value)) {
                Scalar(name, *text, indent, column);
                // The identifier is SHA-1 by its definition; people compare certificates by
                // SHA-256.
                if (Utf8Of(key) == "Id") {
                    Scalar(std::string(kFingerprint),
                           host::Sha256Text(StringMember(object, "RawData")), indent, column);
                }
            } else if (value.IsObject() && value.MemberCount() != 0) {
                Nested(name, value, indent);
            } else if (value.IsArray() && !value.Empty()) {
                Array(name, value, indent,
                      /*asRows=*/label != nullptr && label->form == MemberForm::kRows);
            }
            if (value.IsArray() && Utf8Of(key) == kEntriesKey) {
                RestOfList(name, object, value.Size(), indent);
            }
        }
    }

    // The list goes on after its last line, or has nothing of what was looked for.
    void RestOfList(const std::string& name, const JsonValue& object, std::size_t shown,
                    std::size_t indent) {
        const auto count = object.FindMember(kEntriesCount);
        const std::size_t all = count != object.MemberEnd() && count->value.IsUint64()
                                    ? static_cast<std::size_t>(count->value.GetUint64())
                                    : shown;
        // An empty array had no heading yet.
        if (all > shown && shown == 0) {
            Heading(name, indent);
        }
        if (m_isSelection && shown == 0 && all != 0) {
            m_text.append(indent + kIndent, ' ');
            Lines(m_russian ? "нет с этим номером" : "none of this number", indent + kIndent);
        } else if (!m_isSelection && all > shown) {
            m_text.append(indent + kIndent, ' ');
            Lines(ca::u16u8(ca::MoreText(all - shown)), indent + kIndent);
        }
    }

    std::string Take() {
        if (m_text.ends_with('\n')) {
            m_text.pop_back();
        }
        return std::move(m_text);
    }

  private:
    const Label* FindLabel(std::string_view key) const { return ca::FindRecordLabel(key, m_sort); }

    // Other forms of a member that is shown are for those who ask for the JSON.
    static bool IsHidden(const Label* label) {
        return label != nullptr &&
               (label->form == MemberForm::kHidden || label->form == MemberForm::kForm);
    }

    std::string NameOf(const JsonValue& object, const JsonValue& key, const Label* label) const {
        if (label == nullptr) {
            return host::Harmless(std::string(Utf8Of(key)));
        }
        // A holder that is not a certificate stands in the place of its certificate's issuer.
        if (Utf8Of(key) == "HolderIssuer" && StringMember(object, "HolderSerial").empty()) {
            return m_russian ? "Держатель" : "Holder";
        }
        return label->In(m_russian);
    }

    // Nothing for lists and records; "" for a value that tells nothing.
    std::optional<std::string> ScalarText(const JsonValue& value) const {
        if (value.IsString()) {
            return std::string(Utf8Of(value));
        }
        if (value.IsBool()) {
            if (m_russian) {
                return value.GetBool() ? "да" : "нет";
            }
            return value.GetBool() ? "yes" : "no";
        }
        if (value.IsUint64()) {
            return std::to_string(value.GetUint64());
        }
        return value.IsArray() || value.IsObject() ? std::nullopt : std::optional<std::string>("");
    }

    // The same of a member; times with their zone.
    std::optional<std::string> MemberScalar(const JsonValue& object, const JsonValue& key,
                                            const JsonValue& value) const {
        std::optional<std::string> text = ScalarText(value);
        return host::IsLocalTime(Utf8Of(key)) && text ? host::ZonedText(object, Utf8Of(key), *text)
                                                      : text;
    }

    // Where the values of an object begin, so that they stand below each other.
    std::size_t ValueColumn(const JsonValue& object, std::size_t indent) const {
        std::size_t widest = 0;
        for (const auto& [key, value] : object.GetObject()) {
            const Label* const label = FindLabel(Utf8Of(key));
            if (!IsHidden(label) && !ScalarText(value).value_or("").empty()) {
                widest =
                    std::max(widest, host::DisplayWidth(ca::u8u16(NameOf(object, key, label))));
                if (Utf8Of(key) == "Id" && !StringMember(object, "RawData").empty()) {
                    widest = std::max(widest, kFingerprint.size());
                }
            }
        }
        // A label of a stranger (a key without a row in the table) must not push values off the
        // line.
        return std::min(indent + widest + 2, m_width / 2);
    }

    void Scalar(const std::string& name, const std::string& text, std::size_t indent,
                std::size_t column) {
        if (text.empty()) {
            return;
        }
        const std::string label = name + ": ";
        const std::size_t used = indent + host::DisplayWidth(ca::u8u16(label));
        m_text.append(indent, ' ').append(label).append(used < column ? column - used : 0, ' ');
        Lines(text, column, /*hasLabel=*/true);
    }

    void Heading(const std::string& name, std::size_t indent) {
        m_text.append(indent, ' ').append(name).append(":\n");
    }

    void Nested(const std::string& name, const JsonValue& object, std::size_t indent) {
        if (indent / kIndent > kMaxDepth) {
            return;
        }
        const std::size_t before = m_text.size();
        Heading(name, indent);
        const std::size_t heading = m_text.size();
        Object(object, indent + kIndent);
        if (m_text.size() == heading) {
            m_text.resize(before);  // nothing to show, as of a certificate that is not there
        }
    }

    void Array(const std::string& name, const JsonValue& array, std::size_t indent, bool asRows) {
        if (const NamedTextKeys* const keys = FindNamedText(array[0])) {
            Heading(keys->list != nullptr ? FindLabel(keys->list)->In(m_russian) : name, indent);
        } else if (array[0].IsString() || asRows) {
            Heading(name, indent);
        }
        const auto objects = std::ranges::count_if(
            array.GetArray(), [](const JsonValue& element) { return element.IsObject(); });
        std::size_t number = 0;
        for (const JsonValue& element : array.GetArray()) {
            ++number;
            if (const NamedTextKeys* const keys = FindNamedText(element)) {
                NamedText(element, *keys, indent + kIndent);
            } else if (const std::optional<std::string> text = ScalarText(element)) {
                m_text.append(indent + kIndent, ' ');
                Lines(*text, indent + kIndent);
            } else if (element.IsObject() && asRows) {
                Row(element, indent + kIndent);
            } else if (element.IsObject()) {
                std::string title = name;
                title.append(" ").append(std::to_string(number));
                title.append("/").append(std::to_string(objects));
                Nested(title, element, indent);
            }
        }
    }

    // The name of an extension, and its text below.
    void NamedText(const JsonValue& value, const NamedTextKeys& keys, std::size_t indent) {
        const std::string name = StringMember(value, keys.name);
        const std::string oid = StringMember(value, keys.oid);
        const std::string text = StringMember(value, keys.text);
        if (oid.empty()) {  // of what could not be read there is the text only
            m_text.append(indent, ' ');
            Lines(text, indent);
            return;
        }
        std::string title = name.empty() || name == oid ? oid : name + " (" + oid + ")";
        const auto critical = value.FindMember("Critical");
        if (critical != value.MemberEnd() && critical->value.IsBool() &&
            critical->value.GetBool()) {
            title += m_russian ? ", критическое" : ", critical";
        }
        m_text.append(indent, ' ');
        Lines(title, indent);
        if (!text.empty()) {
            m_text.append(indent + kIndent, ' ');
            Lines(text, indent + kIndent);
        }
    }

    // One of many short records, in a line.
    void Row(const JsonValue& object, std::size_t indent) {
        std::string row;
        for (const auto& [key, value] : object.GetObject()) {
            const Label* const label = FindLabel(Utf8Of(key));
            const std::string text = MemberScalar(object, key, value).value_or("");
            if (!IsHidden(label) && !text.empty()) {
                row.append(row.empty() ? "" : "  ").append(text);
            }
        }
        m_text.append(indent, ' ');
        Lines(row, indent);
    }

    // Writes a text from where the line is, `column`; all of its further lines begin there. What is
    // folded goes on deeper than any line below could begin, lest it pass for one of its own; the
    // one line after a label has no such need.
    void Lines(const std::string& utf8, std::size_t column, bool hasLabel = false) {
        const std::wstring text = ca::u8u16(utf8);
        std::size_t at = 0;
        for (bool isFirst = true; at <= text.size(); isFirst = false) {
            const std::size_t end = std::min(text.find(L'\n', at), text.size());
            if (!isFirst) {
                m_text.append(column, ' ');
            }
            const bool isOnly = hasLabel && isFirst && end == text.size();
            Fold(host::Harmless(std::wstring_view(text).substr(at, end - at)), column,
                 isOnly ? 0 : kHanging);
            at = end + 1;
        }
    }

    // Writes one line, folded at blanks where there are some; the rest stands `deeper` than it.
    void Fold(std::wstring_view line, std::size_t column, std::size_t deeper) {
        const std::size_t room = std::max(m_width - std::min(m_width, column), kLeastColumns);
        // Digits of signatures and keys: nobody reads them from a terminal, their number tells
        // enough.
        if (line.size() > std::max(room, kWholeDigits) && IsHex(line)) {
            const std::wstring note =
                L"... (" + std::to_wstring(line.size() / 2) + (m_russian ? L" байт)" : L" octets)");
            Put(std::wstring(line.substr(0, room - std::min(room, note.size()))) + note);
            return;
        }
        // A line that is indented already (outlines are) goes on at its own depth.
        const std::size_t blanks = std::min(line.find_first_not_of(L' '), room / 2);
        std::size_t hanging = 0;
        for (;;) {
            const std::size_t kept = FoldPoint(line, room - hanging);
            Put(line.substr(0, kept));
            line.remove_prefix(std::min(line.find_first_not_of(L' ', kept), line.size()));
            if (line.empty()) {
                return;
            }
            hanging = std::min(blanks + deeper, room / 2);
            m_text.append(column + hanging, ' ');
        }
    }

    // Characters that fit: all, or up to the last blank of the second half, or else as many as can
    // be, but not none.
    static std::size_t FoldPoint(std::wstring_view line, std::size_t room) {
        std::size_t kept = 0;
        for (std::size_t width = 0; kept < line.size(); ++kept) {
            width += host::DisplayWidth(line.substr(kept, 1));
            if (width > room) {
                break;
            }
        }
        if (kept == line.size()) {
            return kept;
        }
        const std::size_t blank = line.rfind(L' ', kept);
        const bool isFar = blank != std::wstring_view::npos && blank > kept / 2;
        return std::max<std::size_t>(isFar ? blank : kept, 1);
    }

    void Put(std::wstring_view line) {
        m_text += ca::u16u8(std::wstring(line));
        m_text += '\n';
    }

    std::size_t m_width;
    bool m_russian;
    bool m_isSelection;
    ca::RecordSort m_sort;
    std::string m_text;
};

}  // namespace

namespace host {

std::string RecordText(std::string_view answer, const RecordTextOptions& options) {
    ca::JsonDocument document;
    document.Parse<ca::kJsonParseFlags>(answer.data(), answer.size());
    if (document.HasParseError() || !document.IsObject()) {
        return "";
    }
    RecordWriter writer(options);
    if (options.isDescription) {
        writer.Object(document, kIndent);
    } else {
        writer.Root(document);
    }
    return writer.Take();
}

}  // namespace host
