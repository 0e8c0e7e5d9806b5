#ifndef QUXML_TOOLS_WORDS_H
#define QUXML_TOOLS_WORDS_H

#include <string>
#include <string_view>

namespace tool {

/// What XML takes for white space.
constexpr std::string_view white_space = " \t\r\n";

inline bool contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

inline std::string quote(const std::string& text) {
    return '"' + text + '"';
}

}  // namespace tool

#endif
