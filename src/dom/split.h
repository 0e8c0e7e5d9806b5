#ifndef QUXML_DOM_SPLIT_H
#define QUXML_DOM_SPLIT_H

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

namespace quxml {

/// Cuts `text` at every character of `separators` and calls `take(piece)` for each piece. Neighbouring
/// separators are not merged, so there is always one piece more than there are separators, and pieces may be
/// empty.
template <typename Take>
void cut(std::string_view text, std::string_view separators, Take take) {
    std::size_t end = 0;
    while ((end = text.find_first_of(separators)) != std::string_view::npos) {
        take(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    take(text);
}

/// The pieces that `cut` finds.
std::deque<std::string> split(std::string_view text, std::string_view separators);

}  // namespace quxml

#endif
