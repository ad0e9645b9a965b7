#include "records/text/MoneyText.h"

#include "asn1/x509/QcStatement.h"
#include "common/DecimalText.h"
#include "records/text/PolicyText.h"
#include "records/text/SharedFormatters.h"

namespace {

// Exponents that are written out; no amount of money needs more.
constexpr std::int64_t kMaxExponent = 18;
// What stands for an exponent that cannot be read.
constexpr std::int64_t kUnreadable = INT64_MAX;

// The value is amount * 10 ^ exponent (EN 319 412-5, 4.3.2), both signed and as large as the issuer
// likes.
std::wstring AmountText(const CAsn1MonetaryValue& value) {
    std::wstring digits = ca::NumberText(value.Amount());
    const std::int64_t exponent = IntegerOf(value.Exponent(), kUnreadable);
    if (exponent < -kMaxExponent || exponent > kMaxExponent) {
        return digits + L" * 10^" +
               (exponent == kUnreadable ? ca::Hex(OctetsOf(value.Exponent()))
                                        : ca::DecimalText(exponent));
    }
    if (exponent >= 0) {
        return digits == L"0" ? digits
                              : digits + std::wstring(static_cast<std::size_t>(exponent), L'0');
    }
    const auto fraction = static_cast<std::size_t>(-exponent);
    // A zero before the point: 5 and -2 are 0.05.
    if (digits.size() <= fraction) {
        digits.insert(0, fraction + 1 - digits.size(), L'0');
    }
    return digits.insert(digits.size() - fraction, 1, L'.');
}

}  // namespace

namespace ca {

// Iso4217CurrencyCode ::= CHOICE: three letters, or the number (EN 319 412-5, 4.3.2).
std::wstring MoneyText(const CAsn1MonetaryValue& value) {
    const bool isNumber = value.Currency()->Tag() == kAsn1Integer;
    return AmountText(value) + L' ' +
           (isNumber ? NumberText(value.Currency()) : MemberText(value.Currency()));
}

}  // namespace ca
