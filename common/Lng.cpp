#include "common/Lng.h"

#include "common/BothLanguages.h"
#include "common/ProcessLanguage.h"

#include <array>
#include <atomic>
#include <cwctype>
#include <stdexcept>
#include <string>

namespace {

struct Collections {
    const wchar_t* english[kMessageCount];
    const wchar_t* russian[kMessageCount];
};

// Built by the compiler from the table rows: no start-up cost, and the arrays stay in read-only
// memory.
// NOLINTNEXTLINE(readability-function-size): its lines are rows of the table
constexpr Collections BuildCollections() {
    Collections all{};
    for (std::size_t i = 0; i < kMessageCount; ++i) {
        all.english[i] = L"";
        all.russian[i] = L"";
    }
#define CA_MESSAGE(name, id, en, ru) \
    all.english[id] = en;            \
    all.russian[id] = ru;
#include "common/MessageTable.inc"
#undef CA_MESSAGE
    return all;
}

constexpr ca::BothLanguages kSentences[] = {
#define CA_SENTENCE(name, english, russian) {english, russian},
#include "common/SentenceTable.inc"
#undef CA_SENTENCE
};

constexpr Collections kCollections = BuildCollections();

std::atomic<std::uint32_t> currentLanguage{Ru::LangID};
constinit thread_local std::uint32_t threadLanguage = 0;  // 0: the process's

}  // namespace

const wchar_t* const (&En::MessageCollection)[kMessageCount] = kCollections.english;
const wchar_t* const (&Ru::MessageCollection)[kMessageCount] = kCollections.russian;

void SetZORNALng(const wchar_t* lang) {
    if (lang == nullptr) {
        throw std::logic_error("SetZORNALng: null language");
    }
    std::wstring name(lang);
    for (wchar_t& c : name) {
        c = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(c)));
    }
    currentLanguage.store(name == L"ru" ? Ru::LangID : En::LangID, std::memory_order_relaxed);
}

std::uint32_t GetZORNALng() noexcept {
    return threadLanguage != 0 ? threadLanguage : currentLanguage.load(std::memory_order_relaxed);
}

ca::CLanguageScope::CLanguageScope(std::uint32_t language) noexcept : m_outer(threadLanguage) {
    threadLanguage = language != 0 ? language : m_outer;
}

ca::CLanguageScope::~CLanguageScope() {
    threadLanguage = m_outer;
}

ca::CKeptLanguage::CKeptLanguage() noexcept
    : m_language(currentLanguage.load(std::memory_order_relaxed)) {}

ca::CKeptLanguage::~CKeptLanguage() {
    currentLanguage.store(m_language, std::memory_order_relaxed);
}

const wchar_t* SetZORNAMessage(ZornaMessage id) noexcept {
    const auto index = static_cast<std::size_t>(id);
    if (index >= kMessageCount) {
        return L"ZORNA_LANGUAGE_MESSAGE_ID_ERROR";
    }
    return IsRussian() ? kCollections.russian[index] : kCollections.english[index];
}

const wchar_t* SetZORNAMessage(Sentence text) noexcept {
    return kSentences[static_cast<std::size_t>(text)].Text();
}
