#include "records/AnswerBudget.h"

#include <algorithm>
#include <cstdint>

namespace {

// Octets of memory that an element becomes for each of its own, and what it takes at the least.
constexpr std::size_t kElementPerOctet = 6;
constexpr std::size_t kElementAlways = 64 << 10;

// `times`: how many copies of what is taken will stand in memory at once (CBudgetLoan).
struct Account {
    std::size_t left = SIZE_MAX;
    std::size_t times = 1;
    bool isOpen = false;
};
thread_local Account account;

}  // namespace

namespace ca {

CAnswerBudget::CAnswerBudget(std::size_t octets) noexcept
    : CAnswerBudget(Rest{kAlways + kPerOctet * octets}) {}

// An answer has one budget, however deep the functions that open one call each other.
CAnswerBudget::CAnswerBudget(Rest rest) noexcept : m_isOutermost(!account.isOpen) {
    if (m_isOutermost) {
        account = {rest.left, 1, true};
    }
}

CAnswerBudget::~CAnswerBudget() {
    if (m_isOutermost) {
        account = {};
    }
}

std::size_t CAnswerBudget::Left() noexcept {
    return account.left / account.times;
}

bool CAnswerBudget::HasRoomFor(std::size_t octets, std::size_t besides) noexcept {
    // Compared by division: products of sizes that strangers choose could wrap.
    const std::size_t kept = kElementAlways + besides;
    return Left() >= kept && (Left() - kept) / kElementPerOctet >= octets;
}

void CAnswerBudget::Take(std::size_t octets) noexcept {
    if (account.isOpen) {
        account.left -= std::min(account.left, octets * account.times);
    }
}

CBudgetLoan::CBudgetLoan(std::size_t times) noexcept
    : m_left(account.left), m_times(account.times) {
    // Never less than outside: what is copied twice out there is copied twice in here too.
    account.times = std::max(times, account.times);
}

CBudgetLoan::~CBudgetLoan() {
    // What was taken meanwhile is given back: a loan is for what is dropped at its end.
    account.left = m_left;
    account.times = m_times;
}

}  // namespace ca
