#ifndef QUXML_QUERY_COMPARATORS_H
#define QUXML_QUERY_COMPARATORS_H

// How names are compared: by one of the library's own two comparators, which ignore case, or by a user's.

#include <string>
#include <string_view>

#include "dom/CaseFold.h"
#include "quxml/XPathHelper.h"

namespace quxml {

/// Decides the name tests of one query.
class NameComparator {
public:
    enum Rule { equals, begins };

    /// A comparator of the library's own: the name equals the name test, or begins with it, ignoring case.
    /// \param case_fold borrowed.
    NameComparator(Rule own_rule, const CaseFold& case_fold) : fold(&case_fold), rule(own_rule) {}

    /// \param users_comparator borrowed.
    explicit NameComparator(const StringComparator& users_comparator) : users(&users_comparator) {}

    /// Whether a user decides, who may throw and change the tree at each test.
    bool is_users() const { return users != nullptr; }

    bool operator()(const std::string& name, std::string_view name_test) {
        if (is_users())
            return ask_user(name, name_test);
        return rule == equals ? fold->equals(name, name_test) : fold->begins(name, name_test);
    }

private:
    bool ask_user(const std::string& name, std::string_view name_test);

    const StringComparator* users = nullptr;
    const CaseFold* fold = nullptr;
    Rule rule = equals;
    std::string_view asked;  // the last name test that a user was asked about
    std::string asked_text;  // the same as users expect it
};

}  // namespace quxml

#endif
