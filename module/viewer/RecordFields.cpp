#include "module/viewer/RecordFields.h"

#include "common/Encode.h"
#include "common/Lng.h"
#include "module/viewer/TagList.h"
#include "module/viewer/ViewerText.h"
#include "records/RecordLabels.h"
#include "records/text/VisibleText.h"

#include <map>

namespace {

using ca::JsonValue;
using ca::MemberForm;
using ca::MessageText;

// Records nest in one another less deeply.
constexpr int kMaxDepth = 40;

std::string_view ViewOf(const JsonValue& value) {
    return {value.GetString(), value.GetStringLength()};
}

QString ScalarText(const JsonValue& value) {
    if (value.IsString()) {
        return ca::ShownText(ca::u8u16(std::string(ViewOf(value))));
    }
    if (value.IsBool()) {
        return MessageText(value.GetBool() ? kMsgYes : kMsgNo);
    }
    return value.IsUint64() ? QString::number(value.GetUint64()) : QString();
}

QString MemberText(const JsonValue& object, const char* key) {
    const auto member = object.FindMember(key);
    return member != object.MemberEnd() ? ScalarText(member->value) : QString();
}

QString KeyLabel(std::string_view key, const ca::RecordLabel* label) {
    return label != nullptr
               ? QString::fromStdString(label->In(IsRussian()))
               : ca::LaidOut(ca::ShownText(ca::u8u16(std::string(key))), ca::kMaxLineText);
}

bool IsEmpty(const JsonValue& value) {
    return value.IsNull() || (value.IsString() && value.GetStringLength() == 0) ||
           (value.IsArray() && value.Empty()) || (value.IsObject() && value.ObjectEmpty());
}

}  // namespace

namespace ca {

CRecordFields::CRecordFields() : m_fields(1) {}

CRecordFields::CRecordFields(const std::string& json, RecordSort sort) : CRecordFields() {
    m_sort = sort;
    JsonDocument document;
    document.Parse<kJsonParseFlags>(json.data(), json.size());
    if (!document.HasParseError() && document.IsObject()) {
        AddObject(kRoot, document, 0);
    }
}

std::size_t CRecordFields::Add(std::size_t parent, const QString& label, const QString& text) {
    const std::size_t index = m_fields.size();
    m_fields.push_back({label, text, parent, m_fields[parent].children.size(), {}});
    m_fields[parent].children.push_back(index);
    return index;
}

void CRecordFields::AddObject(std::size_t parent, const JsonValue& object, int depth) {
    std::map<std::string_view, std::size_t> shown;  // field of each key
    for (const bool isForm : {false, true}) {
        for (const auto& [name, value] : object.GetObject()) {
            const std::string_view key = ViewOf(name);
            const RecordLabel* const label = FindRecordLabel(key, m_sort);
            const MemberForm form = label != nullptr ? label->form : MemberForm::kShown;
            if (form == MemberForm::kHidden || (form == MemberForm::kForm) != isForm ||
                IsEmpty(value)) {
                continue;
            }
            const auto base = isForm ? shown.find(label->base) : shown.end();
            const bool isAlone = isForm && base == shown.end() && *label->base != '\0';
            if (isAlone && value.IsNumber()) {
                continue;  // the code of a verdict without words, as of a record that is not there
            }
            const std::size_t above = base != shown.end() ? base->second : parent;
            const std::size_t field = m_fields.size();
            AddMember(above, KeyLabel(key, label), value, depth);
            if (field < m_fields.size()) {
                shown.emplace(key, field);
            }
        }
    }
}

void CRecordFields::AddMember(std::size_t parent, const QString& label, const JsonValue& value,
                              int depth) {
    if (value.IsArray()) {
        AddArray(parent, label, value, depth);
    } else if (!value.IsObject()) {
        Add(parent, label, ScalarText(value));
    } else if (depth < kMaxDepth) {
        const std::size_t field = Add(parent, label, {});
        AddObject(field, value, depth + 1);
        if (m_fields[field].children.empty()) {  // as of a certificate that is not there
            m_fields[parent].children.pop_back();
            m_fields.pop_back();
        }
    }
}

void CRecordFields::AddArray(std::size_t parent, const QString& label, const JsonValue& array,
                             int depth) {
    const bool isNamed = array[0].IsObject() && FindNamedText(array[0]) != nullptr;
    const char* const own = isNamed ? FindNamedText(array[0])->list : nullptr;
    const std::size_t list =
        Add(parent, own != nullptr ? LabelOf(own) : label, QString::number(array.Size()));
    rapidjson::SizeType number = 0;
    for (const JsonValue& element : array.GetArray()) {
        if (number == kMaxListed) {
            const QString left = QString::number(array.Size() - number);
            Add(list, MessageText(kMsgAndMore).replace('N', left), {});
            return;
        }
        AddElement(list, label + " " + QString::number(++number), element, depth);
    }
}

void CRecordFields::AddElement(std::size_t list, const QString& label, const JsonValue& value,
                               int depth) {
    if (!value.IsObject() || !AddNamedText(list, value)) {
        AddMember(list, label, value, depth);
    }
}

// An extension or attribute; false for another object.
bool CRecordFields::AddNamedText(std::size_t parent, const JsonValue& value) {
    const NamedTextKeys* const keys = FindNamedText(value);
    if (keys == nullptr) {
        return false;
    }
    const QString name = MemberText(value, keys->name);
    const QString oid = MemberText(value, keys->oid);
    const auto critical = value.FindMember("Critical");
    const bool hasCritical = critical != value.MemberEnd() && critical->value.IsBool();
    QString label = LaidOut((name.isEmpty() ? oid : name).section('\n', 0, 0), kMaxLineText);
    if (hasCritical && critical->value.GetBool()) {
        label += " (" + MessageText(kMsgCritical) + ")";
    }
    const std::size_t field = Add(parent, OrDash(label), MemberText(value, keys->text));
    Add(field, QStringLiteral("OID"), oid);
    if (hasCritical) {
        Add(field, MessageText(kMsgCritical), ScalarText(critical->value));
    }
    if (const QString data = MemberText(value, keys->data); !data.isEmpty()) {
        Add(field, QStringLiteral("Base64"), data);
    }
    return true;
}

QString CRecordFields::AsText() const {
    QString text;
    for (const std::size_t child : m_fields[kRoot].children) {
        AppendLines(child, 0, text);
    }
    return text;
}

// Recurses as deep as records nest.
void CRecordFields::AppendLines(std::size_t index, int level, QString& text) const {
    constexpr int kIndent = 4;
    const RecordField& field = m_fields[index];
    const QString indent(kIndent * level, ' ');
    text += indent + field.label + ":";
    if (field.text.contains('\n')) {
        const QString deeper = "\n" + indent + QString(kIndent, ' ');
        text += deeper + QString(field.text).replace("\n", deeper);
    } else {
        text += " " + field.text;
    }
    text += "\n";
    for (const std::size_t child : field.children) {
        AppendLines(child, level + 1, text);
    }
}

QString ShortName(const NameTexts& name) {
    for (const NameTag& each : ReadTagList(name.tags)) {
        if (each.tag == QLatin1String("CN")) {
            return LaidOut(each.text.section('\n', 0, 0), kMaxLineText);
        }
    }
    return ShownLine(name.readable);
}

QString LabelOf(std::string_view key, RecordSort sort) {
    return KeyLabel(key, FindRecordLabel(key, sort));
}

}  // namespace ca
