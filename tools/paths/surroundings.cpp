// SPDX-License-Identifier: MIT
#include "paths/surroundings.h"

#include <quxml/Attribute.h>

#include "trees/text.h"

namespace tool {

const quxml::Element* to_element(const quxml::Node* node) {
    return dynamic_cast<const quxml::Element*>(node);
}

namespace {

void add_attributes(const quxml::Node* node, DistinctWords& words) {
    if (const quxml::Element* element = to_element(node))
        for (const quxml::Attribute* attribute : element->get_attributes())
            words.add(attribute->get_name());
}

}  // namespace

DistinctWords get_attributes(const Nodes& nodes) {
    DistinctWords words;
    for (const quxml::Node* node : nodes)
        add_attributes(node, words);
    return words;
}

DistinctWords get_values(const Nodes& nodes, const std::string& attribute) {
    DistinctWords words;
    for (const quxml::Node* node : nodes) {
        const quxml::Element* element = to_element(node);
        if (element != nullptr && element->get_attribute(attribute) != nullptr)
            words.add(element->get_attribute_value(attribute));
    }
    return words;
}

Nodes get_children(const Nodes& nodes) {
    Nodes children;
    for (const quxml::Node* node : nodes) {
        for (quxml::Node* child : node->get_children()) {
            if (to_element(child) != nullptr)
                children.push_back(child);
        }
    }
    return children;
}

Nodes get_all(const Nodes& nodes) {
    Nodes all;
    Nodes pending(nodes.rbegin(), nodes.rend());
    while (!pending.empty()) {
        quxml::Node* const node = pending.back();
        pending.pop_back();
        if (to_element(node) == nullptr)
            continue;
        all.push_back(node);
        const quxml::NodeList children = node->get_children();
        pending.insert(pending.end(), children.rbegin(), children.rend());
    }
    return all;
}

DistinctWords get_names(const Nodes& nodes) {
    DistinctWords words;
    for (const quxml::Node* node : nodes)
        words.add(node->get_name());
    return words;
}

DistinctWords get_texts(const Nodes& nodes, const std::string& name) {
    DistinctWords words;
    for (const quxml::Node* node : nodes) {
        if (node->get_name() == name)
            words.add(get_text(*node));
    }
    return words;
}

}  // namespace tool
