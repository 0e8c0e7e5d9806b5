// SPDX-License-Identifier: MIT

// The extras running out of memory, at each allocation in turn: the caller sees `std::bad_alloc`, the links of
// the tree agree, what promises to change nothing then has changed nothing, and nothing leaks. And what promises
// to allocate nothing does so.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

#include "quxml/extras/extras.h"
#include "robustness/counting_heap.h"
#include "support/check_links.h"
#include "support/small_stack.h"
#include "support/tree_text.h"

namespace quxml_test {

namespace {

using namespace quxml::extras;
using quxml::Attribute;
using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::TextNode;

const std::string lengthy = "-of-a-length-that-needs-memory";
const std::string tree = "r(key=value" + lengthy + "){a(item=1){\"text" + lengthy + "\"} b" + lengthy +
                         "(item=2,n=80){c{\"x\"} \"y\"} a(item=2){d}}";

struct Operation {
    const char* name;
    bool keep_sorted;
    bool changes_nothing_if_it_fails;
    std::function<void(Element& root)> run;
};

Element& find_child_named(Element& root, const std::string& name) {
    return *find_child(root, name);
}

const std::string long_name = "name" + lengthy;

std::vector<Operation> operations() {
    return {
        {"add to a sorted element", true, false,
         [](Element& root) {
             SortedChildren adder(root);
             adder.add(long_name, "3" + lengthy);
             adder.add(long_name, "text" + lengthy);
             adder.add(long_name);
             adder.add("a", 7);
         }},
        {"add one to a sorted element", true, true,
         [](Element& root) { SortedChildren(root).add(long_name, "3" + lengthy); }},
        {"set", false, true, [](Element& root) { set(root, long_name, "value" + lengthy); }},
        {"get", false, true,
         [](Element& root) {
             EXPECT_EQ(get(root, "key", "none"), "value" + lengthy);
             EXPECT_EQ(get_text(root, "a", "none"), "text" + lengthy);
         }},
        {"fail to get", false, true,
         [](Element& root) {
             try {
                 get<int>(root, "key", 1);
                 ADD_FAILURE() << "nothing was thrown";
             } catch (const ValueError& error) {
                 EXPECT_EQ(error.get_place(), "/r/@key");
             }
         }},
        {"set_text", false, true,
         [](Element& root) { set_text(find_child_named(root, "a"), "new" + lengthy); }},
        {"set_text of a new child", false, false,
         [](Element& root) { set_text(root, long_name, "new" + lengthy); }},
        {"find_elements", false, true,
         [](Element& root) { EXPECT_EQ(find_elements(root, "//*", where("item") == 2).size(), 2U); }},
        {"path_of", false, true,
         [](Element& root) {
             NodePaths paths;
             for (const Node& node : all_descendants(root))
                 EXPECT_EQ(path_of(node), paths.get(node));
         }},
        {"is_same_tree", false, true, [](Element& root) { EXPECT_TRUE(is_same_tree(root, root)); }},
        {"merge", false, false,
         [](Element& root) {
             Document other(false);
             merge(root,
                   *build(other, "r(x=y){a(item=1){" + long_name + "} a(item=9){\"t" + lengthy + "\"}}"));
         }},
        {"move_to", false, true,
         [](Element& root) { move_to(find_child_named(root, "a"), find_child_named(root, "b" + lengthy)); }},
        {"move_to a sorted element", true, true,
         [](Element& root) { move_to(find_child_named(root, "a"), find_child_named(root, "b" + lengthy)); }},
        {"remove_matches", false, true, [](Element& root) { EXPECT_EQ(remove_matches(root, "r/a"), 2U); }},
        {"to_text", false, true,
         [](Element& root) { EXPECT_FALSE(to_text(root).empty() || to_text(root, Layout()).empty()); }},
        {"write to a file descriptor", false, true,
         [](Element& root) {
             const int file = ::open("/dev/null", O_WRONLY);
             const std::unique_ptr<const int, void (*)(const int*)> closer(&file,
                                                                           [](const int* f) { ::close(*f); });
             write(FileDescriptor(file), root);
         }},
    };
}

/// Runs the operation with one allocation failing. Returns whether it was reached.
bool run_with_failure(const Operation& operation, std::size_t number, bool keeps_failing) {
    const std::size_t blocks = cpp_heap().blocks;
    bool is_reached = false;
    {
        Document document(operation.keep_sorted);
        Element* root = build(document, tree);
        const std::string before = to_line(root);
        bool has_failed = false;
        {
            const FailingAllocation failing(cpp_heap(), number, keeps_failing);
            try {
                operation.run(*root);
            } catch (const std::bad_alloc&) {
                has_failed = true;
            }
            is_reached = cpp_heap().failures != 0;
        }
        EXPECT_TRUE(has_failed || !is_reached) << operation.name << ' ' << number;
        EXPECT_TRUE(links_agree(root)) << operation.name << ' ' << number;
        if (has_failed && operation.changes_nothing_if_it_fails) {
            EXPECT_EQ(to_line(root), before) << operation.name << ' ' << number;
        }
        root->sort_children_recursively();
    }
    EXPECT_EQ(cpp_heap().blocks, blocks) << operation.name << ' ' << number;
    return is_reached;
}

TEST(ExtrasMemoryFailure, is_bad_alloc_and_leaves_a_whole_tree) {
    for (const Operation& operation : operations()) {
        for (const bool keeps_failing : {false, true}) {
            std::size_t number = 1;
            while (run_with_failure(operation, number, keeps_failing))
                ++number;
            EXPECT_GT(number, 1U) << operation.name;
        }
    }
}

TEST(ExtrasMemoryFailure, leaves_the_file_and_nothing_else) {
    std::string folder = ::testing::TempDir() + "quxml-extras-XXXXXX";
    ASSERT_NE(::mkdtemp(folder.data()), nullptr);
    const std::string name = folder + "/a.xml";
    Document document(false);
    build(document, "r(key=old){a{\"text" + lengthy + "\"}}");
    write_file(name, document);
    const std::string before = to_line(read_file(name)->get_root_node());
    set(*document.get_root_node(), "key", "new");
    std::size_t number = 1;
    for (bool is_reached = true; is_reached; ++number) {
        {
            const FailingAllocation failing(cpp_heap(), number, false);
            try {
                write_file(name, document);
            } catch (const std::bad_alloc&) {
            }
            is_reached = cpp_heap().failures != 0;
        }
        if (is_reached) {
            EXPECT_EQ(to_line(read_file(name)->get_root_node()), before) << number;
        }
    }
    EXPECT_GT(number, 3U);
    EXPECT_EQ(to_line(read_file(name)->get_root_node()), to_line(document.get_root_node()));
    EXPECT_EQ(::unlink(name.c_str()), 0);
    EXPECT_EQ(::rmdir(folder.c_str()), 0) << "nothing else is in it";
}

TEST(SortedChildrenMemory, of_a_child_whose_item_is_refused_is_freed_which_is_wanted) {
    Document document(true);
    SortedChildren adder(*document.create_root_node("r"));
    adder.add("a", 1);
    const std::size_t blocks = cpp_heap().blocks;
    EXPECT_THROW(adder.add("a", "99999999999"), std::out_of_range);
    EXPECT_EQ(cpp_heap().blocks, blocks);
}

TEST(ExtrasMemory, ranges_and_look_ups_take_none) {
    Document document(false);
    Element& root = *build(document, tree);
    const std::string name = "b" + lengthy;
    std::size_t count = 0;
    cpp_heap().allocations = 0;
    for (const Node& node : all_descendants(root))
        count += name_of(node).size();
    for (const Element& element : descendants(root, name)) {
        for (const Attribute& attribute : attributes(element))
            count += name_of(attribute).size();
        for (const TextNode& text : texts(element))
            count += ancestors(text).empty() ? 1U : 0U;
        count += static_cast<std::size_t>(get<int>(element, "n", 1));
        count += static_cast<std::size_t>(get<int>(element, "a-name-that-is-long-and-absent", 1));
    }
    for (const Element& element : elements(root, "a"))
        count += children(element).empty() ? 1U : 0U;
    EXPECT_EQ(cpp_heap().allocations, 0U);
    EXPECT_GT(count, 0U);
}

// A text of any length is written to a file with the memory that one piece takes.
TEST(ExtrasMemory, writing_to_a_file_takes_no_more_for_a_larger_document) {
    Document document(false);
    Element* root = document.create_root_node("r");
    const int file = ::open("/dev/null", O_WRONLY);
    for (int i = 0; i < 50000; ++i)
        root->add_child("entry", i)->add_child_text("text" + lengthy);
    const std::size_t before = cpp_heap().bytes;
    cpp_heap().peak = before;
    write_formatted(FileDescriptor(file), document);
    ::close(file);
    EXPECT_LT(cpp_heap().peak - before, 300U * 1024U);
    EXPECT_GT(document.write_to_string().size(), 2000000U);
}

TEST(ExtrasOnDeepTrees, take_no_more_stack) {
    constexpr std::size_t levels = 1000000;
    Document document(false);
    Document other(false);
    Element* lowest = build_chain(document, "a", levels);
    build_chain(other, "a", levels);
    on_small_stack([&] {
        Element& root = *document.get_root_node();
        std::size_t count = 0;
        for (const Element& element : descendants(root))
            count += name_of(element).size();
        for (const Element& element : ancestors(*lowest))
            count += name_of(element).size();
        EXPECT_EQ(count, 2 * (levels - 1));
        EXPECT_TRUE(is_same_tree(root, *other.get_root_node()));
        EXPECT_EQ(path_of(*lowest).size(), 2 * levels);
        EXPECT_EQ(NodePaths().get(*lowest).size(), 2 * levels);
        EXPECT_EQ(to_text(document), document.write_to_string());
        Layout without_indentation;
        without_indentation.indentation.clear();
        EXPECT_EQ(to_text(root, without_indentation).size(), (levels - 1) * 9 + 5)
            << "<a> and </a>, then <a/>";
        set(*lowest, "x", 1);
        EXPECT_EQ(find_elements(root, "//*", where("x") == 1).size(), 1U);
        merge(*other.get_root_node(), root);
        EXPECT_TRUE(is_same_tree(root, *other.get_root_node()));
        EXPECT_THROW(move_to(*find_child(root, "a"), *lowest), std::invalid_argument);
        move_to(*lowest, root);
        EXPECT_EQ(remove_matches(root, "//*"), 2U);
    });
}

}  // namespace

}  // namespace quxml_test
