#pragma once

#include "asn1/Asn1Damage.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ca {

struct ObjectKind;

/// What an item of a file is: what RecogniseObject() says, and what stands inside of messages. Each
/// has a row in ItemKinds.cpp, which says what it holds, what it is called and what is said of it.
enum class ItemKind : std::uint8_t {
    kFile,
    kCertificate,
    kAttributeCertificate,
    kCrl,
    kMessage,  ///< SignedData with signatures
    kBundle,   ///< the same without: what it holds is certificates or lists
    kTimeStamp,
    kSignature,
    kCountersignature,
    kEnvelope,
    kRecipient,
    kObject,      ///< whatever else ObjectKindTable.inc has: `object` says what
    kStructure,   ///< elements of which nothing more is known
    kUnreadable,  ///< octets that are not an element, a block that does not decode
    kMore,        ///< stands for items that are not listed: `number` of them, 0 for too deep ones
};

using ItemIndex = std::uint32_t;
inline constexpr ItemIndex kNoItem = std::numeric_limits<ItemIndex>::max();

/// What is told of few items.
struct ItemNote {
    std::string label;  ///< of the PEM block, as `headers`
    std::string headers;
    /// Of an item that ends too early: the octets as they came. The item's own are a copy in which
    /// all that is there can be read.
    std::span<const unsigned char> asReceived;
    std::optional<Asn1Damage> cut;  ///< why the item ends where it ends; places as in the file
};

/// One thing in a file.
struct FileItem {
    ItemKind kind = ItemKind::kFile;
    ItemIndex parent = kNoItem;
    std::uint32_t row = 0;     ///< among the children of its parent
    std::uint32_t number = 0;  ///< which of the recipients that the octets name; how many more
    std::span<const unsigned char>
        octets;  ///< its encoding; of a file all of it. Empty for a record
    std::vector<ItemIndex> children;
    const ObjectKind* object = nullptr;  ///< what is known of kObject and of what follows it
    std::unique_ptr<ItemNote> note;      ///< null for most
};

}  // namespace ca
