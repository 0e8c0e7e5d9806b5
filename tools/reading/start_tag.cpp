// SPDX-License-Identifier: MIT

// Only what is inside a start tag is taken apart here. That is easy, since libxml2 has found it well-formed: an attribute
// is a name, an equal sign with or without white space around it, and a value between two quotes of one kind, which
// does not hold such a quote itself.

#include "reading/start_tag.h"

#include <algorithm>

#include "terminal/words.h"

namespace tool {

namespace {

constexpr std::string_view end_of_name = " \t\r\n=/>";

/// Where the next attribute or the end of the tag begins.
std::size_t find_next(std::string_view text, std::size_t position) {
    return std::min(text.find_first_not_of(white_space, position), text.size());
}

bool is_end_of_tag(std::string_view text, std::size_t position) {
    return position == text.size() || std::string_view("/>?").find(text[position]) != std::string_view::npos;
}

}  // namespace

std::size_t get_name_end(std::string_view text, std::size_t tag) {
    return std::min(text.find_first_of(end_of_name, tag), text.size());
}

std::vector<AttributeExtent> get_attributes(std::string_view text, std::size_t tag) {
    std::vector<AttributeExtent> attributes;
    std::size_t end = get_name_end(text, tag);
    for (std::size_t name = find_next(text, end); !is_end_of_tag(text, name); name = find_next(text, end)) {
        AttributeExtent attribute{end, name, text.find_first_of(end_of_name, name), 0, 0};
        const std::size_t quote = text.find_first_of("\"'", attribute.name_end);
        attribute.value = quote + 1;
        attribute.value_end = text.find(text[quote], attribute.value);
        end = attribute.get_end();
        attributes.push_back(attribute);
    }
    return attributes;
}

std::string_view get_name(std::string_view text, const AttributeExtent& attribute) {
    return text.substr(attribute.name, attribute.name_end - attribute.name);
}

std::string_view get_value(std::string_view text, const AttributeExtent& attribute) {
    return text.substr(attribute.value, attribute.value_end - attribute.value);
}

bool declares_namespace(std::string_view name) {
    return name == "xmlns" || begins_with(name, "xmlns:");
}

std::string_view get_read_name(std::string_view name, const std::vector<std::string>& losing_prefix) {
    if (declares_namespace(name))
        return {};
    const bool loses_prefix =
        std::find(losing_prefix.begin(), losing_prefix.end(), name) != losing_prefix.end();
    return loses_prefix ? name.substr(name.find(':') + 1) : name;
}

}  // namespace tool
