// SPDX-License-Identifier: MIT
#include <dlfcn.h>

#include <iostream>
#include <memory>

#include "plugin.h"

// Loads the plugin named on the command line, and prints whether each of the two catches what the other one throws and
// knows the nodes that the other one creates.

namespace {

void throw_error() {
    throw quxml::DomParserError("of the host");
}

void print(const char* claim, bool holds) {
    std::cout << claim << (holds ? ": yes" : ": no") << '\n';
}

}  // namespace

int main(int /*count*/, char** arguments) {
    void* object = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
    if (object == nullptr) {
        std::cout << dlerror() << '\n';
        return 1;
    }
    const auto* plugin = static_cast<const Plugin*>(dlsym(object, "plugin"));
    print("the host catches what the plugin throws", catches(plugin->throw_error));
    print("the host catches what the library throws in the plugin", catches(plugin->read_malformed_text));
    print("the plugin catches what the host throws", plugin->catches(throw_error));
    const std::unique_ptr<quxml::Node> node(plugin->create_element());
    print("the host knows an element of the plugin", dynamic_cast<quxml::Element*>(node.get()) != nullptr);
    print("the host takes it for text", dynamic_cast<quxml::TextNode*>(node.get()) != nullptr);
}
