// SPDX-License-Identifier: MIT
#include "commands/QueryInput.h"

#include <quxml/Element.h>
#include <quxml/extras/paths.h>

#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <utility>

#include "reading/input.h"
#include "terminal/Failure.h"
#include "terminal/messages.h"
#include "trees/columns.h"
#include "trees/element_numbers.h"

namespace tool {

namespace {

/// The columns of texts that are written of each match.
std::vector<std::string> get_text_columns(const MatchFormat& format) {
    if (!format.columns.empty())
        return format.columns;
    const bool has_text =
        format.value || (format.json && !format.count && !format.node_path && format.attribute.empty());
    return has_text ? std::vector<std::string>{"."} : std::vector<std::string>();
}

/// The elements whose texts are written.
std::unordered_set<quxml::Element*> get_text_elements(const std::vector<quxml::Node*>& matches,
                                                      const MatchFormat& format) {
    std::unordered_set<quxml::Element*> elements;
    for (const std::string& column : get_text_columns(format)) {
        for (quxml::Node* match : matches) {
            if (auto* element = dynamic_cast<quxml::Element*>(get_text_node(*match, column)))
                elements.insert(element);
        }
    }
    return elements;
}

/// A value that leaves something out would be taken for the whole.
void require_whole_value(const QueryInput& input, const quxml::Element& element, std::size_t number) {
    const auto loss = std::find_if(input.unseen.begin(), input.unseen.end(),
                                   [number](const Loss& one) { return one.element == number; });
    if (loss != input.unseen.end())
        throw Failure(ExitCode::malformed, get_label(input.file) + ": not all of the value of " +
                                               quxml::extras::path_of(element) +
                                               " is read: queries do not see its " + get_name(loss->kind) +
                                               "; --lossy writes the rest");
}

}  // namespace

QueryInput read_query_input(const std::string& file) {
    const std::string text = read_text(file);
    std::shared_ptr<quxml::Document> document = parse_document(file, text);
    return {file, std::move(document), get_content(find_losses(text))};
}

void warn_of_unseen(const QueryInput& input) {
    if (!input.unseen.empty())
        write_warning(input.file, get_note_on_content(input.unseen) + "; " + get_pointer_to_loss(input.file));
}

void require_whole_values(const QueryInput& input, const MatchFormat& format,
                          const std::vector<quxml::Node*>& matches) {
    if (input.unseen.empty())
        return;
    auto* root = dynamic_cast<quxml::Element*>(input.document->get_root_node());
    const NumberedElements found = number_elements(root, get_text_elements(matches, format));
    for (std::size_t i = 0; i < found.elements.size(); ++i)
        require_whole_value(input, *found.elements[i], found.numbers[i]);
}

}  // namespace tool
