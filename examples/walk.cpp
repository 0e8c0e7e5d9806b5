// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Goes through children without copying their list: from the first of them along the links to the next sibling.
int main() {
    auto document = quxml::from_string("<list><e>1</e><e>2</e><other/><e>3</e></list>", false);
    int sum = 0;
    for (const quxml::Node* node = document->get_root_node()->get_child("e"); node != nullptr;
         node = node->get_next_sibling()) {
        const auto* element = dynamic_cast<const quxml::Element*>(node);
        if (element != nullptr && element->has_child_text())
            sum += std::stoi(element->get_child_text()->get_content());
    }
    std::cout << sum << '\n';
}
