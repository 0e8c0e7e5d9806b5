// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <cstdio>

int main() {
    const auto document = quxml::from_string("<settings version='1'><host>example</host></settings>", false);
    quxml::Element* settings = document->get_root_node();
    for (quxml::Node* host : settings->find_exact_match("/settings/host"))
        settings->remove_child(host);
    settings->add_child("host")->add_child_text("another");
    std::puts(document->write_to_string().c_str());
}
