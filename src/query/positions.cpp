// SPDX-License-Identifier: MIT
#include "positions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "dom/NodeAccess.h"
#include "dom/integer.h"

namespace quxml {

namespace {

/// Keeps the nodes at the positions from `begin` to `end`, counted from 0, `end` excluded.
void keep_range(Candidates& nodes, std::size_t begin, std::size_t end) {
    end = std::min(end, nodes.size());
    if (begin >= end) {
        nodes.clear();
        return;
    }
    nodes.erase(nodes.begin() + static_cast<std::ptrdiff_t>(end), nodes.end());
    nodes.erase(nodes.begin(), nodes.begin() + static_cast<std::ptrdiff_t>(begin));
}

/// The number after the first `or_equal` in the predicate or, without one, after the first `strict`; read
/// from one character after the start of either.
std::optional<unsigned int> read_operand(std::string_view predicate, const char* or_equal,
                                         const char* strict) {
    std::size_t at = predicate.find(or_equal);
    if (at == std::string_view::npos)
        at = predicate.find(strict);
    if (at == std::string_view::npos)
        return std::nullopt;
    return static_cast<unsigned int>(require_integer(predicate.substr(at + 1)));
}

// Deliberate: positions are 32 bits wide, and sums begin again at 0 beyond the largest.
// Test: Rows/PositionRange.is_read/equal_to_minus_1.
unsigned int add_positions(unsigned int a, unsigned int b) {
    return static_cast<unsigned int>(std::uint64_t{a} + b);
}

}  // namespace

int read_index_from_last(std::string_view predicate) {
    constexpr std::string_view last = "last()";
    const std::string_view offset = predicate.substr(predicate.find(last) + last.size());
    return offset.empty() ? 0 : require_integer(offset);
}

void keep_last(std::string_view predicate, Candidates& nodes) {
    const auto offset = static_cast<unsigned int>(read_index_from_last(predicate));
    const unsigned int target = add_positions(static_cast<unsigned int>(nodes.size()), offset);
    if (target == 0) {
        nodes.clear();
    } else {
        keep_range(nodes, target - 1, target);
    }
}

// Deliberate: the number after "<=" or ">=" is read from the "=" on, which is not a number, so both
// always throw. And ">" stops at `count`, so it never selects the last node.
// Tests: Position/Positional.selects/it_is_deliberate_that_less_or_equal_throws,
// Position/Positional.selects/it_is_deliberate_that_greater_leaves_out_the_last.
std::pair<unsigned int, unsigned int> read_position_range(std::string_view predicate, unsigned int count) {
    std::pair<unsigned int, unsigned int> range(0, 0);
    if (const auto less = read_operand(predicate, "<=", "<"))
        range.second = *less;
    if (const auto greater = read_operand(predicate, ">=", ">"))
        range = {add_positions(*greater, 1), count};
    if (const auto equal = read_operand(predicate, "=", "="))
        range = {*equal, add_positions(*equal, 1)};
    return range;
}

void keep_positions(std::string_view predicate, Candidates& nodes) {
    const auto range = read_position_range(predicate, static_cast<unsigned int>(nodes.size()));
    const unsigned int begin = range.first == 0 ? 0 : range.first - 1;
    keep_range(nodes, begin, range.second == 0 ? nodes.size() : range.second - 1);
}

// Deliberate: the number 1, in whatever spelling, also stands for elements without an item, but only for the
// first of each run of namesakes; every other number selects items, compared as text.
// Tests: Number/Positional.selects/it_is_deliberate_that_1_selects_the_first_of_each_run,
// Number/Positional.selects/it_is_deliberate_that_3_is_not_the_third_node.
void keep_item(std::string_view number, Candidates& nodes) {
    std::string_view remembered_name;
    std::optional<bool> is_one;
    const auto begins_run = [&](const Element& element) {
        if (!is_one)
            is_one = require_integer(number) == 1;
        if (!*is_one || NodeAccess::name(element) == remembered_name)
            return false;
        remembered_name = NodeAccess::name(element);
        return true;
    };
    const auto is_kept = [&](const Node* node) {
        const Element* element = node == nullptr ? nullptr : as_element(node);
        if (element == nullptr)
            return false;
        const std::string* item = find_item(*element);
        return item == nullptr ? begins_run(*element) : *item == number;
    };
    keep_if(nodes, is_kept);
}

}  // namespace quxml
