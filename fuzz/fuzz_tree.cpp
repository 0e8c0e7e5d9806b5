// SPDX-License-Identifier: MIT

// Sequences of tree operations on two documents, done to the tree and to a plain model; after each operation the whole
// trees are compared, links included.
//
// Input: bytes that choose operations, nodes, names and values, at most 300 bytes, and nothing is added to 80 nodes:
// the comparison visits every node after every operation. More siblings than that only repeat the merges of a sort, and
// copies of copies would double the tree again and again.

#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "TreeModel.h"
#include "check.h"
#include "quxml/quxml.h"

namespace {

using quxml::Attribute;
using quxml::Document;
using quxml::Element;
using quxml::TextNode;
using quxml_fuzz::check;
using quxml_fuzz::ModelNode;
using quxml_fuzz::Twin;

constexpr std::size_t longest_input = 300;
constexpr std::size_t most_nodes = 80;

const std::array<std::string, 8> names = {"b", "a", "c", "B", "item", "", "bb", "\xff"};
const std::array<std::string, 16> items = {"1",          "2",           "10",  "-3",  "",  "x",
                                           " 7",         "7",           "12a", "+1",  "b", "99999999999",
                                           "2147483647", "-2147483649", "0x",  "\xff"};

/// Hands out the input byte by byte; zeros after its end.
class Choices {
public:
    Choices(const std::uint8_t* data, std::size_t size) : next(data), end(data + size) {}

    bool is_at_end() const { return next == end; }
    std::size_t take() { return next == end ? 0 : *next++; }
    std::size_t take_below(std::size_t limit) { return take() % limit; }
    const std::string& take_name() { return names[take_below(names.size())]; }
    const std::string& take_item() { return items[take_below(items.size())]; }

private:
    const std::uint8_t* next;
    const std::uint8_t* end;
};

struct DocumentTwin {
    explicit DocumentTwin(bool sorted) : document(sorted), keep_sorted(sorted) {}

    Document document;
    std::unique_ptr<ModelNode> model;
    bool keep_sorted;  // the model's
};

/// The documents and the operations. An operation that has nothing to work on does nothing.
class Trees {
public:
    explicit Trees(Choices& input)
        : choices(input),
          documents{DocumentTwin(choices.take_below(2) == 1), DocumentTwin(choices.take_below(2) == 1)} {
        for (DocumentTwin& twin : documents)
            create_root(twin, "r");
    }

    /// Does the operations that the input names, up to one that leaves an unspecified order of children.
    void run() {
        compare();
        while (!choices.is_at_end() && !is_disordered) {
            do_operation();
            if (!is_disordered)
                compare();
        }
    }

private:
    using Operation = void (Trees::*)();

    void do_operation() {
        static const std::array<Operation, 23> operations = {
            &Trees::add_child,           &Trees::add_child,
            &Trees::add_child_with_item, &Trees::add_child_with_item,
            &Trees::add_child_with_item, &Trees::add_child_with_number,
            &Trees::add_child_text,      &Trees::add_child_text_by_move,
            &Trees::remove_child,        &Trees::remove_nothing,
            &Trees::set_child_first,     &Trees::set_name,
            &Trees::set_content,         &Trees::set_attribute,
            &Trees::set_attribute_value, &Trees::remove_attribute,
            &Trees::sort_children,       &Trees::sort_children_recursively,
            &Trees::import_node,         &Trees::import_attribute,
            &Trees::create_root_node,    &Trees::create_root_node_by_import,
            &Trees::move_documents};
        (this->*operations[choices.take_below(operations.size())])();
    }

    void compare() {
        twins.clear();
        for (DocumentTwin& twin : documents) {
            const auto found = quxml_fuzz::compare_trees(twin.document.get_root_node(), twin.model.get());
            twins.insert(twins.end(), found.begin(), found.end());
        }
    }

    Twin take_node() { return twins[choices.take_below(twins.size())]; }

    /// An element to put something into; none if there are enough nodes.
    Twin take_parent() {
        const Twin twin = take_node();
        return twins.size() < most_nodes ? twin : Twin{nullptr, nullptr};
    }

    static Element* as_element(const Twin& twin) { return dynamic_cast<Element*>(twin.node); }

    void add_child() {
        const Twin parent = take_parent();
        const std::string& name = choices.take_name();
        if (Element* element = as_element(parent)) {
            element->add_child(name);
            parent.model->add_element(name);
        }
    }

    void add_child_with_item() {
        const Twin parent = take_parent();
        const std::string& name = choices.take_name();
        add_item(parent, name, choices.take_item());
    }

    void add_child_with_number() {
        const Twin parent = take_parent();
        const std::string& name = choices.take_name();
        const int number = static_cast<int>(choices.take()) - 128;
        Element* element = as_element(parent);
        if (element != nullptr && add_model_item(parent, name, std::to_string(number)))
            element->add_child(name, number);
    }

    void add_item(const Twin& parent, const std::string& name, const std::string& item) {
        Element* element = as_element(parent);
        if (element == nullptr)
            return;
        if (add_model_item(parent, name, item))
            element->add_child(name, item);
        else
            add_out_of_range(*element, parent.model->keep_sorted, name, item);
    }

    /// False if no place for the item can be found.
    static bool add_model_item(const Twin& parent, const std::string& name, const std::string& item) {
        auto child = quxml_fuzz::make_model_element(name, parent.model->keep_sorted);
        child->set_attribute("item", item);
        try {
            parent.model->add(std::move(child));
        } catch (const std::out_of_range&) {
            return false;
        }
        return true;
    }

    /// A child that `add_child` cannot place stays allocated for good, so it is created and linked here by hand.
    static void add_out_of_range(Element& parent, bool keep_sorted, const std::string& name,
                                 const std::string& item) {
        auto child = std::make_unique<Element>(name, &parent, keep_sorted);
        child->set_attribute("item", item);
        try {
            parent.add_new_node(child.get());
        } catch (const std::out_of_range& error) {
            quxml_fuzz::check_same("message", error.what(), "stoi");
            return;
        }
        static_cast<void>(child.release());
        quxml_fuzz::fail("a child with the item " + item + " was added, std::out_of_range was expected");
    }

    void add_child_text() {
        const Twin parent = take_parent();
        const std::string& text = choices.take_item();
        if (Element* element = as_element(parent)) {
            element->add_child_text(text);
            parent.model->add_text(text);
        }
    }

    void add_child_text_by_move() {
        const Twin parent = take_parent();
        std::string text = choices.take_item();
        if (Element* element = as_element(parent)) {
            parent.model->add_text(text);
            element->add_child_text(std::move(text));
            // NOLINTNEXTLINE(bugprone-use-after-move): what is left is what is checked.
            check(text.empty(), "add_child_text left something in its argument");
        }
    }

    void remove_child() {
        const Twin twin = take_node();
        if (Element* parent = twin.node->get_parent()) {
            parent->remove_child(twin.node);
            find_model(parent)->remove(twin.model);
        }
    }

    ModelNode* find_model(const quxml::Node* node) const {
        for (const Twin& twin : twins) {
            if (twin.node == node)
                return twin.model;
        }
        quxml_fuzz::fail("a parent is not part of the tree");
    }

    void remove_nothing() {
        const Twin twin = take_node();
        const bool is_null = choices.take_below(2) == 0;
        if (!is_null && !twin.model->children.empty())
            return;
        try {
            twin.node->remove_child(is_null ? nullptr : twin.node);
        } catch (const std::invalid_argument& error) {
            quxml_fuzz::check_same("message", error.what(),
                                   is_null ? "Can not remove nullptr pointer from Node"
                                           : "Can not remove when Node has no children");
            return;
        }
        quxml_fuzz::fail("remove_child did not throw");
    }

    void set_child_first() {
        const Twin twin = take_node();
        if (Element* parent = twin.node->get_parent()) {
            parent->set_child_first(twin.node);
            find_model(parent)->set_first(twin.model);
        }
    }

    void set_name() {
        const Twin twin = take_node();
        twin.model->name = choices.take_name();
        twin.node->set_name(twin.model->name);
    }

    void set_content() {
        const Twin twin = take_node();
        std::string content = choices.take_item();
        auto* text = dynamic_cast<TextNode*>(twin.node);
        if (text == nullptr)
            return;
        const std::string previous = std::exchange(twin.model->content, content);
        if (choices.take_below(2) == 0) {
            text->set_content(content);
        } else {
            text->set_content(std::move(content));
            // NOLINTNEXTLINE(bugprone-use-after-move): the same.
            quxml_fuzz::check_same("exchanged content", content, previous);
        }
    }

    void set_attribute() {
        const Twin twin = take_node();
        const std::string& name = choices.take_name();
        const std::string& value = choices.take_item();
        if (Element* element = as_element(twin)) {
            const Attribute* attribute = element->set_attribute(name, value);
            twin.model->set_attribute(name, value);
            check(attribute == element->get_attribute(name), "set_attribute returned another attribute");
        }
    }

    void set_attribute_value() {
        const Twin twin = take_node();
        const std::string& name = choices.take_name();
        const std::string& value = choices.take_item();
        Element* element = as_element(twin);
        Attribute* attribute = element == nullptr ? nullptr : element->get_attribute(name);
        if (attribute != nullptr) {
            attribute->set_value(value);
            twin.model->set_attribute(name, value);
        }
    }

    void remove_attribute() {
        const Twin twin = take_node();
        const std::string& name = choices.take_name();
        if (Element* element = as_element(twin)) {
            element->remove_attribute(name);
            twin.model->remove_attribute(name);
        }
    }

    void sort_children() {
        const Twin twin = take_node();
        sort([&] { twin.node->sort_children(); }, [&] { twin.model->sort(); });
    }

    void sort_children_recursively() {
        const Twin twin = take_node();
        sort([&] { twin.node->sort_children_recursively(); }, [&] { twin.model->sort_recursively(); });
    }

    template <typename Sort, typename SortModel>
    void sort(Sort sort_tree, SortModel sort_model) {
        is_disordered = is_out_of_range(sort_model);
        check(is_out_of_range(sort_tree) == is_disordered,
              is_disordered ? "sorting did not throw" : "sorting threw std::out_of_range");
    }

    template <typename Sort>
    static bool is_out_of_range(Sort sort) {
        try {
            sort();
        } catch (const std::out_of_range& error) {
            quxml_fuzz::check_same("message", error.what(), "stoi");
            return true;
        }
        return false;
    }

    static std::size_t count_nodes(const ModelNode& model) {
        std::size_t count = 1;
        for (const auto& child : model.children)
            count += count_nodes(*child);
        return count;
    }

    static bool is_inside(const quxml::Node* node, const quxml::Node* subtree) {
        while (node != nullptr && node != subtree)
            node = node->get_parent();
        return node != nullptr;
    }

    /// A copy into itself would not end.
    void import_node() {
        const Twin parent = take_parent();
        const Twin source = take_node();
        const bool deep = choices.take_below(4) != 0;
        Element* element = as_element(parent);
        if (element == nullptr || is_inside(element, source.node) ||
            twins.size() + count_nodes(*source.model) > most_nodes)
            return;
        const quxml::Node* copy = element->import_node(source.node, deep);
        check(copy->get_parent() == element, "import_node returned a node with another parent");
        parent.model->import(*source.model, deep);
    }

    void import_attribute() {
        const Twin parent = take_parent();
        const Twin source = take_node();
        const std::string& name = choices.take_name();
        Element* element = as_element(parent);
        const Element* source_element = as_element(source);
        const Attribute* attribute =
            source_element == nullptr ? nullptr : source_element->get_attribute(name);
        if (element != nullptr && attribute != nullptr) {
            element->import_node(attribute, false);
            parent.model->set_attribute(name, source.model->get_attribute_value(name));
        }
    }

    static void create_root(DocumentTwin& twin, const std::string& name) {
        twin.document.create_root_node(name);
        twin.model = quxml_fuzz::make_model_element(name, twin.keep_sorted);
    }

    void create_root_node() {
        DocumentTwin& twin = documents[choices.take_below(documents.size())];
        create_root(twin, choices.take_name());
    }

    /// The source is not part of the document, whose old tree is destroyed first.
    void create_root_node_by_import() {
        DocumentTwin& twin = documents[choices.take_below(documents.size())];
        const Twin source = take_node();
        const bool deep = choices.take_below(4) != 0;
        Element* source_element = as_element(source);
        if (source_element == nullptr || is_inside(source_element, twin.document.get_root_node()))
            return;
        twin.document.create_root_node_by_import(source_element, deep);
        twin.model = quxml_fuzz::make_model_element(source.model->name, twin.keep_sorted);
        if (deep)
            twin.model->copy_content(*source.model);
    }

    /// By construction, which leaves the first document empty until it is assigned to; by assignment, which exchanges
    /// the roots; and by assignment to itself. At the end both documents have a root again.
    void move_documents() {
        DocumentTwin& a = documents[0];
        DocumentTwin& b = documents[1];
        const std::size_t way = choices.take_below(3);
        if (way == 0) {
            Document moved(std::move(a.document));
            check(a.document.get_root_node() == nullptr, "a document that was moved from has a root");
            a.document = std::move(moved);
        } else if (way == 1) {
            a.document = std::move(b.document);
            std::swap(a.model, b.model);
            a.keep_sorted = b.keep_sorted;
        } else {
            Document& same = b.document;
            b.document = std::move(same);
        }
    }

    Choices& choices;
    std::array<DocumentTwin, 2> documents;
    std::vector<Twin> twins;
    bool is_disordered = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > longest_input)
        return 0;
    Choices choices(data, size);
    Trees(choices).run();
    return 0;
}
