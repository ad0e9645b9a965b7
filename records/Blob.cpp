#include "records/Blob.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"

#include <algorithm>
#include <cstring>

namespace {

// One run of the encoder; a multiple of 3, so that only the last run is padded, and far below the
// encoder's 32-bit length of its result.
constexpr std::size_t kEncodeRun = 3U << 28;

}  // namespace

namespace ca {

void Blob::Adopt(BytePtr block, std::uint32_t size) noexcept {
    m_data = std::move(block);
    m_size = size;
}

void Blob::Assign(const void* octets, std::uint32_t size) {
    // First the new memory: without it the old octets stay.
    BytePtr block = BytePtr::Make(size);
    if (size != 0) {
        std::memcpy(block.Get(), octets, size);
    }
    Adopt(std::move(block), size);
}

void Blob::AssignZeros(std::uint32_t size) {
    BytePtr block = BytePtr::Make(size);
    std::memset(block.Get(), 0, size);
    Adopt(std::move(block), size);
}

void Blob::AssignBase64(const JsonValue& value) {
    if (!value.IsString()) {
        throw Exception(kErrJsonParse, SetZORNAMessage(kMsgWrongJsonType));
    }
    Clear();
    unsigned char* decoded = nullptr;
    unsigned length = 0;
    Base64Decode(value.GetString(), &decoded, length);
    Adopt(BytePtr(decoded), length);
}

BytePtr Blob::Release() noexcept {
    m_size = 0;
    return std::move(m_data);
}

void WriteBase64(JsonWriter& writer, std::span<const unsigned char> octets) {
    // Encoded where it will stand: a large file has no second copy.
    char* place = writer.PlainString((octets.size() + 2) / 3 * 4);
    while (!octets.empty()) {
        const auto run = octets.first(std::min(octets.size(), kEncodeRun));
        unsigned written = 0;
        place += base64_encode(run.data(), static_cast<unsigned>(run.size()), place, written);
        octets = octets.subspan(run.size());
    }
}

}  // namespace ca
