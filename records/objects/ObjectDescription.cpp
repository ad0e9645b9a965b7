#include "records/objects/ObjectDescription.h"

#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "records/AnswerBudget.h"
#include "records/JsonFields.h"
#include "records/fill/AttrCertInfoFill.h"
#include "records/fill/CertInfoFill.h"
#include "records/fill/CrlInfoFill.h"
#include "records/fill/SignInfoFill.h"
#include "records/objects/ObjectKinds.h"
#include "records/text/DescriptionWords.h"
#include "records/text/TextLines.h"

#include <array>
#include <iterator>
#include <span>
#include <string_view>

namespace {

using ca::DescriptionField;
using ca::FieldForm;
using ca::FieldId;
using ca::JsonWriter;

void WriteKey(JsonWriter& writer, std::string_view key) {
    writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
}

void WriteMember(JsonWriter& writer, std::string_view key, const std::wstring& text) {
    WriteKey(writer, key);
    ca::WriteJson(writer, text);
}

// Writes fields, objects with their records inside.
class FieldWriter {
  public:
    FieldWriter(JsonWriter& writer, unsigned nested) : m_writer(writer), m_nested(nested) {}

    void Members(const std::vector<DescriptionField>& fields) {
        for (const DescriptionField& field : fields) {
            WriteKey(m_writer, ca::NameOf(field.id).key);
            Value(field);
        }
    }

  private:
    // Its depth is that of the builder's levels, which a describer's code has a fixed number of.
    void Value(const DescriptionField& field) {
        switch (field.form) {
            case FieldForm::kText:
                ca::WriteJson(m_writer, field.text);
                break;
            case FieldForm::kGroup:
                m_writer.StartObject();
                Members(field.fields);
                m_writer.EndObject();
                break;
            case FieldForm::kList:
                m_writer.StartArray();
                for (const DescriptionField& element : field.fields) {
                    Value(element);
                }
                m_writer.EndArray();
                break;
            case FieldForm::kNamed:
                Named(field);
                break;
            case FieldForm::kObject:
                Object(field);
                break;
        }
    }

    // The keys are those of extensions in records; octets only where they may be shown.
    void Named(const DescriptionField& field) {
        m_writer.StartObject();
        WriteMember(m_writer, "OidFriendlyName", field.name);
        WriteMember(m_writer, "OidValue", field.oid);
        if (!field.octets.empty()) {
            WriteKey(m_writer, "RawData");
            ca::WriteJson(m_writer, ca::Base64Text(field.octets));
        }
        WriteMember(m_writer, "FormattedData", field.text);
        if (field.isCritical) {
            WriteKey(m_writer, "Critical");
            ca::WriteJson(m_writer, *field.isCritical);
        }
        m_writer.EndObject();
    }

    void Object(const DescriptionField& field) {
        // The text that is kept is charged, as it is.
        const std::size_t before = m_writer.Size();
        {
            const ca::CBudgetLoan loan;  // the record is dropped, its text is kept
            WriteObject(field);
        }
        ca::CAnswerBudget::Take(m_writer.Size() - before);
    }

    void WriteObject(const DescriptionField& field) {
        // Said in the object's own place, where readers look for it.
        if (!ca::CAnswerBudget::HasRoomFor(field.octets.size())) {
            m_writer.StartObject();
            WriteMember(m_writer, ca::NameOf(FieldId::kError).key, ca::MoreText(1));
            m_writer.EndObject();
            return;
        }
        std::vector<unsigned char> octets = field.octets;  // reading is not const
        try {
            Record(*field.kind, octets, field.text);
        } catch (const ca::Exception& fault) {
            m_writer.StartObject();
            WriteMember(m_writer, ca::NameOf(FieldId::kError).key, fault.message);
            m_writer.EndObject();
        }
    }

    // Throws ca::Exception before anything is written.
    void Record(const ca::ObjectKind& kind, std::span<const unsigned char> octets,
                const std::wstring& about) {
        const std::string_view name = kind.name;
        if (name == "certificate") {
            ca::CertInfo2 record;
            ca::FillCertInfo(octets, record);
            record.ToJson(m_writer);
        } else if (name == "attributeCertificate") {
            ca::AttrCertInfo record;
            ca::FillAttrCertInfo(octets, record);
            record.ToJson(m_writer);
        } else if (name == "crl") {
            // The first page of the list, as for any request without parameters.
            ca::CrlInfo record;
            ca::FillCrlInfo(octets, {}, record);
            record.ToJson(m_writer);
        } else if (name == "signature") {
            Signatures(octets);
        } else if (kind.describe != nullptr && m_nested < ca::kMaxNestedObjects) {
            // Deeper ones are named: each level is described anew, so that its octets count once
            // more.
            ca::DescribeObject(kind, {{}, {}, octets}).ToJson(m_writer, m_nested + 1);
        } else {
            ca::WriteJson(m_writer, about);
        }
    }

    void Signatures(std::span<const unsigned char> message) {
        ca::SignInfos signatures;
        const std::optional<bool> isAttached = ca::FillSignInfos(message, signatures);
        m_writer.StartObject();
        WriteKey(m_writer, "signInfo");
        signatures.ToJson(m_writer);
        WriteKey(m_writer, "isAttached");
        m_writer.Bool(isAttached.value_or(false));
        m_writer.EndObject();
    }

    JsonWriter& m_writer;
    unsigned m_nested;
};

}  // namespace

namespace ca {

std::wstring DescriptionField::Caption() const {
    return form == FieldForm::kNamed ? name : NameOf(id).Caption();
}

void ObjectDescription::ToJson(JsonWriter& writer, unsigned nested) const {
    // Its own budget when it is written alone; inside an answer that of the answer.
    const CAnswerBudget budget(octets);
    writer.StartObject();
    FieldWriter(writer, nested).Members(fields);
    WriteMember(writer, NameOf(FieldId::kError).key, error);
    writer.EndObject();
}

}  // namespace ca
