#pragma once

#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

// The one way to say what an object is made of where it travels as JSON: a table with a row for each
// key, in the order of the text. Whoever reads, writes, clears or lists goes by the table; how they
// treat what is absent or wrong is theirs.

namespace ca {

/// Of rows whose values may be whatever their type allows.
struct AnyValue {};

/// The numbers that a row may have.
struct NumberRange {
    int low;
    int high;
};

/// What the texts of a row may be.
using TextRule = bool (*)(const std::wstring& text);

/// A member of a member: a row of a structure that several objects have.
template <class Owner, class Part, class Value>
struct MemberPath {
    Part Owner::*part;
    Value Part::*member;
};
template <class Owner, class Part, class Base, class Value>
MemberPath(Part Owner::*, Value Base::*) -> MemberPath<Owner, Part, Value>;

template <class Object, class Owner, class Value>
constexpr auto& MemberOf(Object& object, Value Owner::*member) {
    return object.*member;
}
template <class Object, class Owner, class Part, class Value>
constexpr auto& MemberOf(Object& object, const MemberPath<Owner, Part, Value>& path) {
    return object.*path.part.*path.member;
}

/// One row: the key, the member that holds its value, of the object or of a base of it, and the rule
/// that its values follow.
template <class Member, class Rule = AnyValue>
struct JsonField {
    std::string_view key;
    Member member;
    [[no_unique_address]] Rule rule{};

    template <class Object>
    constexpr auto& In(Object& object) const {
        return MemberOf(object, member);
    }
};
template <class Member>
JsonField(std::string_view, Member) -> JsonField<Member>;
template <class Member, class Rule>
JsonField(std::string_view, Member, Rule) -> JsonField<Member, Rule>;

template <class Member, class Rule>
constexpr auto AsRows(const JsonField<Member, Rule>& row) {
    return std::tuple{row};
}
template <class... Rows>
constexpr auto AsRows(const std::tuple<Rows...>& rows) {
    return rows;
}

/// A table of rows and groups of rows, which are tables themselves.
template <class... Rows>
constexpr auto FieldTable(const Rows&... rows) {
    return std::tuple_cat(AsRows(rows)...);
}

/// Calls `visit(row)` for each row, in order.
template <class... Rows, class Visit>
constexpr void VisitRows(const std::tuple<Rows...>& table, Visit&& visit) {
    std::apply([&](const Rows&... rows) { (visit(rows), ...); }, table);
}

}  // namespace ca
