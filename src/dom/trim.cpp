#include "trim.h"

#include <cstddef>
#include <locale>

namespace quxml {

void trim_space(std::string& text) {
    const std::locale locale;
    const auto& types = std::use_facet<std::ctype<char>>(locale);
    while (!text.empty() && types.is(std::ctype_base::space, text.back()))
        text.pop_back();
    const char* const begin = text.data();
    const char* const kept = types.scan_not(std::ctype_base::space, begin, begin + text.size());
    text.erase(0, static_cast<std::size_t>(kept - begin));
}

std::string trim(const std::string& text, const char* characters) {
    const std::size_t begin = text.find_first_not_of(characters);
    if (begin == std::string::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(characters) + 1 - begin);
}

}  // namespace quxml
