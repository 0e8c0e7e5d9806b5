#include "comparators.h"

#include <boost/algorithm/string/predicate.hpp>
#include <functional>

namespace quxml {

char CaseFold::fold(char c) const {
    const auto byte = static_cast<unsigned char>(c);
    if (!is_known[byte]) {
        folded[byte] = std::toupper(c, locale);
        is_known[byte] = true;
    }
    return folded[byte];
}

bool EqualsIgnoringCase::operator()(const std::string& name, const std::string& name_test) const {
    return name.size() == name_test.size() && boost::algorithm::equals(name, name_test, std::cref(fold));
}

bool BeginsIgnoringCase::operator()(const std::string& name, const std::string& name_test) const {
    return boost::algorithm::starts_with(name, name_test, std::cref(fold));
}

}  // namespace quxml
