// SPDX-License-Identifier: MIT
#include "robustness/measured_operations.h"

#include <memory>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "quxml/quxml.h"

namespace quxml_test {

namespace {

using quxml::Document;
using quxml::Element;
using quxml::Node;

using DocumentPtr = std::shared_ptr<Document>;
using Work = std::function<void()>;

void require(bool condition) {
    if (!condition)
        throw std::logic_error("a measured operation has a wrong result");
}

/// Different names in an order that is none.
std::string scattered_name(std::size_t i, std::size_t size) {
    return "n" + std::to_string(i * 7919 % size);
}

std::string text_of_siblings(std::size_t size, bool scattered) {
    std::string text = "<r>";
    for (std::size_t i = 0; i < size; ++i) {
        const std::string name = scattered ? scattered_name(i, size) : "b";
        text.append("<").append(name).append(" i='1'>text</").append(name).append(">");
    }
    return text + "</r>";
}

std::string text_of_attributes(std::size_t size) {
    std::string text = "<r";
    for (std::size_t i = 0; i < size; ++i)
        text += " a" + std::to_string(i) + "='1'";
    return text + "/>";
}

DocumentPtr empty_document(bool keep_sorted = false) {
    auto document = std::make_shared<Document>(keep_sorted);
    document->create_root_node("r");
    return document;
}

/// A root with `size` children called "b", each with an attribute and a text.
DocumentPtr siblings(std::size_t size) {
    DocumentPtr document = empty_document();
    for (std::size_t i = 0; i < size; ++i) {
        Element* child = document->get_root_node()->add_child("b");
        child->set_attribute("i", "1");
        child->add_child_text("text");
    }
    return document;
}

DocumentPtr scattered_siblings(std::size_t size) {
    DocumentPtr document = empty_document();
    for (std::size_t i = 0; i < size; ++i)
        document->get_root_node()->add_child(scattered_name(i, size));
    return document;
}

DocumentPtr items(std::size_t size) {
    DocumentPtr document = empty_document();
    for (std::size_t i = 0; i < size; ++i)
        document->get_root_node()->add_child("b", static_cast<int>(i * 7919 % size));
    return document;
}

DocumentPtr texts(std::size_t size) {
    DocumentPtr document = empty_document();
    for (std::size_t i = 0; i < size; ++i)
        document->get_root_node()->add_child_text("text");
    return document;
}

DocumentPtr attributes(std::size_t size) {
    DocumentPtr document = empty_document();
    for (std::size_t i = 0; i < size; ++i)
        document->get_root_node()->set_attribute("a" + std::to_string(i), "1");
    return document;
}

DocumentPtr chain(std::size_t size) {
    DocumentPtr document = empty_document();
    Element* lowest = document->get_root_node();
    for (std::size_t i = 1; i < size; ++i)
        lowest = lowest->add_child("r");
    return document;
}

using Build = DocumentPtr (*)(std::size_t);

MeasuredOperation measure(const char* name, std::size_t size, Build build, void (*operation)(Document&)) {
    return {name, Growth::linear, size, [build, operation](std::size_t n) -> Work {
                const DocumentPtr document = build(n);
                return [document, operation] { operation(*document); };
            }};
}

MeasuredOperation measure_copy(const char* name, std::size_t size, Build build, bool keep_sorted) {
    return {name, Growth::linear, size, [build, keep_sorted](std::size_t n) -> Work {
                const DocumentPtr source = build(n);
                const DocumentPtr copy = std::make_shared<Document>(keep_sorted);
                return [source, copy] { copy->create_root_node_by_import(source->get_root_node(), true); };
            }};
}

MeasuredOperation measure_find(const char* name, Build build, const char* path) {
    return {name, Growth::linear, 100000, [build, path](std::size_t n) -> Work {
                const DocumentPtr document = build(n);
                return
                    [document, path] { require(!document->get_root_node()->find_exact_match(path).empty()); };
            }};
}

MeasuredOperation measure_read(const char* name, Growth growth, std::size_t size,
                               std::string (*write)(std::size_t), bool keep_sorted) {
    return {name, growth, size, [write, keep_sorted](std::size_t n) -> Work {
                const auto text = std::make_shared<std::string>(write(n));
                const auto document = std::make_shared<DocumentPtr>();
                return [text, document, keep_sorted] { *document = quxml::from_string(*text, keep_sorted); };
            }};
}

/// Adds `size` children to a new root, one by one.
MeasuredOperation measure_additions(const char* name, Growth growth, std::size_t size, bool keep_sorted,
                                    void (*add)(Element& root, std::size_t i, std::size_t n)) {
    return {name, growth, size, [keep_sorted, add](std::size_t n) -> Work {
                const DocumentPtr document = empty_document(keep_sorted);
                return [document, add, n] {
                    for (std::size_t i = 0; i < n; ++i)
                        add(*document->get_root_node(), i, n);
                };
            }};
}

std::string repeat(const std::string& text, std::size_t count) {
    std::string out;
    for (std::size_t i = 0; i < count; ++i)
        out += text;
    return out;
}

MeasuredOperation measure_path(const char* name, void (*follow)(Document&, const std::string& path)) {
    return {name, Growth::linear, 100000, [follow](std::size_t n) -> Work {
                const DocumentPtr document = chain(n);
                const std::string path = repeat("/r", n);
                return [document, path, follow] { follow(*document, path); };
            }};
}

std::string scattered_text(std::size_t size) {
    return text_of_siblings(size, true);
}

std::string plain_text(std::size_t size) {
    return text_of_siblings(size, false);
}

std::vector<MeasuredOperation> operations_on_text() {
    return {
        measure_read("read", Growth::linear, 100000, plain_text, false),
        measure_read("read_sorted", Growth::linear, 100000, plain_text, true),
        measure_read("read_sorted_scattered", Growth::linear, 100000, scattered_text, true),
        measure_read("read_attributes", Growth::quadratic, 20000, text_of_attributes, false),
        measure("write_compact", 100000, siblings,
                [](Document& d) { require(!d.write_to_string().empty()); }),
        measure("write_formatted", 100000, siblings,
                [](Document& d) { require(!d.write_to_string_formatted(true).empty()); }),
        measure("write_texts_compact", 100000, texts,
                [](Document& d) { require(!d.write_to_string().empty()); }),
        measure("write_texts_formatted", 100000, texts,
                [](Document& d) { require(!d.write_to_string_formatted(true).empty()); }),
        measure("write_attributes", 20000, attributes,
                [](Document& d) { require(!d.write_to_string().empty()); }),
        measure("write_chain_compact", 100000, chain,
                [](Document& d) { require(!d.write_to_string().empty()); }),
    };
}

std::vector<MeasuredOperation> operations_on_trees() {
    const auto sort = [](Document& d) { d.get_root_node()->sort_children(); };
    const auto sort_all = [](Document& d) { d.get_root_node()->sort_children_recursively(); };
    return {
        measure_copy("copy", 100000, siblings, false),
        measure_copy("copy_into_sorted", 100000, siblings, true),
        measure_copy("copy_scattered_into_sorted", 100000, scattered_siblings, true),
        measure_copy("copy_texts", 100000, texts, false),
        measure_copy("copy_texts_into_sorted", 100000, texts, true),
        measure_copy("copy_chain", 100000, chain, false),
        measure("destroy", 100000, siblings, [](Document& d) { d.create_root_node("r"); }),
        measure("destroy_texts", 100000, texts, [](Document& d) { d.create_root_node("r"); }),
        measure("destroy_chain", 100000, chain, [](Document& d) { d.create_root_node("r"); }),
        measure("destroy_attributes", 20000, attributes, [](Document& d) { d.create_root_node("r"); }),
        measure("sort", 100000, siblings, sort),
        measure("sort_scattered", 100000, scattered_siblings, sort),
        measure("sort_items", 100000, items, sort),
        measure("sort_texts", 100000, texts, sort),
        measure("sort_recursively", 100000, siblings, sort_all),
        measure("sort_chain_recursively", 100000, chain, sort_all),
    };
}

std::vector<MeasuredOperation> operations_that_build() {
    return {
        measure_additions("add_child", Growth::linear, 100000, false,
                          [](Element& root, std::size_t, std::size_t) { root.add_child("b"); }),
        measure_additions("add_child_text", Growth::linear, 100000, false,
                          [](Element& root, std::size_t, std::size_t) { root.add_child_text("text"); }),
        measure_additions("add_child_text_sorted", Growth::linear, 100000, true,
                          [](Element& root, std::size_t, std::size_t) { root.add_child_text("text"); }),
        measure_additions(
            "add_child_sorted", Growth::quadratic, 8000, true,
            [](Element& root, std::size_t i, std::size_t n) { root.add_child(scattered_name(i, n)); }),
        measure_additions(
            "add_child_sorted_item", Growth::quadratic, 8000, true,
            [](Element& root, std::size_t i, std::size_t) { root.add_child("b", static_cast<int>(i)); }),
        measure_additions("set_attribute", Growth::quadratic, 20000, false,
                          [](Element& root, std::size_t i, std::size_t) {
                              root.set_attribute("a" + std::to_string(i), "1");
                          }),
        measure("remove_first_child", 100000, siblings,
                [](Document& d) {
                    Element& root = *d.get_root_node();
                    for (Node* child : root.get_children())
                        root.remove_child(child);
                }),
        measure("remove_last_child", 100000, siblings,
                [](Document& d) {
                    Element& root = *d.get_root_node();
                    const quxml::NodeList children = root.get_children();
                    for (auto child = children.rbegin(); child != children.rend(); ++child)
                        root.remove_child(*child);
                }),
        measure("set_last_child_first", 100000, siblings,
                [](Document& d) {
                    Element& root = *d.get_root_node();
                    const quxml::NodeList children = root.get_children();
                    for (auto child = children.rbegin(); child != children.rend(); ++child)
                        root.set_child_first(*child);
                }),
        measure("set_first_child_first", 100000, siblings,
                [](Document& d) {
                    Element& root = *d.get_root_node();
                    Node* first = root.get_child("b");
                    const std::size_t count = root.get_children().size();
                    for (std::size_t i = 0; i < count; ++i)
                        root.set_child_first(first);
                }),
    };
}

std::vector<MeasuredOperation> operations_that_look() {
    return {
        measure("get_children", 100000, siblings,
                [](Document& d) { require(!d.get_root_node()->get_children().empty()); }),
        measure("get_child", 100000, siblings,
                [](Document& d) { require(d.get_root_node()->get_child("none") == nullptr); }),
        measure("get_child_text", 100000, siblings,
                [](Document& d) { require(!d.get_root_node()->has_child_text()); }),
        measure("get_attribute", 20000, attributes,
                [](Document& d) { require(d.get_root_node()->get_attribute("none") == nullptr); }),
        measure("get_attributes", 20000, attributes,
                [](Document& d) { require(!d.get_root_node()->get_attributes().empty()); }),
        measure_find("find_children", siblings, "/r/b"),
        measure_find("find_all_children", siblings, "/r/"),
        measure_find("find_texts_of_children", siblings, "/r/b/"),
        measure_find("find_search", siblings, "//b"),
        measure_find("find_search_below", siblings, "/r//b"),
        measure_find("find_everything", siblings, "//*"),
        measure_find("find_attribute", siblings, "/r/b[@i='1']"),
        measure_find("find_search_attribute", siblings, "//b[@i]"),
        measure_find("find_item", items, "/r/b[2]"),
        measure_find("find_first_item", siblings, "/r/b[1]"),
        measure_find("find_last", siblings, "/r/b[last()]"),
        measure_find("find_position", siblings, "/r/b[position()<100000]"),
        measure_find(
            "find_with_child_value",
            [](std::size_t n) {
                DocumentPtr document = empty_document();
                Element* parent = document->get_root_node()->add_child("p");
                for (std::size_t i = 0; i < n; ++i)
                    parent->add_child("b")->add_child_text(i + 1 == n ? "last" : "text");
                return document;
            },
            "/r/p[b='last']"),
        measure_find(
            "find_literal",
            [](std::size_t n) {
                DocumentPtr document = siblings(n);
                document->get_root_node()->add_child("c")->add_child_text("text");
                return document;
            },
            "/r/c[text]"),
        measure_find("find_everything_in_chain", chain, "//*"),
        measure_find("find_below_everything", chain, "//*//*"),
        measure_path("find_along_chain",
                     [](Document& d, const std::string& path) {
                         require(d.get_root_node()->find_exact_match(path).size() == 1);
                     }),
        measure_path("get_subpath_for",
                     [](Document& d, const std::string& path) {
                         require(d.get_root_node()->get_subpath_for(path) == "/r");
                     }),
    };
}

}  // namespace

void PrintTo(const MeasuredOperation& operation, std::ostream* out) {
    *out << operation.name;
}

const std::vector<MeasuredOperation>& measured_operations() {
    static const std::vector<MeasuredOperation> operations = [] {
        std::vector<MeasuredOperation> all;
        for (const auto& group :
             {operations_on_text(), operations_on_trees(), operations_that_build(), operations_that_look()})
            all.insert(all.end(), group.begin(), group.end());
        return all;
    }();
    return operations;
}

}  // namespace quxml_test
