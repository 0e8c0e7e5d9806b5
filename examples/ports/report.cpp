// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>
#include <map>

using namespace quxml::extras;

// A report over a large file: how much each region has ordered.
int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    try {
        auto document = read_file(argv[1]);
        std::map<std::string, double> totals;
        for (const quxml::Element& order : descendants(*document->get_root_node(), "order"))
            totals[get(order, "region", "none")] += require_text<double>(order, "amount");
        for (const auto& total : totals)
            std::cout << total.first << ": " << total.second << '\n';
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
