// SPDX-License-Identifier: MIT
#ifndef QUXML_FUZZ_TREE_MODEL_H
#define QUXML_FUZZ_TREE_MODEL_H

// A plain model of trees: structs in vectors, no sibling links, every rule written out without regard to cost.

#include <list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "quxml/quxml.h"

namespace quxml_fuzz {

struct ModelNode {
    bool is_text = false;
    bool keep_sorted = false;
    std::string name;
    std::string content;                                          // of a text
    std::vector<std::pair<std::string, std::string>> attributes;  // of an element
    std::vector<std::unique_ptr<ModelNode>> children;

    std::string get_attribute_value(const std::string& attribute_name) const;
    void set_attribute(const std::string& attribute_name, const std::string& value);
    void remove_attribute(const std::string& attribute_name);

    /// Links a child: at the end or, if this node is kept sorted, before the first child that does not sort before it.
    /// \throws std::out_of_range as the library; nothing has been linked.
    ModelNode* add(std::unique_ptr<ModelNode> child);

    /// `add` with an element that inherits `keep_sorted`, or with a text.
    ModelNode* add_element(const std::string& element_name);
    ModelNode* add_text(const std::string& text);

    void remove(const ModelNode* child);
    void set_first(const ModelNode* child);

    /// \throws std::out_of_range as the library.
    void sort();
    void sort_recursively();

    /// Copies `source` into this element: its name, and attributes and everything below if `deep`.
    ModelNode* import(const ModelNode& source, bool deep);
    void copy_content(const ModelNode& source);
};

std::unique_ptr<ModelNode> make_model_element(const std::string& name, bool keep_sorted);

/// \throws std::out_of_range
bool is_model_sorted_before(const ModelNode* a, const ModelNode* b);

/// A node of the tree and its model.
struct Twin {
    quxml::Node* node;
    ModelNode* model;
};

/// Compares the tree with the model, links included, and lists both, parents before their children. Ends the program at
/// the first difference.
std::vector<Twin> compare_trees(quxml::Element* root, ModelNode* model);

}  // namespace quxml_fuzz

#endif
