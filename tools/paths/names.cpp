// SPDX-License-Identifier: MIT
#include "paths/names.h"

#include <algorithm>
#include <string>

#include "terminal/words.h"

namespace tool {

namespace {

bool is_same_letter(char one, char other) {
    return in_lower_case(one) == in_lower_case(other);
}

bool begins_as(const std::string& name, const std::string& test) {
    return name.size() >= test.size() && std::equal(test.begin(), test.end(), name.begin(), is_same_letter);
}

}  // namespace

quxml::StringComparator get_comparator(NameMatch names) {
    if (names == NameMatch::prefix)
        return begins_as;
    return [](const std::string& name, const std::string& test) {
        return name.size() == test.size() && begins_as(name, test);
    };
}

}  // namespace tool
