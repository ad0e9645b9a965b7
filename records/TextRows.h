#pragma once

#include "common/FieldTable.h"
#include "records/text/NameText.h"
#include "records/text/TimeText.h"

#include <string_view>
#include <tuple>

// The rows of what records carry in several forms.

namespace ca {

/// A name but for its tags, whose row stands elsewhere in most records.
template <class Record>
constexpr auto NameRows(std::string_view readable, std::string_view oid, std::string_view x500,
                        NameTexts Record::*name) {
    return std::tuple{JsonField{readable, MemberPath{name, &NameTexts::readable}},
                      JsonField{oid, MemberPath{name, &NameTexts::oid}},
                      JsonField{x500, MemberPath{name, &NameTexts::x500}}};
}
template <class Record>
constexpr auto TagsRow(std::string_view tags, NameTexts Record::*name) {
    return JsonField{tags, MemberPath{name, &NameTexts::tags}};
}

/// A moment.
template <class Record>
constexpr auto TimeRows(std::string_view local, std::string_view utc, TimeTexts Record::*time) {
    return std::tuple{JsonField{local, MemberPath{time, &TimeTexts::local}},
                      JsonField{utc, MemberPath{time, &TimeTexts::utc}}};
}

}  // namespace ca
