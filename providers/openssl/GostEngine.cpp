// The engine interface is deprecated since OpenSSL 3.0, and the only one that has these keys.
#define OPENSSL_SUPPRESS_DEPRECATED

#include "providers/openssl/GostEngine.h"

#include "common/ForkMutex.h"
#include "providers/openssl/Owners.h"

#include <openssl/engine.h>

#include <algorithm>
#include <iterator>
#include <mutex>
#include <string>
#include <string_view>

namespace {

using EnginePtr = ca::Owned<ENGINE, &ENGINE_free>;

constexpr const char* kId = "gost";

enum class State { kUntried, kLoaded, kMissing };

ca::CForkMutex g_mutex;  // guards what follows
State g_state = State::kUntried;

// The engines' directory that OpenSSL was built with: what the environment names does not count.
std::string EngineFile() {
    const std::string_view told = OpenSSL_version(OPENSSL_ENGINES_DIR);  // ENGINESDIR: "..."
    const std::size_t begin = std::min(told.find('"'), told.size() - 1) + 1;
    return std::string(told.substr(begin, told.rfind('"') - begin)) + '/' + kId + ".so";
}

EnginePtr LoadFile() {
    ENGINE_load_dynamic();
    EnginePtr engine(ENGINE_by_id("dynamic"));
    const bool isLoaded =
        engine != nullptr &&
        ENGINE_ctrl_cmd_string(engine.get(), "SO_PATH", EngineFile().c_str(), 0) == 1 &&
        ENGINE_ctrl_cmd_string(engine.get(), "LIST_ADD", "0", 0) == 1 &&
        ENGINE_ctrl_cmd_string(engine.get(), "LOAD", nullptr, 0) == 1;
    return isLoaded ? std::move(engine) : nullptr;
}

// The host's, where it has one: a second one would not load.
EnginePtr Find() {
    for (ENGINE* each = ENGINE_get_first(); each != nullptr; each = ENGINE_get_next(each)) {
        if (std::string_view(ENGINE_get_id(each)) == kId) {
            return EnginePtr(each);
        }
    }
    return LoadFile();
}

}  // namespace

namespace ca {

bool CGostEngine::IsNamedIn(std::span<const unsigned char> octets) noexcept {
    constexpr unsigned char kArc[] = {0x2A, 0x85, 0x03};
    return std::search(octets.begin(), octets.end(), std::begin(kArc), std::end(kArc)) !=
           octets.end();
}

bool CGostEngine::Load() {
    const std::lock_guard lock(g_mutex);
    if (g_state == State::kUntried) {
        EnginePtr engine = Find();
        const bool isReady = engine != nullptr && ENGINE_init(engine.get()) == 1 &&
                             ENGINE_register_pkey_asn1_meths(engine.get()) == 1;
        g_state = isReady ? State::kLoaded : State::kMissing;
        if (isReady) {
            static_cast<void>(engine.release());  // it stays: keys of it may outlive this library
        }
    }
    return g_state == State::kLoaded;
}

}  // namespace ca
