#pragma once

#include "asn1/Asn1Primitives.h"
#include "asn1/Elements.h"
#include "common/Lng.h"
#include "records/objects/ObjectDescription.h"
#include "records/text/DescriptionWords.h"

#include <cstddef>
#include <deque>
#include <span>
#include <string>
#include <vector>

namespace ca {

/// Fields of one description; what is more is counted.
inline constexpr std::size_t kMaxDescribedFields = 50000;

/// Memory that one description may take, in octets for each of the object's and always. An answer
/// of an OCSP responder takes 36 for each of its own.
inline constexpr std::size_t kDescriptionPerOctet = 48;
inline constexpr std::size_t kDescriptionAlways = 1 << 20;

/// Builds a description, one field behind the other. Says nothing for members that are absent or
/// could not be read, so that a describer lists what there may be and reads on after every fault.
/// Holds what nested encodings had to be copied to; outlives all that is read from them.
class CDescriptionBuilder {
  public:
    /// \param object  what offsets in texts are counted in; outlives the builder.
    explicit CDescriptionBuilder(std::span<const unsigned char> object) : m_object(object) {}
    CDescriptionBuilder(const CDescriptionBuilder&) = delete;
    CDescriptionBuilder& operator=(const CDescriptionBuilder&) = delete;

    /// What is said while one lives are members of a group or elements of a list. A group in which
    /// nothing was said goes away.
    class Level {
      public:
        Level(CDescriptionBuilder& builder, FieldId id, FieldForm form);
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
        ~Level();

      private:
        CDescriptionBuilder& m_builder;
        std::vector<DescriptionField>* m_outer;
        FieldId m_outerId;
        FieldForm m_form;
    };

    // Values. An empty text says nothing.
    void Text(FieldId id, std::wstring text);
    void Text(FieldId id, Sentence text) { Text(id, SetZORNAMessage(text)); }
    void Text(FieldId id, Word word) { Text(id, WordText(word)); }
    void Flag(FieldId id, bool value) { Text(id, value ? kMsgYes : kMsgNo); }
    /// An extension or attribute.
    void Named(DescriptionField field);
    /// An element of the list that is open.
    void Element(std::wstring text) { Text(m_id, std::move(text)); }
    /// An object with a description of its own. \param about  what it is about, in one line.
    void Object(FieldId id, const ObjectKind& kind, std::span<const unsigned char> octets,
                std::wstring about);
    /// The id of the open list, for its elements.
    FieldId Id() const { return m_id; }

    /// Ends a list at the bound: says how many elements are left.
    void LeaveOut(std::size_t count);
    /// From now on parts that cannot be read are told by their size: they may be secret.
    void HideOctets() { m_isSecret = true; }
    /// A part that is not what it should be, as octets.
    void Unreadable(FieldId id, std::span<const unsigned char> octets);
    /// What is wrong, a line each.
    void Fault(std::wstring_view fault);

    /// The encoding in an OCTET STRING, its segments joined; empty for null.
    std::span<const unsigned char> Joined(const CAsn1Object* octetString);
    /// The octets as they are, or made readable when they end too early; that is a fault then.
    std::span<const unsigned char> Mended(std::span<const unsigned char> octets);
    /// Whether the object ends too early: what is not there may have been after the end.
    bool IsCut() const { return m_isCut; }
    /// That there is none of what may be there; nothing for an object that is cut.
    void Absent(FieldId id, Word word);
    /// Where octets stand in the object; 0 for a copy.
    std::uint32_t OffsetOf(std::span<const unsigned char> octets) const;

    ObjectDescription Take(const ObjectKind& kind);

  private:
    DescriptionField* Add(FieldId id, FieldForm form);

    std::span<const unsigned char> m_object;
    ObjectDescription m_description;
    std::vector<DescriptionField>* m_open = &m_description.fields;
    FieldId m_id = {};
    std::size_t m_count = 0;
    std::size_t m_leftOut = 0;
    bool m_isCut = false;
    bool m_isSecret = false;
    DescriptionField m_sink;  // for what is past the bound
    std::deque<std::vector<unsigned char>> m_copies;
};

}  // namespace ca
