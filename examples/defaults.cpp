// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Reads settings that may be missing. It is not an error if one is absent: the result is null, or an empty string.

namespace {

std::string attribute_or(const quxml::Element& element, const std::string& name,
                         const std::string& otherwise) {
    const quxml::Attribute* attribute = element.get_attribute(name);
    return attribute == nullptr ? otherwise : attribute->get_value();
}

std::string text_or(quxml::Element& root, const std::string& path, const std::string& otherwise) {
    for (const quxml::Node* node : root.find_exact_match(path)) {
        const auto* element = dynamic_cast<const quxml::Element*>(node);
        if (element != nullptr && element->has_child_text())
            return element->get_child_text()->get_content();
    }
    return otherwise;
}

}  // namespace

int main() {
    auto document = quxml::from_string("<server name=''><port>8080</port><host/></server>", false);
    quxml::Element* server = document->get_root_node();
    std::cout << "name: '" << attribute_or(*server, "name", "none") << "'\n";
    std::cout << "mode: '" << attribute_or(*server, "mode", "none") << "'\n";
    std::cout << "port: '" << text_or(*server, "/server/port", "80") << "'\n";
    std::cout << "host: '" << text_or(*server, "/server/host", "localhost") << "'\n";
}
