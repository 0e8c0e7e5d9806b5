// SPDX-License-Identifier: MIT

// libxml2 refuses deep documents, but its limit can be another one some day: nothing in the program takes more
// stack for a deeper tree.

#include <gtest/gtest.h>
#include <quxml/Document.h>
#include <quxml/Element.h>

#include <string>
#include <vector>

#include "support/small_stack.h"
#include "trees/differences.h"
#include "trees/distinct_paths.h"
#include "trees/sorting.h"
#include "writing/layout.h"

namespace {

constexpr int depth = 200000;

void grow(quxml::Document& document) {
    quxml::Element* deepest = document.create_root_node("a");
    for (int i = 0; i < depth; ++i)
        deepest = deepest->add_child("a");
    deepest->set_attribute("b", "<");
}

class DeepTree : public testing::Test {
protected:
    DeepTree() {
        grow(one);
        grow(other);
    }

    quxml::Document one{false};
    quxml::Document other{false};
};

TEST_F(DeepTree, is_compared) {
    quxml_test::on_small_stack([&] {
        one.get_root_node()->get_child("a")->get_child("a")->get_child("a")->add_child("b");
        std::string differences;
        tool::find_differences(*one.get_root_node(), *other.get_root_node(), [&](const std::string& line) {
            differences += line;
            return true;
        });
        EXPECT_EQ(differences, "- /a/a/a/a/b");
    });
}

TEST_F(DeepTree, has_as_many_paths_as_levels) {
    quxml_test::on_small_stack([&] {
        tool::DistinctPaths paths;
        paths.add(*one.get_root_node());
        paths.add(*other.get_root_node());
        const std::vector<tool::DistinctPath>& all = paths.get();
        ASSERT_EQ(all.size(), depth + 3U);  // the levels, the attribute, and what is above the root element
        EXPECT_EQ(all[depth + 1].depth, depth + 1U);
        EXPECT_EQ(all[depth + 1].count, 2U);
        EXPECT_EQ(all[depth + 2].name, "@b");
        EXPECT_EQ(all[depth + 2].example, "\"<\"");
    });
}

TEST_F(DeepTree, is_sorted_and_written) {
    quxml_test::on_small_stack([&] {
        tool::sort_by_item(one.get_root_node());
        tool::Layout layout;
        layout.has_declaration = false;
        layout.indentation = "";
        const std::string text = tool::write_document(one, layout);
        EXPECT_EQ(text.size(),
                  depth * std::string("<a>\n</a>\n").size() + std::string("<a b=\"&lt;\"/>\n").size());
    });
}

}  // namespace
