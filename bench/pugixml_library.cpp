// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <vector>

#include "libraries.h"

namespace bench {

namespace {

struct StringWriter : pugi::xml_writer {
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }

    std::string text;
};

struct Counter : pugi::xml_tree_walker {
    bool for_each(pugi::xml_node& node) override {
        elements += node.type() == pugi::node_element ? 1U : 0U;
        return true;
    }

    std::size_t elements = 0;
};

/// By its iterators, as its users walk; inputs are at most 100 levels deep.
// NOLINTNEXTLINE(misc-no-recursion)
std::size_t look_at_names_below(const pugi::xml_node& parent) {
    std::size_t sum = 0;
    for (const pugi::xml_node& node : parent) {
        if (node.type() == pugi::node_element)
            sum += static_cast<unsigned char>(*node.name()) + look_at_names_below(node);
    }
    return sum;
}

bool is_sorted_before(const pugi::xml_node& a, const pugi::xml_node& b) {
    const int order = std::strcmp(a.name(), b.name());
    return order != 0 ? order < 0 : a.attribute("item").as_int() < b.attribute("item").as_int();
}

}  // namespace

Pugixml::Document Pugixml::read(const std::string& text) {
    auto document = std::make_unique<pugi::xml_document>();
    if (!document->load_buffer(text.data(), text.size()))
        throw std::runtime_error("pugixml cannot read a corpus");
    return document;
}

Pugixml::Text Pugixml::write(const Document& document, bool formatted) {
    StringWriter writer;
    document->save(writer, "  ", formatted ? pugi::format_indent : pugi::format_raw);
    return std::move(writer.text);
}

Pugixml::Document Pugixml::copy(const Document& document) {
    auto copy = std::make_unique<pugi::xml_document>();
    copy->reset(*document);
    return copy;
}

Pugixml::Document Pugixml::build(std::size_t count, bool filled) {
    auto document = std::make_unique<pugi::xml_document>();
    pugi::xml_node root = document->append_child("list");
    for (std::size_t i = 0; i < count; ++i) {
        pugi::xml_node child = root.append_child("entry");
        if (filled) {
            child.append_attribute("id").set_value("identifier");
            child.append_child(pugi::node_pcdata).set_value("text");
        }
    }
    return document;
}

std::size_t Pugixml::count_elements(const Document& document) {
    Counter counter;
    document->traverse(counter);
    return counter.elements;
}

std::size_t Pugixml::look_at_names(const Document& document) {
    return look_at_names_below(*document);
}

std::size_t Pugixml::find(const Document& document, const Path& path) {
    return document->select_nodes(path.xpath.c_str()).size();
}

void Pugixml::sort(const Document& document) {
    pugi::xml_node root = document->document_element();
    std::vector<pugi::xml_node> children(root.begin(), root.end());
    std::stable_sort(children.begin(), children.end(), is_sorted_before);
    for (const pugi::xml_node& child : children)
        root.append_move(child);
}

bool Pugixml::has_child(const Document& document, const char* child_name) {
    return !document->document_element().child(child_name).empty();
}

bool Pugixml::has_attribute(const Document& document, const char* attribute_name) {
    return !document->document_element().attribute(attribute_name).empty();
}

}  // namespace bench
