#include "names.h"

namespace quxml {

bool CaseFold::is_same(const std::string& a, const std::string& b, std::size_t length) const {
    for (std::size_t i = 0; i < length; ++i) {
        if (a[i] != b[i] && fold(a[i]) != fold(b[i]))
            return false;
    }
    return true;
}

char CaseFold::fold(char c) const {
    const auto byte = static_cast<unsigned char>(c);
    if (!is_known[byte]) {
        folded[byte] = std::toupper(c, locale);
        is_known[byte] = true;
    }
    return folded[byte];
}

bool EqualsIgnoringCase::operator()(const std::string& name, const std::string& name_test) const {
    return name.size() == name_test.size() && fold.is_same(name, name_test, name_test.size());
}

bool BeginsIgnoringCase::operator()(const std::string& name, const std::string& name_test) const {
    return name.size() >= name_test.size() && fold.is_same(name, name_test, name_test.size());
}

}  // namespace quxml
