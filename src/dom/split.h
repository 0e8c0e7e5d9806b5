#ifndef QUXML_DOM_SPLIT_H
#define QUXML_DOM_SPLIT_H

#include <deque>
#include <string>

namespace quxml {

/// Cuts `text` at every character of `separators`. Neighbouring separators are not merged, so there is always
/// one piece more than there are separators, and pieces may be empty.
std::deque<std::string> split(const std::string& text, const char* separators);

}  // namespace quxml

#endif
