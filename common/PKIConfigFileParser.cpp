#include "common/PKIConfigFileParser.h"

#include "common/ConfigFile.h"
#include "common/ConfigFileParser.h"
#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/PkiTextRules.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <string_view>
#include <type_traits>
#include <utility>

namespace {

using ca::JsonValue;
using ca::RevocationCheck;
using namespace ca::pki;  // the rules of the table
using Rule = bool (*)(const std::wstring& text);
using TextList = std::vector<std::wstring>;

constexpr std::size_t kMaxListItems = 256;
constexpr std::size_t kMaxReportedFaults = 16;

// By the values of RevocationCheck.
constexpr const char* kRevocationNames[] = {"none", "ifKnown", "required"};

// ---- The table as functions: VisitFields(visitor, object) calls the visitor once a key, in order

#define CA_PKI_OBJECT(type)                                        \
    template <class Visitor, class Object>                         \
    requires std::is_same_v<std::remove_const_t<Object>, ca::type> \
    void VisitFields(Visitor& visitor, Object& object) {
#define CA_PKI_FLAG(key, preset) visitor.Flag(#key, object.key);
#define CA_PKI_NUMBER(key, low, high, preset) visitor.Number(#key, object.key, low, high);
#define CA_PKI_CHOICE(key, type, names, preset) visitor.Choice(#key, object.key, names);
#define CA_PKI_TEXT(key, rule, preset) visitor.Text(#key, object.key, rule);
#define CA_PKI_REQUIRED(key, rule) visitor.Required(#key, object.key, rule);
#define CA_PKI_TEXTS(key, rule, ...) visitor.Texts(#key, object.key, rule);
#define CA_PKI_PART(key, type, ...) visitor.Part(#key, object.key);
#define CA_PKI_PARTS(key, type) visitor.Parts(#key, object.key);
#define CA_PKI_END }
#include "common/PkiSettingTable.inc"

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

    void Flag(const char* key, bool& out) {
        if (const JsonValue* const value = Find(key, &JsonValue::IsBool)) {
            out = value->GetBool();
        }
    }
    void Number(const char* key, int& out, int low, int high) {
        if (const JsonValue* const value = Find(key, &JsonValue::IsNumber)) {
            if (!value->IsInt() || value->GetInt() < low || value->GetInt() > high) {
                m_faults.WrongValue(At(key));
                return;
            }
            out = value->GetInt();
        }
    }
    template <class Enumeration, std::size_t N>
    void Choice(const char* key, Enumeration& out, const char* const (&names)[N]) {
        if (const JsonValue* const value = Find(key, &JsonValue::IsString)) {
            const auto found = std::ranges::find(names, ToString(*value));
            if (found == std::end(names)) {
                m_faults.WrongValue(At(key));
                return;
            }
            out = static_cast<Enumeration>(found - std::begin(names));
        }
    }
    bool Text(const char* key, std::wstring& out, Rule rule) {
        const JsonValue* const value = Find(key, &JsonValue::IsString);
        return value != nullptr && Take(*value, At(key), rule, out);
    }
    void Required(const char* key, std::wstring& out, Rule rule) {
        if (!m_object.HasMember(key)) {
            m_faults.WrongValue(At(key));
            m_isComplete = false;
        } else if (!Text(key, out, rule)) {
            m_isComplete = false;
        }
    }
    void Texts(const char* key, TextList& out, Rule rule) {
        ReadList(key, out, [&](const JsonValue& value, const Place& place, std::wstring& item) {
            return Expect(value.IsString(), place) && Take(value, place, rule, item);
        });
    }
    template <class Object>
    void Part(const char* key, Object& out) {
        if (const JsonValue* const value = Find(key, &JsonValue::IsObject)) {
            const Place place = At(key);
            Reader reader(*value, &place, m_faults);
            VisitFields(reader, out);
        }
    }
    template <class Object>
    void Parts(const char* key, std::vector<Object>& out) {
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
    bool Take(const JsonValue& value, const Place& place, Rule rule, std::wstring& out) {
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

    void Flag(const char* key, bool value) {
        m_output.Key(key);
        m_output.Bool(value);
    }
    void Number(const char* key, int value, int /*low*/, int /*high*/) {
        m_output.Key(key);
        m_output.Int(value);
    }
    template <class Enumeration, std::size_t N>
    void Choice(const char* key, Enumeration value, const char* const (&names)[N]) {
        m_output.Key(key);
        m_output.String(names[static_cast<std::size_t>(value)]);
    }
    void Text(const char* key, const std::wstring& value, Rule /*rule*/) {
        m_output.Key(key);
        m_output.String(ca::u16u8(value));
    }
    void Required(const char* key, const std::wstring& value, Rule rule) { Text(key, value, rule); }
    void Texts(const char* key, const TextList& values, Rule /*rule*/) {
        WriteList(key, values,
                  [this](const std::wstring& value) { m_output.String(ca::u16u8(value)); });
    }
    template <class Object>
    void Part(const char* key, const Object& object) {
        m_output.Key(key);
        Write(object);
    }
    template <class Object>
    void Parts(const char* key, const std::vector<Object>& objects) {
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
    PkiSettings settings;
    Reader reader(value, nullptr, faults);
    VisitFields(reader, settings);
    m_settings = std::move(settings);
}

void PKIConfigFileParser::ToJson(JsonWriter& writer) const {
    Writer(writer).Write(m_settings);
}

}  // namespace ca
