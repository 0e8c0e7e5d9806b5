// SPDX-License-Identifier: MIT
#include <iostream>
#include <map>
#include <pugixml.hpp>
#include <string>

// The same with pugixml. An amount that is missing or cannot be read counts as 0, or as its beginning.
int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_file(argv[1]);
    if (!result) {
        std::cerr << argv[1] << ": " << result.description() << " at byte " << result.offset << '\n';
        return 1;
    }
    std::map<std::string, double> totals;
    for (const pugi::xpath_node& found : document.select_nodes("//order")) {
        const pugi::xml_node order = found.node();
        totals[order.attribute("region").as_string("none")] += order.child("amount").text().as_double();
    }
    for (const auto& total : totals)
        std::cout << total.first << ": " << total.second << '\n';
}
