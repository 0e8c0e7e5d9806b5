// SPDX-License-Identifier: MIT
#include "quxml/Element.h"

#include <utility>

#include "Filling.h"
#include "NodeAccess.h"

namespace quxml {

Element::Element(const std::string& element_name, Element* owner, bool sorted)
    : Element(element_name.data(), element_name.size(), owner, sorted) {}

Element::Element(const char* element_name, std::size_t length, Element* owner, bool sorted)
    : Node(element_name, length, owner, sorted) {}

Element::~Element() {
    for (const Attribute* attribute : attributes)
        delete attribute;
}

const Attribute* find_attribute(const Element& element, std::string_view name) noexcept {
    for (const Attribute* attribute : NodeAccess::attributes(element)) {
        if (is_name(NodeAccess::name(*attribute), name))
            return attribute;
    }
    return nullptr;
}

Attribute* Element::get_attribute(const std::string& attribute_name) const {
    return const_cast<Attribute*>(find_attribute(*this, attribute_name));
}

std::string Element::get_attribute_value(const std::string& attribute_name) const {
    const Attribute* attribute = find_attribute(*this, attribute_name);
    return attribute == nullptr ? std::string() : NodeAccess::value(*attribute);
}

Attribute* Element::set_attribute(const std::string& attribute_name, const std::string& value) {
    if (Attribute* present = get_attribute(attribute_name)) {
        present->set_value(value);
        return present;
    }
    auto attribute = NodeAccess::make_attribute(attribute_name, value, *this);
    attributes.push_back(attribute.get());
    return attribute.release();
}

void Element::remove_attribute(const std::string& attribute_name) {
    Attribute* attribute = get_attribute(attribute_name);
    attributes.remove(attribute);
    delete attribute;
}

AttributeList Element::get_attributes() const {
    return attributes;
}

TextNode* Element::add_child_text(const std::string& text) {
    return Filling::add_text(*this, text);
}

TextNode* Element::add_child_text(std::string&& text) {
    TextNode* child = Filling::add_text(*this, std::string_view());
    child->set_content(std::move(text));
    return child;
}

const TextNode* first_text(const Node& node) noexcept {
    for (const Node* child : NodeAccess::children(node)) {
        if (const TextNode* text = as_text(child))
            return text;
    }
    return nullptr;
}

TextNode* Element::get_child_text() const {
    return const_cast<TextNode*>(first_text(*this));
}

bool Element::has_child_text() const {
    return first_text(*this) != nullptr;
}

}  // namespace quxml
