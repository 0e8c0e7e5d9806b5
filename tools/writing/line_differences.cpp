// SPDX-License-Identifier: MIT

// What both texts begin and end with is left out. In what remains, lines that stand once in each of the texts are
// common to both, as far as they are in the same order: the longest such series is taken. Between them the shortest
// series of insertions and deletions is looked for, by Myers' greedy method: it follows all series of length 0, 1,
// 2, ... at once and needs to know only how far each gets. The effort grows with the square of their number. So when
// that gets large, the one that has got furthest is taken as found, and the search begins again at its end. That keeps
// it linear in the number of lines, at the price that a series need not be the shortest.

#include "writing/line_differences.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>

namespace tool {

namespace {

using Lines = std::vector<std::uint32_t>;  // equal lines have equal numbers

struct Region {
    std::size_t begin;
    std::size_t end;
    std::size_t other_begin;
    std::size_t other_end;

    bool is_empty() const { return begin == end && other_begin == other_end; }
};

class Search {
public:
    Search(Lines some, Lines more) : lines(std::move(some)), others(std::move(more)) {}

    std::vector<LineDifference> run() {
        const Region all = trim({0, lines.size(), 0, others.size()});
        Region gap = all;
        for (const auto& [line, other] : find_anchors(all)) {
            gap.end = line;
            gap.other_end = other;
            compare(trim(gap));
            gap = {line + 1, all.end, other + 1, all.other_end};
        }
        compare(trim(gap));
        return std::move(differences);
    }

private:
    using Pair = std::pair<std::size_t, std::size_t>;  // a line and its equal

    Region trim(Region region) const {
        while (region.begin != region.end && region.other_begin != region.other_end &&
               lines[region.begin] == others[region.other_begin]) {
            ++region.begin;
            ++region.other_begin;
        }
        while (region.begin != region.end && region.other_begin != region.other_end &&
               lines[region.end - 1] == others[region.other_end - 1]) {
            --region.end;
            --region.other_end;
        }
        return region;
    }

    /// Lines that are once in each, in the order of the first text.
    std::vector<Pair> find_unique_lines(const Region& region) const {
        constexpr std::size_t absent = SIZE_MAX;
        constexpr std::size_t several = SIZE_MAX - 1;
        std::unordered_map<std::uint32_t, Pair> places;
        const auto note = [](std::size_t& place, std::size_t line) {
            place = place == absent ? line : several;
        };
        for (std::size_t i = region.begin; i != region.end; ++i)
            note(places.try_emplace(lines[i], absent, absent).first->second.first, i);
        for (std::size_t i = region.other_begin; i != region.other_end; ++i)
            note(places.try_emplace(others[i], absent, absent).first->second.second, i);
        std::vector<Pair> unique;
        for (std::size_t i = region.begin; i != region.end; ++i) {
            const Pair& place = places.at(lines[i]);
            if (place.first == i && place.second < several)
                unique.push_back(place);
        }
        return unique;
    }

    /// The longest series of unique lines that is in order in both texts: each line is put on the first pile whose top
    /// comes after it, and knows what was on top of the pile before.
    std::vector<Pair> find_anchors(const Region& region) const {
        const std::vector<Pair> unique = find_unique_lines(region);
        std::vector<std::size_t> tops;
        std::vector<std::size_t> before(unique.size());
        for (std::size_t i = 0; i != unique.size(); ++i) {
            const auto pile = std::lower_bound(
                tops.begin(), tops.end(), i,
                [&](std::size_t top, std::size_t one) { return unique[top].second < unique[one].second; });
            before[i] = pile == tops.begin() ? 0 : *(pile - 1);
            if (pile == tops.end()) {
                tops.push_back(i);
            } else {
                *pile = i;
            }
        }
        std::vector<Pair> anchors(tops.size());
        std::size_t last = tops.empty() ? 0 : tops.back();
        for (auto anchor = anchors.rbegin(); anchor != anchors.rend(); ++anchor, last = before[last])
            *anchor = unique[last];
        return anchors;
    }

    void compare(Region region) {
        while (!region.is_empty()) {
            if (region.begin == region.end || region.other_begin == region.other_end) {
                add(region);
                return;
            }
            const Pair reached = follow(region);
            region.begin = reached.first;
            region.other_begin = reached.second;
        }
    }

    /// One state of the search: for each difference between deletions and insertions, from -length to length in steps of
    /// two, how many lines of the first text have been passed.
    using Reached = std::vector<std::size_t>;

    /// Adds the differences up to the place that it returns: the end of the region or, if that takes too many, where the
    /// best series has got to.
    Pair follow(const Region& region) {
        constexpr std::size_t longest = 200;
        const std::size_t size = region.end - region.begin;
        const std::size_t other_size = region.other_end - region.other_begin;
        std::vector<Reached> steps;
        for (std::size_t length = 0;; ++length) {
            steps.push_back(advance_all(region, steps, length));
            const std::size_t best = find_furthest(steps.back());
            const std::size_t line = steps.back()[best];
            const std::size_t other = get_other(line, length, best);
            if ((line == size && other == other_size) || length == longest) {
                trace_back(region, steps, best);
                return {region.begin + line, region.other_begin + other};
            }
        }
    }

    Reached advance_all(const Region& region, const std::vector<Reached>& steps, std::size_t length) const {
        Reached reached(length + 1);
        for (std::size_t i = 0; i <= length; ++i)
            reached[i] = advance(region, steps, length, i);
        return reached;
    }

    /// The series that has passed most lines of both texts; of several the one with most deletions.
    static std::size_t find_furthest(const Reached& reached) {
        std::size_t best = 0;
        std::size_t best_sum = 0;
        for (std::size_t i = 0; i != reached.size(); ++i) {
            if (reached[i] == none)
                continue;
            const std::size_t sum = reached[i] + get_other(reached[i], reached.size() - 1, i);
            if (sum >= best_sum) {
                best_sum = sum;
                best = i;
            }
        }
        return best;
    }

    static constexpr std::size_t none = SIZE_MAX;

    /// With `i` deletions among `length` changes.
    static std::size_t get_other(std::size_t line, std::size_t length, std::size_t i) {
        return line + (length - i) - i;
    }

    /// How far a series gets that has `i` deletions among its changes, and common lines after the last one.
    std::size_t advance(const Region& region, const std::vector<Reached>& steps, std::size_t length,
                        std::size_t i) const {
        const std::size_t size = region.end - region.begin;
        const std::size_t other_size = region.other_end - region.other_begin;
        std::size_t line = length == 0 ? 0 : get_start(steps.back(), length, i, size, other_size);
        if (line == none)
            return none;
        std::size_t other = get_other(line, length, i);
        while (line != size && other != other_size &&
               lines[region.begin + line] == others[region.other_begin + other]) {
            ++line;
            ++other;
        }
        return line;
    }

    /// After an insertion or a deletion, whichever got further.
    static std::size_t get_start(const Reached& before, std::size_t length, std::size_t i, std::size_t size,
                                 std::size_t other_size) {
        std::size_t line = none;
        if (i != length && before[i] != none && get_other(before[i], length, i) <= other_size)
            line = before[i];
        if (i != 0 && before[i - 1] != none && before[i - 1] + 1 <= size &&
            (line == none || before[i - 1] + 1 >= line))
            line = before[i - 1] + 1;
        return line;
    }

    void trace_back(const Region& region, const std::vector<Reached>& steps, std::size_t i) {
        std::vector<Region> changes;
        const std::size_t size = region.end - region.begin;
        const std::size_t other_size = region.other_end - region.other_begin;
        for (std::size_t length = steps.size() - 1; length != 0; --length) {
            const Reached& before = steps[length - 1];
            const std::size_t line = get_start(before, length, i, size, other_size);
            const std::size_t other = get_other(line, length, i);
            const bool is_deletion = i != 0 && before[i - 1] != none && before[i - 1] + 1 == line;
            changes.push_back({region.begin + line - (is_deletion ? 1 : 0), region.begin + line,
                               region.other_begin + other - (is_deletion ? 0 : 1),
                               region.other_begin + other});
            i -= is_deletion ? 1 : 0;
        }
        std::for_each(changes.rbegin(), changes.rend(), [this](const Region& change) { add(change); });
    }

    /// Changes with nothing in between are one.
    void add(const Region& change) {
        const bool follows = !differences.empty() && differences.back().end == change.begin &&
                             differences.back().other_end == change.other_begin;
        if (follows) {
            differences.back().end = change.end;
            differences.back().other_end = change.other_end;
        } else {
            differences.push_back({change.begin, change.end, change.other_begin, change.other_end});
        }
    }

    Lines lines;
    Lines others;
    std::vector<LineDifference> differences;
};

using Numbers = std::unordered_map<std::string_view, std::uint32_t>;

Lines number_lines(const std::vector<std::string_view>& texts, std::size_t begin, std::size_t end,
                   Numbers& numbers) {
    Lines lines;
    lines.reserve(end - begin);
    for (std::size_t i = begin; i != end; ++i)
        lines.push_back(
            numbers.try_emplace(texts[i], static_cast<std::uint32_t>(numbers.size())).first->second);
    return lines;
}

}  // namespace

std::vector<LineDifference> find_line_differences(const std::vector<std::string_view>& lines,
                                                  const std::vector<std::string_view>& others) {
    const std::size_t size = std::min(lines.size(), others.size());
    const auto begin = static_cast<std::size_t>(
        std::mismatch(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(size), others.begin())
            .first -
        lines.begin());
    std::size_t common = 0;
    while (common != size - begin && lines[lines.size() - 1 - common] == others[others.size() - 1 - common])
        ++common;
    Numbers numbers;
    Lines some = number_lines(lines, begin, lines.size() - common, numbers);
    Lines more = number_lines(others, begin, others.size() - common, numbers);
    std::vector<LineDifference> differences = Search(std::move(some), std::move(more)).run();
    for (LineDifference& difference : differences) {
        for (std::size_t LineDifference::*number : {&LineDifference::begin, &LineDifference::end,
                                                    &LineDifference::other_begin, &LineDifference::other_end})
            difference.*number += begin;
    }
    return differences;
}

}  // namespace tool
