// SPDX-License-Identifier: MIT
#ifndef QUXML_PLAYGROUND_JSON_LISTS_H
#define QUXML_PLAYGROUND_JSON_LISTS_H

#include <cstddef>
#include <initializer_list>
#include <string>
#include <utility>

namespace playground {

/// An array of what `write` makes of each item.
template <typename Items, typename Write>
std::string to_array(const Items& items, const Write& write) {
    std::string text = "[";
    for (const auto& item : items) {
        if (text.size() > 1)
            text += ',';
        text += write(item);
    }
    return text + ']';
}

/// An object with these members, whose values are JSON already.
inline std::string to_object(std::initializer_list<std::pair<const char*, std::string>> members) {
    std::string text = "{";
    for (const auto& [name, value] : members) {
        if (text.size() > 1)
            text += ',';
        text.append("\"").append(name).append("\":").append(value);
    }
    return text + '}';
}

inline std::string to_json(std::size_t number) {
    return std::to_string(number);
}

inline std::string to_json(bool yes) {
    return yes ? "true" : "false";
}

}  // namespace playground

#endif
