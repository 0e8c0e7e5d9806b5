#include "terminal/output.h"

#include <quxml/Attribute.h>
#include <quxml/Element.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string_view>
#include <system_error>
#include <vector>

#include "terminal/Failure.h"

namespace tool {

namespace {

bool is_special(char character) {
    static constexpr std::string_view special = "&<\"\t\n\r";
    return special.find(character) != std::string_view::npos;
}

std::string get_reference(char character) {
    switch (character) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '"':
            return "&quot;";
        default:
            return "&#" + std::to_string(static_cast<int>(character)) + ';';
    }
}

std::string escape(const std::string& value) {
    std::string escaped;
    for (const char character : value) {
        if (is_special(character)) {
            escaped += get_reference(character);
        } else {
            escaped += character;
        }
    }
    return escaped;
}

void escape_attributes_of(const quxml::Element& element) {
    for (quxml::Attribute* attribute : element.get_attributes()) {
        const std::string value = attribute->get_value();
        if (std::any_of(value.begin(), value.end(), is_special))
            attribute->set_value(escape(value));
    }
}

Failure write_failure(int error) {
    return {ExitCode::io, "standard output: " + std::generic_category().message(error)};
}

}  // namespace

void escape_attributes(quxml::Node* root) {
    std::vector<quxml::Node*> pending{root};
    while (!pending.empty()) {
        quxml::Node* const node = pending.back();
        pending.pop_back();
        const quxml::NodeList children = node->get_children();
        if (const auto* element = dynamic_cast<const quxml::Element*>(node))
            escape_attributes_of(*element);
        pending.insert(pending.end(), children.begin(), children.end());
    }
}

void escape_carriage_returns(std::string& document) {
    if (document.find('\r') == std::string::npos)
        return;
    std::string escaped;
    for (const char character : document)
        escaped += character == '\r' ? get_reference(character) : std::string(1, character);
    document = escaped;
}

bool write_output(std::string& text) {
    const bool written =
        std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    const int error = errno;
    text.clear();
    if (!written && error != EPIPE)
        throw write_failure(error);
    return written;
}

void close_output() {
    // Standard output that was closed from the start matters to those who wrote to it, and they know already.
    if (std::fclose(stdout) != 0 && errno != EPIPE && errno != EBADF)
        throw write_failure(errno);
}

}  // namespace tool
