// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <cstdio>

int main() {
    quxml::Document document(false);
    quxml::Element* settings = document.create_root_node("settings");
    settings->add_child("host")->add_child_text("example");
    settings->set_attribute("version", "1");
    for (quxml::Node* host : settings->find_exact_match("/settings/host"))
        settings->remove_child(host);
    std::puts(document.write_to_string().c_str());
}
