#include "records/Blob.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"

#include <algorithm>
#include <cstring>

namespace {

// One run of the encoder; a multiple of 3, so that only the last run is padded, and far below the
// encoder's 32-bit length of its result.
constexpr std::uint32_t kEncodeRun = 3U << 28;

}  // namespace

namespace ca {

void Blob::Adopt(BytePtr block, std::uint32_t size) noexcept {
    m_data = std::move(block);
    m_size = size;
}

void Blob::Assign(const void* octets, std::uint32_t size) {
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
        throw Exception(kErrJsonParse);
    }
    Clear();
    unsigned char* decoded = nullptr;
    unsigned length = 0;
    Base64Decode(value.GetString(), &decoded, length);
    Adopt(BytePtr(decoded), length);
}

void Blob::WriteBase64(JsonWriter& writer) const {
    const std::size_t textLength = (std::size_t{m_size} + 2) / 3 * 4;
    char* place = writer.PlainString(textLength);
    for (std::uint32_t done = 0; done < m_size;) {
        const std::uint32_t run = std::min(m_size - done, kEncodeRun);
        unsigned written = 0;
        place += base64_encode(m_data.Get() + done, run, place, written);
        done += run;
    }
}

BytePtr Blob::Release() noexcept {
    m_size = 0;
    return std::move(m_data);
}

}  // namespace ca
