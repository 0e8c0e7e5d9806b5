// SPDX-License-Identifier: MIT
#include "comparators.h"

namespace quxml {

bool NameComparator::ask_user(const std::string& name, std::string_view name_test) {
    if (asked.data() != name_test.data() || asked.size() != name_test.size()) {
        asked_text = name_test;
        asked = name_test;
    }
    // A copy of the name, for the user may rename the node before comparing.
    // Test: WildComparators.see_and_get_the_same_as_from_the_slow_engine.
    return (*users)(std::string(name), asked_text);
}

}  // namespace quxml
