// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_ENTITIES_H
#define QUXML_TOOLS_READING_ENTITIES_H

#include <string_view>

namespace tool {

/// Whether any of the references in well-formed text, given as what stands between "&" and ";", passes a test.
template <typename Test>
bool any_reference(std::string_view text, Test test) {
    for (std::size_t ampersand = text.find('&'); ampersand != std::string_view::npos;
         ampersand = text.find('&', ampersand + 1)) {
        if (test(text.substr(ampersand + 1, text.find(';', ampersand) - ampersand - 1)))
            return true;
    }
    return false;
}

/// Whether a reference is to one of the entities that each document has, such as "amp".
inline bool is_predefined(std::string_view reference) {
    return reference == "amp" || reference == "lt" || reference == "gt" || reference == "quot" ||
           reference == "apos";
}

/// Whether text refers to an entity that a document has to declare. Other references only write a character.
inline bool has_entity(std::string_view text) {
    return any_reference(text, [](std::string_view reference) {
        return reference.substr(0, 1) != "#" && !is_predefined(reference);
    });
}

}  // namespace tool

#endif
