#include "paths/names.h"

#include <algorithm>
#include <locale>
#include <string>

namespace tool {

namespace {

bool is_same_letter(char one, char other) {
    const std::locale& plain = std::locale::classic();
    return std::tolower(one, plain) == std::tolower(other, plain);
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
