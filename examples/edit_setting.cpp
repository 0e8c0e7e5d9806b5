// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Changes one setting of a document and leaves everything else as it is.

namespace {

void set_text(quxml::Element& element, const std::string& text) {
    if (quxml::TextNode* node = element.get_child_text())
        node->set_content(text);
    else
        element.add_child_text(text);
}

}  // namespace

int main() {
    auto document = quxml::from_string(
        "<device><network><address>10.0.0.2</address><gateway/></network><log level='info'/></device>",
        false);
    quxml::Element* device = document->get_root_node();
    for (quxml::Node* node : device->find_exact_match("/device/network/address"))
        set_text(static_cast<quxml::Element&>(*node), "10.0.0.7");
    for (quxml::Node* node : device->find_exact_match("/device/network/gateway"))
        set_text(static_cast<quxml::Element&>(*node), "10.0.0.1");
    for (quxml::Node* node : device->find_exact_match("/device/log"))
        static_cast<quxml::Element*>(node)->set_attribute("level", "debug");
    std::cout << document->write_to_string_formatted(false);
}
