// SPDX-License-Identifier: MIT
#include <iostream>
#include <pugixml.hpp>

// The same with pugixml. A value that cannot be read counts as 0, or as its beginning.
int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_file(argv[1]);
    if (!result) {
        std::cerr << argv[1] << ": " << result.description() << " at byte " << result.offset << '\n';
        return 1;
    }
    pugi::xml_node server = document.document_element().child("server");
    if (!server) {
        std::cerr << argv[1] << ": no server\n";
        return 1;
    }
    pugi::xml_node name = server.child("name");
    std::cout << "name: " << (name ? name.child_value() : "unnamed") << '\n';
    std::cout << "port: " << server.attribute("port").as_uint(80) << '\n';
    std::cout << "tls: " << server.attribute("tls").as_bool(false) << '\n';
    std::cout << "timeout: " << server.child("timeout").text().as_int(30) << " s\n";
    pugi::xml_attribute starts = server.attribute("starts");
    if (!starts)
        starts = server.append_attribute("starts");
    starts.set_value(starts.as_int(0) + 1);
    if (!document.save_file(argv[2], "  ")) {
        std::cerr << argv[2] << ": cannot be written\n";
        return 1;
    }
}
