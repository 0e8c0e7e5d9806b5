// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

using namespace quxml::extras;

int main() {
    auto document =
        quxml::from_string("<catalog><book id='1'/><book id='2'><title>Emma</title></book></catalog>", false);
    if (auto* book = find_first(*document->get_root_node(), "/catalog/book[@id='2']")) {
        set(*book, "lang", "en");
        set_text(*book, "author", "Jane Austen");
    }
    write_formatted(std::cout, *document);
}
