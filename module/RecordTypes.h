#pragma once

#include "common/ISerializable.h"
#include "records/FileData.h"
#include "records/SerializableContainer.h"

#include <memory>

namespace ca {

/// A fresh record of a type; null for a type that has no record of its own in a packet.
std::unique_ptr<ISerializable> MakeRecord(int type);

/// True for the types whose JSON is an array, which ignore every other value.
bool IsListRecord(int type) noexcept;

/// The file data in a packet's container, which keeps it; null when there is none.
FileData* FindFileData(SerializableContainer& objects);

}  // namespace ca
