#include "quxml/Attribute.h"

namespace quxml {

Attribute::Attribute(const std::string& attribute_name, const std::string& attribute_value, Element* owner)
    : Node(attribute_name, owner, false), value(attribute_value) {}

Attribute::~Attribute() = default;

std::string Attribute::get_value() const {
    return value;
}

void Attribute::set_value(const std::string& new_value) {
    value = new_value;
}

}  // namespace quxml
