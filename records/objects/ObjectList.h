#pragma once

#include "records/objects/ObjectKinds.h"

#include <cstddef>
#include <string>
#include <vector>

// Which objects a file or a payload holds, in order: what viewers list, and what operations say
// that they left out.

namespace ca {

/// One object and where it stands.
struct PlacedObject {
    std::size_t item = 0;    ///< of the payload, from 0
    std::size_t offset = 0;  ///< in the item's octets
    /// Its octets up to the next object. What stands after its element is nothing that is known.
    ObjectSource source;
    const ObjectKind* kind = nullptr;  ///< null for nothing that is known
};

/// Objects of a payload, and how many more elements there are.
struct ObjectList {
    std::vector<PlacedObject> objects;
    std::size_t leftOut = 0;
};

/// Finds the objects in the items of a payload: each item is one, and so is every further element
/// in it of a known kind, even one cut off; other octets belong to the object in front of them.
/// \param most  objects that are told apart.
/// The result views the items. Cost is linear.
ObjectList ListObjects(const std::vector<PayloadItem>& items, std::size_t most);

/// How objects of a payload are called: `Object 2 "X509 CRL", offset 570`, the number counting from
/// 1; without label and offset where there is none.
std::wstring PlaceText(std::size_t item, const PayloadItem& payload, std::size_t offset);

}  // namespace ca
