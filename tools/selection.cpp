#include "selection.h"

#include <quxml/Element.h>

#include <stdexcept>

#include "Failure.h"
#include "document_order.h"

namespace tool {

namespace {

quxml::NodeSet find(quxml::Node* root, const std::string& path, Names names) {
    return names == Names::prefixes ? root->find_substring_match(path) : root->find_exact_match(path);
}

Failure bad_query(const std::string& path, const std::string& reason) {
    return {ExitCode::bad_query, "bad query \"" + path + "\": " + reason};
}

// With messages that make sense to somebody who does not see how the library reads its numbers.
quxml::NodeSet get_matches(quxml::Node* root, const std::string& path, Names names) {
    try {
        return find(root, path, names);
    } catch (const std::invalid_argument& error) {
        const std::string reason = error.what();
        throw bad_query(path, reason == "stoi"
                                  ? "A number is missing or can not be read; <= and >= are not known"
                                  : reason);
    } catch (const std::out_of_range&) {
        throw bad_query(path, "A number is out of range");
    }
}

}  // namespace

std::vector<quxml::Node*> select(const quxml::Document& document, const std::string& path, Names names) {
    quxml::Node* const root = document.get_root_node();
    return in_document_order(root, get_matches(root, path, names));
}

std::vector<quxml::Element*> select_elements(const quxml::Document& document, const std::string& path) {
    std::vector<quxml::Element*> elements;
    for (quxml::Node* node : select(document, path))
        if (auto* element = dynamic_cast<quxml::Element*>(node))
            elements.push_back(element);
    if (elements.empty())
        throw Failure(ExitCode::no_match, "no element matches " + path);
    return elements;
}

}  // namespace tool
