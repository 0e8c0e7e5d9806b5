// SPDX-License-Identifier: MIT

// The page draws only what is in view, so it asks for a few rows at a time. All else that is long is cut where nobody would
// read on: what a page shows of a document of megabytes is as much work as what it shows of a small one.

#include "Session.h"

#include <quxml/Attribute.h>
#include <quxml/DomParserError.h>
#include <quxml/TextNode.h>
#include <quxml/extras/finding.h>
#include <quxml/extras/paths.h>
#include <quxml/extras/ranges.h>

#include <algorithm>
#include <stdexcept>

#include "json_lists.h"
#include "paths/explanation.h"
#include "paths/selection.h"
#include "paths/steps.h"
#include "reading/diagnostics.h"
#include "reading/encoding.h"
#include "reading/losses.h"
#include "terminal/json.h"
#include "terminal/terminal.h"
#include "terminal/words.h"

namespace playground {

namespace {

constexpr std::size_t most_losses = 1000;
constexpr std::size_t most_names = 100;
constexpr std::size_t most_attributes = 12;
constexpr std::size_t longest_value = 200;
constexpr std::size_t longest_text = 100000;

// ---- Texts ----

std::string quote(std::string_view text) {
    return tool::to_json(text);
}

/// The beginning of a text, cut between two characters.
std::string cut(const std::string& text, std::size_t longest) {
    std::size_t size = std::min(text.size(), longest);
    while (size > 0 && size < text.size() && !tool::begins_character(text[size]))
        --size;
    return size == text.size() ? text : text.substr(0, size) + "\xE2\x80\xA6";
}

/// How many characters a text has as JavaScript counts them: those of four bytes are two.
std::size_t count_units(std::string_view text) {
    constexpr unsigned char first_of_four_bytes = 0xF0;
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), tool::begins_character)) +
           static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
               return static_cast<unsigned char>(byte) >= first_of_four_bytes;
           }));
}

// ---- Nodes ----

/// The text in an element; null if there is none.
const quxml::TextNode* get_text(const quxml::Element& element) {
    const auto texts = quxml::extras::texts(element);
    return texts.empty() ? nullptr : &*texts.begin();
}

bool has_elements(const quxml::Element& element) {
    return !quxml::extras::elements(element).empty();
}

/// A match as the documentation lists it: an element with others in it by its opening tag, any other node as it is written.
std::string get_name(const quxml::Element& element, bool is_text) {
    std::string name;
    if (is_text)
        get_text(element)->write_to_string(name, -1);
    else if (has_elements(element))
        element.write_opening_tag(name, -1);
    else
        element.write_to_string(name, -1);
    return cut(name, longest_value);
}

/// An error of a path, by its type.
std::string describe(const std::logic_error& error) {
    const bool is_range = dynamic_cast<const std::out_of_range*>(&error) != nullptr;
    return std::string(is_range ? "std::out_of_range" : "std::invalid_argument") + ": " + error.what();
}

// ---- Notes ----

const char* get_name(tool::NoteKind kind) {
    switch (kind) {
        case tool::NoteKind::surprise:
            return "surprise";
        case tool::NoteKind::possible_reason:
            return "reason";
        default:
            return "information";
    }
}

/// The program's words may name an option of it, which the page does not have.
std::string name_program(const std::string& words) {
    if (tool::contains(words, " --arg "))
        return words + " (--arg is an option of the program)";
    if (tool::contains(words, " or --attribute "))
        return words + " (--attribute is an option of the program)";
    return words;
}

std::string describe(const std::string& text, const char* kind) {
    return to_object({{"text", quote(tool::to_printable(name_program(text)))}, {"kind", quote(kind)}});
}

std::string describe(const tool::Note& note) {
    return describe(note.text, get_name(note.kind));
}

std::string describe(const tool::Line& line) {
    const char* kind = line.is_error ? "error" : "";
    return describe(line.text, line.note ? get_name(*line.note) : kind);
}

// ---- Queries ----

std::vector<quxml::Node*> select(quxml::Element& from, const std::string& path, tool::NameMatch names) {
    return quxml::extras::in_document_order(from, names == tool::NameMatch::prefix
                                                      ? from.find_substring_match(path)
                                                      : from.find_exact_match(path));
}

/// Whether the library comes to a predicate that it refuses depends on the document.
tool::Notes get_notes(quxml::Element& from, const std::vector<tool::PathStep>& steps,
                      const std::vector<quxml::Node*>& nodes, tool::NameMatch names) {
    tool::Notes notes;
    const std::string fault = tool::get_fault(steps);
    if (fault.empty())
        tool::give_notes(&from, steps, nodes, names, [&](const tool::Note& note) { notes.push_back(note); });
    else
        tool::warn(notes, fault + "; the library has not come to it");
    return notes;
}

// ---- Losses ----

/// Turns bytes of a text, asked for in ascending order, into characters as JavaScript counts them.
class UnitCounter {
public:
    explicit UnitCounter(std::string_view counted_text) : text(counted_text) {}

    std::size_t count_up_to(std::size_t byte) {
        units += count_units(text.substr(reached, byte - reached));
        reached = byte;
        return units;
    }

private:
    std::string_view text;
    std::size_t reached = 0;
    std::size_t units = 0;
};

std::string describe(const tool::Loss& loss, std::size_t begin, std::size_t length) {
    return to_object({{"kind", quote(tool::get_name(loss.kind))},
                      {"line", to_json(static_cast<std::size_t>(loss.place.line))},
                      {"column", to_json(static_cast<std::size_t>(loss.place.column))},
                      {"excerpt", quote(loss.excerpt)},
                      {"harmless", to_json(tool::is_harmless(loss.kind))},
                      {"begin", to_json(begin)},
                      {"length", to_json(length)}});
}

}  // namespace

std::string make_error(std::string_view message) {
    return to_object({{"error", quote(message)}});
}

// ---- Reading ----

std::string Session::read(const std::string& text, bool keep_sorted) {
    try {
        document = quxml::from_string(text, keep_sorted);
    } catch (const quxml::DomParserError& error) {
        const std::string converted = tool::to_utf8(text, tool::get_encoding(text));
        const std::vector<tool::Problem> errors =
            tool::find_errors(tool::without_mark(converted), error.what());
        return to_object({{"line", std::to_string(errors.front().line)},
                          {"column", std::to_string(errors.front().column)},
                          {"message", quote(errors.front().message)},
                          {"more", to_json(errors.size() - 1)}});
    }
    number_rows();
    return to_object({{"rows", to_json(rows.size())}});
}

void Session::number_rows() {
    matches.clear();
    rows.assign(1, {document->get_root_node(), 0});
    std::vector<const quxml::Element*> open{document->get_root_node()};
    for (quxml::Element& element : quxml::extras::descendants(*document->get_root_node())) {
        while (open.back() != element.get_parent())
            open.pop_back();
        rows.push_back({&element, open.size()});
        open.push_back(&element);
    }
}

std::string Session::list_losses(const std::string& text) {
    std::vector<tool::Loss> losses = tool::find_losses(text);
    const std::string unseen = tool::get_note_on_content(losses);
    const std::size_t count = losses.size();
    const auto harmless = static_cast<std::size_t>(std::count_if(
        losses.begin(), losses.end(), [](const tool::Loss& loss) { return tool::is_harmless(loss.kind); }));
    losses.resize(std::min(count, most_losses), losses.empty() ? tool::Loss{} : losses.front());
    const std::string converted = tool::to_utf8(text, tool::get_encoding(text));
    const std::string_view counted = tool::without_mark(converted);
    const std::size_t mark = counted.size() == converted.size() ? 0 : 1;
    UnitCounter units(counted);
    const auto write = [&](const tool::Loss& loss) {
        const std::size_t length = count_units(counted.substr(loss.begin, loss.end - loss.begin));
        return describe(loss, mark + units.count_up_to(loss.begin), length);
    };
    return to_object({{"count", to_json(count)},
                      {"harmless", to_json(harmless)},
                      {"unseen", quote(unseen)},
                      {"losses", to_array(losses, write)}});
}

// ---- Queries ----

std::string Session::get_path(std::size_t row) const {
    return to_object({{"path", quote(quxml::extras::path_of(*rows.at(row).element))}});
}

/// A link may hold any path, also one that is refused.
std::string Session::find_row(const std::string& path) const {
    quxml::NodeSet found;
    try {
        found = document->get_root_node()->find_exact_match(path);
    } catch (const std::logic_error&) {
    }
    const auto row =
        std::find_if(rows.begin(), rows.end(), [&](const Row& one) { return found.count(one.element) != 0; });
    const auto number = static_cast<std::size_t>(row - rows.begin());
    return to_object({{"row", row == rows.end() ? "null" : to_json(number)}});
}

std::string Session::query(const std::string& path, std::size_t start, tool::NameMatch names) {
    matches.clear();
    quxml::Element& from = *rows.at(start).element;
    const std::vector<tool::PathStep> steps = tool::get_steps({path, {}});
    std::vector<quxml::Node*> nodes;
    try {
        nodes = select(from, path, names);
    } catch (const std::logic_error& error) {
        const std::string reason = tool::to_printable(name_program(tool::get_fault(steps)));
        return to_object({{"error", quote(reason)}, {"exception", quote(describe(error))}});
    }
    number_matches(nodes);
    return describe_matches(get_notes(from, steps, nodes, names));
}

std::string Session::describe_matches(const std::vector<tool::Note>& notes) const {
    const auto first = matches.begin();
    const auto last = first + static_cast<std::ptrdiff_t>(std::min(matches.size(), most_names));
    const auto name = [this](Match match) {
        return quote(get_name(*rows[match.row].element, match.is_text));
    };
    return to_object({{"count", to_json(matches.size())},
                      {"rows", to_array(matches, [](Match match) { return to_json(match.row); })},
                      {"names", to_array(std::vector<Match>(first, last), name)},
                      {"notes", to_array(notes, [](const tool::Note& note) { return describe(note); })}});
}

/// Rows are in document order, and so are the nodes.
void Session::number_matches(const std::vector<quxml::Node*>& nodes) {
    std::size_t row = 0;
    for (const quxml::Node* node : nodes) {
        const bool is_text = dynamic_cast<const quxml::TextNode*>(node) != nullptr;
        const quxml::Node* element = is_text ? node->get_parent() : node;
        while (rows.at(row).element != element)
            ++row;
        matches.push_back({row, is_text});
    }
}

std::size_t Session::get_number(Match match) const {
    const auto found = std::lower_bound(matches.begin(), matches.end(), match,
                                        [](Match one, Match other) { return one.key() < other.key(); });
    const bool is_there = found != matches.end() && found->key() == match.key();
    return is_there ? static_cast<std::size_t>(found - matches.begin()) + 1 : 0;
}

std::string Session::explain(const std::string& path, tool::NameMatch names) {
    return to_array(tool::get_steps({path, {}}), [&](const tool::PathStep& step) {
        const std::string text = step.text.empty() ? "(empty)" : tool::to_printable(step.text);
        const auto write = [](const tool::Line& line) { return describe(line); };
        return to_object({{"step", quote(text)}, {"lines", to_array(tool::describe(step, names), write)}});
    });
}

// ---- Showing ----

std::string Session::get_rows(std::size_t first, std::size_t count) const {
    std::vector<std::size_t> numbers;
    for (std::size_t row = first; row < rows.size() && row - first < count; ++row)
        numbers.push_back(row);
    return to_array(numbers, [this](std::size_t row) { return describe_row(row); });
}

std::string Session::describe_row(std::size_t row) const {
    const quxml::Element& element = *rows[row].element;
    std::vector<const quxml::Attribute*> attributes;
    for (const quxml::Attribute& attribute : quxml::extras::attributes(element))
        attributes.push_back(&attribute);
    const bool has_more = attributes.size() > most_attributes;
    attributes.resize(std::min(attributes.size(), most_attributes));
    const auto write = [](const quxml::Attribute* attribute) {
        return '[' + quote(cut(attribute->get_name(), longest_value)) + ',' +
               quote(cut(attribute->get_value(), longest_value)) + ']';
    };
    const quxml::TextNode* text = get_text(element);
    return to_object({{"depth", to_json(rows[row].depth)},
                      {"name", quote(cut(element.get_name(), longest_value))},
                      {"attributes", to_array(attributes, write)},
                      {"more", to_json(has_more)},
                      {"text", text == nullptr ? "null" : quote(cut(text->get_content(), longest_value))},
                      {"match", to_json(get_number({row, false}))},
                      {"text_match", to_json(get_number({row, true}))}});
}

std::string Session::write(bool formatted) const {
    const std::string text =
        formatted ? document->write_to_string_formatted(true) : document->write_to_string();
    return to_object({{"size", to_json(text.size())}, {"text", quote(cut(text, longest_text))}});
}

}  // namespace playground
