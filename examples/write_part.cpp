// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Writes a part of a document, into one string that grows: without a declaration, compact or indented.
int main() {
    auto document = quxml::from_string("<a><b><c>text</c></b><d/></a>", false);
    const quxml::Node* part = document->get_root_node()->get_child("b");
    std::string out = "compact: ";
    part->write_to_string(out, -1);
    out += "\nindented:\n";
    part->write_to_string(out, 0);
    out += "as if two levels deep:\n";
    part->write_to_string(out, 2);
    std::cout << out;
}
