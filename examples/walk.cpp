// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

using namespace quxml::extras;

// Goes through children, or through everything below a node, without copying a list.
int main() {
    auto document = quxml::from_string("<list><e>1</e><e>2</e><other/><e>3</e></list>", false);
    int sum = 0;
    for (const quxml::Element& e : elements(*document->get_root_node(), "e"))
        sum += std::stoi(text_of(e));
    std::cout << sum << '\n';

    for (const quxml::Element& element : descendants(*document->get_root_node()))
        std::cout << name_of(element) << ' ';
    std::cout << '\n';
}
