#pragma once

#include <string>

class CAsn1MonetaryValue;

namespace ca {

/// An amount with its currency, "100000 EUR"; "12.50 EUR" for a negative exponent.
std::wstring MoneyText(const CAsn1MonetaryValue& value);

}  // namespace ca
