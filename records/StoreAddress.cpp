#include "records/StoreAddress.h"

#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "records/JsonFields.h"

#include <QtNetwork/QHostInfo>

#include <algorithm>
#include <array>
#include <cstddef>
#include <tuple>

namespace {

using ca::JsonField;

/// What a location makes of the host that an address names.
enum class HostRule {
    kNone,      ///< there is no host
    kRequired,  ///< an empty host is this machine; written with two leading backslashes
    kOptional,  ///< a plain name stays; one with a backslash is written with two leading ones
    kEndpoint,  ///< the host is the whole endpoint and stays as it is
};

struct LocationRow {
    const wchar_t* code;
    HostRule rule;
};

// Indexed by StoreLocation.
constexpr std::array<LocationRow, 10> kLocations = {{
    {L"", HostRule::kNone},
    {L"sscu", HostRule::kNone},
    {L"sscs", HostRule::kNone},
    {L"sslm", HostRule::kRequired},
    {L"sslmgp", HostRule::kRequired},
    {L"sscugp", HostRule::kNone},
    {L"sss", HostRule::kOptional},
    {L"ssu", HostRule::kOptional},
    {L"sslme", HostRule::kNone},
    {L"remote", HostRule::kEndpoint},
}};

// Null for a location outside the table.
const LocationRow* FindLocation(int location) {
    const bool isListed = location >= 0 && static_cast<std::size_t>(location) < kLocations.size();
    return isListed ? &kLocations[static_cast<std::size_t>(location)] : nullptr;
}

std::wstring TextOf(const wchar_t* text) {
    return text != nullptr ? std::wstring(text) : std::wstring();
}

std::wstring WithLeadingBackslashes(std::wstring host) {
    const std::size_t leading = std::min(host.find_first_not_of(L'\\'), host.size());
    // A network path begins with two of them, and may have come with one or none.
    host.insert(0, leading < 2 ? 2 - leading : 0, L'\\');
    return host;
}

// The first label of a host name.
std::wstring FirstLabel(const std::wstring& host) {
    std::vector<std::wstring> labels;
    ca::Split(host, L".", labels);
    return labels.empty() ? std::wstring() : labels.front();
}

// The JSON form of an address.
struct AddressTexts {
    std::wstring location;
    std::wstring address;
    std::wstring name;
};

constexpr JsonField kLocationField{"location", &AddressTexts::location};
constexpr JsonField kAddressField{"address", &AddressTexts::address};
constexpr JsonField kNameField{"name", &AddressTexts::name};
constexpr std::tuple kAddressFields{kLocationField, kAddressField, kNameField};

}  // namespace

namespace ca {

std::wstring localHostName() {
    return QHostInfo::localHostName().toStdWString();
}

StoreAddress::StoreAddress(const wchar_t* code, const wchar_t* host, const wchar_t* storeName) {
    if (code == nullptr) {
        // Without a code the address names nothing, and stays invalid.
        return;
    }
    name = TextOf(storeName);
    location = ParseLoc(code);
    const bool isKnown = location != kLocationNone;
    valid = (isKnown || IsTempStore()) && SetAddress(host);
    empty = !isKnown && IsTempStore();
}

StoreAddress::StoreAddress(const wchar_t* storeName, bool machine)
    : StoreAddress(machine ? L"sslm" : L"sscu", L"", storeName) {}

void StoreAddress::FromJson(const JsonValue& value) {
    // Absent keys keep what the address has.
    AddressTexts texts{GetLocation(), address, name};
    ReadMembers(value, texts, kAddressFields);
    location = ParseLoc(texts.location.c_str());
    name = std::move(texts.name);
    // The host's form depends on the location, so that either key settles it anew.
    if (FindJson(value, kAddressField.key) != nullptr ||
        FindJson(value, kLocationField.key) != nullptr) {
        valid = SetAddress(texts.address.c_str());
    }
    empty = false;
}

void StoreAddress::ToJson(JsonWriter& writer) const {
    if (empty) {
        writer.StartObject();
        writer.EndObject();
        return;
    }
    WriteObject(writer, AddressTexts{GetLocation(), address, name}, kAddressFields);
}

void StoreAddress::ParseAddress(const wchar_t* text) {
    _Empty();
    if (text == nullptr) {
        return;
    }
    const std::wstring whole = text;
    const std::size_t colon = whole.find(L':');
    std::wstring rest = whole;
    if (colon != std::wstring::npos) {
        location = ParseLoc(whole.substr(0, colon).c_str());
        rest = whole.substr(colon + 1);
    }
    // What begins with a backslash has a host, up to the last one; anything else is a name.
    const std::size_t hostEnd = rest.starts_with(L'\\') ? rest.rfind(L'\\') : 0;
    name = rest.substr(rest.starts_with(L'\\') ? hostEnd + 1 : 0);
    const bool isStored = SetAddress(rest.substr(0, hostEnd).c_str());
    valid = isStored && (location != kLocationNone || IsTempStore());
    empty = false;
}

int StoreAddress::ParseLoc(const wchar_t* code) {
    std::wstring lowered = TextOf(code);
    tolower(lowered);
    for (std::size_t i = 0; i < kLocations.size(); ++i) {
        if (lowered == kLocations[i].code) {
            return static_cast<int>(i);
        }
    }
    return kLocationNone;
}

bool StoreAddress::SetAddress(const wchar_t* host) {
    const LocationRow* row = FindLocation(location);
    if (row == nullptr) {
        return false;
    }
    // A local place has no host, whatever the text says.
    std::wstring text = row->rule != HostRule::kNone ? TextOf(host) : std::wstring();
    const bool isRequired = row->rule == HostRule::kRequired;
    if (isRequired && text.empty()) {
        text = L"LOCALHOST";
    }
    const bool hasBackslash = text.find(L'\\') != std::wstring::npos;
    if (isRequired || (row->rule == HostRule::kOptional && hasBackslash)) {
        text = WithLeadingBackslashes(std::move(text));
    }
    address = std::move(text);
    return true;
}

void StoreAddress::_Empty() {
    *this = StoreAddress();
}

const wchar_t* StoreAddress::GetLocation() const {
    const LocationRow* row = FindLocation(location);
    return row != nullptr ? row->code : L"";
}

const wchar_t* StoreAddress::GetName() const {
    return name.empty() ? nullptr : name.c_str();
}

bool StoreAddress::IsMy() const {
    return location == kLocationCurrentUser && address.empty() && iequals(name, kStoreMy);
}

bool StoreAddress::IsTempStore() const {
    return iequals(name, kStoreTemporary);
}

bool StoreAddress::IsOrvexStore() const {
    return iequals(name, kStoreOrvex);
}

bool StoreAddress::IsLocal() const {
    const LocationRow* row = FindLocation(location);
    if (row == nullptr || row->rule == HostRule::kEndpoint) {
        return false;
    }
    if (row->rule == HostRule::kNone) {
        return true;
    }
    // Compared without case, as host names are (RFC 4343).
    std::wstring host = address;
    tolower(host);
    trim(host, L"\\");
    if (host == L"127.0.0.1" || host == L"localhost") {
        return true;
    }
    std::wstring ownHost = localHostName();
    tolower(ownHost);
    // A machine goes by its short name and by its full one.
    return FirstLabel(host) == FirstLabel(ownHost);
}

const wchar_t* StoreAddress::GetAddress() const {
    return IsLocal() || address.empty() ? nullptr : address.c_str();
}

std::wstring StoreAddress::GetFullAddress() const {
    if (IsRemote()) {
        if (address.empty()) {
            throw Exception(kErrStoreAddress);
        }
        return address;
    }
    // A host of this machine is left out: the name alone opens the store.
    const wchar_t* host = GetAddress();
    return host != nullptr ? std::wstring(host) + L'\\' + name : name;
}

bool StoreAddress::operator==(const StoreAddress& other) {
    if (!valid && !other.valid) {
        return false;
    }
    if (empty && other.empty) {
        return true;
    }
    valid = (!valid || other.valid) && address == other.address && iequals(name, other.name) &&
            location == other.location;
    return valid;
}

void StoreAddresses::FromJson(const JsonValue& value) {
    // Three octets of a request, "{}," make a record of many times as many.
    constexpr std::size_t kMaxEmpty = 4096;
    std::size_t empty = 0;
    for (rapidjson::SizeType i = 0; value.IsArray() && i < value.Size(); ++i) {
        empty += value[i].IsObject() && value[i].ObjectEmpty() ? 1U : 0U;
        if (empty > kMaxEmpty) {
            throw Exception(kErrJsonParse,
                            SetZORNAMessage(kMsgStoreNowhere) + (L'#' + DecimalText(i + 1)));
        }
    }
    AppendJson(value, static_cast<std::vector<StoreAddress>&>(*this));
}

void StoreAddresses::ToJson(JsonWriter& writer) const {
    writer.StartArray();
    for (const StoreAddress& storeAddress : *this) {
        storeAddress.ToJson(writer);
    }
    writer.EndArray();
}

}  // namespace ca
