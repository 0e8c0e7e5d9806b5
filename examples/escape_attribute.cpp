// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>

// Attribute values are written as they are stored, so escape what XML does not allow in them first.

namespace {

std::string escape(const std::string& value) {
    std::string escaped;
    for (const char c : value) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            case '\t':
                escaped += "&#9;";
                break;
            case '\n':
                escaped += "&#10;";
                break;
            case '\r':
                escaped += "&#13;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

}  // namespace

int main() {
    const std::string value = "3\" & <4>";
    quxml::Document document(false);
    document.create_root_node("disk")->set_attribute("size", escape(value));
    const std::string text = document.write_to_string();
    std::cout << text << '\n';

    // Reading resolves it.
    std::cout << quxml::from_string(text, false)->get_root_node()->get_attribute_value("size") << '\n';
}
