#include "positions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "dom/NodeAccess.h"

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
std::optional<unsigned int> read_operand(const std::string& predicate, const char* or_equal,
                                         const char* strict) {
    std::size_t at = predicate.find(or_equal);
    if (at == std::string::npos)
        at = predicate.find(strict);
    if (at == std::string::npos)
        return std::nullopt;
    return static_cast<unsigned int>(std::stoi(predicate.substr(at + 1)));
}

// Deliberate: positions are 32 bits wide, and sums begin again at 0 beyond the largest.
// Test: Rows/PositionRange.IsRead/EqualToMinus1.
unsigned int add_positions(unsigned int a, unsigned int b) {
    return static_cast<unsigned int>(std::uint64_t{a} + b);
}

}  // namespace

int read_index_from_last(const std::string& predicate) {
    const std::string last = "last()";
    const std::string offset = predicate.substr(predicate.find(last) + last.size());
    return offset.empty() ? 0 : std::stoi(offset);
}

void keep_last(const std::string& predicate, Candidates& nodes) {
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
// Tests: Position/Positional.Selects/ItIsDeliberateThatLessOrEqualThrows,
// Position/Positional.Selects/ItIsDeliberateThatGreaterLeavesOutTheLast.
std::pair<unsigned int, unsigned int> read_position_range(const std::string& predicate, unsigned int count) {
    std::pair<unsigned int, unsigned int> range(0, 0);
    if (const auto less = read_operand(predicate, "<=", "<"))
        range.second = *less;
    if (const auto greater = read_operand(predicate, ">=", ">"))
        range = {add_positions(*greater, 1), count};
    if (const auto equal = read_operand(predicate, "=", "="))
        range = {*equal, add_positions(*equal, 1)};
    return range;
}

void keep_positions(const std::string& predicate, Candidates& nodes) {
    const auto range = read_position_range(predicate, static_cast<unsigned int>(nodes.size()));
    const unsigned int begin = range.first == 0 ? 0 : range.first - 1;
    keep_range(nodes, begin, range.second == 0 ? nodes.size() : range.second - 1);
}

// Deliberate: the number 1, in whatever spelling, also stands for elements without an item, but only for the
// first of each run of namesakes; every other number selects items, compared as text.
// Tests: Number/Positional.Selects/ItIsDeliberateThat1SelectsTheFirstOfEachRun,
// Number/Positional.Selects/ItIsDeliberateThat3IsNotTheThirdNode.
void keep_item(const std::string& number, Candidates& nodes) {
    std::string remembered_name;
    const auto begins_run = [&](const Element& element) {
        if (std::stoi(number) != 1 || NodeAccess::name(element) == remembered_name)
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
