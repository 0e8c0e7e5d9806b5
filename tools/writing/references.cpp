// SPDX-License-Identifier: MIT
#include "writing/references.h"

#include <cstddef>

namespace tool {

namespace {

constexpr std::string_view section_end = "]]>";

std::string replace_all(std::string_view text, std::string_view part, std::string_view replacement) {
    std::string result;
    std::size_t done = 0;
    for (std::size_t place = text.find(part); place != std::string_view::npos;
         place = text.find(part, done)) {
        result += text.substr(done, place - done);
        result += replacement;
        done = place + part.size();
    }
    return result += text.substr(done);
}

}  // namespace

std::string to_attribute_value(std::string_view value, char quote) {
    std::string result;
    for (const char character : value) {
        if (character == '&') {
            result += "&amp;";
        } else if (character == '<') {
            result += "&lt;";
        } else if (character == quote) {
            result += quote == '"' ? "&quot;" : "&apos;";
        } else if (character == '\t' || character == '\n' || character == '\r') {
            result += "&#" + std::to_string(static_cast<int>(character)) + ';';
        } else {
            result += character;
        }
    }
    return result;
}

std::string to_text(std::string_view value, std::string_view line_end) {
    std::string result = replace_all(value, "&", "&amp;");
    result = replace_all(result, "<", "&lt;");
    result = replace_all(result, section_end, "]]&gt;");
    result = replace_all(result, "\r", "&#13;");
    return replace_all(result, "\n", line_end);
}

std::string to_cdata(std::string_view value, std::string_view line_end) {
    const std::string content = replace_all(value, section_end, "]]]]><![CDATA[>");
    return "<![CDATA[" + replace_all(content, "\n", line_end) + "]]>";
}

}  // namespace tool
