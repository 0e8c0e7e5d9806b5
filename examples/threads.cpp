// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>
#include <string>
#include <thread>
#include <vector>

// Every thread has a document of its own; only one thread at a time may use a document, even for queries.
int main() {
    std::vector<std::size_t> counts(4);
    std::vector<std::thread> threads;
    for (std::size_t number = 0; number < counts.size(); ++number) {
        threads.emplace_back([&counts, number] {
            const std::string entries(number * 5, '.');
            quxml::Document document(false);
            quxml::Element* list = document.create_root_node("list");
            for (const char entry : entries)
                list->add_child("entry")->add_child_text(std::string(1, entry));
            counts[number] = list->find_exact_match("/list/entry").size();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const std::size_t count : counts)
        std::cout << count << '\n';
}
