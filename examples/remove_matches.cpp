// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

// Removes everything that a path selects. A match below another match is destroyed with it and does not count.
int main() {
    auto document = quxml::from_string("<a><old><old/></old><keep><old/></keep><old/></a>", false);
    std::size_t removed = quxml::extras::remove_matches(*document->get_root_node(), "//old");
    std::cout << document->write_to_string_formatted(false);
    std::cout << "removed: " << removed << '\n';
}
