#pragma once

#include <cstdint>

namespace ca {

/// Puts the process's language back to what it was, whatever sets it meanwhile: reading a
/// configuration does.
class CKeptLanguage {
  public:
    CKeptLanguage() noexcept;
    CKeptLanguage(const CKeptLanguage&) = delete;
    CKeptLanguage& operator=(const CKeptLanguage&) = delete;
    ~CKeptLanguage();

  private:
    std::uint32_t m_language;
};

}  // namespace ca
