// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

// The library writes attribute values as they are stored, so what XML does not allow in them has to be escaped first. The
// extras escape it when they write.

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
    quxml::Element* disk = document.create_root_node("disk");
    disk->set_attribute("size", value);
    std::cout << quxml::extras::to_text(document) << '\n';

    // Without the extras, escape first.
    disk->set_attribute("size", escape(value));
    const std::string text = document.write_to_string();
    std::cout << text << '\n';

    // Reading resolves it.
    std::cout << quxml::from_string(text, false)->get_root_node()->get_attribute_value("size") << '\n';
}
