// SPDX-License-Identifier: MIT
#include "trees/columns.h"

#include <quxml/Attribute.h>
#include <quxml/Element.h>

#include "trees/text.h"

namespace tool {

bool is_attribute_column(const std::string& column) {
    return column.front() == '@';
}

quxml::Node* get_text_node(quxml::Node& node, const std::string& column) {
    if (is_attribute_column(column))
        return nullptr;
    return column == "." ? &node : node.get_child(column);
}

std::optional<std::string> get_value(const quxml::Node& node, const std::string& column) {
    if (is_attribute_column(column)) {
        const auto* element = dynamic_cast<const quxml::Element*>(&node);
        const quxml::Attribute* attribute =
            element == nullptr ? nullptr : element->get_attribute(column.substr(1));
        return attribute == nullptr ? std::nullopt : std::make_optional(attribute->get_value());
    }
    const quxml::Node* holder = column == "." ? &node : node.get_child(column);
    return holder == nullptr ? std::nullopt : std::make_optional(get_text(*holder));
}

}  // namespace tool
