#pragma once

#include "common/PKIConfigFileParser.h"

#include <string>

namespace ca {

/// The stores that every user has; found in any letter case.
inline constexpr const wchar_t* kOwnStores[] = {L"MY", L"Root", L"CA", L"AddressBook"};

/// Path of the directory that a store is, of the user's stores or the machine's; "" for a name that
/// no directory may have: empty, of more than 64 characters, with a slash or control character, or
/// with a dot in front. Nothing is looked at or made.
std::string StoreDirectoryPath(const PkiStores& settings, bool isMachine, const std::wstring& name);

}  // namespace ca
