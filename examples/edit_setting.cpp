// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

using namespace quxml::extras;

// Changes settings of a document and leaves everything else as it is.
int main() {
    auto document = quxml::from_string(
        "<device><network><address>10.0.0.2</address><gateway/></network><log level='info'/></device>",
        false);
    quxml::Element& device = *document->get_root_node();
    for (quxml::Element* address : find_elements(device, "/device/network/address"))
        set_text(*address, "10.0.0.7");
    for (quxml::Element* network : find_elements(device, "/device/network"))
        set_text(*network, "gateway", "10.0.0.1");
    for (quxml::Element* log : find_elements(device, "/device/log"))
        set(*log, "level", "debug");
    write_formatted(std::cout, device);
}
