// SPDX-License-Identifier: MIT

// Covers the extras with independent documents on several threads at once; the thread sanitizer watches.

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <thread>
#include <vector>

#include "quxml/extras/extras.h"

namespace quxml_test {

namespace {

using namespace quxml::extras;
using quxml::Document;
using quxml::Element;

/// Everything that one thread does, and what came of it.
std::string use_extras(unsigned seed) {
    const std::string file =
        ::testing::TempDir() + "quxml-threads-" + std::to_string(::getpid()) + '-' + std::to_string(seed);
    Document document(true);
    Element* root = document.create_root_node("r");
    {
        SortedChildren adder(*root);
        for (unsigned i = 0; i < 100; ++i)
            set(*adder.add("n", static_cast<int>(i * 37 % 100)), "ratio", 0.5 * (i + seed));
    }
    std::string seen;
    for (const Element& element : elements(*root, "n"))
        seen += std::to_string(require<double>(element, "ratio")) + path_of(element);
    write_file(file, document);
    const auto copy = read_file(file);
    ::unlink(file.c_str());
    merge(*copy->get_root_node(), *root);
    remove_matches(*copy->get_root_node(), "r/n[position()<50]");
    move_to(*find_first(*copy->get_root_node(), "r/n", where("item") == 70),
            *find_first(*copy->get_root_node(), "r/n"));
    return seen + to_text(*copy, Layout());
}

TEST(ExtrasThreads, use_their_own_documents_at_the_same_time_as_if_each_were_alone) {
    constexpr unsigned threads = 8;
    std::vector<std::string> seen(threads);
    std::vector<std::thread> running;
    for (unsigned i = 0; i < threads; ++i)
        running.emplace_back([&seen, i] { seen[i] = use_extras(i); });
    for (std::thread& thread : running)
        thread.join();
    for (unsigned i = 0; i < threads; ++i)
        EXPECT_EQ(seen[i], use_extras(i)) << "thread " << i;
}

}  // namespace

}  // namespace quxml_test
