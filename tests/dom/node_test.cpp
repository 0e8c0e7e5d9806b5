// Covers what all nodes share: constructors, names, the list of children with its sibling links, looking up,
// adding, inserting, removing, moving to the front, and destruction.

#include "quxml/Node.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstddef>
#include <iostream>
#include <iterator>
#include <list>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "quxml/Attribute.h"
#include "quxml/Document.h"
#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "support/check_links.h"
#include "support/expect_throw.h"
#include "support/small_stack.h"
#include "support/tree_text.h"

namespace {

using quxml::Attribute;
using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::NodeList;
using quxml::TextNode;
using quxml_test::build;
using quxml_test::build_chain;
using quxml_test::links_agree;
using quxml_test::on_small_stack;
using quxml_test::to_line;

const std::size_t deep = 1000000;

/// The least that a class of nodes can be.
class BareNode : public Node {
public:
    using Node::keep_sorted;
    using Node::Node;

    void write_to_string(std::string& out, int /*indent*/) const override { out += name; }
    Node* get_deep_copy_of_node(bool /*deep*/, Element* /*parent*/) const override { return nullptr; }
};

/// An element whose fields the test can reach.
class OpenElement : public Element {
public:
    explicit OpenElement(const std::string& element_name, bool sorted = false)
        : Element(element_name, nullptr, sorted) {}

    using Node::children;
    using Node::keep_sorted;
    using Node::next_sibling;
    using Node::previous_sibling;

    NodeList::iterator at(int position) { return std::next(children.begin(), position); }

    Element* new_child(const std::string& child_name) { return new Element(child_name, this, false); }
};

using Log = std::vector<std::string>;

/// Notes its name, the number of its children and whether it has a parent when its destruction begins.
template <class Base>
class Logged : public Base {
public:
    template <class... Arguments>
    explicit Logged(Log& log_of_test, Arguments&&... arguments)
        : Base(std::forward<Arguments>(arguments)...), log(log_of_test) {}

    Logged(const Logged&) = delete;
    Logged& operator=(const Logged&) = delete;

    ~Logged() override {
        log.push_back(this->get_name() + " " + std::to_string(this->get_children().size()) +
                      (this->get_parent() == nullptr ? "" : " below " + this->get_parent()->get_name()));
    }

private:
    Log& log;
};

using LoggedElement = Logged<Element>;
using LoggedText = Logged<TextNode>;

template <class NodeClass>
NodeClass* link(Node& parent, std::unique_ptr<NodeClass> child) {
    parent.add_new_node(child.get());
    return child.release();
}

LoggedElement* add_logged(Log& log, Element& parent, const std::string& name) {
    return link(parent, std::make_unique<LoggedElement>(log, name, &parent, false));
}

LoggedText* add_logged_text(Log& log, Element& parent, const std::string& name) {
    return link(parent, std::make_unique<LoggedText>(log, &parent, name));
}

Node* child_at(const Node& parent, int position) {
    const NodeList children = parent.get_children();
    return *std::next(children.begin(), position);
}

bool is_free_standing(const Node& node) {
    return node.get_parent() == nullptr && node.get_previous_sibling() == nullptr &&
           node.get_next_sibling() == nullptr && node.get_children().empty();
}

// The classes

static_assert(std::is_abstract<Node>::value, "a node is always of a class of its own");
static_assert(std::has_virtual_destructor<Node>::value, "nodes are destroyed through their base");
static_assert(!std::is_copy_constructible<Element>::value, "copies are made by get_deep_copy_of_node");
static_assert(!std::is_copy_assignable<Element>::value, "copies are made by get_deep_copy_of_node");
static_assert(std::is_convertible<Element*, Node*>::value, "elements are nodes");
static_assert(std::is_convertible<Attribute*, Node*>::value, "attributes are nodes");
static_assert(std::is_convertible<TextNode*, Node*>::value, "texts are nodes");
static_assert(std::is_same<NodeList, std::list<Node*>>::value, "the children are a plain list");

// Constructors

TEST(NodeConstructor, without_arguments_gives_a_free_standing_node) {
    const BareNode node;
    EXPECT_EQ(node.get_name(), "");
    EXPECT_FALSE(node.keep_sorted);
    EXPECT_TRUE(is_free_standing(node));
}

TEST(NodeConstructor, with_a_parent_takes_whether_to_keep_sorted_from_it) {
    for (const bool sorted : {false, true}) {
        OpenElement parent("p", sorted);
        const BareNode node(&parent);
        EXPECT_EQ(node.get_name(), "");
        EXPECT_EQ(node.get_parent(), &parent);
        EXPECT_EQ(node.keep_sorted, sorted);
        EXPECT_EQ(node.get_previous_sibling(), nullptr);
        EXPECT_EQ(node.get_next_sibling(), nullptr);
        EXPECT_TRUE(node.get_children().empty());
    }
}

TEST(NodeConstructor, with_a_name_gives_a_free_standing_node_of_that_name) {
    const BareNode node(std::string("n"));
    EXPECT_EQ(node.get_name(), "n");
    EXPECT_FALSE(node.keep_sorted);
    EXPECT_TRUE(is_free_standing(node));
}

TEST(NodeConstructor, with_all_three_takes_them_as_given) {
    for (const bool parent_is_sorted : {false, true}) {
        for (const bool sorted : {false, true}) {
            OpenElement parent("p", parent_is_sorted);
            const BareNode node("n", &parent, sorted);
            EXPECT_EQ(node.get_name(), "n");
            EXPECT_EQ(node.get_parent(), &parent);
            EXPECT_EQ(node.keep_sorted, sorted);
            EXPECT_TRUE(node.get_children().empty());
        }
    }
}

TEST(NodeConstructor, all_three_accept_a_null_parent) {
    const BareNode node("n", nullptr, true);
    EXPECT_TRUE(node.keep_sorted);
    EXPECT_TRUE(is_free_standing(node));
}

TEST(NodeConstructor, none_links_the_node_into_its_parent_which_is_wanted) {
    OpenElement parent("p");
    parent.add_child("first");
    const BareNode with_parent(&parent);
    const BareNode with_all("n", &parent, false);
    const Element element("e", &parent, false);
    const TextNode text(&parent, "");
    const Attribute attribute("a", "1", &parent);
    EXPECT_EQ(to_line(&parent), "p{first}");
    EXPECT_TRUE(links_agree(&parent));
}

// Names

TEST(NodeName, is_returned_as_a_copy) {
    const BareNode node(std::string("n"));
    std::string name = node.get_name();
    name += "changed";
    EXPECT_EQ(node.get_name(), "n");
}

TEST(NodeName, is_kept_byte_for_byte) {
    const std::string odd("a\0b\xff", 4);
    BareNode node(odd);
    EXPECT_EQ(node.get_name(), odd);
    node.set_name("");
    EXPECT_EQ(node.get_name(), "");
    node.set_name(odd);
    EXPECT_EQ(node.get_name(), odd);
}

TEST(NodeName, setting_it_does_not_sort_the_parent_again_which_is_wanted) {
    Document document(true);
    Element* root = build(document, "r{a b c}");
    root->get_child("a")->set_name("z");
    EXPECT_EQ(to_line(root), "r{z b c}");
    EXPECT_TRUE(links_agree(root));
}

// Looking at children

TEST(GetChildren, is_a_snapshot_in_child_order) {
    Document document(false);
    Element* root = build(document, "r{c \"t\" a b}");
    NodeList snapshot = root->get_children();
    ASSERT_EQ(snapshot.size(), 4U);
    EXPECT_EQ(snapshot.front()->get_name(), "c");
    EXPECT_EQ(snapshot.back()->get_name(), "b");
    snapshot.clear();
    EXPECT_EQ(to_line(root), "r{c \"t\" a b}");
    snapshot = root->get_children();
    root->add_child("d");
    EXPECT_EQ(snapshot.size(), 4U);
}

TEST(GetChildren, lets_children_be_removed_during_the_iteration) {
    Document document(false);
    Element* root = build(document, "r{a \"t\" b{c} \"u\" d}");
    for (Node* child : root->get_children()) {
        if (child->get_name() != "b")
            root->remove_child(child);
        EXPECT_TRUE(links_agree(root));
    }
    EXPECT_EQ(to_line(root), "r{b{c}}");
}

TEST(GetChildren, is_empty_without_children) {
    Document document(false);
    EXPECT_TRUE(build(document, "r")->get_children().empty());
}

TEST(GetChild, finds_the_first_of_two_namesakes) {
    Document document(false);
    Element* root = build(document, "r{a b(n=1) b(n=2)}");
    EXPECT_EQ(root->get_child("b"), child_at(*root, 1));
}

TEST(GetChild, compares_byte_for_byte) {
    Document document(false);
    Element* root = build(document, "r{b bc}");
    EXPECT_EQ(root->get_child("B"), nullptr);
    EXPECT_EQ(root->get_child("bcd"), nullptr);
    EXPECT_EQ(root->get_child("bc"), child_at(*root, 1));
    EXPECT_EQ(root->get_child(std::string("b\0", 2)), nullptr);
    Element* with_null_byte = root->add_child(std::string("b\0c", 3));
    EXPECT_EQ(root->get_child(std::string("b\0c", 3)), with_null_byte);
    EXPECT_EQ(root->get_child("b"), child_at(*root, 0));
}

TEST(GetChild, is_null_without_a_match_or_without_children) {
    Document document(false);
    EXPECT_EQ(build(document, "r{a}")->get_child("x"), nullptr);
    EXPECT_EQ(build(document, "r{a{x}}")->get_child("x"), nullptr);
    EXPECT_EQ(build(document, "r")->get_child("r"), nullptr);
    EXPECT_EQ(build(document, "r")->get_child(""), nullptr);
}

TEST(GetChild, finds_text_by_the_empty_name) {
    Document document(false);
    Element* root = build(document, "r{a \"t\" \"u\" ''}");
    EXPECT_EQ(root->get_child(""), child_at(*root, 1));
}

TEST(GetChild, finds_an_element_without_a_name_that_precedes_the_text) {
    Document document(false);
    Element* root = build(document, "r{a '' \"t\"}");
    EXPECT_EQ(root->get_child(""), child_at(*root, 1));
}

// Adding

TEST(AddChild, appends_in_the_order_of_the_calls) {
    Document document(false);
    Element* root = document.create_root_node("r");
    Element* c = root->add_child("c");
    EXPECT_TRUE(links_agree(root));
    Element* a = root->add_child("a");
    EXPECT_TRUE(links_agree(root));
    Element* b = root->add_child("b");
    EXPECT_TRUE(links_agree(root));
    EXPECT_EQ(to_line(root), "r{c a b}");
    EXPECT_EQ(c->get_parent(), root);
    EXPECT_EQ(c->get_previous_sibling(), nullptr);
    EXPECT_EQ(c->get_next_sibling(), a);
    EXPECT_EQ(a->get_previous_sibling(), c);
    EXPECT_EQ(a->get_next_sibling(), b);
    EXPECT_EQ(b->get_previous_sibling(), a);
    EXPECT_EQ(b->get_next_sibling(), nullptr);
}

TEST(AddChild, with_a_string_sets_the_item) {
    Document document(false);
    Element* root = document.create_root_node("r");
    root->add_child("x", "b & c");
    root->add_child("x", std::string("1"));
    EXPECT_EQ(to_line(root), "r{x(item='b & c') x(item=1)}");
    EXPECT_TRUE(links_agree(root));
}

TEST(AddChild, with_an_empty_item_sets_the_attribute_all_the_same) {
    Document document(false);
    Element* root = document.create_root_node("r");
    root->add_child("x", "");
    EXPECT_EQ(to_line(root), "r{x(item='')}");
}

TEST(AddChild, writes_a_number_in_decimal) {
    const std::pair<int, std::string> rows[] = {
        {7, "7"}, {-3, "-3"}, {0, "0"}, {1000, "1000"}, {INT_MAX, "2147483647"}, {INT_MIN, "-2147483648"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.second);
        Document document(false);
        Element* root = document.create_root_node("r");
        EXPECT_EQ(root->add_child("x", row.first)->get_attribute_value("item"), row.second);
        EXPECT_EQ(to_line(root), "r{x(item=" + row.second + ")}");
    }
}

TEST(AddChild, hands_keep_sorted_down_to_every_level) {
    for (const bool sorted : {false, true}) {
        Document document(sorted);
        Element* lower = document.create_root_node("r")->add_child("s")->add_child("t", 1);
        lower->add_child("b");
        lower->add_child("a");
        EXPECT_EQ(to_line(lower), sorted ? "t(item=1){a b}" : "t(item=1){b a}");
        EXPECT_TRUE(links_agree(document.get_root_node()));
    }
}

TEST(AddChild, places_by_the_item_in_a_node_that_is_kept_sorted) {
    Document document(true);
    Element* root = document.create_root_node("r");
    root->add_child("x", 10);
    root->add_child("x", 9);
    root->add_child("x", "1");
    EXPECT_EQ(to_line(root), "r{x(item=1) x(item=9) x(item=10)}");
    EXPECT_TRUE(links_agree(root));
}

TEST(AddChild, never_looks_at_items_unless_kept_sorted) {
    Document document(false);
    Element* root = document.create_root_node("r");
    root->add_child("x", "99999999999");
    root->add_child("x", "99999999999");
    root->add_child("x", 1);
    EXPECT_EQ(to_line(root), "r{x(item=99999999999) x(item=99999999999) x(item=1)}");
}

TEST(AddNewNode, does_not_set_the_parent_which_is_wanted) {
    OpenElement parent("p");
    auto* child = new Element("c", nullptr, false);
    parent.add_new_node(child);
    EXPECT_EQ(child->get_parent(), nullptr);
    EXPECT_EQ(to_line(&parent), "p{c}");
}

TEST(AddNewNode, appends_nodes_of_any_class) {
    Document document(false);
    Element* root = build(document, "r{a}");
    link(*root, std::make_unique<BareNode>("n", root, false));
    link(*root, std::make_unique<TextNode>(root, "named text"));
    EXPECT_EQ(to_line(root), "r{a <n> \"\"}");
    EXPECT_TRUE(links_agree(root));
}

TEST(AddNewNode, works_on_a_node_that_is_no_element) {
    BareNode parent(std::string("p"));
    auto* first = new BareNode(std::string("a"));
    auto* second = new BareNode(std::string("b"));
    parent.add_new_node(first);
    parent.add_new_node(second);
    EXPECT_EQ(first->get_next_sibling(), second);
    EXPECT_EQ(second->get_previous_sibling(), first);
    EXPECT_EQ(parent.get_child("b"), second);
}

TEST(AddNewNode, on_an_empty_list_touches_no_link) {
    OpenElement elsewhere("elsewhere");
    for (const bool sorted : {false, true}) {
        OpenElement parent("p", sorted);
        auto* child = new OpenElement("c");
        child->previous_sibling = &elsewhere;
        child->next_sibling = &elsewhere;
        parent.add_new_node(child);
        EXPECT_EQ(child->get_previous_sibling(), &elsewhere);
        EXPECT_EQ(child->get_next_sibling(), &elsewhere);
    }
}

TEST(AddNewNode, fails_on_an_item_beyond_the_range_and_leaves_the_node_to_the_caller) {
    Document document(true);
    Element* root = document.create_root_node("r");
    root->add_child("x", 1);
    root->add_child("x", 5);
    const auto node = std::make_unique<Element>("x", root, true);
    node->set_attribute("item", "99999999999");
    EXPECT_THROW_MESSAGE(root->add_new_node(node.get()), std::out_of_range, "stoi");
    EXPECT_EQ(to_line(root), "r{x(item=1) x(item=5)}");
    EXPECT_TRUE(links_agree(root));
    EXPECT_EQ(node->get_previous_sibling(), nullptr);
    EXPECT_EQ(node->get_next_sibling(), nullptr);
}

/// What `add_child` throws for an item beyond the range, and the tree after it.
std::string fail_to_add_child() {
    Document document(true);
    Element* root = document.create_root_node("r");
    root->add_child("x", 1);
    root->add_child("x", 5);
    try {
        root->add_child("x", "99999999999");
    } catch (const std::out_of_range& error) {
        return std::string(error.what()) + " " + to_line(root) + (links_agree(root) ? " ok" : " broken");
    }
    return "nothing";
}

// The new child is not freed. That is seen in a process of its own, which kills itself, so that nobody who
// looks for leaks at its end reports this one.
TEST(AddChildDeathTest, with_an_item_beyond_the_range_leaves_the_new_child_unlinked_which_is_wanted) {
    const auto fail_and_end = [] {
        std::cerr << fail_to_add_child() << '\n';
        static_cast<void>(std::raise(SIGKILL));
    };
    EXPECT_EXIT(fail_and_end(), ::testing::KilledBySignal(SIGKILL), "^stoi r.x.item=1. x.item=5.. ok\n$");
}

// Inserting

TEST(InsertNode, into_an_empty_list_touches_no_link) {
    OpenElement elsewhere("elsewhere");
    OpenElement parent("p");
    auto* child = new OpenElement("c");
    child->previous_sibling = &elsewhere;
    child->next_sibling = &elsewhere;
    parent.insert_node(child, parent.children.end());
    EXPECT_EQ(child->get_previous_sibling(), &elsewhere);
    EXPECT_EQ(child->get_next_sibling(), &elsewhere);
    EXPECT_EQ(to_line(&parent), "p{c}");
}

TEST(InsertNode, links_at_every_position) {
    const std::string rows[] = {"p{new a b c}", "p{a new b c}", "p{a b new c}", "p{a b c new}"};
    for (int position = 0; position <= 3; ++position) {
        SCOPED_TRACE(position);
        OpenElement parent("p");
        for (const char* name : {"a", "b", "c"})
            parent.add_child(name);
        parent.insert_node(parent.new_child("new"), parent.at(position));
        EXPECT_EQ(to_line(&parent), rows[position]);
        EXPECT_TRUE(links_agree(&parent));
    }
}

TEST(InsertNode, ignores_that_the_parent_is_kept_sorted_which_is_wanted) {
    OpenElement parent("p", true);
    parent.add_child("b");
    parent.insert_node(parent.new_child("z"), parent.children.begin());
    parent.insert_node(parent.new_child("a"), parent.children.end());
    EXPECT_EQ(to_line(&parent), "p{z b a}");
    EXPECT_TRUE(links_agree(&parent));
}

TEST(InsertNode, does_not_set_the_parent_which_is_wanted) {
    OpenElement parent("p");
    parent.add_child("a");
    auto* child = new Element("c", nullptr, false);
    parent.insert_node(child, parent.children.begin());
    EXPECT_EQ(child->get_parent(), nullptr);
    EXPECT_EQ(to_line(&parent), "p{c a}");
}

TEST(InsertNode, leaves_the_link_that_points_out_of_the_list_as_it_is) {
    OpenElement elsewhere("elsewhere");
    OpenElement parent("p");
    parent.add_child("a");
    auto* last = new OpenElement("last");
    last->next_sibling = &elsewhere;
    parent.insert_node(last, parent.children.end());
    EXPECT_EQ(last->get_next_sibling(), &elsewhere);
    auto* first = new OpenElement("first");
    first->previous_sibling = &elsewhere;
    parent.insert_node(first, parent.children.begin());
    EXPECT_EQ(first->get_previous_sibling(), &elsewhere);
    EXPECT_EQ(to_line(&parent), "p{first a last}");
}

// Removing

TEST(RemoveChild, null_is_rejected_before_the_empty_check) {
    Document document(false);
    Element* root = build(document, "r");
    EXPECT_THROW_MESSAGE(root->remove_child(nullptr), std::invalid_argument,
                         "Can not remove nullptr pointer from Node");
    EXPECT_EQ(to_line(root), "r");
}

TEST(RemoveChild, null_is_rejected_and_the_tree_unchanged) {
    Document document(false);
    Element* root = build(document, "r(x=1){a \"t\"}");
    EXPECT_THROW_MESSAGE(root->remove_child(nullptr), std::invalid_argument,
                         "Can not remove nullptr pointer from Node");
    EXPECT_EQ(to_line(root), "r(x=1){a \"t\"}");
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, nothing_can_be_removed_from_a_node_without_children) {
    Document document(false);
    Element* root = build(document, "r{a{b} c}");
    Node* a = root->get_child("a");
    Node* c = root->get_child("c");
    EXPECT_THROW_MESSAGE(c->remove_child(a), std::invalid_argument,
                         "Can not remove when Node has no children");
    EXPECT_EQ(to_line(root), "r{a{b} c}");
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, nothing_can_be_removed_from_text_or_attributes) {
    Document document(false);
    Element* root = build(document, "r(x=1){a \"t\"}");
    for (Node* childless : {static_cast<Node*>(root->get_attribute("x")), root->get_child("")}) {
        EXPECT_THROW_MESSAGE(childless->remove_child(root->get_child("a")), std::invalid_argument,
                             "Can not remove when Node has no children");
        EXPECT_THROW_MESSAGE(childless->remove_child(nullptr), std::invalid_argument,
                             "Can not remove nullptr pointer from Node");
    }
    EXPECT_EQ(to_line(root), "r(x=1){a \"t\"}");
}

TEST(RemoveChild, of_the_only_child_empties_the_list) {
    Document document(false);
    Element* root = build(document, "r{a{b}}");
    root->remove_child(root->get_child("a"));
    EXPECT_EQ(to_line(root), "r");
    root->add_child("c");
    EXPECT_EQ(to_line(root), "r{c}");
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, relinks_the_neighbours_at_every_position) {
    const std::pair<std::string, std::string> rows[] = {
        {"a", "r{b \"t\" c}"}, {"b", "r{a \"t\" c}"}, {"", "r{a b c}"}, {"c", "r{a b \"t\"}"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first);
        Document document(false);
        Element* root = build(document, "r{a b \"t\" c}");
        root->remove_child(root->get_child(row.first));
        EXPECT_EQ(to_line(root), row.second);
        EXPECT_TRUE(links_agree(root));
    }
}

TEST(RemoveChild, relinks_the_neighbours_in_every_order_of_removal) {
    std::vector<int> order = {0, 1, 2, 3};
    do {
        Document document(false);
        Element* root = build(document, "r{a b c d}");
        const NodeList all = root->get_children();
        for (const int position : order) {
            root->remove_child(*std::next(all.begin(), position));
            EXPECT_TRUE(links_agree(root));
        }
        EXPECT_EQ(to_line(root), "r");
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(RemoveChild, destroys_the_whole_subtree_and_nothing_else) {
    Log log;
    Document document(false);
    Element* root = document.create_root_node("r");
    add_logged(log, *root, "before");
    LoggedElement* top = add_logged(log, *root, "top");
    add_logged(log, *root, "after");
    add_logged_text(log, *add_logged(log, *top, "lower"), "text");
    root->remove_child(top);
    EXPECT_EQ(log, (Log{"top 1 below r", "lower 1", "text 0"}));
    EXPECT_EQ(to_line(root), "r{before after}");
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, keeps_children_sorted) {
    Document document(true);
    Element* root = build(document, "r{d b a c}");
    root->remove_child(root->get_child("b"));
    root->add_child("bb");
    EXPECT_EQ(to_line(root), "r{a bb c d}");
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, removes_every_entry_of_a_node_that_was_linked_twice) {
    Log log;
    OpenElement parent("p");
    parent.add_child("a");
    LoggedElement* twice = add_logged(log, parent, "twice");
    parent.add_child("b");
    parent.children.insert(parent.at(1), twice);
    ASSERT_EQ(to_line(&parent), "p{a twice twice b}");
    parent.remove_child(twice);
    EXPECT_EQ(log.size(), 1U);
    EXPECT_EQ(to_line(&parent), "p{a b}");
    EXPECT_TRUE(links_agree(&parent));
}

TEST(RemoveChild, removes_every_entry_of_a_node_that_stands_at_an_end_as_well) {
    for (const bool is_at_front : {true, false}) {
        Log log;
        OpenElement parent("p");
        parent.add_child("a");
        LoggedElement* twice = add_logged(log, parent, "twice");
        parent.add_child("b");
        parent.children.insert(is_at_front ? parent.children.begin() : parent.children.end(), twice);
        parent.remove_child(twice);
        EXPECT_EQ(log.size(), 1U);
        EXPECT_EQ(to_line(&parent), "p{a b}");
    }
}

TEST(RemoveChild,
     takes_a_foreign_node_out_of_its_own_siblings_though_its_parent_still_lists_it_which_is_wanted) {
    Log log;
    OpenElement owner("owner");
    owner.add_child("a");
    LoggedElement* foreign = add_logged(log, owner, "foreign");
    owner.add_child("b");
    Document document(false);
    Element* root = build(document, "r{x y}");
    root->remove_child(foreign);
    EXPECT_EQ(log, (Log{"foreign 0 below owner"}));
    EXPECT_EQ(to_line(root), "r{x y}");
    EXPECT_EQ(owner.children.size(), 3U);
    owner.children.erase(owner.at(1));
    EXPECT_EQ(to_line(&owner), "owner{a b}");
    EXPECT_TRUE(links_agree(&owner));
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, by_a_parent_of_one_destroys_a_foreign_node_and_relinks_nothing) {
    Log log;
    OpenElement owner("owner");
    LoggedElement* foreign = add_logged(log, owner, "foreign");
    owner.add_child("b");
    Document document(false);
    Element* root = build(document, "r{x}");
    root->remove_child(foreign);
    EXPECT_EQ(log, (Log{"foreign 0 below owner"}));
    EXPECT_EQ(to_line(root), "r{x}");
    EXPECT_TRUE(links_agree(root));
    EXPECT_EQ(owner.children.size(), 2U);
    EXPECT_NE(owner.children.back()->get_previous_sibling(), nullptr);
    owner.children.pop_front();
}

TEST(RemoveChild, by_a_parent_of_one_destroys_a_node_without_siblings_and_keeps_its_own_child) {
    Document document(false);
    Element* root = build(document, "r{x}");
    root->remove_child(new Element("free", nullptr, false));
    EXPECT_EQ(to_line(root), "r{x}");
    EXPECT_TRUE(links_agree(root));
}

TEST(RemoveChild, of_a_deep_tree_needs_no_deep_stack) {
    Document document(false);
    build_chain(document, "n", deep);
    Element* root = document.get_root_node();
    on_small_stack([root] { root->remove_child(root->get_children().front()); });
    EXPECT_EQ(to_line(root), "n");
}

// Moving to the front

TEST(SetChildFirst, leaves_the_first_child_where_it_is) {
    Document document(false);
    Element* root = build(document, "r{a b c}");
    root->set_child_first(root->get_child("a"));
    EXPECT_EQ(to_line(root), "r{a b c}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SetChildFirst, moves_a_child_from_every_position) {
    const std::pair<std::string, std::string> rows[] = {{"b", "r{b a c}"}, {"c", "r{c a b}"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first);
        Document document(false);
        Element* root = build(document, "r{a b c}");
        Node* child = root->get_child(row.first);
        root->set_child_first(child);
        EXPECT_EQ(to_line(root), row.second);
        EXPECT_EQ(child, child_at(*root, 0));
        EXPECT_EQ(child->get_previous_sibling(), nullptr);
        EXPECT_TRUE(links_agree(root));
    }
}

TEST(SetChildFirst, swaps_two_children_and_leaves_an_only_child) {
    Document document(false);
    Element* root = build(document, "r{a \"t\"}");
    root->set_child_first(root->get_child(""));
    EXPECT_EQ(to_line(root), "r{\"t\" a}");
    EXPECT_TRUE(links_agree(root));
    root->remove_child(root->get_child("a"));
    root->set_child_first(root->get_child(""));
    EXPECT_EQ(to_line(root), "r{\"t\"}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SetChildFirst, ignores_that_the_parent_is_kept_sorted_which_is_wanted) {
    Document document(true);
    Element* root = build(document, "r{a b c}");
    root->set_child_first(root->get_child("c"));
    EXPECT_EQ(to_line(root), "r{c a b}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SetChildFirst, does_nothing_for_a_foreign_node_without_a_previous_sibling) {
    Document document(false);
    Document other(false);
    Element* root = build(document, "r{a b}");
    Element* owner = build(other, "owner{foreign}");
    root->set_child_first(owner->get_child("foreign"));
    EXPECT_EQ(to_line(root), "r{a b}");
    EXPECT_EQ(to_line(owner), "owner{foreign}");
    EXPECT_TRUE(links_agree(root));
}

TEST(SetChildFirst, takes_a_foreign_node_to_the_front_though_its_parent_still_lists_it_which_is_wanted) {
    OpenElement owner("owner");
    for (const char* name : {"a", "foreign", "b"})
        owner.add_child(name);
    Node* foreign = owner.get_child("foreign");
    Document document(false);
    Element* root = build(document, "r{x y}");
    root->set_child_first(foreign);
    EXPECT_EQ(to_line(root), "r{foreign x y}");
    EXPECT_EQ(foreign->get_next_sibling(), root->get_child("x"));
    EXPECT_EQ(root->get_child("x")->get_previous_sibling(), foreign);
    EXPECT_EQ(foreign->get_parent(), &owner);
    EXPECT_EQ(to_line(&owner), "owner{a foreign b}");
    owner.children.erase(owner.at(1));
    EXPECT_TRUE(links_agree(&owner));
}

TEST(SetChildFirst, makes_a_foreign_node_the_only_child_of_a_parent_without_children_which_is_wanted) {
    OpenElement owner("owner");
    for (const char* name : {"a", "foreign", "b"})
        owner.add_child(name);
    Node* foreign = owner.get_child("foreign");
    Document document(false);
    Element* root = build(document, "r");
    root->set_child_first(foreign);
    EXPECT_EQ(to_line(root), "r{foreign}");
    EXPECT_EQ(foreign->get_previous_sibling(), nullptr);
    EXPECT_EQ(foreign->get_next_sibling(), nullptr);
    owner.children.erase(owner.at(1));
    EXPECT_TRUE(links_agree(&owner));
}

// Importing

/// Notes what it is asked for and copies nothing.
class AskedNode : public BareNode {
public:
    using BareNode::BareNode;

    Node* get_deep_copy_of_node(bool deep_copy, Element* new_parent) const override {
        asked.emplace_back(deep_copy, new_parent);
        return answer;
    }

    mutable std::vector<std::pair<bool, Element*>> asked;
    Node* answer = nullptr;
};

TEST(ImportNode, asks_the_node_itself_for_a_copy_and_returns_its_answer) {
    Document document(false);
    Element* root = build(document, "r{a}");
    AskedNode node;
    EXPECT_EQ(root->import_node(&node, false), nullptr);
    node.answer = root;
    EXPECT_EQ(root->import_node(&node, true), root);
    EXPECT_EQ(node.asked, (std::vector<std::pair<bool, Element*>>{{false, root}, {true, root}}));
    EXPECT_EQ(to_line(root), "r{a}");
}

// Destruction

TEST(NodeDestructor, destroys_parents_before_their_children_first_to_last) {
    Log log;
    auto root = std::make_unique<LoggedElement>(log, "r", nullptr, false);
    LoggedElement* a = add_logged(log, *root, "a");
    LoggedElement* b = add_logged(log, *root, "b");
    add_logged(log, *root, "c");
    LoggedElement* a1 = add_logged(log, *a, "a1");
    add_logged(log, *a, "a2");
    add_logged_text(log, *a1, "a1 text");
    add_logged(log, *b, "b1");
    root.reset();
    EXPECT_EQ(log, (Log{"r 3", "a 2", "a1 1", "a1 text 0", "a2 0", "b 1", "b1 0", "c 0"}));
}

TEST(NodeDestructor, keeps_that_order_across_plain_nodes) {
    Log log;
    auto root = std::make_unique<Element>("r", nullptr, false);
    Element* plain = root->add_child("plain");
    add_logged(log, *plain, "a");
    plain->add_child_text("text");
    LoggedElement* b = add_logged(log, *plain->add_child("lower"), "b");
    add_logged(log, *b->add_child("lowest"), "c");
    add_logged(log, *root, "d");
    root.reset();
    EXPECT_EQ(log, (Log{"a 0", "b 1", "c 0", "d 0"}));
}

TEST(NodeDestructor, of_a_class_that_is_no_element_destroys_its_children_too) {
    Log log;
    auto root = std::make_unique<BareNode>(std::string("r"));
    auto* lower = new Logged<BareNode>(log, std::string("lower"));
    root->add_new_node(lower);
    lower->add_new_node(new LoggedElement(log, "lowest", nullptr, false));
    root.reset();
    EXPECT_EQ(log, (Log{"lower 1", "lowest 0"}));
}

TEST(NodeDestructor, passes_over_null_entries) {
    Log log;
    auto root = std::make_unique<OpenElement>("r");
    add_logged(log, *root, "a");
    add_logged(log, *root, "b");
    for (const int position : {2, 1, 0})
        root->children.insert(root->at(position), nullptr);
    root.reset();
    EXPECT_EQ(log, (Log{"a 0", "b 0"}));
}

TEST(NodeDestructor, passes_over_null_entries_below) {
    Log log;
    auto root = std::make_unique<OpenElement>("r");
    OpenElement* lower = link(*root, std::make_unique<OpenElement>("lower"));
    lower->add_new_node(new LoggedElement(log, "lowest", nullptr, false));
    lower->children.push_front(nullptr);
    lower->children.push_back(nullptr);
    root.reset();
    EXPECT_EQ(log, (Log{"lowest 0"}));
}

TEST(NodeDestructor, does_not_unlink_the_node_which_is_wanted) {
    Log log;
    OpenElement parent("p");
    parent.add_child("a");
    LoggedElement* child = add_logged(log, parent, "child");
    delete child;
    EXPECT_EQ(log, (Log{"child 0 below p"}));
    EXPECT_EQ(parent.children.size(), 2U);
    EXPECT_NE(parent.children.front()->get_next_sibling(), nullptr);
    parent.children.pop_back();
}

/// Removes its children itself, as a class may that counts them.
class TidyElement : public Element {
public:
    using Element::Element;

    TidyElement(const TidyElement&) = delete;
    TidyElement& operator=(const TidyElement&) = delete;

    ~TidyElement() override {
        for (Node* child : get_children())
            remove_child(child);
    }
};

TEST(NodeDestructor, lets_a_derived_class_remove_its_children_first) {
    Log log;
    auto root = std::make_unique<Element>("r", nullptr, false);
    TidyElement* tidy = link(*root, std::make_unique<TidyElement>("tidy", root.get(), false));
    add_logged(log, *add_logged(log, *tidy, "a"), "a1");
    add_logged(log, *tidy, "b");
    add_logged(log, *root, "c");
    root.reset();
    EXPECT_EQ(log, (Log{"a 1 below tidy", "a1 0", "b 0 below tidy", "c 0"}));
}

TEST(NodeDestructor, of_a_deep_tree_needs_no_deep_stack) {
    on_small_stack([] {
        Document document(false);
        build_chain(document, "n", deep);
    });
}

/// Counts destructions.
class CountedElement : public Element {
public:
    CountedElement(Element* owner, std::size_t& count_of_test)
        : Element("n", owner, false), count(count_of_test) {}

    CountedElement(const CountedElement&) = delete;
    CountedElement& operator=(const CountedElement&) = delete;

    ~CountedElement() override { ++count; }

private:
    std::size_t& count;
};

TEST(NodeDestructor, of_a_deep_tree_of_derived_nodes_needs_no_deep_stack) {
    std::size_t count = 0;
    on_small_stack([&count] {
        CountedElement root(nullptr, count);
        Element* lowest = &root;
        for (std::size_t level = 1; level < deep; ++level) {
            lowest->add_child_text("t");
            lowest = link(*lowest, std::make_unique<CountedElement>(lowest, count));
        }
    });
    EXPECT_EQ(count, deep);
}

TEST(NodeDestructor, of_a_wide_tree_visits_every_child) {
    std::size_t count = 0;
    {
        CountedElement root(nullptr, count);
        for (int i = 0; i < 1000; ++i) {
            Element* child = link(root, std::make_unique<CountedElement>(&root, count));
            for (int k = 0; k < 10; ++k)
                link(*child, std::make_unique<CountedElement>(child, count));
        }
    }
    EXPECT_EQ(count, 1U + 1000U + 10000U);
}

}  // namespace
