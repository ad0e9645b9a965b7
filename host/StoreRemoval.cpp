#include "host/StoreRemoval.h"

#include "common/Encode.h"
#include "common/sha1.h"
#include "host/FileIo.h"
#include "host/HostError.h"
#include "records/Payload.h"
#include "records/objects/ObjectKinds.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <string_view>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestFile = std::size_t{64} << 20;  // what providers read of a store

struct Look {
    bool hasCertificate = false;  // the one that is looked for
    bool isKey = false;           // a private key and nothing else
    std::size_t objects = 0;
};

Look LookInto(const fs::path& path, const std::string& id) {
    Look look;
    std::string octets;
    try {
        octets = host::ReadFile(path.string(), kLargestFile);
    } catch (const host::CHostError&) {
        return look;  // what cannot be read is no part of the store
    }
    const std::vector<ca::PayloadItem> items =
        ca::DecodePayload({reinterpret_cast<unsigned char*>(octets.data()), octets.size()});
    look.objects = items.size();
    for (const ca::PayloadItem& item : items) {
        const ca::ObjectKind* const kind = ca::RecogniseObject(ca::SourceOf(item));
        const std::string_view name = kind != nullptr ? kind->name : "";
        look.isKey = items.size() == 1 && (name == "privateKey" || name == "encryptedPrivateKey");
        look.hasCertificate = look.hasCertificate || ca::u16u8(ca::Sha1Hex(item.octets)) == id;
    }
    return look;
}

// The name before the last dot, as providers compare it.
std::string Stem(const fs::path& path) {
    const std::string name = path.filename().string();
    return name.substr(0, name.rfind('.'));
}

}  // namespace

namespace host {

StoreRemoval PlanRemoval(const std::string& directory, const std::string& id) {
    StoreRemoval removal;
    std::vector<fs::path> keys;
    std::set<std::string> taken;    // stems of files that stay
    std::set<std::string> leaving;  // and of those that do not
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory, error)) {
        if (!entry.is_regular_file(error) || entry.path().filename().string().front() == '.') {
            continue;
        }
        const Look look = LookInto(entry.path(), id);
        if (look.hasCertificate && look.objects == 1) {
            removal.certificates.push_back(entry.path().string());
            leaving.insert(Stem(entry.path()));
        } else if (look.hasCertificate) {
            removal.mixed = entry.path().string();
        } else if (look.isKey) {
            keys.push_back(entry.path());
        } else {
            taken.insert(Stem(entry.path()));
        }
    }
    for (const fs::path& key : keys) {
        if (leaving.contains(Stem(key)) && !taken.contains(Stem(key))) {
            removal.keys.push_back(key.string());
        }
    }
    std::ranges::sort(removal.certificates);
    std::ranges::sort(removal.keys);
    return removal;
}

}  // namespace host
