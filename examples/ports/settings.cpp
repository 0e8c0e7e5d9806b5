// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <chrono>
#include <iostream>

using namespace quxml::extras;

// Settings with defaults: reads the file IN, shows what it sets, counts the start and saves the file as OUT.
int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    try {
        auto document = read_file(argv[1]);
        quxml::Element& server = require_child(*document->get_root_node(), "server");
        std::cout << "name: " << text_of(server, "name", "unnamed") << '\n';
        std::cout << "port: " << get<unsigned short>(server, "port", 80) << '\n';
        std::cout << "tls: " << get(server, "tls", false) << '\n';
        std::cout << "timeout: " << get_text(server, "timeout", std::chrono::seconds(30)).count() << " s\n";
        set(server, "starts", get(server, "starts", 0) + 1);
        write_file(argv[2], *document);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
