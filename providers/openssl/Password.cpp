#include "providers/openssl/Password.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "module/PasswordBox.h"
#include "providers/openssl/ProviderWords.h"

#include <utility>

namespace ca {

std::optional<std::string> CPassword::OfParams(const CProviderCall& call) {
    const InitString params = call.Params();
    const std::wstring* const given = params.Find(L"KEY_PASSWORD");
    return given != nullptr ? std::optional(u16u8(*given)) : std::nullopt;
}

const std::string& CPassword::Get() {
    if (m_password) {
        return m_password->Get();
    }
    std::optional<std::string> password = OfParams(m_call);
    if (!password && !m_call.IsSilent()) {
        password = AskPassword(Say(Words::kPassword), Say(Words::kPasswordOfKey));
    }
    if (!password) {
        throw Exception(kErrPinCancelled);
    }
    m_password.emplace(std::move(*password));
    return m_password->Get();
}

}  // namespace ca
