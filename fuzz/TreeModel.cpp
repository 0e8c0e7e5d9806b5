// SPDX-License-Identifier: MIT
#include "TreeModel.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

#include "check.h"

namespace quxml_fuzz {

using quxml::Attribute;
using quxml::Element;
using quxml::Node;
using quxml::NodeList;
using quxml::TextNode;

namespace {

auto find_model_attribute(ModelNode& node, const std::string& name) {
    return std::find_if(node.attributes.begin(), node.attributes.end(),
                        [&name](const auto& attribute) { return attribute.first == name; });
}

auto find_model_child(ModelNode& node, const ModelNode* child) {
    return std::find_if(node.children.begin(), node.children.end(),
                        [child](const auto& other) { return other.get() == child; });
}

/// Reads a number by the standard library, whose libraries word their errors differently.
int read_number(const std::string& text) {
    try {
        return std::stoi(text);
    } catch (const std::out_of_range&) {
        throw std::out_of_range("stoi");
    }
}

}  // namespace

std::unique_ptr<ModelNode> make_model_element(const std::string& name, bool keep_sorted) {
    auto element = std::make_unique<ModelNode>();
    element->name = name;
    element->keep_sorted = keep_sorted;
    return element;
}

bool is_model_sorted_before(const ModelNode* a, const ModelNode* b) {
    if (a->name != b->name)
        return a->name.compare(b->name) < 0;
    if (a->is_text || b->is_text)
        return false;
    const std::string item = a->get_attribute_value("item");
    const std::string other_item = b->get_attribute_value("item");
    if (item.empty() || other_item.empty())
        return true;
    try {
        const int number = read_number(item);
        const int other_number = read_number(other_item);
        return number < other_number;
    } catch (const std::invalid_argument&) {
        return item.compare(other_item) < 0;
    }
}

std::string ModelNode::get_attribute_value(const std::string& attribute_name) const {
    for (const auto& attribute : attributes) {
        if (attribute.first == attribute_name)
            return attribute.second;
    }
    return "";
}

void ModelNode::set_attribute(const std::string& attribute_name, const std::string& value) {
    const auto present = find_model_attribute(*this, attribute_name);
    if (present == attributes.end())
        attributes.emplace_back(attribute_name, value);
    else
        present->second = value;
}

void ModelNode::remove_attribute(const std::string& attribute_name) {
    const auto present = find_model_attribute(*this, attribute_name);
    if (present != attributes.end())
        attributes.erase(present);
}

ModelNode* ModelNode::add(std::unique_ptr<ModelNode> child) {
    auto place = children.end();
    if (keep_sorted) {
        place = children.begin();
        while (place != children.end() && is_model_sorted_before(place->get(), child.get()))
            ++place;
    }
    return children.insert(place, std::move(child))->get();
}

ModelNode* ModelNode::add_element(const std::string& element_name) {
    return add(make_model_element(element_name, keep_sorted));
}

ModelNode* ModelNode::add_text(const std::string& text) {
    auto child = std::make_unique<ModelNode>();
    child->is_text = true;
    child->content = text;
    return add(std::move(child));
}

void ModelNode::remove(const ModelNode* child) {
    children.erase(find_model_child(*this, child));
}

void ModelNode::set_first(const ModelNode* child) {
    const auto place = find_model_child(*this, child);
    std::rotate(children.begin(), place, place + 1);
}

void ModelNode::sort() {
    std::list<ModelNode*> order;
    for (const auto& child : children)
        order.push_back(child.get());
    order.sort(is_model_sorted_before);
    for (auto& child : children)
        static_cast<void>(child.release());
    std::transform(order.begin(), order.end(), children.begin(),
                   [](ModelNode* child) { return std::unique_ptr<ModelNode>(child); });
}

void ModelNode::sort_recursively() {
    sort();
    for (const auto& child : children)
        child->sort_recursively();
}

ModelNode* ModelNode::import(const ModelNode& source, bool deep) {
    if (source.is_text)
        return add_text(source.content);
    ModelNode* copy = add(make_model_element(source.name, source.keep_sorted));
    if (deep)
        copy->copy_content(source);
    return copy;
}

void ModelNode::copy_content(const ModelNode& source) {
    for (const auto& attribute : source.attributes)
        set_attribute(attribute.first, attribute.second);
    for (const auto& child : source.children)
        import(*child, true);
}

namespace {

void compare_attributes(const Element& element, const ModelNode& model) {
    auto expected = model.attributes.begin();
    const quxml::AttributeList attributes = element.get_attributes();
    check(attributes.size() == model.attributes.size(), "an element has too many or too few attributes");
    for (const Attribute* attribute : attributes) {
        check_same("attribute name", attribute->get_name(), expected->first);
        check_same("attribute value", attribute->get_value(), expected->second);
        check(attribute->get_parent() == &element, "an attribute has another parent");
        check(attribute->get_previous_sibling() == nullptr && attribute->get_next_sibling() == nullptr,
              "an attribute has siblings");
        ++expected;
    }
}

void compare_nodes(Node* node, const ModelNode& model) {
    check_same("name", node->get_name(), model.name);
    if (model.is_text) {
        const auto* text = dynamic_cast<const TextNode*>(node);
        check(text != nullptr, "text was expected, an element found");
        check_same("content", text->get_content(), model.content);
    } else {
        const auto* element = dynamic_cast<const Element*>(node);
        check(element != nullptr, "an element was expected, text found");
        compare_attributes(*element, model);
    }
}

/// Walks the list and the links side by side, forwards; the way back is checked at each step.
void compare_links(const Node* parent, const NodeList& children) {
    const Node* previous = nullptr;
    for (const Node* child : children) {
        check(child->get_parent() == parent, "a child has another parent");
        check(child->get_previous_sibling() == previous, "a previous sibling is not the child before");
        if (previous != nullptr)
            check(previous->get_next_sibling() == child, "a next sibling is not the child after it");
        previous = child;
    }
    if (previous != nullptr)
        check(previous->get_next_sibling() == nullptr, "the last child has a next sibling");
}

}  // namespace

std::vector<Twin> compare_trees(Element* root, ModelNode* model) {
    check((root == nullptr) == (model == nullptr), "only one of tree and model has a root");
    if (root == nullptr)
        return {};
    check(root->get_parent() == nullptr, "the root has a parent");
    std::vector<Twin> twins(1, {root, model});
    for (std::size_t i = 0; i < twins.size(); ++i) {
        const Twin twin = twins[i];
        compare_nodes(twin.node, *twin.model);
        const NodeList children = twin.node->get_children();
        compare_links(twin.node, children);
        check(children.size() == twin.model->children.size(), "a node has too many or too few children");
        auto child_model = twin.model->children.begin();
        for (Node* child : children)
            twins.push_back({child, (child_model++)->get()});
    }
    return twins;
}

}  // namespace quxml_fuzz
