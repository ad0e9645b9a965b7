#pragma once

#include "records/Payload.h"
#include "records/objects/ObjectList.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace host {

/// "mode" of the operation that describes objects of such a reader.
std::uint32_t ModeOf(ca::ObjectReader reader);

/// Something in a file that is described by itself: an object, or all certificates of a file, which
/// may be each other's issuers.
struct FilePart {
    const ca::ObjectKind* kind = nullptr;  ///< null for nothing that is known
    std::vector<std::size_t> objects;      ///< of the file
    /// The operations to try, the likeliest first; empty for a kind that none describes.
    std::vector<ca::ObjectReader> order;
};

/// Objects of a file that are told apart, and what is described by itself of it; the others are
/// counted.
inline constexpr std::size_t kMaxFileObjects = 100000;
inline constexpr std::size_t kMaxFileParts = 1000;

/// The objects of a file.
struct FileObjects {
    std::vector<ca::PayloadItem> items;  ///< views of the content
    ca::ObjectList list;                 ///< at most kMaxFileObjects, views of the items
    std::vector<FilePart> parts;         ///< in order; at least one, at most kMaxFileParts
    std::size_t leftOut = 0;             ///< objects that are in no part
};

/// Finds the objects of a file and judges what they are; the rest is up to their descriptions. Cost
/// is linear: unwrapping PEM or Base64. \param content  outlives the result.
FileObjects ReadObjects(std::string& content);

/// The first object of a part that has one.
ca::ObjectSource PartSource(const FileObjects& file, const FilePart& part);

/// The octets of a part for a request of its own.
std::string PartOctets(const FileObjects& file, const FilePart& part);

/// Why a part is not described, in the current language (UTF-8). \param fault  what the module
/// says.
std::string ReasonOf(const FileObjects& file, const FilePart& part, const std::string& fault);

}  // namespace host
