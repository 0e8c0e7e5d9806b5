// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

using namespace quxml::extras;

// Results of the library come in the order of addresses, which can be any order; those of the extras in document order.
int main() {
    auto document =
        quxml::from_string("<log><e id='1'/><day><e id='2'/><e id='3'/></day><e id='4'/></log>", false);
    quxml::Element& log = *document->get_root_node();
    for (const quxml::Element* entry : find_elements(log, "//e"))
        std::cout << get(*entry, "id", "") << '\n';

    // The same for what has been found already, texts and all.
    std::cout << in_document_order(log, log.find_exact_match("//*")).size() << " nodes\n";
}
