#ifndef QUXML_QUERY_NAMES_H
#define QUXML_QUERY_NAMES_H

// The comparators of the two searches of a node. Both ignore case.

#include <array>
#include <cstddef>
#include <locale>
#include <string>

namespace quxml {

/// Compares bytes without regard to case under the locale that was the global one at construction, as
/// `boost::algorithm::is_iequal` does. The locale is asked once for each byte value that turns up, not for each byte.
class CaseFold {
public:
    /// Whether the first `length` bytes of both texts are the same.
    bool is_same(const std::string& a, const std::string& b, std::size_t length) const;

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
