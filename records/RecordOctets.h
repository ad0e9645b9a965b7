#pragma once

#include <cstddef>

namespace ca {

/// Octets that a record takes: in memory, what it holds included, and of text when it is written.
struct RecordOctets {
    std::size_t memory = 0;
    std::size_t text = 0;
};

/// What a record takes until it is written, for the budget.
template <class Record>
std::size_t CostOf(const Record& record) {
    RecordOctets octets{sizeof(Record), 0};
    record.AddOctets(octets);
    return octets.memory + octets.text;
}

}  // namespace ca
