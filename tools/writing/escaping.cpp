// SPDX-License-Identifier: MIT
#include "writing/escaping.h"

#include <quxml/Attribute.h>
#include <quxml/Element.h>

#include <algorithm>
#include <string_view>
#include <vector>

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

}  // namespace tool
