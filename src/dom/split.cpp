#include "split.h"

#include <cstddef>

namespace quxml {

std::deque<std::string> split(const std::string& text, const char* separators) {
    std::deque<std::string> pieces;
    std::size_t begin = 0;
    std::size_t end = text.find_first_of(separators);
    while (end != std::string::npos) {
        pieces.emplace_back(text, begin, end - begin);
        begin = end + 1;
        end = text.find_first_of(separators, begin);
    }
    pieces.emplace_back(text, begin);
    return pieces;
}

}  // namespace quxml
