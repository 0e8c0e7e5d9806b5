// SPDX-License-Identifier: MIT
#include "trim.h"

#include <cstddef>
#include <locale>

namespace quxml {

std::string_view trim_space(std::string_view text) {
    const std::locale locale;
    const auto& types = std::use_facet<std::ctype<char>>(locale);
    while (!text.empty() && types.is(std::ctype_base::space, text.back()))
        text.remove_suffix(1);
    const char* const begin = text.data();
    const char* const kept = types.scan_not(std::ctype_base::space, begin, begin + text.size());
    text.remove_prefix(static_cast<std::size_t>(kept - begin));
    return text;
}

std::string_view trim(std::string_view text, std::string_view characters) {
    while (!text.empty() && characters.find(text.back()) != std::string_view::npos)
        text.remove_suffix(1);
    while (!text.empty() && characters.find(text.front()) != std::string_view::npos)
        text.remove_prefix(1);
    return text;
}

}  // namespace quxml
