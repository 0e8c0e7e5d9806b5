// SPDX-License-Identifier: MIT
#include "tree_input.h"

#include <algorithm>
#include <cstddef>

namespace quxml_fuzz {

namespace {

using quxml::Document;
using quxml::Element;
using quxml::Node;

const char* const word_characters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

class TreeBuilder {
public:
    TreeBuilder(const std::string& tree_input, Element* root) : input(tree_input), at(0), current(root) {}

    void build() {
        while (at < input.size())
            take_next();
    }

private:
    void take_next() {
        const char c = input[at];
        if (std::string(word_characters).find(c) != std::string::npos) {
            enter(take_word());
            return;
        }
        ++at;
        if (c == '\'')
            enter(take_until('\''));
        else if (c == '"')
            current->add_child_text(take_until('"'));
        else if (c == '@')
            set_attribute();
        else if (c == '.')
            leave();
    }

    void enter(const std::string& name) { current = current->add_child(name); }

    void leave() {
        if (current->get_parent() != nullptr)
            current = current->get_parent();
    }

    void set_attribute() {
        const std::string name = take_until('=');
        current->set_attribute(name, take_until(';'));
    }

    std::string take_word() {
        const std::size_t begin = at;
        at = std::min(input.find_first_not_of(word_characters, at), input.size());
        return input.substr(begin, at - begin);
    }

    std::string take_until(char end) {
        const std::size_t begin = at;
        const std::size_t found = std::min(input.find(end, at), input.size());
        at = std::min(found + 1, input.size());
        return input.substr(begin, found - begin);
    }

    const std::string& input;
    std::size_t at;
    Element* current;
};

std::string get_first_line(const std::string& input) {
    return input.substr(0, input.find('\n'));
}

std::string get_other_lines(const std::string& input) {
    const std::size_t line_feed = input.find('\n');
    return line_feed == std::string::npos ? std::string() : input.substr(line_feed + 1);
}

}  // namespace

Document build_tree(const std::string& input) {
    Document document(input.substr(0, 1) == "!");
    TreeBuilder(input, document.create_root_node("r")).build();
    return document;
}

PathAndTree::PathAndTree(const std::string& input)
    : path(get_first_line(input)), document(build_tree(get_other_lines(input))) {}

std::vector<Node*> list_nodes(Node* node) {
    std::vector<Node*> nodes(1, node);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const quxml::NodeList children = nodes[i]->get_children();
        nodes.insert(nodes.end(), children.begin(), children.end());
    }
    return nodes;
}

}  // namespace quxml_fuzz
