// SPDX-License-Identifier: MIT
#include "trees/element_numbers.h"

namespace tool {

NumberedElements number_elements(quxml::Element* root, const std::unordered_set<quxml::Element*>& wanted) {
    NumberedElements found;
    std::vector<quxml::Node*> pending{root};
    for (std::size_t number = 0; !pending.empty() && found.elements.size() < wanted.size();) {
        auto* const element = dynamic_cast<quxml::Element*>(pending.back());
        pending.pop_back();
        if (element == nullptr)
            continue;
        if (wanted.count(element) != 0) {
            found.elements.push_back(element);
            found.numbers.push_back(number);
        }
        ++number;
        const quxml::NodeList children = element->get_children();
        pending.insert(pending.end(), children.rbegin(), children.rend());
    }
    return found;
}

}  // namespace tool
