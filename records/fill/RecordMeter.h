#pragma once

#include "records/AnswerBudget.h"
#include "records/RecordOctets.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace ca {

/// Takes from the budget what a record becomes while it is filled, part by part: what is described
/// next is cut to what is left then.
template <class Record>
class CRecordMeter {
  public:
    /// \param record  outlives this; what it holds already is taken.
    explicit CRecordMeter(const Record& record) : m_record(record) { Take(); }
    void Take() {
        const std::size_t cost = CostOf(m_record);
        CAnswerBudget::Take(cost - std::min(cost, m_taken));
        m_taken = cost;
    }

  private:
    const Record& m_record;
    std::size_t m_taken = 0;
};

}  // namespace ca
