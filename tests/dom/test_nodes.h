// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_DOM_TEST_NODES_H
#define QUXML_TESTS_DOM_TEST_NODES_H

// Nodes that show more of themselves than the library's own, and short ways to link them.

#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dom/NodeAccess.h"
#include "quxml/Element.h"
#include "quxml/Node.h"
#include "quxml/TextNode.h"

namespace quxml_test {

/// The least that a class of nodes can be.
class BareNode : public quxml::Node {
public:
    using quxml::Node::keep_sorted;
    using quxml::Node::Node;

    void write_to_string(std::string& out, int /*indent*/) const override { out += name; }
    quxml::Node* get_deep_copy_of_node(bool /*deep*/, quxml::Element* /*parent*/) const override {
        return nullptr;
    }
};

/// An element whose fields the test can reach.
class OpenElement : public quxml::Element {
public:
    explicit OpenElement(const std::string& element_name, bool sorted = false)
        : quxml::Element(element_name, nullptr, sorted) {}

    using quxml::Node::children;
    using quxml::Node::keep_sorted;
    using quxml::Node::next_sibling;
    using quxml::Node::previous_sibling;

    quxml::NodeList::iterator at(int position) { return std::next(children.begin(), position); }

    quxml::Element* new_child(const std::string& child_name) {
        return new quxml::Element(child_name, this, false);
    }
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

using LoggedElement = Logged<quxml::Element>;
using LoggedText = Logged<quxml::TextNode>;

template <class NodeClass>
NodeClass* link(quxml::Node& parent, std::unique_ptr<NodeClass> child) {
    parent.add_new_node(child.get());
    return child.release();
}

inline LoggedElement* add_logged(Log& log, quxml::Element& parent, const std::string& name) {
    return link(parent, std::make_unique<LoggedElement>(log, name, &parent, false));
}

inline LoggedText* add_logged_text(Log& log, quxml::Element& parent, const std::string& name) {
    return link(parent, std::make_unique<LoggedText>(log, &parent, name));
}

/// Links a child at the end, whether or not the parent is kept sorted.
template <class NodeClass>
NodeClass* append(quxml::Node& parent, std::unique_ptr<NodeClass> child) {
    parent.insert_node(child.get(), quxml::NodeAccess::children(parent).end());
    return child.release();
}

inline quxml::Element* append_element(quxml::Element& parent, const std::string& name, bool sorted) {
    return append(parent, std::make_unique<quxml::Element>(name, &parent, sorted));
}

inline quxml::TextNode* append_text(quxml::Element& parent, const std::string& content) {
    quxml::TextNode* text = append(parent, std::make_unique<quxml::TextNode>(&parent, ""));
    text->set_content(content);
    return text;
}

inline quxml::Node* child_at(const quxml::Node& parent, int position) {
    const quxml::NodeList children = parent.get_children();
    return *std::next(children.begin(), position);
}

}  // namespace quxml_test

#endif
