#include "split.h"

namespace quxml {

std::deque<std::string> split(std::string_view text, std::string_view separators) {
    std::deque<std::string> pieces;
    cut(text, separators, [&pieces](std::string_view piece) { pieces.emplace_back(piece); });
    return pieces;
}

}  // namespace quxml
