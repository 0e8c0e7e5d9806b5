// SPDX-License-Identifier: MIT

// Covers copies of classes of an application's own, by example and against the plain procedure: link the copy,
// then its attributes, then its children one by one.

#include "quxml/Node.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "dom/NodeAccess.h"
#include "dom/test_nodes.h"
#include "quxml/Attribute.h"
#include "quxml/Document.h"
#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "support/check_links.h"
#include "support/expect_throw.h"
#include "support/tree_text.h"

namespace {

using quxml::Attribute;
using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::NodeAccess;
using quxml::NodeList;
using quxml::TextNode;
using quxml_test::append;
using quxml_test::append_element;
using quxml_test::append_text;
using quxml_test::build;
using quxml_test::links_agree;
using quxml_test::Log;
using quxml_test::to_line;

/// A tree with all that comparing wants to see: class, name, attributes, content and keep_sorted.
std::string describe(const Node* node) {
    std::string line = std::string(typeid(*node).name()) + (NodeAccess::keep_sorted(*node) ? "+" : "-");
    if (const auto* text = dynamic_cast<const TextNode*>(node))
        return line + to_line(text) + node->get_name();
    line += node->get_name();
    if (const auto* element = dynamic_cast<const Element*>(node)) {
        for (const Attribute* attribute : element->get_attributes())
            line += " " + to_line(attribute);
    }
    for (const Node* child : node->get_children())
        line += " {" + describe(child) + "}";
    return line;
}

// ---- Classes of an application's own ----

/// What the classes below have in common: they copy themselves in a way of their own.
class SelfCopying {
public:
    SelfCopying() = default;
    SelfCopying(const SelfCopying&) = delete;
    SelfCopying& operator=(const SelfCopying&) = delete;
    virtual ~SelfCopying() = default;
};

/// Copies its class too, and is linked with its item, so that it takes its place among its namesakes.
class StampedElement : public Element, public SelfCopying {
public:
    using Element::Element;

    Node* get_deep_copy_of_node(bool deep, Element* new_parent) const override {
        auto copy = std::make_unique<StampedElement>(get_name(), new_parent, NodeAccess::keep_sorted(*this));
        copy->set_attribute("item", get_attribute_value("item"));
        new_parent->add_new_node(copy.get());
        StampedElement* linked = copy.release();
        linked->set_attribute("deep", deep ? "1" : "0");
        for (Node* child : get_children())
            linked->import_node(child, deep);
        return linked;
    }
};

/// Leaves two copies of itself around the parent's text.
class TwiceElement : public Element, public SelfCopying {
public:
    using Element::Element;

    Node* get_deep_copy_of_node(bool deep, Element* new_parent) const override {
        Element::get_deep_copy_of_node(false, new_parent);
        new_parent->add_child_text("between");
        return Element::get_deep_copy_of_node(deep, new_parent);
    }
};

/// Leaves no copy, and removes the parent's last child.
class GreedyText : public TextNode, public SelfCopying {
public:
    using TextNode::TextNode;

    Node* get_deep_copy_of_node(bool /*deep*/, Element* new_parent) const override {
        const NodeList present = new_parent->get_children();
        if (!present.empty())
            new_parent->remove_child(present.back());
        return nullptr;
    }
};

/// Notes what the tree looks like to which its copy is going to be added.
class NosyElement : public Element, public SelfCopying {
public:
    NosyElement(const std::string& element_name, Element* owner, std::vector<std::string>& log_of_test)
        : Element(element_name, owner, false), log(log_of_test) {}

    Node* get_deep_copy_of_node(bool deep, Element* new_parent) const override {
        const Element* top = new_parent;
        while (top->get_parent() != nullptr)
            top = top->get_parent();
        log.push_back(to_line(top) + (links_agree(top) ? "" : " with broken links"));
        return Element::get_deep_copy_of_node(deep, new_parent);
    }

private:
    std::vector<std::string>& log;
};

/// Adds a child with its own item to its copy's grandparent first.
class MeddlingElement : public Element, public SelfCopying {
public:
    using Element::Element;

    Node* get_deep_copy_of_node(bool deep, Element* new_parent) const override {
        if (Element* grandparent = new_parent->get_parent()) {
            auto child = std::make_unique<Element>("b", grandparent, false);
            child->set_attribute("item", get_attribute_value("item"));
            grandparent->add_new_node(child.get());
            static_cast<void>(child.release());
        }
        return Element::get_deep_copy_of_node(deep, new_parent);
    }
};

/// Cannot be copied.
class StubbornElement : public Element, public SelfCopying {
public:
    using Element::Element;

    Node* get_deep_copy_of_node(bool /*deep*/, Element* /*new_parent*/) const override {
        throw std::runtime_error("stubborn");
    }
};

/// A class that overrides nothing.
class PlainlyDerived : public Element {
public:
    using Element::Element;
};

class PlainlyDerivedText : public TextNode {
public:
    using TextNode::TextNode;
};

// ---- The plain procedure ----

void copy_content_plainly(const Element& source, Element& copy);

Node* copy_plainly(const Node& source, Element& parent) {
    if (dynamic_cast<const SelfCopying*>(&source) != nullptr)
        return source.get_deep_copy_of_node(true, &parent);
    if (const auto* text = dynamic_cast<const TextNode*>(&source)) {
        auto* copy = new TextNode(&parent, "");
        copy->set_content(text->get_content());
        parent.add_new_node(copy);
        return copy;
    }
    auto* copy = new Element(source.get_name(), &parent, NodeAccess::keep_sorted(source));
    parent.add_new_node(copy);
    copy_content_plainly(dynamic_cast<const Element&>(source), *copy);
    return copy;
}

void copy_content_plainly(const Element& source, Element& copy) {
    for (const Attribute* attribute : source.get_attributes())
        copy.set_attribute(attribute->get_name(), attribute->get_value());
    for (const Node* child : source.get_children())
        copy_plainly(*child, copy);
}

/// What the two ways of copying made of the same source.
struct TwoCopies {
    std::string copied;
    std::string plain;
    std::vector<std::string> seen_in_copying;
    std::vector<std::string> seen_in_plain;
};

using Log = std::vector<std::string>;

template <class Work>
std::string outcome(Work work) {
    try {
        work();
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

/// Copies `source` into two like parents, one way into each, and compares. `log` is what nosy elements write.
::testing::AssertionResult copies_agree(const Element& source, const Element& parent, Log& log) {
    const std::string before = describe(&source);
    Document first(NodeAccess::keep_sorted(parent));
    Document second(NodeAccess::keep_sorted(parent));
    for (Document* document : {&first, &second}) {
        Element* root = document->create_root_node(parent.get_name());
        for (const Node* child : parent.get_children())
            append_element(*root, child->get_name(), false)
                ->set_attribute("item", dynamic_cast<const Element*>(child)->get_attribute_value("item"));
    }
    log.clear();
    const std::string copied = outcome([&] { first.get_root_node()->import_node(&source, true); });
    const Log seen = log;
    log.clear();
    const std::string plain = outcome([&] { copy_plainly(source, *second.get_root_node()); });
    const std::string is = describe(first.get_root_node()) + copied;
    const std::string should_be = describe(second.get_root_node()) + plain;
    if (is != should_be)
        return ::testing::AssertionFailure()
               << to_line(&source) << " was copied to\n  " << is << "\nand should be\n  " << should_be;
    if (seen != log)
        return ::testing::AssertionFailure() << "on the way was seen\n  " << ::testing::PrintToString(seen)
                                             << "\nand should be\n  " << ::testing::PrintToString(log);
    if (describe(&source) != before)
        return ::testing::AssertionFailure() << "the source was changed from\n  " << before;
    return links_agree(first.get_root_node());
}

/// The same for a copy as the root of a document.
::testing::AssertionResult root_copies_agree(const Element& source, bool sorted, Log& log) {
    Document first(sorted);
    Document second(sorted);
    log.clear();
    const std::string copied = outcome([&] { first.create_root_node_by_import(&source, true); });
    const Log seen = log;
    log.clear();
    Element* root = second.create_root_node(source.get_name());
    const std::string plain = outcome([&] { copy_content_plainly(source, *root); });
    const std::string is = describe(first.get_root_node()) + copied;
    const std::string should_be = describe(root) + plain;
    if (is != should_be)
        return ::testing::AssertionFailure()
               << to_line(&source) << " was copied to\n  " << is << "\nand should be\n  " << should_be;
    if (seen != log)
        return ::testing::AssertionFailure() << "on the way was seen\n  " << ::testing::PrintToString(seen)
                                             << "\nand should be\n  " << ::testing::PrintToString(log);
    return links_agree(first.get_root_node());
}

// ---- Against the plain procedure ----

const std::vector<std::string> names = {"", "a", "a", "b", "b", "ab", "B", "\xc3\xa4"};
const std::vector<std::string> items = {"", "1", "2", "10", "x", "99999999999"};

enum class Kind { element, text, derived, derived_text, stamped, twice, greedy, nosy, meddling, stubborn };

const std::vector<Kind> own_kinds = {Kind::element, Kind::element, Kind::element, Kind::text};
const std::vector<Kind> all_kinds = {Kind::element, Kind::element, Kind::element,      Kind::element,
                                     Kind::text,    Kind::derived, Kind::derived_text, Kind::stamped,
                                     Kind::twice,   Kind::greedy,  Kind::nosy,         Kind::meddling};
const std::vector<Kind> failing_kinds = {Kind::element, Kind::element, Kind::text,    Kind::element,
                                         Kind::element, Kind::nosy,    Kind::stubborn};

/// Makes trees at random, the same on every machine.
class Grower {
public:
    Grower(unsigned seed, const std::vector<Kind>& kinds_of_test, Log& log_of_test)
        : engine(seed), kinds(kinds_of_test), log(log_of_test) {}

    bool flip() { return below(2) == 0; }
    std::size_t below(std::size_t limit) { return engine() % limit; }

    std::unique_ptr<Element> grow_element(std::size_t levels) {
        auto element = std::make_unique<Element>(pick(names), nullptr, flip());
        grow(*element, levels);
        return element;
    }

    void grow(Element& element, std::size_t levels) {
        if (flip())
            element.set_attribute("item", pick(items));
        element.set_attribute("n", std::to_string(++count));
        if (below(8) == 0)
            add_many_attributes(element);
        for (std::size_t i = levels == 0 ? 0 : below(6); i > 0; --i)
            add(element, levels - 1);
    }

private:
    const std::string& pick(const std::vector<std::string>& texts) { return texts[below(texts.size())]; }

    void add(Element& parent, std::size_t levels) {
        const std::string& name = pick(names);
        switch (kinds[below(kinds.size())]) {
            case Kind::element:
                return grow(*append_element(parent, name, flip()), levels);
            case Kind::text:
                return add_text(parent, std::make_unique<TextNode>(&parent, name));
            case Kind::derived:
                return grow(*append(parent, std::make_unique<PlainlyDerived>(name, &parent, flip())), levels);
            case Kind::derived_text:
                return add_text(parent, std::make_unique<PlainlyDerivedText>(&parent, name));
            case Kind::stamped:
                return grow(*append(parent, std::make_unique<StampedElement>(name, &parent, flip())), levels);
            case Kind::twice:
                return grow(*append(parent, std::make_unique<TwiceElement>(name, &parent, flip())), levels);
            case Kind::greedy:
                return add_text(parent, std::make_unique<GreedyText>(&parent, name));
            case Kind::nosy:
                return grow(*append(parent, std::make_unique<NosyElement>(name, &parent, log)), levels);
            case Kind::meddling:
                return grow(*append(parent, std::make_unique<MeddlingElement>(name, &parent, flip())),
                            levels);
            case Kind::stubborn:
                append(parent, std::make_unique<StubbornElement>(name, &parent, false));
        }
    }

    /// Some get the name of another one, as renaming may do.
    void add_many_attributes(Element& element) {
        for (std::size_t i = below(100); i > 0; --i) {
            const std::string name = "x" + std::to_string(i);
            element.set_attribute(name, std::to_string(++count));
            if (below(4) == 0)
                element.get_attribute(name)->set_name("x" + std::to_string(below(100)));
        }
    }

    template <class Text>
    void add_text(Element& parent, std::unique_ptr<Text> text) {
        append(parent, std::move(text))->set_content(std::to_string(++count));
    }

    std::mt19937 engine;
    const std::vector<Kind>& kinds;
    Log& log;
    int count = 0;
};

void compare_random_copies(const std::vector<Kind>& kinds) {
    for (unsigned seed = 1; seed <= 500; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Log log;
        Grower grower(seed, kinds, log);
        const std::unique_ptr<Element> source = grower.grow_element(1 + grower.below(4));
        const Element empty("p", nullptr, seed % 2 == 0);
        ASSERT_TRUE(copies_agree(*source, empty, log));
        ASSERT_TRUE(root_copies_agree(*source, seed % 2 == 0, log));
    }
}

TEST(Copies, agree_with_the_plain_procedure_for_elements_and_texts) {
    compare_random_copies(own_kinds);
}

TEST(Copies, agree_with_the_plain_procedure_for_derived_classes) {
    compare_random_copies(all_kinds);
}

TEST(Copies, agree_with_the_plain_procedure_when_one_fails) {
    compare_random_copies(failing_kinds);
}

TEST(Copies, agree_with_the_plain_procedure_among_other_children) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Log log;
        Grower grower(seed, own_kinds, log);
        const std::unique_ptr<Element> source = grower.grow_element(2);
        Element parent("p", nullptr, seed % 2 == 0);
        for (const char* item : {"", "1", "2"}) {
            for (const char* name : {"a", "ab", "b"})
                parent.add_child(name, item);
        }
        ASSERT_TRUE(copies_agree(*source, parent, log));
    }
}

TEST(Copies, agree_with_the_plain_procedure_for_every_sequence_of_five_children) {
    const std::vector<std::string> choices = {"a", "b", "c", "", "text"};
    Log log;
    for (int sequence = 0; sequence < 5 * 5 * 5 * 5 * 5; ++sequence) {
        Element source("s", nullptr, true);
        int rest = sequence;
        for (int i = 0; i < 5; ++i, rest /= 5) {
            const std::string& choice = choices[static_cast<std::size_t>(rest % 5)];
            if (choice == "text") {
                append_text(source, std::to_string(i));
            } else {
                append_element(source, choice, false)->set_attribute("item", std::to_string(9 - i));
            }
        }
        ASSERT_TRUE(root_copies_agree(source, true, log)) << "sequence " << sequence;
    }
}

// ---- Derived classes, by example ----

TEST(CopyOfADerivedClass, that_overrides_nothing_is_a_plain_element) {
    Document document(false);
    Element* root = build(document, "r");
    Element source("s", nullptr, false);
    auto* derived = append(source, std::make_unique<PlainlyDerived>("d", &source, true));
    derived->set_attribute("a", "1");
    derived->add_child("b");
    root->import_node(&source, true);
    EXPECT_EQ(to_line(root), "r{s{d(a=1){b}}}");
    const Node* copy = root->get_child("s")->get_child("d");
    EXPECT_EQ(typeid(*copy), typeid(Element));
}

TEST(CopyOfADerivedClass, copies_itself_at_every_level_always_deep) {
    Document document(false);
    Element* root = build(document, "r");
    Element source("s", nullptr, false);
    Element* lower = source.add_child("l");
    append(*lower, std::make_unique<StampedElement>("d", lower, false))->add_child("b");
    root->import_node(&source, true);
    EXPECT_EQ(to_line(root), "r{s{l{d(item='',deep=1){b}}}}");
    const Node* copy = root->get_child("s")->get_child("l")->get_child("d");
    EXPECT_EQ(typeid(*copy), typeid(StampedElement));
}

TEST(CopyOfADerivedClass, is_asked_itself_by_import_node) {
    Document document(false);
    Element* root = build(document, "r");
    const StampedElement source("d", nullptr, false);
    root->import_node(&source, false);
    EXPECT_EQ(to_line(root), "r{d(item='',deep=0)}");
}

TEST(CopyOfADerivedClass, as_a_root_is_a_plain_element) {
    StampedElement source("d", nullptr, false);
    source.set_attribute("a", "1");
    append(source, std::make_unique<StampedElement>("e", &source, false));
    Document document(false);
    const Element* root = document.create_root_node_by_import(&source, true);
    EXPECT_EQ(to_line(root), "d(a=1){e(item='',deep=1)}");
    EXPECT_EQ(typeid(*root), typeid(Element));
}

TEST(CopyOfADerivedClass, finds_its_siblings_already_sorted) {
    Log log;
    Element source("s", nullptr, true);
    for (const char* name : {"c", "a", "b"})
        append_element(source, name, false);
    append(source, std::make_unique<NosyElement>("n", &source, log));
    append_element(source, "0", false);
    Document document(false);
    Element* root = document.create_root_node("r");
    root->import_node(&source, true);
    EXPECT_EQ(log, (Log{"r{s{a b c}}"}));
    EXPECT_EQ(to_line(root), "r{s{0 a b c n}}");
    EXPECT_TRUE(links_agree(root));
}

TEST(CopyOfADerivedClass, finds_its_ancestors_siblings_already_sorted) {
    Log log;
    Element source("s", nullptr, true);
    for (const char* name : {"c", "b"})
        append_element(source, name, false);
    Element* lower = append_element(source, "a", false);
    append(*lower, std::make_unique<NosyElement>("n", lower, log));
    append_element(source, "0", false);
    Document document(false);
    Element* root = document.create_root_node("r");
    root->import_node(&source, true);
    EXPECT_EQ(log, (Log{"r{s{a b c}}"}));
    EXPECT_EQ(to_line(root), "r{s{0 a{n} b c}}");
    EXPECT_TRUE(links_agree(root));
}

TEST(CopyOfADerivedClass, may_add_to_its_copys_ancestors) {
    Element source("s", nullptr, true);
    append_element(source, "c", false);
    append_element(source, "b", false)->set_attribute("item", "5");
    Element* lower = append_element(source, "a", false);
    append(*lower, std::make_unique<MeddlingElement>("m", lower, false))->set_attribute("item", "9");
    Document document(false);
    Element* root = document.create_root_node("r");
    root->import_node(&source, true);
    EXPECT_EQ(to_line(root), "r{s{a{m(item=9)} b(item=5) b(item=9) c}}");
    EXPECT_TRUE(links_agree(root));
}

TEST(CopyOfADerivedClass, that_fails_leaves_what_had_been_copied) {
    Element source("s", nullptr, true);
    source.set_attribute("a", "1");
    for (const char* name : {"c", "b"})
        append_element(source, name, false);
    Element* lower = append_element(source, "a", true);
    append_element(*lower, "z", false);
    append_element(*lower, "y", false);
    append(*lower, std::make_unique<StubbornElement>("x", lower, false));
    append_element(source, "never", false);

    Document document(false);
    Element* root = document.create_root_node("r");
    EXPECT_THROW_MESSAGE(root->import_node(&source, true), std::runtime_error, "stubborn");
    EXPECT_EQ(to_line(root), "r{s(a=1){a{y z} b c}}");
    EXPECT_TRUE(links_agree(root));

    EXPECT_THROW_MESSAGE(document.create_root_node_by_import(&source, true), std::runtime_error, "stubborn");
    EXPECT_EQ(to_line(document.get_root_node()), "s(a=1){c b a{y z}}");
    EXPECT_TRUE(links_agree(document.get_root_node()));
}

/// Adds a child to its own parent whenever it is copied.
class GrowingElement : public Element {
public:
    using Element::Element;

    Node* get_deep_copy_of_node(bool deep, Element* new_parent) const override {
        get_parent()->add_child("grown");
        return Element::get_deep_copy_of_node(deep, new_parent);
    }
};

TEST(CopyOfADerivedClass, may_add_to_the_source_without_adding_to_the_copy) {
    Element source("s", nullptr, false);
    append(source, std::make_unique<GrowingElement>("g", &source, false));
    append_element(source, "a", false);
    Document document(false);
    Element* root = document.create_root_node("r");
    root->import_node(&source, true);
    EXPECT_EQ(to_line(root), "r{s{g a}}");
    EXPECT_EQ(to_line(&source), "s{g a grown}");
    document.create_root_node_by_import(&source, true);
    EXPECT_EQ(to_line(document.get_root_node()), "s{g a grown}");
    EXPECT_EQ(to_line(&source), "s{g a grown grown}");
}

}  // namespace
