// SPDX-License-Identifier: MIT
#ifndef QUXML_QUERY_COMPARATORS_H
#define QUXML_QUERY_COMPARATORS_H

// How names are compared: by one of the library's own two comparators, which ignore case, or by a user's.

#include <cstddef>
#include <string>
#include <string_view>

#include "dom/CaseFold.h"
#include "dom/NodeAccess.h"
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

    /// How long names can be that pass, at least and at most; a user is asked about any.
    std::size_t smallest(std::string_view name_test) const { return is_users() ? 0 : name_test.size(); }
    std::size_t largest(std::string_view name_test) const {
        return !is_users() && rule == equals ? name_test.size() : std::string::npos;
    }

    /// \param name neither too short nor too long to pass.
    bool accepts(const std::string& name, std::string_view name_test) {
        return is_users() ? ask_user(name, name_test) : fold->begins(name, name_test);
    }

private:
    bool ask_user(const std::string& name, std::string_view name_test);

    const StringComparator* users = nullptr;
    const CaseFold* fold = nullptr;
    Rule rule = equals;
    std::string_view asked;  // the last name test that a user was asked about
    std::string asked_text;  // the same as users expect it
};

/// The name test of a step, ready to be made many times.
class NameTest {
public:
    /// A test that no node passes, and that does not look at it.
    NameTest() = default;

    /// A test that every node passes, and that does not look at it.
    static NameTest any() {
        NameTest test;
        test.takes_any = true;
        return test;
    }

    /// \param name_comparator borrowed.
    NameTest(std::string_view name_test, NameComparator& name_comparator)
        : names(&name_comparator),
          text(name_test),
          smallest(names->smallest(text)),
          largest(names->largest(text)) {}

    /// Inlined, as most names are too short or too long, which takes less time than a call.
    [[gnu::always_inline]] bool accepts(const Node* node) const {
        if (names == nullptr)
            return takes_any;
        const std::string& name = NodeAccess::name(*node);
        return name.size() >= smallest && name.size() <= largest && names->accepts(name, text);
    }

private:
    NameComparator* names = nullptr;  // null if every node passes or none does
    bool takes_any = false;
    std::string_view text;
    std::size_t smallest = 0;
    std::size_t largest = 0;
};

}  // namespace quxml

#endif
