// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Copies a whole document, so that changes can be tried and discarded.
int main() {
    auto settings = quxml::from_string("<settings><volume>5</volume></settings>", false);

    quxml::Document trial(false);
    trial.create_root_node_by_import(settings->get_root_node(), true);
    trial.get_root_node()->add_child("theme")->add_child_text("dark");
    std::cout << settings->write_to_string_formatted(false);

    // To keep them, the documents exchange their roots.
    *settings = std::move(trial);
    std::cout << settings->write_to_string_formatted(false);
}
