#include "module/viewer/Summary.h"

#include "asn1/Oid.h"
#include "module/viewer/NameMarks.h"
#include "module/viewer/RecordFields.h"
#include "module/viewer/TagList.h"
#include "module/viewer/ZonedTime.h"

#include <QCryptographicHash>

#include <algorithm>
#include <string>

namespace {

// What an attribute is called; its dotted type where that is all there is.
QString CaptionOf(const QString& tag) {
    const ca::OidInfo* const type = ca::FindOidByShortName(tag.toStdString());
    return type != nullptr ? QString::fromWCharArray(type->Name()) : tag;
}

QString Digest(ca::Octets octets, QCryptographicHash::Algorithm algorithm) {
    QCryptographicHash hash(algorithm);
    hash.addData(reinterpret_cast<const char*>(octets.data()), static_cast<int>(octets.size()));
    return QString::fromLatin1(hash.result().toHex());
}

}  // namespace

namespace ca {

QString CSummary::AsText() const {
    QString text;
    for (const SummaryRow& row : m_rows) {
        const bool isLong = row.text.contains('\n');
        text += row.caption + ":" +
                (isLong              ? "\n"
                 : row.key.isEmpty() ? ""
                                     : " ") +
                row.text + "\n";
        text += row.mark.isEmpty() ? QString() : "(" + row.mark + ")\n";
    }
    return text;
}

void CSummary::Row(const char* key, const QString& caption, const QString& text) {
    if (!text.isEmpty()) {
        m_rows.push_back({QString::fromLatin1(key), caption, text, {}});
    }
}

void CSummary::Row(const char* key, ViewerWord caption, const QString& text) {
    Row(key, Word(caption), text);
}

void CSummary::Row(const char* key, std::string_view member, std::wstring_view text) {
    Row(key, LabelOf(member), ShownText(text));
}

void CSummary::Heading(const QString& caption) {
    m_rows.push_back({{}, caption, {}, {}});
}

void CSummary::Append(const CSummary& other) {
    m_rows.insert(m_rows.end(), other.m_rows.begin(), other.m_rows.end());
}

void CSummary::Names(const char* key, const QString& caption, const QString& text) {
    Row(key, caption, text);
    if (!text.isEmpty()) {
        m_rows.back().mark = NameMarks(text);
    }
}

void CSummary::Name(const char* key, const QString& caption, const NameTexts& texts) {
    std::vector<NameTag> attributes = ReadTagList(texts.tags);
    if (attributes.empty()) {
        Names(key, caption, ShownText(texts.readable));
        return;
    }
    Heading(caption);
    const std::size_t shown = std::min(attributes.size(), kMaxAttributes);
    for (std::size_t i = 0; i < shown; ++i) {
        const std::string name = key + ("." + attributes[i].tag.toStdString());
        Names(name.c_str(), CaptionOf(attributes[i].tag), OrDash(attributes[i].text));
    }
    if (const std::size_t left = attributes.size() - shown; left != 0) {
        const QString more = MessageText(kMsgAndMore).replace('N', QString::number(left));
        m_rows.push_back({QString::fromLatin1(key) + ".more", more, ShownText(texts.readable), {}});
    }
}

void CSummary::Time(const char* key, std::string_view member, const TimeTexts& time) {
    Row(key, LabelOf(member), ZonedTime(time));
}

void CSummary::Fingerprints(Octets encoding) {
    if (!encoding.empty()) {
        Row("sha1", QStringLiteral("SHA-1"), Digest(encoding, QCryptographicHash::Sha1));
        Row("sha256", ViewerWord::kFingerprint, Digest(encoding, QCryptographicHash::Sha256));
    }
}

void CSummary::AlternativeNames(const CertInfoExtensionCollection& extensions) {
    for (const auto& each : extensions.items) {
        if (each->oidValue == COid("subjectAltName")->dotted) {
            Names("alternativeNames", Word(ViewerWord::kAlternativeNames),
                  ShownText(each->formattedData));
        }
    }
}

}  // namespace ca
