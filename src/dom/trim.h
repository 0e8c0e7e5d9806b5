#ifndef QUXML_DOM_TRIM_H
#define QUXML_DOM_TRIM_H

#include <string>

namespace quxml {

/// Removes what the global locale takes for white space from both ends of `text`.
void trim_space(std::string& text);

/// `text` without any of the `characters` at its ends.
std::string trim(const std::string& text, const char* characters);

}  // namespace quxml

#endif
