// The two searches of a node. They differ in what a name test means, and in nothing else.

#include <boost/algorithm/string/predicate.hpp>
#include <locale>
#include <utility>

#include "quxml/Node.h"
#include "quxml/XPathHelper.h"

namespace quxml {

namespace {

struct EqualsIgnoringCase {
    std::locale locale;  // the global one at the time of the call

    bool operator()(const std::string& name, const std::string& name_test) const {
        if (name.size() != name_test.size()) return false;
        return name == name_test || boost::algorithm::iequals(name, name_test, locale);
    }
};

struct BeginsIgnoringCase {
    std::locale locale;

    bool operator()(const std::string& name, const std::string& name_test) const {
        return boost::algorithm::istarts_with(name, name_test, locale);
    }
};

}  // namespace

NodeSet Node::find_exact_match(const std::string& path) {
    const XPathHelper helper{EqualsIgnoringCase()};
    helper.run(this, path);
    return std::move(helper.results);
}

// Deliberate: a prefix of the name, not a substring.
NodeSet Node::find_substring_match(const std::string& path) {
    const XPathHelper helper{BeginsIgnoringCase()};
    helper.run(this, path);
    return std::move(helper.results);
}

}  // namespace quxml
