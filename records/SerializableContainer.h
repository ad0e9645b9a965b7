#pragma once

#include "common/ISerializable.h"

#include <cstddef>
#include <map>
#include <memory>

namespace ca {

/// The key under which a record of `type` stands in a packet; null for a type outside the key
/// table, as the nested collections are.
const char* RecordKey(int type) noexcept;

/// What the packet decides about the form of its records.
struct ContainerForm {
    bool isAttached = false;   ///< the value of "isAttached" after the signature list
    bool rawFileData = false;  ///< the octets follow the text: only "fileDataSize" stands in it
};

/// At most one record of each type. Owns what it holds.
class SerializableContainer {
  public:
    /// The record of `type`, which stays the container's; null when there is none. An absent type
    /// gets an empty entry, which a later SetObject() fills. Throws std::bad_alloc.
    ISerializable* GetObj(int type);

    /// Takes ownership of `obj`, also when it throws (std::bad_alloc; what was held then stays).
    /// A record of the same type is destroyed and replaced; with `clear` every other one too.
    /// A null `obj` stores nothing.
    void SetObject(ISerializable* obj, bool clear);

    /// True when no record is held.
    bool IsEmpty() const noexcept;

    /// Writes the records in ascending order of type, each under its key, into the object that the
    /// caller has begun. Records without a key are left out.
    void WriteTo(JsonWriter& writer, const ContainerForm& form) const;

    /// Takes a Base64 payload out of a request's text before the text is parsed.
    ///
    /// When "fileDataEncodedSize" announces the exact length of the "fileData" that follows it,
    /// the payload is decoded from where it lies, becomes the only record here, and the text is
    /// closed over it: "fileData" is an empty string then and a NUL ends the text. What the buffer
    /// holds after the text's old end stays as it was.
    /// \param json    the text; it ends at its first NUL or after `length` octets.
    /// \return false, text and container being untouched, when no size is announced, when the
    ///         payload does not end exactly there or does not decode, or when out of memory.
    bool PreParseFileData(char* json, std::size_t length) noexcept;

  private:
    std::map<int, std::unique_ptr<ISerializable>> m_records;
};

}  // namespace ca
