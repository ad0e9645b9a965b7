#pragma once

#include "module/mod_foo.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

/// One module for all benchmarks; the configuration of the machine is left alone.
inline void* Module() {
    static void* const module = [] {
        ::setenv("MOD_FOO_CONFIG", "/dev/null", /*overwrite=*/1);
        return CM_Init(1, [](const wchar_t* line, bool) { return line != nullptr; });
    }();
    return module;
}

/// Octets of the answer about a payload, 0 when the answer does not hold the record.
/// \param record  its key and what follows: "certInfo\":".
inline std::size_t DescribeByModule(int mode, const std::string& payload, const char* record) {
    std::string request = "{\"mode\":" + std::to_string(mode) +
                          ",\"fileDataSize\":" + std::to_string(payload.size()) + "}";
    request += '\0';
    request += payload;
    CMPacket packet{};
    packet.request = request.data();
    packet.requestLength = static_cast<std::uint32_t>(request.size());
    packet.interactive = true;
    CM_ProcessClientRequest(Module(), &packet);
    const bool isGood = packet.response != nullptr && std::strstr(packet.response, record);
    std::free(packet.response);
    return isGood ? packet.responseSize : 0;
}
