// SPDX-License-Identifier: MIT
#ifndef QUXML_DOM_TRIM_H
#define QUXML_DOM_TRIM_H

#include <string_view>

namespace quxml {

/// `text` without what the global locale takes for white space at its ends.
std::string_view trim_space(std::string_view text);

/// `text` without any of the `characters` at its ends.
std::string_view trim(std::string_view text, std::string_view characters);

}  // namespace quxml

#endif
