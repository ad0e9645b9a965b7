#pragma once

#include "common/ISerializable.h"

#include <string>
#include <utility>
#include <vector>

namespace ca {

/// Index into the table of store locations.
enum StoreLocation : int {
    kLocationNone = 0,
    kLocationCurrentUser = 1,
    kLocationCurrentService = 2,
    kLocationLocalMachine = 3,
    kLocationMachinePolicy = 4,
    kLocationUserPolicy = 5,
    kLocationServices = 6,
    kLocationUsers = 7,
    kLocationMachineEnterprise = 8,
    kLocationRemote = 9,
};

inline constexpr const wchar_t* kStoreMy = L"MY";                     ///< the personal store
inline constexpr const wchar_t* kStoreOrvex = L"OrvexStore";          ///< kept by the CA server
inline constexpr const wchar_t* kStoreTemporary = L"ZORNATempStore";  ///< the module's own

/// This machine's host name; asked anew each time, since it may change while the host runs.
std::wstring localHostName();

/// Names one certificate store: where it lives, on which host, and its own name.
class StoreAddress : public ISerializable {
  public:
    StoreAddress() = default;
    /// An address from its three parts; null texts count as empty, a null `code` gives the fresh
    /// state. Deliberate: the temporary store, which needs no location, stays marked empty.
    StoreAddress(const wchar_t* code, const wchar_t* host, const wchar_t* storeName);
    /// A store of the local machine or of the current user.
    StoreAddress(const wchar_t* storeName, bool machine);

    /// Reads "location", "address" and "name". Deliberate: a missing key leaves its field, where
    /// other records begin anew.
    /// Throws ca::Exception 16300 for no object or a key that is not a string; nothing changes then.
    void FromJson(const JsonValue& value) override;
    /// Writes {} for an empty address.
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeStoreAddress; }
    /// Reads the text form: "code:name" or "code:\\host\name"; a text without a colon is a name.
    /// Null gives the fresh state.
    virtual void ParseAddress(const wchar_t* text);

    void Parse(const wchar_t* text) { ParseAddress(text); }
    /// The location of a code in any letter case; kLocationNone for null and for unknown codes.
    static int ParseLoc(const wchar_t* code);
    /// Stores the host in the form that the location asks for (null counts as empty).
    /// \return false, nothing being stored, for a location outside the table.
    bool SetAddress(const wchar_t* host);
    /// Back to the fresh state.
    void _Empty();

    bool IsValid() const { return valid; }
    bool IsEmpty() const { return empty; }
    unsigned GetFlags() const { return 0; }
    /// The location's code; static text, L"" for a location outside the table.
    const wchar_t* GetLocation() const;
    /// The store name, null when there is none; lives as long as the record is unchanged.
    const wchar_t* GetName() const;
    bool IsRemote() const { return location == kLocationRemote; }
    bool IsMy() const;
    bool IsTempStore() const;
    bool IsOrvexStore() const;
    /// True when the store is on this machine.
    bool IsLocal() const;
    /// The host; null when it is this machine or not given.
    const wchar_t* GetAddress() const;
    /// Host and name as one text. Throws ca::Exception 16252 for a remote store without a host.
    std::wstring GetFullAddress() const;

    /// Deliberate: once the fields decide, the result is also stored as this record's `valid`, so
    /// a failed comparison marks it invalid. Two invalid records are never equal.
    bool operator==(const StoreAddress& other);
    /// Without this form the language's reversed comparison would be an equally good match.
    bool operator==(StoreAddress& other) { return *this == std::as_const(other); }

    std::wstring address;
    std::wstring name;
    int location = kLocationNone;
    bool valid = false;
    bool empty = true;
};

/// Store addresses in order.
class StoreAddresses : public std::vector<StoreAddress>, public ISerializable {
  public:
    StoreAddresses() = default;

    /// Appends the elements; a value that is not an array changes nothing.
    /// Throws what StoreAddress::FromJson() throws, and ca::Exception 16300 for more than 4096
    /// addresses that say nothing, since each is 25 times as long as its text; nothing is appended
    /// then.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeStoreAddresses; }
};

}  // namespace ca
