// SPDX-License-Identifier: MIT
#include "quxml/extras/values.h"

#include <algorithm>
#include <cstddef>

#include "quxml/extras/Fields.h"
#include "quxml/extras/paths.h"
#include "quxml/extras/ranges.h"

namespace quxml {
namespace extras {

ValueError::ValueError(const std::string& place, const std::string& value, const std::string& message)
    : std::runtime_error(message), parts(std::make_shared<const Parts>(Parts{place, value})) {}

ValueError::~ValueError() = default;

const std::string& ValueError::get_place() const noexcept {
    return parts->place;
}

const std::string& ValueError::get_value() const noexcept {
    return parts->value;
}

const Attribute* find_attribute(const Element& element, TextView name) noexcept {
    for (const Attribute* attribute : Fields::attributes_of(element)) {
        if (name.equals(Fields::name_of(*attribute)))
            return attribute;
    }
    return nullptr;
}

Attribute* find_attribute(Element& element, TextView name) noexcept {
    return const_cast<Attribute*>(find_attribute(static_cast<const Element&>(element), name));
}

const Element* find_child(const Node& parent, TextView name) noexcept {
    for (const Element& element : elements(parent)) {
        if (name.equals(name_of(element)))
            return &element;
    }
    return nullptr;
}

Element* find_child(Node& parent, TextView name) noexcept {
    return const_cast<Element*>(find_child(static_cast<const Node&>(parent), name));
}

const Element& require_child(const Element& parent, TextView name) {
    const Element* found = find_child(parent, name);
    if (found == nullptr)
        throw_missing_child(parent, name);
    return *found;
}

Element& require_child(Element& parent, TextView name) {
    return const_cast<Element&>(require_child(static_cast<const Element&>(parent), name));
}

namespace {

/// Of ASCII; the bytes of other characters are negative on some machines and not on others.
bool is_control_character(char c) {
    constexpr unsigned char delete_character = 0x7f;
    const auto byte = static_cast<unsigned char>(c);
    return byte < ' ' || byte == delete_character;
}

/// A value for a message: its beginning, on one line.
std::string show(const std::string& value) {
    constexpr std::size_t longest = 60;
    std::string shown = value.substr(0, longest);
    std::replace_if(shown.begin(), shown.end(), is_control_character, '?');
    return '"' + shown + (value.size() > longest ? "...\"" : "\"");
}

std::string place_of(const Element& element, TextView attribute_name) {
    return path_of(element) + "/@" + attribute_name.str();
}

[[noreturn]] void throw_missing(const std::string& place) {
    throw ValueError(place, "", place + " is missing");
}

[[noreturn]] void throw_wrong(const std::string& place, const std::string& value,
                              const std::string& expected) {
    throw ValueError(place, value, place + " is " + show(value) + ", which is not " + expected);
}

}  // namespace

void throw_missing_attribute(const Element& element, TextView name) {
    throw_missing(place_of(element, name));
}

void throw_wrong_attribute(const Element& element, TextView name, const std::string& expected) {
    throw_wrong(place_of(element, name), find_attribute(element, name)->get_value(), expected);
}

void throw_missing_child(const Element& element, TextView child) {
    throw_missing(path_of(element) + '/' + child.str());
}

void throw_wrong_text(const Element& element, const std::string& expected) {
    throw_wrong(path_of(element), text_of(element), expected);
}

std::string text_of(const Element& element) {
    const auto found = texts(element).begin();
    return found == texts(element).end() ? std::string() : found->get_content();
}

std::string text_of(const Element& element, TextView child) {
    return text_of(element, child, TextView(""));
}

std::string text_of(const Element& element, TextView child, TextView fallback) {
    const Element* found = find_child(element, child);
    return found == nullptr ? fallback.str() : text_of(*found);
}

void set_text(Element& element, const std::string& text) {
    auto first = texts(element).begin();
    const auto end = texts(element).end();
    if (first == end) {
        element.add_child_text(text);
        return;
    }
    first->set_content(text);
    for (++first; first != end; ++first)
        element.remove_child(&*first);
}

Element* set_text(Element& element, const std::string& child, const std::string& text) {
    Element* found = find_child(element, child);
    if (found == nullptr)
        found = element.add_child(child);
    set_text(*found, text);
    return found;
}

}  // namespace extras
}  // namespace quxml
