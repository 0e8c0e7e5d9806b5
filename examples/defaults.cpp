// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

using namespace quxml::extras;

// Reads settings that may be missing. An attribute or a child that is absent gives the default; one that is empty does not.
int main() {
    auto document = quxml::from_string("<server name=''><port>8080</port><host/></server>", false);
    quxml::Element& server = *document->get_root_node();
    std::cout << "name: '" << get(server, "name", "none") << "'\n";
    std::cout << "mode: '" << get(server, "mode", "none") << "'\n";
    std::cout << "port: " << get_text<int>(server, "port", 80) << '\n';
    std::cout << "host: '" << text_of(server, "host", "localhost") << "'\n";

    // Without the extras, ask for the attribute, not for its value.
    const quxml::Attribute* mode = server.get_attribute("mode");
    std::cout << "mode: '" << (mode == nullptr ? "none" : mode->get_value()) << "'\n";
}
