// Whole requests through the entry points: any octets, a NUL and raw data among them. Every one
// must be answered in a well-formed way, and none may change the host's octets unless it announces
// the length of its Base64 payload.

#include "common/Json.h"
#include "module/mod_foo.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

namespace {

// Names the property that does not hold and stops.
void Require(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "property broken: %s\n", property);
        std::abort();
    }
}

void* Module() {
    static void* const module = [] {
        ::setenv("MOD_FOO_CONFIG", "/dev/null", /*overwrite=*/1);
        return CM_Init(1, [](const wchar_t* line, bool) { return std::wcslen(line) > 0; });
    }();
    return module;
}

// Requests that name an address on the network would leave the machine.
bool NamesAddress(std::string_view request) {
    return request.find("Url") != std::string_view::npos ||
           request.find("\\u") != std::string_view::npos;
}

void CheckAnswer(const CMPacket& packet) {
    Require(packet.response != nullptr, "there is an answer");
    const std::size_t size = ::strnlen(packet.response, packet.responseSize);
    const std::string_view text(packet.response, size);
    Require(packet.response[size] == '\0', "a NUL ends the text");
    rapidjson::Document answer;
    answer.Parse<ca::kJsonParseFlags | rapidjson::kParseValidateEncodingFlag>(text.data(),
                                                                              text.size());
    Require(!answer.HasParseError() && answer.IsObject(), "the answer is a JSON object");
    Require(answer.HasMember("errorCode") && answer["errorCode"].IsUint(), "it has a code");
    Require(answer.HasMember("errorMessage") && answer["errorMessage"].IsString(), "and a text");
    const std::size_t raw = answer.HasMember("fileDataSize") ? answer["fileDataSize"].GetUint() : 0;
    const std::size_t whole = answer.HasMember("fileDataSize") ? size + 1 + raw : size;
    Require(packet.responseSize == whole, "the size fits the framing");
}

}  // namespace

// The first octet chooses what the host says besides the request.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view input(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (NamesAddress(input)) {
        return 0;
    }
    // A block of exactly this size, so that the sanitizer sees the octet before and the one after.
    const auto request = std::make_unique<char[]>(input.size());
    std::memcpy(request.get(), input.data(), input.size());
    CMPacket packet{};
    packet.request = request.get();
    packet.requestLength = static_cast<std::uint32_t>(input.size());
    packet.interactive = (data[0] & 1) != 0;
    CM_ProcessClientRequest(Module(), &packet);
    CheckAnswer(packet);
    std::free(packet.response);
    Require(input.find("fileDataEncodedSize") != std::string_view::npos ||
                std::memcmp(request.get(), input.data(), input.size()) == 0,
            "the host's octets are untouched");
    return 0;
}
