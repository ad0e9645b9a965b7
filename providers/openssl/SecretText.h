#pragma once

#include <openssl/crypto.h>

#include <string>
#include <utility>

namespace ca {

/// A password in UTF-8. Its memory is cleansed when it is given up.
class CSecretText {
  public:
    CSecretText() = default;
    explicit CSecretText(std::string text) : m_text(std::move(text)) { Cleanse(text); }
    CSecretText(const CSecretText&) = delete;
    CSecretText& operator=(const CSecretText&) = delete;
    CSecretText(CSecretText&& other) noexcept : m_text(std::move(other.m_text)) {
        Cleanse(other.m_text);  // a short text was copied
    }
    CSecretText& operator=(CSecretText&&) = delete;
    ~CSecretText() { Cleanse(m_text); }

    const std::string& Get() const noexcept { return m_text; }

    static void Cleanse(std::string& text) noexcept {
        OPENSSL_cleanse(text.data(), text.size());
        text.clear();
    }

  private:
    std::string m_text;
};

}  // namespace ca
