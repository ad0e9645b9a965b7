#include "module/viewer/CertFields.h"

#include "asn1/OidTable.h"
#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/Lng.h"
#include "module/viewer/ViewerText.h"
#include "records/text/VisibleText.h"

#include <algorithm>
#include <string>

namespace {

using ca::MessageText;

// Forms that are called the same in every language.
const QString kDirectoryForm = QStringLiteral("RFC 4514");
const QString kOid = QStringLiteral("OID");
const QString kTags = QStringLiteral("TAG=value");
const QString kUtc = QStringLiteral("UTC");
const QString kBase64 = QStringLiteral("Base64");

std::wstring_view YesOrNo(bool is) {
    return SetZORNAMessage(is ? kMsgYes : kMsgNo);
}

// The value of `tag` in "TAG=value;TAG=value;" with `\` before what is meant as it stands.
std::wstring TagValue(std::wstring_view tags, std::wstring_view tag) {
    std::wstring item;
    for (std::size_t i = 0; i < tags.size(); ++i) {
        if (tags[i] == L'\\' && i + 1 < tags.size()) {
            item += tags[++i];
        } else if (tags[i] != L';') {
            item += tags[i];
        } else if (item.starts_with(tag)) {
            return item.substr(tag.size());
        } else {
            item.clear();
        }
    }
    return {};
}

}  // namespace

namespace ca {

CCertFields::CCertFields() : m_fields(1) {}

CCertFields::CCertFields(const CertInfo& record) : CCertFields() {
    AddIfAny(kRoot, MessageText(kMsgFieldVersion), record.version);
    AddIfAny(kRoot, MessageText(kMsgSerial), record.serial);
    AddIfAny(kRoot, MessageText(kMsgFieldSignatureAlg), record.signatureAlg);
    AddIfAny(kRoot, MessageText(kMsgFieldHashAlg), record.hashAlg);
    AddName(record, /*isSubject=*/false);
    AddPeriod(record);
    AddName(record, /*isSubject=*/true);
    AddKey(record);
    AddIfAny(kRoot, MessageText(FindOidByShortName("keyUsage")->messageId), record.keyUsageStr);
    AddExtensions(record);
    const std::size_t status = Add(kRoot, MessageText(kMsgOcspStatus), record.validity);
    Add(status, QStringLiteral("ValidityNumber"), ca::DecimalText(record.validityNumber));
    Add(kRoot, MessageText(kMsgFieldPrivateKey), YesOrNo(record.hasPrivateKey));
    AddIfAny(kRoot, MessageText(kMsgFieldId), record.id);
    AddIfAny(kRoot, MessageText(kMsgFieldEncoding), u8u16(record.rawData));
    AddIfAny(kRoot, MessageText(kMsgFieldFaults), record.error);
}

std::size_t CCertFields::Add(std::size_t parent, const QString& label, std::wstring_view text) {
    const std::size_t index = m_fields.size();
    m_fields.push_back({label, ShownText(text), parent, m_fields[parent].children.size(), {}});
    m_fields[parent].children.push_back(index);
    return index;
}

void CCertFields::AddIfAny(std::size_t parent, const QString& label, std::wstring_view text) {
    if (!text.empty()) {
        Add(parent, label, text);
    }
}

void CCertFields::AddName(const CertInfo& record, bool isSubject) {
    const std::size_t name = Add(kRoot, MessageText(isSubject ? kMsgFieldSubject : kMsgIssuer),
                                 isSubject ? record.description : record.issuer);
    AddIfAny(name, kDirectoryForm, isSubject ? record.x500Description : record.x500NameIssuer);
    AddIfAny(name, kOid, isSubject ? record.oidDescription : record.oidIssuer);
    AddIfAny(name, kTags, isSubject ? record.subjectTags : record.issuerTags);
    AddIfAny(name, MessageText(kMsgFieldUniqueId),
             isSubject ? record.subjectUniqueId : record.issuerUniqueId);
}

void CCertFields::AddPeriod(const CertInfo& record) {
    const std::size_t period =
        Add(kRoot, MessageText(kMsgFieldPeriod), record.validFrom + L" \u2013 " + record.validTo);
    Add(period, MessageText(kMsgNotBefore), record.validFrom);
    AddIfAny(period, MessageText(kMsgNotBefore) + ", " + kUtc, record.validFromUtc);
    Add(period, MessageText(kMsgNotAfter), record.validTo);
    AddIfAny(period, MessageText(kMsgNotAfter) + ", " + kUtc, record.validToUtc);
}

void CCertFields::AddKey(const CertInfo& record) {
    const std::size_t key = Add(kRoot, MessageText(kMsgFieldPublicKey), record.publicKeyAlg);
    AddIfAny(key, MessageText(kMsgFieldKeyAlg), record.publicKeyAlg);
    AddIfAny(key, MessageText(kMsgFieldKeyParams), record.publicKeyParams);
    AddIfAny(key, MessageText(kMsgFieldPublicKey), record.publicKey);
    AddIfAny(key, MessageText(kMsgFieldHashAlg), record.publicKeyHashAlgs);
}

void CCertFields::AddExtensions(const CertInfo& record) {
    const auto& items = record.extensions.items;
    if (items.empty()) {
        return;
    }
    const std::size_t list =
        Add(kRoot, MessageText(kMsgFieldExtensions), ca::DecimalText(items.size()));
    const std::size_t shown = std::min(items.size(), kMaxListed);
    for (std::size_t i = 0; i < shown; ++i) {
        AddExtension(list, *items[i]);
    }
    if (shown < items.size()) {
        const QString more = QString::number(items.size() - shown);
        Add(list, MessageText(kMsgAndMore).replace('N', more), {});
    }
}

void CCertFields::AddExtension(std::size_t parent, const CertInfoExtension& extension) {
    const bool hasName = !extension.oidFriendlyName.empty();
    QString label = ShownLine(hasName ? extension.oidFriendlyName : extension.oidValue);
    if (extension.critical) {
        label += " (" + MessageText(kMsgCritical) + ")";
    }
    const std::size_t field = Add(parent, label, extension.formattedData);
    Add(field, kOid, extension.oidValue);
    Add(field, MessageText(kMsgCritical), YesOrNo(extension.critical));
    AddIfAny(field, kBase64, u8u16(extension.rawData));
}

QString CCertFields::AsText() const {
    QString text;
    for (const std::size_t child : m_fields[kRoot].children) {
        AppendLines(child, 0, text);
    }
    return text;
}

// Recurses three levels, which the constructor makes.
void CCertFields::AppendLines(std::size_t index, int level, QString& text) const {
    constexpr int kIndent = 4;
    const CertField& field = m_fields[index];
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

QString ShortName(std::wstring_view tags, std::wstring_view readable) {
    const std::wstring name = TagValue(tags.substr(0, kMaxValueText), L"CN=");
    return ShownLine(name.empty() ? readable : std::wstring_view(name));
}

}  // namespace ca
