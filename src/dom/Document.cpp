// SPDX-License-Identifier: MIT
#include "quxml/Document.h"

#include <utility>

#include "quxml/Element.h"

namespace quxml {

Document::Document(bool sorted) : root(nullptr), keep_sorted(sorted) {}

Document::Document(Document&& other) noexcept
    : root(std::exchange(other.root, nullptr)), keep_sorted(other.keep_sorted) {}

Document& Document::operator=(Document&& other) noexcept {
    if (this != &other) {
        std::swap(root, other.root);
        keep_sorted = other.keep_sorted;
    }
    return *this;
}

Document::~Document() {
    delete root;
}

Element* Document::get_root_node() const {
    return root;
}

void Document::set_root_node(Element* new_root) {
    root = new_root;
}

Element* Document::create_root_node(const std::string& name) {
    delete std::exchange(root, nullptr);
    root = new Element(name, nullptr, keep_sorted);
    return root;
}

}  // namespace quxml
