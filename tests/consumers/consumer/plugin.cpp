// SPDX-License-Identifier: MIT
#include "plugin.h"

namespace {

void throw_error() {
    throw quxml::DomParserError("of the plugin");
}

void read_malformed_text() {
    quxml::from_string("<shelf>", false);
}

quxml::Node* create_element() {
    return new quxml::Element("shelf", nullptr, false);
}

}  // namespace

extern "C" QUXML_EXPORT const Plugin plugin;
const Plugin plugin = {throw_error, read_malformed_text, catches, create_element};
