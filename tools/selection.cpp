#include "selection.h"

#include <quxml/Element.h>

#include <iostream>
#include <stdexcept>

#include "Failure.h"
#include "document_order.h"
#include "path_notes.h"
#include "path_steps.h"
#include "terminal.h"

namespace tool {

namespace {

quxml::NodeSet find(quxml::Node* root, const std::string& path, Names names) {
    return names == Names::prefixes ? root->find_substring_match(path) : root->find_exact_match(path);
}

Failure bad_query(const std::string& path, const std::string& reason) {
    return {ExitCode::bad_query, "bad query \"" + path + "\": " + reason +
                                     "\n\"quxml explain\" tells how a path is taken; put it between quotes."};
}

// Whether the library would come to a predicate that it refuses depends on the document; a bad query is a bad
// query in any case.
void require_no_fault(const std::string& path) {
    int number = 0;
    for (const Step& step : get_steps(path)) {
        ++number;
        for (const Predicate& predicate : step.predicates)
            if (!predicate.fault.empty())
                throw bad_query(path, "step " + std::to_string(number) + ", [" + predicate.text +
                                          "]: " + predicate.fault);
    }
}

quxml::NodeSet get_matches(quxml::Node* root, const std::string& path, Names names) {
    require_no_fault(path);
    try {
        return find(root, path, names);
    } catch (const std::logic_error& error) {
        throw bad_query(path, error.what());
    }
}

void write_notes(const std::string& path, bool only_surprises) {
    int number = 0;
    for (const Step& step : get_steps(path)) {
        const std::string place =
            "step " + std::to_string(++number) + ", " + (step.text.empty() ? "(empty)" : step.text);
        for (const Note& note : get_notes(step))
            if (note.is_surprise || !only_surprises)
                std::cerr << "quxml: note: " << to_printable(place + ": " + note.text) << '\n';
    }
}

}  // namespace

std::vector<quxml::Node*> select(const quxml::Document& document, const std::string& path, PathNotes notes,
                                 Names names) {
    quxml::Node* const root = document.get_root_node();
    std::vector<quxml::Node*> nodes = in_document_order(root, get_matches(root, path, names));
    if (notes == PathNotes::written)
        write_notes(path, !nodes.empty());
    return nodes;
}

std::vector<quxml::Element*> select_elements(const quxml::Document& document, const std::string& path,
                                             PathNotes notes) {
    std::vector<quxml::Element*> elements;
    for (quxml::Node* node : select(document, path, notes))
        if (auto* element = dynamic_cast<quxml::Element*>(node))
            elements.push_back(element);
    if (elements.empty())
        throw Failure(ExitCode::no_match, "no element matches " + path);
    return elements;
}

}  // namespace tool
