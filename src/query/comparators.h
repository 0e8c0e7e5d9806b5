#ifndef QUXML_QUERY_COMPARATORS_H
#define QUXML_QUERY_COMPARATORS_H

// The comparators of the two searches of a node. Both ignore case.

#include <array>
#include <cstddef>
#include <locale>
#include <string>

namespace quxml {

/// Compares two bytes without regard to case under the locale that was the global one at construction, as
/// `boost::algorithm::is_iequal` does. But it asks the locale once for each byte value that turns up, not for
/// each byte: asking takes longer than all the rest of a name test.
class CaseFold {
public:
    bool operator()(char a, char b) const { return a == b || fold(a) == fold(b); }

private:
    char fold(char c) const;

    std::locale locale;
    mutable std::array<char, 256> folded = {};
    mutable std::array<bool, 256> is_known = {};
};

/// The comparator of `Node::find_exact_match`.
class EqualsIgnoringCase {
public:
    bool operator()(const std::string& name, const std::string& name_test) const;

private:
    CaseFold fold;
};

/// The comparator of `Node::find_substring_match`.
class BeginsIgnoringCase {
public:
    bool operator()(const std::string& name, const std::string& name_test) const;

private:
    CaseFold fold;
};

}  // namespace quxml

#endif
