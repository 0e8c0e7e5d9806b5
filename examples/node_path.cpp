// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

// Shows where a node is: by a path that selects it and no other, and as the leading part of a longer path.
int main() {
    auto document = quxml::from_string("<device><net><port/><port><speed/></port></net></device>", false);
    quxml::Node* port = document->get_root_node()->get_child("net")->get_child("port")->get_next_sibling();
    std::cout << quxml::extras::path_of(*port) << '\n';
    std::cout << port->get_subpath_for("/DEVICE/net/port/speed") << '\n';
    std::cout << "'" << port->get_subpath_for("/device/clock") << "'\n";
}
