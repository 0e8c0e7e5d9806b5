// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Shows where a node is: by the names above it, and as the leading part of a longer path.

namespace {

std::string path_of(const quxml::Node* node) {
    std::string path;
    for (; node != nullptr; node = node->get_parent())
        path.insert(0, '/' + node->get_name());
    return path;
}

}  // namespace

int main() {
    auto document = quxml::from_string("<device><net><port><speed/></port></net></device>", false);
    quxml::Node* port = document->get_root_node()->get_child("net")->get_child("port");
    std::cout << path_of(port) << '\n';
    std::cout << port->get_subpath_for("/DEVICE/net/port/speed") << '\n';
    std::cout << "'" << port->get_subpath_for("/device/clock") << "'\n";
}
