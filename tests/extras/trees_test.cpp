// SPDX-License-Identifier: MIT

// Covers comparing, merging, moving and removing, and the paths of nodes.

#include "quxml/extras/trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "quxml/Attribute.h"
#include "quxml/Document.h"
#include "quxml/TextNode.h"
#include "quxml/extras/paths.h"
#include "quxml/extras/ranges.h"
#include "support/check_links.h"
#include "support/expect_throw.h"
#include "support/tree_text.h"

namespace quxml_test {

namespace {

using namespace quxml::extras;
using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::TextNode;

const char* const different_trees[] = {
    "a",          "b",          "a(x=1)",       "a(x=2)",        "a(y=1)",    "a(x=1,y=2)",
    "a(y=2,x=1)", "a{\"t\"}",   "a{\"u\"}",     "a{\"t\" \"\"}", "a{b}",      "a{b b}",
    "a{b c}",     "a{c b}",     "a{b{c}}",      "a{b{c} b}",     "a{b b{c}}", "a{b{\"t\"}}",
    "a{b \"t\"}", "a{\"t\" b}", "a{b{c{d}} e}", "a{b{c{d} e}}"};

TEST(IsSameTree, is_true_for_equal_trees_alone) {
    for (const char* one : different_trees) {
        for (const char* other : different_trees) {
            Document a(false);
            Document b(false);
            EXPECT_EQ(is_same_tree(*build(a, one), *build(b, other)), std::string(one) == other)
                << one << ' ' << other;
        }
    }
}

TEST(IsSameTree, looks_at_the_subtree_alone) {
    Document document(false);
    Element* root = build(document, "r{a{x} b{a{x}} a{x} c}");
    const auto copies = descendants(*root, "a");
    for (const Element& one : copies) {
        for (const Element& other : copies)
            EXPECT_TRUE(is_same_tree(one, other));
        EXPECT_FALSE(is_same_tree(one, *root));
    }
}

TEST(IsSameTree, compares_nodes_of_other_kinds) {
    Document document(false);
    Element* root = build(document, "r(a=1){\"a\"}");
    const Node& text = *root->get_child_text();
    EXPECT_TRUE(is_same_tree(text, text));
    EXPECT_FALSE(is_same_tree(text, *root));
    EXPECT_FALSE(is_same_tree(*root->get_attribute("a"), text));
}

struct MergeRow {
    const char* note;
    const char* onto;
    const char* from;
    const char* merged;
};

const MergeRow merges[] = {
    {"attributes are set", "r(a=1,b=2)", "r(b=3,c=4)", "r(a=1,b=3,c=4)"},
    {"the name stays", "r", "s(a=1)", "r(a=1)"},
    {"children are laid over namesakes", "r{x(a=1) y}", "r{y(b=1) x(a=2)}", "r{x(a=2) y(b=1)}"},
    {"what is new is copied", "r{x}", "r{y{z(a=1){\"t\"}}}", "r{x y{z(a=1){\"t\"}}}"},
    {"texts are replaced", "r{x{\"old\"} y{\"stays\"}}", "r{x{\"new\"} y}", "r{x{\"new\"} y{\"stays\"}}"},
    {"an empty text replaces too", "r{x{\"old\"}}", "r{x{\"\"}}", "r{x{\"\"}}"},
    {"namesakes differ by their item", "r{u(item=1,n=a) u(item=2,n=b)}", "r{u(item=2,n=c) u(item=3)}",
     "r{u(item=1,n=a) u(item=2,n=c) u(item=3)}"},
    {"namesakes without an item go in order", "r{u{a} u{b}}", "r{u{c} u{d} u{e}}", "r{u{a c} u{b d} u{e}}"},
    {"no item is not an empty item", "r{u(item='')}", "r{u}", "r{u(item='') u}"},
    {"deep", "r{a{b{c(x=1)}}}", "r{a{b{c(y=2) d}}}", "r{a{b{c(x=1,y=2) d}}}"},
    {"nothing over something", "r{a}", "r", "r{a}"},
};

TEST(Merge, lays_one_tree_over_another) {
    for (const MergeRow& row : merges) {
        Document onto(false);
        Document from(false);
        build(onto, row.onto);
        merge(*onto.get_root_node(), *build(from, row.from));
        EXPECT_EQ(to_line(onto.get_root_node()), row.merged) << row.note;
        EXPECT_TRUE(links_agree(onto.get_root_node())) << row.note;
        EXPECT_EQ(to_line(from.get_root_node()), row.from) << row.note;
        merge(*onto.get_root_node(), *from.get_root_node());
        EXPECT_EQ(to_line(onto.get_root_node()), row.merged) << row.note << ", once more";
    }
}

TEST(Merge, takes_another_key) {
    Document onto(false);
    Document from(false);
    build(onto, "r{u(id=1,item=7) u(id=2)}");
    merge(*onto.get_root_node(), *build(from, "r{u(id=2,n=x) u(id=1,n=y)}"), "id");
    EXPECT_EQ(to_line(onto.get_root_node()), "r{u(id=1,item=7,n=y) u(id=2,n=x)}");
}

class MoveTo : public ::testing::Test {
protected:
    Element* find(const std::string& name) { return &*descendants(*root, name.c_str()).begin(); }

    std::string moved(const std::string& node, const std::string& parent) {
        Element* moving = find(node);
        move_to(*moving, *find(parent));
        EXPECT_EQ(find(node), moving) << "the same node";
        EXPECT_TRUE(links_agree(root));
        return to_line(root);
    }

    Document document{false};
    Element* root = build(document, "r{a{b c{d} e} f}");
};

TEST_F(MoveTo, links_the_node_as_the_last_child) {
    EXPECT_EQ(moved("b", "f"), "r{a{c{d} e} f{b}}");
    EXPECT_EQ(moved("c", "f"), "r{a{e} f{b c{d}}}");
    EXPECT_EQ(moved("e", "f"), "r{a f{b c{d} e}}");
    EXPECT_EQ(moved("b", "f"), "r{a f{c{d} e b}}") << "to the same parent";
    EXPECT_EQ(moved("b", "f"), "r{a f{c{d} e b}}") << "to the same place";
    EXPECT_EQ(moved("d", "a"), "r{a{d} f{c e b}}");
    EXPECT_EQ(moved("a", "e"), "r{f{c e{a{d}} b}}");
}

TEST_F(MoveTo, moves_texts_and_between_documents) {
    Document other(true);
    Element* target = build(other, "t{x}");
    TextNode* text = root->add_child_text("text");
    move_to(*text, *target);
    EXPECT_EQ(text->get_parent(), target);
    move_to(*find("c"), *target);
    EXPECT_EQ(to_line(target), "t{\"text\" c{d} x}") << "at its sorted place";
    EXPECT_EQ(to_line(root), "r{a{b e} f}");
    EXPECT_TRUE(links_agree(root) && links_agree(target));
}

TEST_F(MoveTo, refuses_what_is_not_a_child) {
    const char* no_child = "Only a child can be moved";
    EXPECT_THROW_MESSAGE(move_to(*root, *find("a")), std::invalid_argument, no_child);
    EXPECT_THROW_MESSAGE(move_to(*root->set_attribute("x", "1"), *find("a")), std::invalid_argument,
                         no_child);
    Element loose("loose", root, false);
    EXPECT_THROW_MESSAGE(move_to(loose, *find("a")), std::invalid_argument, no_child);
    EXPECT_EQ(to_line(root), "r(x=1){a{b c{d} e} f}");
}

TEST_F(MoveTo, refuses_to_move_a_node_below_itself) {
    const char* below_itself = "A node cannot be moved below itself";
    EXPECT_THROW_MESSAGE(move_to(*find("a"), *find("d")), std::invalid_argument, below_itself);
    EXPECT_THROW_MESSAGE(move_to(*find("a"), *find("a")), std::invalid_argument, below_itself);
    EXPECT_TRUE(links_agree(root));
}

TEST_F(MoveTo, leaves_everything_if_the_place_cannot_be_found) {
    Document other(true);
    Element* target = other.create_root_node("t");
    target->add_child("c", "99999999999");
    for (const char* name : {"b", "c", "e", "f"}) {
        Element* c = find(name);
        c->set_name("c");
        c->set_attribute("item", "1");
        EXPECT_THROW_MESSAGE(move_to(*c, *target), std::out_of_range, "stoi");
        EXPECT_TRUE(links_agree(root) && links_agree(target)) << name;
        c->set_name(name);
        c->remove_attribute("item");
    }
    EXPECT_EQ(to_line(root), "r{a{b c{d} e} f}");
}

TEST(RemoveMatches, removes_the_outermost_and_counts_them) {
    struct Row {
        const char* line;
        const char* path;
        const char* left;
        std::size_t count;
    };
    const Row rows[] = {
        {"r{a b a{c} b}", "r/a", "r{b b}", 2},
        {"r{a b a{c} b}", "r/*", "r", 4},
        {"r{a{a{a}} b{a}}", "//a", "r{b}", 2},
        {"r{a{a{a}} b{a}}", "//*", "r", 2},
        {"r{\"t\" a \"u\"}", "r/", "r", 3},
        {"r{a b}", "r", "r{a b}", 0},
        {"a{b{a}}", "//a", "a{b{a}}", 0},
        {"r{a b}", "//none", "r{a b}", 0},
        {"r{x{a b a} a x{b a}}", "//a", "r{x{b} x{b}}", 4},
    };
    for (const Row& row : rows) {
        Document document(false);
        Element* root = build(document, row.line);
        EXPECT_EQ(remove_matches(*root, row.path), row.count) << row.line << ' ' << row.path;
        EXPECT_EQ(to_line(root), row.left) << row.path;
        EXPECT_TRUE(links_agree(root));
    }
}

TEST(RemoveMatches, starts_at_any_node_and_leaves_its_siblings) {
    Document document(false);
    Element* root = build(document, "r{a{b} a{b}}");
    EXPECT_EQ(remove_matches(*root->get_child("a"), "a/b"), 1U);
    EXPECT_EQ(to_line(root), "r{a a{b}}");
    EXPECT_EQ(remove_matches(*root->get_children().back(), "a"), 0U) << "the start node stays";
}

TEST(RemoveMatches, leaves_the_tree_if_the_path_cannot_be_read) {
    Document document(false);
    Element* root = build(document, "r{a{b} c}");
    EXPECT_THROW(remove_matches(*root, "r/a[@x=y=z]"), std::invalid_argument);
    EXPECT_EQ(to_line(root), "r{a{b} c}");
}

// Linear: a search for each of the hundred thousand that go would take hours.
TEST(RemoveMatches, takes_every_other_of_many_children) {
    Document document(false);
    Element* root = document.create_root_node("r");
    for (int i = 0; i < 200000; ++i)
        root->add_child(i % 2 == 0 ? "a" : "b");
    EXPECT_EQ(remove_matches(*root, "r/a"), 100000U);
    EXPECT_EQ(root->get_children().size(), 100000U);
    EXPECT_TRUE(links_agree(root));
}

TEST(PathOf, selects_the_node_and_no_other) {
    std::mt19937 random(5);
    const std::vector<std::string> names = {"a", "A", "b", "long-name", "\xC3\xA9"};
    for (int round = 0; round < 50; ++round) {
        Document document(false);
        std::vector<Element*> all{document.create_root_node("root")};
        for (int i = 0; i < 60; ++i)
            all.push_back(all[random() % all.size()]->add_child(names[random() % names.size()]));
        NodePaths paths;
        for (Element* element : all) {
            const std::string path = path_of(*element);
            EXPECT_EQ(paths.get(*element), path);
            EXPECT_EQ(document.get_root_node()->find_exact_match(path), quxml::NodeSet{element}) << path;
        }
    }
}

TEST(PathOf, tells_where_other_nodes_are) {
    Document document(false);
    Element* root = build(document, "r{a a(x=1){\"text\"} b}");
    auto* second = static_cast<Element*>(*std::next(root->get_children().begin()));
    NodePaths paths;
    EXPECT_EQ(path_of(*root), "/r");
    EXPECT_EQ(path_of(*second), "/r/a[position()=2]");
    EXPECT_EQ(path_of(*second->get_child_text()), "/r/a[position()=2]/");
    EXPECT_EQ(path_of(*second->get_attribute("x")), "/r/a[position()=2]/@x");
    EXPECT_EQ(paths.get(*second->get_child_text()), "/r/a[position()=2]/");
    EXPECT_EQ(paths.get(*second->get_attribute("x")), "/r/a[position()=2]/@x");
    EXPECT_EQ(path_of(Element("loose", nullptr, false)), "/loose");
}

}  // namespace

}  // namespace quxml_test
