#include "records/JsonElements.h"

#include "common/JsonString.h"

#include <algorithm>
#include <utility>

namespace {

// Octets that most elements do not reach.
constexpr std::size_t kMargin = 8 << 10;
// Octets that are reserved at once, as far as there is a budget for them: first, and then.
constexpr std::size_t kMostAtFirst = 4 << 20;
constexpr std::size_t kMostThen = 64 << 20;

// A text that doubles now and then stands in memory twice while it moves. This one moves once: what
// is reserved and not written costs no memory. Where it grows beyond, the system moves its pages.
std::size_t RoomFor(std::size_t size) {
    const std::size_t left = ca::CAnswerBudget::Left();
    // Outside any budget: a margin, as nothing says how much will come.
    if (left == SIZE_MAX) {
        return kMargin;
    }
    return kMargin + std::min(left, size == 0 ? kMostAtFirst : kMostThen);
}

}  // namespace

namespace ca {

CJsonElements::CJsonElements(const CJsonElements& other) : m_count(other.m_count) {
    const std::string_view text = other.Text();
    std::copy(text.begin(), text.end(), m_text.Push(text.size()));
}

CJsonElements& CJsonElements::operator=(const CJsonElements& other) {
    // Copy and swap: a failing copy leaves this one as it was.
    return *this = CJsonElements(other);
}

CJsonElements::CJsonElements(CJsonElements&& other) noexcept {
    *this = std::move(other);
}

CJsonElements& CJsonElements::operator=(CJsonElements&& other) noexcept {
    m_text.stack_.Swap(other.m_text.stack_);
    std::swap(m_count, other.m_count);
    return *this;
}

std::size_t CJsonElements::Begin() {
    const std::size_t size = m_text.GetSize();
    if (m_text.stack_.GetCapacity() < size + kMargin) {
        m_text.Reserve(RoomFor(size));
    }
    if (m_count != 0) {
        m_text.Put(',');
    }
    return size;
}

void CJsonElements::End(std::size_t before) {
    ++m_count;
    // What was written is charged as it is, not as it was guessed.
    CAnswerBudget::Take(m_text.GetSize() - before);
}

void CJsonElements::Append(const std::wstring& text) {
    const std::size_t before = Begin();
    JsonWriter writer(m_text, &jsonHeap);
    WriteString(writer, text);
    End(before);
}

void CJsonElements::Append(CJsonElements&& others) {
    if (others.m_count == 0) {
        return;
    }
    const std::size_t before = Begin();
    JoinTexts(m_text, others.m_text, kMargin);
    m_count += std::exchange(others.m_count, 0) - 1;
    End(before);
}

void CJsonElements::ToJson(JsonWriter& writer) const {
    if (m_count == 0) {
        return;
    }
    // A writer that takes texts moves them: the largest answers have no second copy.
    if (writer.TakesTexts()) {
        writer.TakeElements(m_text);
        m_count = 0;
    } else {
        writer.Elements(Text());
    }
}

}  // namespace ca
