#pragma once

#include <cstddef>
#include <cstdint>

/// Numbers of the texts that the interface numbers, 0 to 938; MessageTable.inc names those in use.
enum ZornaMessage : int {
#define CA_MESSAGE(name, id, english, russian) name = id,
#include "common/MessageTable.inc"
#undef CA_MESSAGE
    kMsgLast = 938
};

/// The module's own texts, which have no numbers; the rows of SentenceTable.inc.
enum Sentence : int {
#define CA_SENTENCE(name, english, russian) name,
#include "common/SentenceTable.inc"
#undef CA_SENTENCE
};

inline constexpr std::size_t kMessageCount = 939;

namespace En {
inline constexpr std::uint32_t LangID = 1033;
extern const wchar_t* const (&MessageCollection)[kMessageCount];
}  // namespace En

namespace Ru {
inline constexpr std::uint32_t LangID = 1049;
extern const wchar_t* const (&MessageCollection)[kMessageCount];
}  // namespace Ru

/// Selects Russian for "ru" in any letter case, English for every other text.
/// The language is one value of the whole process, Russian at start; safe from any thread.
/// Throws std::logic_error for null.
void SetZORNALng(const wchar_t* lang);

/// The current language: En::LangID or Ru::LangID.
std::uint32_t GetZORNALng() noexcept;

namespace ca {

/// Another language for the texts that this thread asks for while the scope lasts: a window may be
/// shown in its user's language while requests are answered in the process's.
class CLanguageScope {
  public:
    /// \param language  En::LangID or Ru::LangID; 0 changes nothing.
    explicit CLanguageScope(std::uint32_t language) noexcept;
    CLanguageScope(const CLanguageScope&) = delete;
    CLanguageScope& operator=(const CLanguageScope&) = delete;
    ~CLanguageScope();

  private:
    std::uint32_t m_outer;
};

}  // namespace ca

/// True when texts are to be Russian.
inline bool IsRussian() noexcept {
    return GetZORNALng() == Ru::LangID;
}

/// The text of a message in the current language; static, never null, "" for an id without a text.
/// An id above 938 gives "ZORNA_LANGUAGE_MESSAGE_ID_ERROR".
const wchar_t* SetZORNAMessage(ZornaMessage id) noexcept;
/// The same of a text without a number.
const wchar_t* SetZORNAMessage(Sentence text) noexcept;
