// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Compares names in a way of your own: here exactly, case included, and with a "?" at the end for any ending.

namespace {

bool matches(const std::string& name, const std::string& name_test) {
    if (!name_test.empty() && name_test.back() == '?')
        return name.compare(0, name_test.size() - 1, name_test, 0, name_test.size() - 1) == 0;
    return name == name_test;
}

}  // namespace

int main() {
    auto document = quxml::from_string("<log><Error/><error/><errors/></log>", false);
    for (const char* path : {"log/error", "log/error?", "log/ERROR"}) {
        const quxml::XPathHelper helper(matches);  // a fresh one for each query: its results add up
        std::cout << path << ": " << helper.find(document->get_root_node(), path).size() << '\n';
    }
    std::cout << "find_exact_match: " << document->get_root_node()->find_exact_match("log/error").size()
              << '\n';
}
