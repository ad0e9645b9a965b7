// Objects that are described as records/objects has it: OCSP responses, requests, key stores.

#include "module/viewer/FileReader.h"
#include "module/viewer/ItemDescribers.h"
#include "records/objects/ObjectDescription.h"

#include <vector>

namespace {

using namespace ca;

constexpr std::size_t kMaxSummaryRows = 60;

ObjectDescription Describe(const FileItem& item) {
    ObjectSource source{{}, {}, item.octets};
    if (item.note != nullptr) {
        source.label = item.note->label;
        source.headers = item.note->headers;
        source.octets = item.note->asReceived.empty() ? source.octets : item.note->asReceived;
    }
    return DescribeObject(*item.object, source);
}

// Adds the objects among fields and below them. Recursion as deep as describers nest fields.
void AddObjects(CFileReader& reader, const std::vector<DescriptionField>& fields,
                ItemIndex parent) {
    for (const DescriptionField& field : fields) {
        if (field.form == FieldForm::kObject) {
            reader.AddKnown(*field.kind, field.octets, parent);
        } else {
            AddObjects(reader, field.fields, parent);
        }
    }
}

// Lays fields out as rows, groups below headings.
class CRows {
  public:
    explicit CRows(CSummary& summary) : m_summary(summary) {}

    /// What has no heading comes first, so that it does not seem to belong to one.
    void AddAll(const std::vector<DescriptionField>& fields) {
        for (const bool hasHeading : {false, true}) {
            for (const DescriptionField& field : fields) {
                if (HasHeading(field) == hasHeading) {
                    Add(field, QString::fromStdWString(field.Caption()));
                }
            }
        }
    }

    /// Rows that there was no room for.
    std::size_t LeftOut() const { return m_leftOut; }

  private:
    static bool IsListOfNamed(const DescriptionField& field) {
        return field.form == FieldForm::kList && !field.fields.empty() &&
               field.fields.front().form == FieldForm::kNamed;
    }

    static bool HasHeading(const DescriptionField& field) {
        const bool isListOfGroups = field.form == FieldForm::kList && !field.fields.empty() &&
                                    field.fields.front().form == FieldForm::kGroup;
        return field.form == FieldForm::kGroup || isListOfGroups || IsListOfNamed(field);
    }

    void Heading(const QString& caption) {
        if (m_summary.Rows().size() < kMaxSummaryRows) {
            m_summary.Heading(caption);
        }
    }

    // Recursion as deep as describers nest fields.
    void Add(const DescriptionField& field, const QString& caption) {
        switch (field.form) {
            case FieldForm::kGroup:
                AddGroup(field, caption);
                break;
            case FieldForm::kList:
                AddList(field, caption);
                break;
            default:
                AddText(field, ShownLine(caption.toStdWString()));
        }
    }

    void AddText(const DescriptionField& field, const QString& caption) {
        if (m_summary.Rows().size() >= kMaxSummaryRows) {
            ++m_leftOut;
        } else {
            m_summary.Names(NameOf(field.id).key, caption, ShownText(field.text));
        }
    }

    void AddGroup(const DescriptionField& field, const QString& caption) {
        Heading(caption);
        AddAll(field.fields);
    }

    void AddList(const DescriptionField& list, const QString& caption) {
        if (IsListOfNamed(list)) {
            Heading(caption);
        }
        int number = 0;
        for (const DescriptionField& element : list.fields) {
            ++number;
            const bool isNamed = element.form == FieldForm::kNamed;
            Add(element, isNamed                   ? QString::fromStdWString(element.name)
                         : list.fields.size() == 1 ? caption
                                                   : caption + " " + QString::number(number));
        }
    }

    CSummary& m_summary;
    std::size_t m_leftOut = 0;
};

}  // namespace

namespace ca {

void ReadOtherObject(CFileReader& reader, ItemIndex item) {
    const ObjectDescription description = Describe(reader.Item(item));
    AddObjects(reader, description.fields, item);
}

void DescribeOther(const CFileDocument& document, ItemIndex item, ItemDescription& out) {
    const ObjectDescription description = Describe(document[item]);
    out.title = out.kind;
    out.sign = description.error.empty() ? ItemSign::kInformation : ItemSign::kWarning;
    SayFaults(description.error, out);
    CRows rows(out.summary);
    rows.AddAll(description.fields);
    if (const std::size_t left = rows.LeftOut(); left != 0) {
        out.summary.Row("more", MessageText(kMsgDlgDetails).remove('&'),
                        MessageText(kMsgAndMore).replace('N', QString::number(left)));
    }
    out.summary.Heading(Word(ViewerWord::kStructure));
    out.summary.Fingerprints(document.EncodingOf(item));
    out.fields = CRecordFields(BareJson(description), RecordSort::kDescription);
}

std::string OtherJson(const CFileDocument& document, ItemIndex item) {
    return "{\"kind\":\"" + std::string(document[item].object->name) +
           "\",\"description\":" + BareJson(Describe(document[item])) + "}";
}

}  // namespace ca
