// SPDX-License-Identifier: MIT

// Prints, as JSON, what the library takes from the heap: the bytes of a node, and the allocations of some
// operations.

#include <libxml/xmlmemory.h>
#include <quxml/quxml.h>

#include <functional>
#include <iostream>
#include <string>

#include "robustness/counting_heap.h"

namespace {

using quxml::Document;
using quxml::Element;
using quxml_test::CountingHeap;
using quxml_test::cpp_heap;

constexpr int count = 10000;

/// What glibc's allocator needs in addition to each block that a program can use.
constexpr std::size_t bytes_beside_block = sizeof(std::size_t);

/// Per unit of the `count` units that `work` deals with.
double allocations_per_unit(const std::function<void()>& work) {
    const std::size_t before = cpp_heap().allocations;
    work();
    return static_cast<double>(cpp_heap().allocations - before) / count;
}

std::size_t bytes_in_use() {
    const CountingHeap& heap = cpp_heap();
    return heap.bytes + heap.blocks * bytes_beside_block;
}

double bytes_per_unit(const std::function<void()>& work) {
    const std::size_t before = bytes_in_use();
    work();
    return static_cast<double>(bytes_in_use() - before) / count;
}

void print(const char* name, double value, const char* end = ",") {
    std::cout << '"' << name << "\": " << value << end << '\n';
}

void repeat(const std::function<void(int)>& step) {
    for (int i = 0; i < count; ++i)
        step(i);
}

void print_bytes() {
    Document document(false);
    Element* root = document.create_root_node("list");
    print("bytes of an element", bytes_per_unit([&] { repeat([&](int) { root->add_child("entry"); }); }));
    // The names are made here and short enough to lie inside the strings of the tree.
    print("bytes of an attribute", bytes_per_unit([&] {
              repeat([&](int i) { root->set_attribute("a" + std::to_string(i), "value"); });
          }));
    print("bytes of a text", bytes_per_unit([&] { repeat([&](int) { root->add_child_text("text"); }); }));
}

void print_allocations() {
    Document document(false);
    Element* root = document.create_root_node("list");
    repeat([&](int) { root->add_child("entry"); });
    print("allocations of a copy, per node", allocations_per_unit([&] {
              Document copy(false);
              copy.create_root_node_by_import(root, true);
          }));
    print("allocations of //entry, per result",
          allocations_per_unit([&] { root->find_exact_match("//entry"); }));
    print("allocations of list/entry, per result",
          allocations_per_unit([&] { root->find_exact_match("list/entry"); }));
    print("allocations of //none, per node", allocations_per_unit([&] { root->find_exact_match("//none"); }),
          "");
}

}  // namespace

int main() {
    std::cout << "{\n";
    print_bytes();
    print_allocations();
    std::cout << "}\n";
}
