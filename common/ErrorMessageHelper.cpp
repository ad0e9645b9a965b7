#include "common/ErrorMessageHelper.h"

#include "common/ErrorCodes.h"
#include "common/Lng.h"

#include <iterator>

namespace {

struct TextRow {
    std::uint32_t code;
    const wchar_t* english;
    const wchar_t* russian;
};

constexpr TextRow kErrorRows[] = {
#define CA_ERROR(name, code, english, russian) {code, english, russian},
#include "common/ErrorTable.inc"
#undef CA_ERROR
};

constexpr TextRow kModuleRows[] = {
#define CA_MODULE_ERROR(name, code, english, russian) {code, english, russian},
#include "common/ModuleErrorTable.inc"
#undef CA_MODULE_ERROR
};

constexpr TextRow kChainRows[] = {
#define CA_CHAIN_ERROR(name, code, english, russian) {code, english, russian},
#include "common/ChainErrorTable.inc"
#undef CA_CHAIN_ERROR
};

constexpr wchar_t kErrorPrefix[] = L"ERROR ";

// The code itself decides which prefix its text gets, so the words stand in the rows.
struct FixedRow {
    std::uint32_t code;
    const wchar_t* prefix;
    int message;  // -1: the prefix alone
    bool prefixInsteadOfText = false;
};

constexpr FixedRow kFixedRows[] = {
    {ca::kErrNone, L"DONE", -1},
    {ca::kErrNoData, kErrorPrefix, kMsgNoData},
    {ca::kErrFileOperation, L"", kMsgFileError},
    {ca::kErrStore, L"", kMsgStoreError},
    {ca::kErrNeedMore, L"NEED", -1},
    {ca::kErrSignatureInvalid, L"DONE Invalid", kMsgSignatureInvalid, true},
    {ca::kErrCertTimeInvalid, L"DONE Invalid ", kMsgCertTimeInvalid},
    {ca::kErrNotVerified, L"DONE ", kMsgSignatureNotVerified},
    {ca::kErrChainValid, L"DONE Valid ", kMsgChainNoError},
};

const wchar_t* TextOf(const TextRow& row) {
    return IsRussian() ? row.russian : row.english;
}

template <std::size_t N>
const TextRow* FindRow(const TextRow (&rows)[N], std::uint32_t code) {
    for (const TextRow& row : rows) {
        if (row.code == code) {
            return &row;
        }
    }
    return nullptr;
}

std::wstring Prefixed(const wchar_t* prefix, bool wanted, const wchar_t* text) {
    std::wstring result;
    if (wanted) {
        result = prefix;
    }
    return result += text;
}

std::wstring FixedText(const FixedRow& row, bool prefix) {
    // One code has words that stand for the text as well.
    const bool textWanted = row.message >= 0 && !(prefix && row.prefixInsteadOfText);
    return Prefixed(row.prefix, prefix,
                    textWanted ? SetZORNAMessage(static_cast<ZornaMessage>(row.message)) : L"");
}

ca::ErrorMessageHelper globalHelper;

}  // namespace

namespace ca {

std::wstring ErrorMessageHelper::GetErrorMessage(std::uint32_t code, bool prefix) const {
    return GetErrorMessageCustom(code, m_custom, prefix);
}

std::wstring ErrorMessageHelper::GetErrorMessageNoCustom(std::uint32_t code, bool prefix) const {
    return GetErrorMessageCustom(code, {}, prefix);
}

std::wstring ErrorMessageHelper::GetErrorMessageCustom(
    std::uint32_t code, [[maybe_unused]] const std::vector<std::wstring>& custom, bool prefix) {
    // The order is that of the interface: fixed rows, errors, then states of a chain; an unknown
    // code has no text.
    for (const FixedRow& row : kFixedRows) {
        if (row.code == code) {
            return FixedText(row, prefix);
        }
    }
    if (const TextRow* row = FindRow(kErrorRows, code)) {
        return Prefixed(kErrorPrefix, prefix, TextOf(*row));
    }
    if (const TextRow* row = FindRow(kChainRows, code)) {
        return Prefixed(L"DONE Invalid ", prefix, TextOf(*row));
    }
    return {};
}

ErrorMessageHelper& GlobalErrorMessageHelper() {
    return globalHelper;
}

}  // namespace ca

std::wstring GetErrorMessage(std::uint32_t code, bool prefix) {
    // The module's own codes always have their prefix, whether it is wanted or not.
    if (const TextRow* row = FindRow(kModuleRows, code)) {
        return std::wstring(kErrorPrefix) += TextOf(*row);
    }
    return ca::GlobalErrorMessageHelper().GetErrorMessage(code, prefix);
}
