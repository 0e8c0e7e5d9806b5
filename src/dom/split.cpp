#include "split.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>

namespace quxml {

std::deque<std::string> split(const std::string& text, const char* separators) {
    std::deque<std::string> pieces;
    boost::algorithm::split(pieces, text, boost::algorithm::is_any_of(separators));
    return pieces;
}

}  // namespace quxml
