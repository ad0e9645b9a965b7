#include "common/PKIConfigFileParser.h"

#include "common/ConfigFile.h"
#include "common/ConfigFileParser.h"
#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/FieldTable.h"
#include "common/Lng.h"
#include "common/PkiTextRules.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace {

using ca::AnyValue;
using ca::JsonField;
using ca::JsonValue;
using ca::NumberRange;
using ca::RevocationCheck;
using ca::TextRule;
using namespace ca::pki;  // the rules of the table
using TextList = std::vector<std::wstring>;

// Entries of one list: bounded as everything in a file that others may write.
constexpr std::size_t kMaxListItems = 256;
// Places in one warning.
constexpr std::size_t kMaxReportedFaults = 16;

// By the values of RevocationCheck.
constexpr const char* kRevocationNames[] = {"none", "ifKnown", "required"};

/// A value of an enumeration, by the names of its values.
template <std::size_t N>
struct ChoiceOf {
    const char* const (&names)[N];
};
template <std::size_t N>
ChoiceOf(const char* const (&)[N]) -> ChoiceOf<N>;

/// A text that an entry of a list is nothing without.
struct RequiredText {
    TextRule rule;
};

// ---- The table: the rows of each object by its type

// clang-format off
#define CA_PKI_OBJECT(type) constexpr auto RowsOf(std::type_identity<ca::type>) { \
    using Object = ca::type; return std::tuple{
#define CA_PKI_FLAG(key, preset) JsonField{#key, &Object::key},
#define CA_PKI_NUMBER(key, low, high, preset) JsonField{#key, &Object::key, NumberRange{low, high}},
#define CA_PKI_CHOICE(key, type, names, preset) JsonField{#key, &Object::key, ChoiceOf{names}},
#define CA_PKI_TEXT(key, rule, preset) JsonField{#key, &Object::key, TextRule{&rule}},
#define CA_PKI_REQUIRED(key, rule) JsonField{#key, &Object::key, RequiredText{&rule}},
#define CA_PKI_TEXTS(key, rule, ...) JsonField{#key, &Object::key, TextRule{&rule}},
#define CA_PKI_PART(key, type, ...) JsonField{#key, &Object::key},
#define CA_PKI_PARTS(key, type) JsonField{#key, &Object::key},
#define CA_PKI_END }; }
// clang-format on
#include "common/PkiSettingTable.inc"

// Calls visitor.Field(key, value, rule) once a key, in order.
template <class Visitor, class Object>
void VisitFields(Visitor& visitor, Object& object) {
    ca::VisitRows(RowsOf(std::type_identity<std::remove_const_t<Object>>()), [&](const auto& row) {
        visitor.Field(row.key.data(), row.In(object), row.rule);
    });
}

// ---- Reading

/// Where a value stands; put into words only when it is wrong.
struct Place {
    const Place* parent;  ///< null: the root
    const char* key;
    std::size_t index;

    static constexpr std::size_t kNoIndex = static_cast<std::size_t>(-1);

    bool IsUnder(std::string_view rootKey) const {
        return parent != nullptr ? parent->IsUnder(rootKey) : key == rootKey;
    }
    std::wstring Describe() const {
        std::wstring text = parent != nullptr ? parent->Describe() : L"";
        if (index != kNoIndex) {
            return text + L'[' + ca::DecimalText(index) + L']';
        }
        const std::string name = key;
        return text.append(text.empty() ? L"" : L".").append(name.begin(), name.end());
    }
};

// What a fault under it is not to leave at its default, which allows everything.
constexpr const char* kGuard = "network";

/// Takes what is wrong: throws the first fault, or gathers the places.
class Faults {
  public:
    explicit Faults(bool strict) : m_strict(strict) {}

    void WrongType(const Place& place) { Add(place, ca::kErrJsonParse, kMsgPkiConfigWrongType); }
    void WrongValue(const Place& place) { Add(place, ca::kErrParameters, kMsgPkiConfigWrongValue); }
    bool IsEmpty() const { return m_count == 0; }
    bool IsGuardWrong() const { return m_isGuardWrong; }
    std::wstring Describe() const {
        return m_count > kMaxReportedFaults ? m_places + L", ..." : m_places;
    }

  private:
    void Add(const Place& place, ca::ErrorCode code, Sentence message) {
        if (m_strict) {
            throw ca::Exception(code, SetZORNAMessage(message) + place.Describe());
        }
        // A wrong value under this key must not open what it was to close.
        m_isGuardWrong = m_isGuardWrong || place.IsUnder(kGuard);
        if (++m_count <= kMaxReportedFaults) {
            m_places.append(m_places.empty() ? L"" : L", ").append(place.Describe());
        }
    }

    bool m_strict;
    bool m_isGuardWrong = false;
    std::size_t m_count = 0;
    std::wstring m_places;
};

/// Visitor that fills one structure from one JSON object. What is absent or wrong stays as it was.
class Reader {
  public:
    Reader(const JsonValue& object, const Place* place, Faults& faults)
        : m_object(object), m_place(place), m_faults(faults) {}

    /// False when a required key was absent or wrong.
    bool IsComplete() const { return m_isComplete; }

    void Field(const char* key, bool& out, AnyValue /*rule*/) {
        if (const JsonValue* const value = Find(key, &JsonValue::IsBool)) {
            out = value->GetBool();
        }
    }
    void Field(const char* key, int& out, const NumberRange& range) {
        if (const JsonValue* const value = Find(key, &JsonValue::IsNumber)) {
            if (!value->IsInt() || value->GetInt() < range.low || value->GetInt() > range.high) {
                m_faults.WrongValue(At(key));
                return;
            }
            out = value->GetInt();
        }
    }
    template <class Enumeration, std::size_t N>
    void Field(const char* key, Enumeration& out, const ChoiceOf<N>& choice) {
        if (const JsonValue* const value = Find(key, &JsonValue::IsString)) {
            const auto found = std::ranges::find(choice.names, ToString(*value));
            // Names are exact: letter case counts.
            if (found == std::end(choice.names)) {
                m_faults.WrongValue(At(key));
                return;
            }
            out = static_cast<Enumeration>(found - std::begin(choice.names));
        }
    }
    void Field(const char* key, std::wstring& out, TextRule rule) { ReadText(key, out, rule); }
    void Field(const char* key, std::wstring& out, const RequiredText& required) {
        if (!m_object.HasMember(key)) {
            m_faults.WrongValue(At(key));
            m_isComplete = false;
        } else if (!ReadText(key, out, required.rule)) {
            m_isComplete = false;
        }
    }
    void Field(const char* key, TextList& out, TextRule rule) {
        ReadList(key, out, [&](const JsonValue& value, const Place& place, std::wstring& item) {
            return Expect(value.IsString(), place) && Take(value, place, rule, item);
        });
    }
    // As deep as the structures are nested, which the table fixes.
    template <class Object>
    void Field(const char* key, Object& out, AnyValue /*rule*/) {
        if (const JsonValue* const value = Find(key, &JsonValue::IsObject)) {
            const Place place = At(key);
            Reader reader(*value, &place, m_faults);
            VisitFields(reader, out);
        }
    }
    template <class Object>
    void Field(const char* key, std::vector<Object>& out, AnyValue /*rule*/) {
        ReadList(key, out, [&](const JsonValue& value, const Place& place, Object& item) {
            if (!Expect(value.IsObject(), place)) {
                return false;
            }
            Reader reader(value, &place, m_faults);
            VisitFields(reader, item);
            return reader.IsComplete();
        });
    }

  private:
    Place At(const char* key) const { return {m_place, key, Place::kNoIndex}; }
    static std::string ToString(const JsonValue& value) {
        return std::string(value.GetString(), value.GetStringLength());
    }

    bool ReadText(const char* key, std::wstring& out, TextRule rule) {
        const JsonValue* const value = Find(key, &JsonValue::IsString);
        return value != nullptr && Take(*value, At(key), rule, out);
    }
    bool Expect(bool rightType, const Place& place) {
        if (!rightType) {
            m_faults.WrongType(place);
        }
        return rightType;
    }
    /// The member of that key, or null when it is absent or of the wrong type.
    const JsonValue* Find(const char* key, bool (JsonValue::*isRight)() const) {
        const auto member = m_object.FindMember(key);
        if (member == m_object.MemberEnd() || !Expect((member->value.*isRight)(), At(key))) {
            return nullptr;
        }
        return &member->value;
    }
    bool Take(const JsonValue& value, const Place& place, TextRule rule, std::wstring& out) {
        std::wstring text = ca::u8u16(ToString(value));
        if (!rule(text)) {
            m_faults.WrongValue(place);
            return false;
        }
        out = std::move(text);
        return true;
    }
    /// A list of what `read` accepts; one that is too long is wrong as a whole.
    template <class Item, class ReadItem>
    void ReadList(const char* key, std::vector<Item>& out, ReadItem read) {
        const JsonValue* const list = Find(key, &JsonValue::IsArray);
        const Place listPlace = At(key);
        if (list == nullptr) {
            return;
        }
        if (list->Size() > kMaxListItems) {
            m_faults.WrongValue(listPlace);
            return;
        }
        // A list is replaced as a whole; wrong entries are left out of it.
        std::vector<Item> items;
        for (rapidjson::SizeType i = 0; i < list->Size(); ++i) {
            Item item;
            if (read((*list)[i], Place{&listPlace, "", i}, item)) {
                items.push_back(std::move(item));
            }
        }
        out = std::move(items);
    }

    const JsonValue& m_object;
    const Place* m_place;  // null: the root
    Faults& m_faults;
    bool m_isComplete = true;
};

// ---- Writing

/// Visitor that writes one structure as one JSON object.
template <class Output>
class Writer {
  public:
    explicit Writer(Output& output) : m_output(output) {}

    template <class Object>
    void Write(const Object& object) {
        m_output.StartObject();
        VisitFields(*this, object);
        m_output.EndObject();
    }

    void Field(const char* key, bool value, AnyValue /*rule*/) {
        m_output.Key(key);
        m_output.Bool(value);
    }
    void Field(const char* key, int value, const NumberRange& /*rule*/) {
        m_output.Key(key);
        m_output.Int(value);
    }
    template <class Enumeration, std::size_t N>
    void Field(const char* key, Enumeration value, const ChoiceOf<N>& choice) {
        m_output.Key(key);
        m_output.String(choice.names[static_cast<std::size_t>(value)]);
    }
    void Field(const char* key, const std::wstring& value, TextRule /*rule*/) {
        m_output.Key(key);
        m_output.String(ca::u16u8(value));
    }
    void Field(const char* key, const std::wstring& value, const RequiredText& required) {
        Field(key, value, required.rule);
    }
    void Field(const char* key, const TextList& values, TextRule /*rule*/) {
        WriteList(key, values,
                  [this](const std::wstring& value) { m_output.String(ca::u16u8(value)); });
    }
    template <class Object>
    void Field(const char* key, const Object& object, AnyValue /*rule*/) {
        m_output.Key(key);
        Write(object);
    }
    template <class Object>
    void Field(const char* key, const std::vector<Object>& objects, AnyValue /*rule*/) {
        WriteList(key, objects, [this](const Object& object) { Write(object); });
    }

  private:
    template <class Item, class WriteItem>
    void WriteList(const char* key, const std::vector<Item>& items, WriteItem writeItem) {
        m_output.Key(key);
        m_output.StartArray();
        for (const Item& item : items) {
            writeItem(item);
        }
        m_output.EndArray();
    }

    Output& m_output;
};

}  // namespace

namespace ca {

void PKIConfigFileParser::ClearAll() {
    m_settings = {};
    m_sourcePath.clear();
}

std::wstring PKIConfigFileParser::GetConfigPath(const std::wstring& serviceConfigPath) {
    return serviceConfigPath.substr(0, serviceConfigPath.rfind(L'/') + 1) +
           L"QetCryptoSvcPKIConfig.json";
}

std::optional<std::wstring> PKIConfigFileParser::GivenPath() {
    const char* const given = ::secure_getenv("MOD_FOO_PKI_CONFIG");
    const bool isGiven = given != nullptr && *given != '\0';
    return isGiven ? std::optional(PathToWString(given)) : std::nullopt;
}

std::vector<std::wstring> PKIConfigFileParser::SearchPaths(const std::wstring& serviceConfigPath) {
    std::vector<std::wstring> paths = serviceConfigPath.empty()
                                          ? ConfigFileParser::SearchPaths()
                                          : std::vector<std::wstring>{serviceConfigPath};
    for (std::wstring& path : paths) {
        path = GetConfigPath(path);
    }
    return paths;
}

PkiSettings PKIConfigFileParser::ServiceDefaults(const ConfigFileParser& service) {
    PkiSettings settings;
    settings.crl.timeout = service.GetCRLTimeout();
    settings.crl.useCertificatePoints = !service.GetUseOnlyCustomCDPs();
    settings.ocsp.enabled = service.GetCheckOCSP();
    settings.ocsp.timeout = service.GetOCSPTimeout();
    settings.policies.signing.checkTime = service.GetCheckSignCertExpired();
    return settings;
}

bool PKIConfigFileParser::ReadConfig(const ConfigFileParser& service, std::wstring& errorText,
                                     bool silent) {
    ClearAll();
    m_settings = ServiceDefaults(service);
    if (const auto given = GivenPath()) {
        return Load(*given, /*mustExist=*/true, errorText, silent);
    }
    for (const std::wstring& path : SearchPaths(service.SourcePath())) {
        // The first that is there counts, even when it cannot be read: falling back would hide the
        // fault.
        const bool wasRead = Load(path, /*mustExist=*/false, errorText, silent);
        if (!wasRead || !m_sourcePath.empty()) {
            return wasRead;
        }
    }
    return true;
}

bool PKIConfigFileParser::ParseConfigFile(const std::wstring& path, std::wstring& errorText,
                                          bool silent) {
    ClearAll();
    return Load(path, /*mustExist=*/false, errorText, silent);
}

// Reads one file over the defaults that the settings hold.
bool PKIConfigFileParser::Load(const std::wstring& path, bool mustExist, std::wstring& errorText,
                               bool silent) {
    errorText.clear();
    std::string content;
    const FileStatus status = ReadConfigText(path, content);
    if (status == FileStatus::kMissing && !mustExist) {
        return true;
    }
    if (status != FileStatus::kDone) {
        errorText = DescribeReadFailure(status, path);
        return false;
    }
    JsonDocument document;
    document.Parse<kJsonParseFlags>(content.data(), content.size());
    // The parser takes a NUL for the end of the text.
    const std::size_t nul = content.find('\0');
    if (document.HasParseError() || !document.IsObject() || nul != std::string::npos) {
        const std::size_t offset = document.HasParseError() ? document.GetErrorOffset() : nul;
        errorText = SetZORNAMessage(kMsgPkiConfigBroken) + path + L':' +
                    ca::DecimalText(offset != std::string::npos ? offset : 0);
        return false;
    }
    m_sourcePath = path;
    Faults faults(/*strict=*/false);
    Reader reader(document, nullptr, faults);
    VisitFields(reader, m_settings);
    // Without rules nothing is allowed, which is the safe side of a broken rule.
    if (faults.IsGuardWrong()) {
        m_settings.network.fetch.clear();
        m_settings.network.upload.clear();
    }
    if (!silent && !faults.IsEmpty()) {
        errorText = SetZORNAMessage(kMsgConfigWrongValues) + faults.Describe();
    }
    return true;
}

bool PKIConfigFileParser::WriteConfigFile(const std::wstring& path, std::wstring& errorText) const {
    JsonBuffer buffer;
    rapidjson::PrettyWriter<JsonBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>, CJsonAllocator>
        output(buffer);
    Writer(output).Write(m_settings);
    return WriteConfigText(path, std::string(buffer.GetString(), buffer.GetSize()) + '\n',
                           errorText);
}

void PKIConfigFileParser::FromJson(const JsonValue& value) {
    Faults faults(/*strict=*/true);
    if (!value.IsObject()) {
        faults.WrongType({nullptr, "PKIConfig", Place::kNoIndex});
    }
    // A fresh one: what a request leaves out is at its default, not at the file's value.
    PkiSettings settings;
    Reader reader(value, nullptr, faults);
    VisitFields(reader, settings);
    m_settings = std::move(settings);
}

void PKIConfigFileParser::ToJson(JsonWriter& writer) const {
    Writer(writer).Write(m_settings);
}

}  // namespace ca
