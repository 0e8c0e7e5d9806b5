// SPDX-License-Identifier: MIT

// Covers documents as owners of a tree: creating, setting and replacing the root, and moving. Roots made by
// copying are covered with the copies.

#include "quxml/Document.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "support/check_links.h"
#include "support/tree_text.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml_test::build;
using quxml_test::links_agree;
using quxml_test::to_line;

static_assert(!std::is_default_constructible<Document>::value, "whether to keep sorted is always said");
static_assert(std::is_constructible<Document, bool>::value, "a document begins with that choice");
static_assert(!std::is_copy_constructible<Document>::value, "a tree has one owner");
static_assert(!std::is_copy_assignable<Document>::value, "a tree has one owner");
static_assert(std::is_nothrow_move_constructible<Document>::value, "a tree can change its owner");
static_assert(std::is_nothrow_move_assignable<Document>::value, "a tree can change its owner");

/// Notes its name when it is destroyed.
class LoggedElement : public Element {
public:
    LoggedElement(const std::string& element_name, std::vector<std::string>& log_of_test)
        : Element(element_name, nullptr, false), log(log_of_test) {}

    LoggedElement(const LoggedElement&) = delete;
    LoggedElement& operator=(const LoggedElement&) = delete;

    ~LoggedElement() override { log.push_back(get_name()); }

private:
    std::vector<std::string>& log;
};

using Log = std::vector<std::string>;

/// Whether new roots of the document keep their children sorted; replaces the root.
bool keeps_sorted(Document& document) {
    return to_line(build(document, "r{b a}")) == "r{a b}";
}

TEST(Document, begins_without_a_root) {
    EXPECT_EQ(Document(false).get_root_node(), nullptr);
    EXPECT_EQ(Document(true).get_root_node(), nullptr);
}

TEST(Document, can_be_shared) {
    const auto document = std::make_shared<Document>(true);
    EXPECT_EQ(document->get_root_node(), nullptr);
    EXPECT_TRUE(keeps_sorted(*document));
}

TEST(Document, destroys_its_tree) {
    Log log;
    {
        Document document(false);
        auto* root = new LoggedElement("r", log);
        document.set_root_node(root);
        root->add_new_node(new LoggedElement("a", log));
    }
    EXPECT_EQ(log, (Log{"r", "a"}));
}

TEST(CreateRootNode, creates_an_element_without_parent_and_content) {
    Document document(false);
    Element* root = document.create_root_node("r");
    EXPECT_EQ(document.get_root_node(), root);
    EXPECT_EQ(root->get_name(), "r");
    EXPECT_EQ(root->get_parent(), nullptr);
    EXPECT_EQ(root->get_previous_sibling(), nullptr);
    EXPECT_EQ(root->get_next_sibling(), nullptr);
    EXPECT_EQ(to_line(root), "r");
}

TEST(CreateRootNode, gives_the_root_whether_to_keep_sorted) {
    Document unsorted(false);
    Document sorted(true);
    EXPECT_FALSE(keeps_sorted(unsorted));
    EXPECT_TRUE(keeps_sorted(sorted));
}

TEST(CreateRootNode, destroys_the_former_root) {
    Log log;
    Document document(false);
    document.set_root_node(new LoggedElement("former", log));
    Element* root = document.create_root_node("second");
    EXPECT_EQ(log, (Log{"former"}));
    EXPECT_EQ(document.get_root_node(), root);
    EXPECT_EQ(to_line(document.get_root_node()), "second");
}

TEST(CreateRootNode, accepts_any_name) {
    Document document(false);
    EXPECT_EQ(document.create_root_node("")->get_name(), "");
    EXPECT_EQ(document.create_root_node(std::string("a\0b", 3))->get_name(), std::string("a\0b", 3));
}

TEST(CreateRootNode, accepts_the_name_of_the_former_root) {
    Document document(false);
    document.create_root_node("r");
    document.create_root_node(document.get_root_node()->get_name());
    EXPECT_EQ(to_line(document.get_root_node()), "r");
}

TEST(SetRootNode, leaves_the_former_root_to_the_caller_which_is_wanted) {
    Log log;
    std::unique_ptr<Element> former;
    {
        Document document(false);
        former = std::make_unique<LoggedElement>("former", log);
        document.set_root_node(former.get());
        former->add_child("a");
        auto* root = new LoggedElement("new", log);
        document.set_root_node(root);
        EXPECT_EQ(document.get_root_node(), root);
        EXPECT_EQ(log, Log());
        EXPECT_EQ(to_line(former.get()), "former{a}");
    }
    EXPECT_EQ(log, (Log{"new"}));
    former.reset();
    EXPECT_EQ(log, (Log{"new", "former"}));
}

TEST(SetRootNode, does_not_touch_the_parent_of_the_new_root_which_is_wanted) {
    Element parent("p", nullptr, false);
    auto* root = new Element("r", &parent, true);
    Document document(false);
    document.set_root_node(root);
    EXPECT_EQ(root->get_parent(), &parent);
    root->add_child("b");
    root->add_child("a");
    EXPECT_EQ(to_line(root), "r{a b}") << "the root keeps its own keep_sorted";
}

TEST(SetRootNode, accepts_null) {
    Document document(false);
    const std::unique_ptr<Element> former(document.create_root_node("r"));
    document.set_root_node(nullptr);
    EXPECT_EQ(document.get_root_node(), nullptr);
    document.create_root_node("again");
    EXPECT_EQ(to_line(document.get_root_node()), "again");
    EXPECT_EQ(to_line(former.get()), "r");
}

TEST(MoveConstructor, takes_the_root_and_whether_to_keep_sorted) {
    for (const bool sorted : {false, true}) {
        Document source(sorted);
        Element* root = build(source, "r{a}");
        Document document(std::move(source));
        EXPECT_EQ(document.get_root_node(), root);
        EXPECT_EQ(to_line(root), "r{a}");
        // NOLINTNEXTLINE(bugprone-use-after-move,clang-analyzer-cplusplus.Move): documented
        EXPECT_EQ(source.get_root_node(), nullptr);
        EXPECT_EQ(keeps_sorted(document), sorted);
        // NOLINTNEXTLINE(bugprone-use-after-move,clang-analyzer-cplusplus.Move): documented
        EXPECT_EQ(keeps_sorted(source), sorted) << "the source keeps its own";
    }
}

TEST(MoveConstructor, accepts_a_document_without_a_root) {
    Document source(false);
    const Document document(std::move(source));
    EXPECT_EQ(document.get_root_node(), nullptr);
}

TEST(MoveConstructor, leaves_one_owner) {
    Log log;
    {
        Document source(false);
        source.set_root_node(new LoggedElement("r", log));
        { const Document document(std::move(source)); }
        EXPECT_EQ(log, (Log{"r"}));
    }
    EXPECT_EQ(log, (Log{"r"}));
}

TEST(MoveAssignment, exchanges_the_roots_which_is_wanted) {
    Log log;
    {
        Document document(false);
        {
            Document source(false);
            document.set_root_node(new LoggedElement("former", log));
            auto* root = new LoggedElement("taken", log);
            source.set_root_node(root);
            const Document* returned = &(document = std::move(source));
            EXPECT_EQ(returned, &document);
            EXPECT_EQ(document.get_root_node(), root);
            // NOLINTNEXTLINE(bugprone-use-after-move,clang-analyzer-cplusplus.Move): documented
            EXPECT_EQ(to_line(source.get_root_node()), "former");
            EXPECT_EQ(log, Log());
        }
        EXPECT_EQ(log, (Log{"former"})) << "the source destroys it with itself";
    }
    EXPECT_EQ(log, (Log{"former", "taken"}));
}

TEST(MoveAssignment, copies_whether_to_keep_sorted) {
    for (const bool sorted : {false, true}) {
        Document document(!sorted);
        Document source(sorted);
        document = std::move(source);
        EXPECT_EQ(keeps_sorted(document), sorted);
        // NOLINTNEXTLINE(bugprone-use-after-move,clang-analyzer-cplusplus.Move): documented
        EXPECT_EQ(keeps_sorted(source), sorted) << "the source keeps its own";
    }
}

TEST(MoveAssignment, works_without_a_root_on_either_side) {
    Document document(false);
    Document source(false);
    document = std::move(source);
    EXPECT_EQ(document.get_root_node(), nullptr);
    Document full(false);
    Element* root = full.create_root_node("r");
    document = std::move(full);
    EXPECT_EQ(document.get_root_node(), root);
    // NOLINTNEXTLINE(bugprone-use-after-move,clang-analyzer-cplusplus.Move): documented
    EXPECT_EQ(full.get_root_node(), nullptr);
    document = Document(true);
    EXPECT_EQ(document.get_root_node(), nullptr);
    EXPECT_TRUE(keeps_sorted(document));
}

TEST(MoveAssignment, to_itself_does_nothing) {
    for (const bool sorted : {false, true}) {
        Document document(sorted);
        Element* root = document.create_root_node("r");
        Document& same = document;
        EXPECT_EQ(&(document = std::move(same)), &document);
        EXPECT_EQ(document.get_root_node(), root);
        EXPECT_EQ(to_line(root), "r");
        EXPECT_TRUE(links_agree(root));
        EXPECT_EQ(keeps_sorted(document), sorted);
    }
}

}  // namespace
