// SPDX-License-Identifier: MIT
#include "quxml/Attribute.h"

namespace quxml {

Attribute::Attribute(const std::string& attribute_name, const std::string& attribute_value, Element* owner)
    : Attribute(attribute_name.data(), attribute_name.size(), attribute_value.data(), attribute_value.size(),
                owner) {}

Attribute::Attribute(const char* attribute_name, std::size_t name_length, const char* attribute_value,
                     std::size_t value_length, Element* owner)
    : Node(attribute_name, name_length, owner, false), value(attribute_value, value_length) {}

Attribute::~Attribute() = default;

std::string Attribute::get_value() const {
    return value;
}

void Attribute::set_value(const std::string& new_value) {
    value = new_value;
}

}  // namespace quxml
