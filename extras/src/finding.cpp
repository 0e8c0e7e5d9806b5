// SPDX-License-Identifier: MIT
#include "quxml/extras/finding.h"

#include "quxml/extras/Fields.h"
#include "quxml/extras/ranges.h"

namespace quxml {
namespace extras {

std::vector<Element*> find_elements(Node& start, const std::string& path) {
    return find_elements(start, path, [](const Element& /*element*/) { return true; });
}

std::vector<Element*> find_elements(Node& start, const std::string& path, const Condition& condition) {
    NodeSet found = start.find_exact_match(path);
    std::vector<Element*> elements;
    for (Node* node : in_document_order(start, found)) {
        if (is_element(*node) && condition(static_cast<Element&>(*node)))
            elements.push_back(static_cast<Element*>(node));
    }
    return elements;
}

Element* find_first(Node& start, const std::string& path) {
    return find_first(start, path, [](const Element& /*element*/) { return true; });
}

Element* find_first(Node& start, const std::string& path, const Condition& condition) {
    for (Node* node : in_document_order(start, start.find_exact_match(path))) {
        if (is_element(*node) && condition(static_cast<Element&>(*node)))
            return static_cast<Element*>(node);
    }
    return nullptr;
}

Condition Selected::exists() const {
    const Read reader = read;
    return [reader](const Element& element) {
        std::string text;
        return reader(element, text);
    };
}

Selected where(const std::string& attribute_name) {
    return Selected([attribute_name](const Element& element, std::string& value) {
        return try_get(element, attribute_name, value);
    });
}

Selected where_text(const std::string& child) {
    return Selected(
        [child](const Element& element, std::string& value) { return try_get_text(element, child, value); });
}

}  // namespace extras
}  // namespace quxml
