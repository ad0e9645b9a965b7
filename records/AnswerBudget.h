#pragma once

#include <cstddef>

namespace ca {

/// What describing may cost, in octets of memory: records, texts kept of them, and what they become
/// in the answer. A few octets of a stranger's can become a record of a thousand, and there may be
/// a million of them. So each list of an answer goes on while there is room for its next element
/// and counts the others; and the text of one value is cut to what is left (MaxValueText()).
///
/// The outermost one of a thread counts. Those inside it, which functions make that may also be
/// called by themselves, draw on it. It is far more than what real objects become: a certificate
/// takes some 25 times its octets, but alone; in a list, where it is kept as text, 4 to 6 times.
class CAnswerBudget {
  public:
    static constexpr std::size_t kPerOctet = 12;
    static constexpr std::size_t kAlways = 480 << 10;

    /// \param octets  of what is described, as they came.
    explicit CAnswerBudget(std::size_t octets) noexcept;
    /// Goes on where another one was: with what was left of it.
    struct Rest {
        std::size_t left;
    };
    explicit CAnswerBudget(Rest rest) noexcept;
    CAnswerBudget(const CAnswerBudget&) = delete;
    CAnswerBudget& operator=(const CAnswerBudget&) = delete;
    ~CAnswerBudget();

    /// Octets that this thread may take; without a budget as many as there are.
    static std::size_t Left() noexcept;
    /// Whether a list goes on with an element of so many octets: what such an element usually
    /// becomes must fit, so that its texts are not cut.
    /// \param besides  octets of memory that will be taken later.
    static bool HasRoomFor(std::size_t octets, std::size_t besides = 0) noexcept;
    /// Takes octets, or what is left.
    static void Take(std::size_t octets) noexcept;

  private:
    bool m_isOutermost;
};

/// What is taken while one lives is given back: for records that are dropped when they are written.
class CBudgetLoan {
  public:
    /// \param times  octets count so often: what is made here is kept beside a copy for a while.
    explicit CBudgetLoan(std::size_t times = 1) noexcept;
    CBudgetLoan(const CBudgetLoan&) = delete;
    CBudgetLoan& operator=(const CBudgetLoan&) = delete;
    ~CBudgetLoan();

  private:
    std::size_t m_left;
    std::size_t m_times;
};

/// What a text of so many characters takes until it is written, for the budget: four octets each,
/// and one or two in the answer.
constexpr std::size_t CostOfText(std::size_t characters) {
    return 6 * characters;
}

}  // namespace ca
