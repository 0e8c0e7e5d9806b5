// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <fstream>
#include <vector>

#include "libraries.h"

namespace bench {

Quxml::Document Quxml::read(const std::string& text) {
    return quxml::from_string(text, false);
}

Quxml::Document Quxml::read_sorted(const std::string& text) {
    return quxml::from_string(text, true);
}

Quxml::Text Quxml::write(const Document& document, bool formatted) {
    return formatted ? document->write_to_string_formatted(true) : document->write_to_string();
}

Quxml::Document Quxml::copy(const Document& document) {
    auto copy = std::make_shared<quxml::Document>(false);
    copy->create_root_node_by_import(document->get_root_node(), true);
    return copy;
}

Quxml::Document Quxml::build(std::size_t count, bool filled) {
    auto document = std::make_shared<quxml::Document>(false);
    quxml::Element* root = document->create_root_node("list");
    for (std::size_t i = 0; i < count; ++i) {
        quxml::Element* child = root->add_child("entry");
        if (filled) {
            child->set_attribute("id", "identifier");
            child->add_child_text("text");
        }
    }
    return document;
}

std::size_t Quxml::count_elements(const Document& document) {
    std::size_t count = 0;
    std::vector<quxml::Element*> pending{document->get_root_node()};
    while (!pending.empty()) {
        quxml::Element* element = pending.back();
        pending.pop_back();
        ++count;
        for (quxml::Node* child : element->get_children()) {
            if (auto* below = dynamic_cast<quxml::Element*>(child))
                pending.push_back(below);
        }
    }
    return count;
}

std::size_t Quxml::look_at_names(const Document& document) {
    const quxml::Element& root = *document->get_root_node();
    std::size_t sum = static_cast<unsigned char>(quxml::extras::name_of(root).front());
    for (const quxml::Element& element : quxml::extras::descendants(root))
        sum += static_cast<unsigned char>(quxml::extras::name_of(element).front());
    return sum;
}

std::size_t Quxml::find(const Document& document, const Path& path) {
    return document->get_root_node()->find_exact_match(path.quxml).size();
}

void Quxml::sort(const Document& document) {
    document->get_root_node()->sort_children_recursively();
}

bool Quxml::has_child(const Document& document, const char* child_name) {
    return document->get_root_node()->get_child(child_name) != nullptr;
}

bool Quxml::has_attribute(const Document& document, const char* attribute_name) {
    return document->get_root_node()->get_attribute(attribute_name) != nullptr;
}

Quxml::Document Quxml::add_sorted(const std::vector<unsigned>& items) {
    auto document = std::make_shared<quxml::Document>(true);
    quxml::extras::SortedChildren adder(*document->create_root_node("list"));
    for (const unsigned item : items)
        adder.add("entry", static_cast<int>(item));
    return document;
}

Quxml::Document Quxml::append_and_sort(const std::vector<unsigned>& items) {
    auto document = std::make_shared<quxml::Document>(false);
    quxml::Element* root = document->create_root_node("list");
    for (const unsigned item : items)
        root->add_child("entry", static_cast<int>(item));
    root->sort_children();
    return document;
}

void Quxml::write_file(const Document& document, const std::string& file) {
    quxml::extras::write_file(file, *document);
}

void Quxml::write_string(const Document& document, const std::string& file) {
    std::ofstream(file, std::ios::binary) << document->write_to_string_formatted(true);
}

}  // namespace bench
