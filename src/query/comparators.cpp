#include "comparators.h"

namespace quxml {

bool NameComparator::ask_user(const std::string& name, std::string_view name_test) {
    if (asked.data() != name_test.data() || asked.size() != name_test.size()) {
        asked_text = name_test;
        asked = name_test;
    }
    return (*users)(name, asked_text);
}

}  // namespace quxml
