// SPDX-License-Identifier: MIT

// Covers independent documents on several threads at once: each thread reads, changes, sorts, copies, queries
// and writes its own. The thread sanitizer watches this test in `./dev sanitize`.

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "quxml/quxml.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml::from_string;

std::string text_of(unsigned seed) {
    std::string text = "<r" + std::to_string(seed) + ">";
    for (unsigned i = 0; i < 40; ++i) {
        const std::string number = std::to_string((i * 7 + seed) % 40);
        text += "<n item='" + number + "' k='v'>&lt;" + number + "</n><o><p/></o>";
    }
    return text + "</r" + std::to_string(seed) + ">";
}

std::string message_of_refusal(const std::string& text) {
    try {
        from_string(text, false);
        return "nothing was thrown";
    } catch (const quxml::DomParserError& error) {
        return error.what();
    }
}

void change(Element& root, unsigned seed) {
    for (unsigned i = 0; i < 20; ++i)
        root.add_child("n", static_cast<int>((i * 3 + seed) % 20))->add_child_text("changed & <new>");
    root.remove_child(root.get_child("o"));
    root.set_child_first(root.get_child("o"));
    root.set_attribute("k", "w");
}

std::string query(Element& root) {
    std::string counts;
    for (const char* const path : {"//n", "//N[@k='v']", "//p/", "//n[2]", "//n[last()]", "*/p", "//*"})
        counts += std::to_string(root.find_substring_match(path).size()) + " ";
    return counts;
}

/// Everything that one thread does, and what came of it.
std::string use_documents(unsigned seed) {
    std::string seen;
    for (unsigned round = seed; round < seed + 20; ++round) {
        const auto document = from_string(text_of(round), round % 2 == 0);
        Element* root = document->get_root_node();
        change(*root, round);
        root->sort_children_recursively();
        Document copy(true);
        copy.create_root_node_by_import(root, true);
        seen += query(*copy.get_root_node());
        seen += copy.get_root_node()->get_child("o")->get_subpath_for("/R" + std::to_string(round) + "/x/o");
        seen += copy.write_to_string_formatted(true) + document->write_to_string();
        seen += message_of_refusal("<a>" + text_of(round) + "</wrong>");
    }
    return seen;
}

TEST(Threads, use_their_own_documents_at_the_same_time_as_if_each_were_alone) {
    constexpr unsigned threads = 8;
    std::vector<std::string> seen(threads);
    std::vector<std::thread> running;
    for (unsigned i = 0; i < threads; ++i)
        running.emplace_back([&seen, i] { seen[i] = use_documents(i); });
    for (std::thread& thread : running)
        thread.join();
    for (unsigned i = 0; i < threads; ++i)
        EXPECT_EQ(seen[i], use_documents(i)) << "thread " << i;
}

}  // namespace
