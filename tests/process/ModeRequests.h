#pragma once

#include "tests/common/SampleObjects.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A request with as much work in it as its mode finds, whole: text, NUL, raw file data.
struct ModeRequest {
    int mode;
    std::string octets;
};

/// One for each mode, and one that the module does not know.
inline std::vector<ModeRequest> ModeRequests() {
    constexpr std::string_view kText = "Hello";
    constexpr std::string_view kStores =
        R"(,"storeAddresses":[{"location":"sscu","address":"host","name":"a store with a name"}])";
    std::string message;  // the Base64 text between the lines of its armour
    for (std::string_view lines(kSampleMessage); !lines.empty();) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        message += line.starts_with('-') ? "" : line;
        lines.remove_prefix(line.size() + 1);
    }
    const std::string signatures = R"(,"signatures":[")" + message + "\"]";
    const struct {
        int mode;
        std::string_view payload;
        std::string_view members = {};
    } cases[] = {
        {11, kText},
        {12, kText, R"(,"recipientCertId":"FooCertId")"},
        {13, kText},
        {14, kText, R"(,"isAttached":true,"certInclude":1)"},
        {15, kSampleMessage},
        {21, kSampleCertificate},
        {22, kSampleCertificate},
        {23, kSampleCrl},
        {24, kText},
        {25, kSampleCertificate},
        {26, kText},
        {27, kText},
        {28, kText},
        {29, kSampleMessage},
        {30, kSampleMessage},
        {31, kText, R"(,"streamFinalChunk":true)"},
        {32, kText},
        {33, kText},
        {34, kText},
        {35, kText},
        {36, kText, kStores},
        {37, kText},
        {38, kText},
        {39, kSampleCertificate},
        {40, kSampleCrl},
        {41, kSampleEnvelope},
        {42, kText},
        {44, kSampleMessage},
        {45, kSampleCertificate},
        {47, kText},
        {50, kText, R"(,"hashAlg":"1.2.643.7.1.1.2.2")"},
        {51, kText, R"(,"senderCertId":"FooCertId")"},
        {52, kText, R"(,"sendSignData":"SGVsbG8=")"},
        {56, kText},
        {57, kText, signatures},
        {58, kText},
        {61, kText},
        {65, kSampleCertificate},
    };
    std::vector<ModeRequest> requests;
    for (const auto& each : cases) {
        // The parameters are read by the modes that have a use for them.
        std::string octets =
            R"({"clientId":"a client","extInitParams":"SHOW_TIMEOUT=30;","mode":)" +
            std::to_string(each.mode);
        octets.append(each.members).append(R"(,"fileDataSize":)");
        octets.append(std::to_string(each.payload.size())).append("}").append(1, '\0');
        requests.push_back({each.mode, octets.append(each.payload)});
    }
    return requests;
}
