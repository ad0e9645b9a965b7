#pragma once

#include "module/ProviderCall.h"
#include "providers/openssl/SecretText.h"

#include <optional>
#include <string>

namespace ca {

/// The password of a call's keys, found when it is first needed: KEY_PASSWORD of the parameters,
/// else the user is asked, unless the module is silent.
class CPassword {
  public:
    /// \param call  outlives the object.
    explicit CPassword(const CProviderCall& call) : m_call(call) {}
    CPassword(const CPassword&) = delete;
    CPassword& operator=(const CPassword&) = delete;
    ~CPassword() = default;

    /// UTF-8. Throws ca::Exception 16402 where there is none.
    const std::string& Get();
    /// That of the parameters; none when they have none.
    static std::optional<std::string> OfParams(const CProviderCall& call);

  private:
    const CProviderCall& m_call;
    std::optional<CSecretText> m_password;
};

}  // namespace ca
