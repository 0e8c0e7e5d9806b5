// The two searches of a node. They differ in what a name test means, and in nothing else.

#include <functional>
#include <utility>

#include "comparators.h"
#include "quxml/Node.h"
#include "quxml/XPathHelper.h"

namespace quxml {

NodeSet Node::find_exact_match(const std::string& path) {
    const EqualsIgnoringCase comparator;
    XPathHelper helper{std::cref(comparator)};
    helper.run(this, path);
    return std::move(helper.results);
}

// Deliberate: a prefix of the name, not a substring.
// Test: Names/PrefixMatch.Selects/ItIsDeliberateThatAPartWithinANameDoesNotMatch.
NodeSet Node::find_substring_match(const std::string& path) {
    const BeginsIgnoringCase comparator;
    XPathHelper helper{std::cref(comparator)};
    helper.run(this, path);
    return std::move(helper.results);
}

}  // namespace quxml
