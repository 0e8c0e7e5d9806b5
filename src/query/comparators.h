#ifndef QUXML_QUERY_COMPARATORS_H
#define QUXML_QUERY_COMPARATORS_H

// The comparators of the two searches of a node. Both ignore case.

#include <string>

#include "dom/CaseFold.h"

namespace quxml {

/// The comparator of `Node::find_exact_match`.
class EqualsIgnoringCase {
public:
    bool operator()(const std::string& name, const std::string& name_test) const {
        return fold.equals(name, name_test);
    }

private:
    CaseFold fold;
};

/// The comparator of `Node::find_substring_match`.
class BeginsIgnoringCase {
public:
    bool operator()(const std::string& name, const std::string& name_test) const {
        return fold.begins(name, name_test);
    }

private:
    CaseFold fold;
};

}  // namespace quxml

#endif
