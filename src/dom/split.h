// SPDX-License-Identifier: MIT
#ifndef QUXML_DOM_SPLIT_H
#define QUXML_DOM_SPLIT_H

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace quxml {

/// The first of the separators in `text`, or the end.
template <char First, char... Others>
std::size_t find_separator(std::string_view text) {
    if constexpr (sizeof...(Others) == 0)
        return std::min(text.find(First), text.size());
    const auto is_separator = [](char c) { return c == First || ((c == Others) || ...); };
    return static_cast<std::size_t>(std::find_if(text.begin(), text.end(), is_separator) - text.begin());
}

/// Cuts `text` at every one of the `Separators` and calls `take(piece)` for each piece. Neighbouring separators are
/// not merged, so there is always one piece more than there are separators, and pieces may be empty.
template <char... Separators, typename Take>
void cut(std::string_view text, Take take) {
    std::size_t end = 0;
    while ((end = find_separator<Separators...>(text)) != text.size()) {
        take(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    take(text);
}

}  // namespace quxml

#endif
