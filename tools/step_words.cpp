#include "step_words.h"

#include <algorithm>

#include "words.h"

namespace tool {

namespace {

using Lines = std::vector<std::string>;

std::string without_quotes(std::string text) {
    const auto is_quote = [](char character) { return character == '"' || character == '\''; };
    text.erase(std::remove_if(text.begin(), text.end(), is_quote), text.end());
    return text;
}

// ---- Predicates

std::string describe_offset(int offset) {
    if (offset > 0)
        return "none, since nothing comes behind the last";
    return offset == 0 ? "the last"
                       : "the one " + std::to_string(-static_cast<long>(offset)) + " before the last";
}

std::string describe_end(const PositionRange& range) {
    if (range.counted)
        return "up to the last but one";
    return range.end == 0 ? "to the last" : "up to " + std::to_string(range.end - 1);
}

std::string describe_range(const PositionRange& range) {
    if (!range.counted && range.end == 1)
        return "none";
    if (!range.counted && range.end == get_next_position(range.first))
        return "the one at position " + std::to_string(range.first);
    return "those from position " + std::to_string(std::max(range.first, 1U)) + ' ' + describe_end(range);
}

std::string describe_attribute(const Predicate& predicate) {
    const std::string attribute = "attribute " + quote(predicate.name);
    return predicate.existence_only ? "have the " + attribute
                                    : "have " + quote(predicate.value) + " as their " + attribute;
}

std::string describe_child(const Predicate& predicate) {
    return "have a child " + quote(predicate.name) + " whose text is " + quote(predicate.value);
}

// The library counts an element without an item as the first.
bool is_number_one(const Predicate& predicate) {
    return std::stoi(predicate.value) == 1;
}

std::string describe_item(const Predicate& predicate) {
    const std::string words = "those that have " + quote(predicate.value) + " as their attribute \"item\"";
    return is_number_one(predicate) ? words + ", and of those without it the first of each name" : words;
}

std::string describe_literal(const Predicate& predicate) {
    return "the only one there is, if a child of its parent with its name has the text " +
           quote(predicate.value);
}

std::string describe_test_of_item(const Predicate& predicate) {
    const std::string words = "has " + quote(predicate.value) + " as its attribute \"item\"";
    return predicate.value == "1" ? words + " or does not have that attribute" : words;
}

std::string describe_test_of_attribute(const Predicate& predicate) {
    const std::string attribute = "attribute " + quote(predicate.name);
    return predicate.existence_only ? "has the " + attribute
                                    : "has " + quote(predicate.value) + " as its " + attribute;
}

std::string describe(const Predicate& predicate) {
    switch (predicate.handler) {
        case Handler::last:
            return "position from the end: keeps " + describe_offset(predicate.offset);
        case Handler::position:
            return "position: keeps " + describe_range(predicate.range);
        case Handler::attribute:
            return "attribute: keeps those that " + describe_attribute(predicate);
        case Handler::child_value:
            return "child's text: keeps those that " + describe_child(predicate);
        case Handler::item:
            return "item: keeps " + describe_item(predicate);
        case Handler::literal:
            return "bare text: keeps " + describe_literal(predicate);
        case Handler::test_attribute:
            return "attribute of the node: passes if it " + describe_test_of_attribute(predicate);
        case Handler::test_child_value:
            return "child's text: passes if it has a child " + quote(predicate.name) + " whose text is " +
                   quote(predicate.value);
        default:
            return "item of the node: passes if it " + describe_test_of_item(predicate);
    }
}

// ---- Notes on predicates

void note_last(const Predicate& predicate, Lines& notes) {
    if (predicate.text.rfind("last()", 0) != 0)
        notes.emplace_back("what stands before last() is ignored");
}

void note_position(const Predicate& predicate, Lines& notes) {
    if (predicate.range.counted)
        notes.emplace_back("a predicate with > never keeps the last one");
    if (contains(predicate.text, "<") && predicate.range.counted)
        notes.emplace_back("what < says is ignored beside >");
    if (contains(predicate.text, "<") && !predicate.range.counted && predicate.range.end == 0)
        notes.emplace_back("0 behind < stands for no limit");
}

void note_item(const Predicate& predicate, Lines& notes) {
    notes.push_back("this is no position; for that, write [position()=" +
                    std::to_string(std::stoi(predicate.value)) + ']');
}

void note_literal(const Predicate& predicate, Lines& notes) {
    notes.push_back("to compare an attribute write [@name='" + predicate.value +
                    "'], for the text of a child [name='" + predicate.value + "']");
}

void note_name(const Predicate& predicate, Lines& notes) {
    if (contains(predicate.name, " "))
        notes.emplace_back("the blanks in " + quote(predicate.name) + " belong to the name");
}

void note_value(const Predicate& predicate, Lines& notes) {
    if (contains(predicate.value, "'") || contains(predicate.value, "\""))
        notes.emplace_back("the quotes belong to the value, since blanks stand outside of them");
}

// Where a single node is tested, the character before the equal sign is lost.
void note_test_of_attribute(const Predicate& predicate, Lines& notes) {
    const std::size_t equal_sign = predicate.text.find('=');
    if (equal_sign == std::string::npos)
        return;
    const std::string written = predicate.text.substr(1, equal_sign - 1);
    if (!written.empty() && written.back() != ' ')
        notes.push_back("the character before = is not taken for a part of the name; for " + quote(written) +
                        " write [@" + written + " =" + without_quotes(predicate.value) + ']');
    if (contains(predicate.value, "'") || contains(predicate.value, "\""))
        notes.emplace_back("here quotes belong to the value");
}

void note_words_of_positions(const Predicate& predicate, Lines& notes) {
    for (const char* word : {"last()", "position()"})
        if (contains(predicate.text, word))
            notes.emplace_back(std::string(word) + " tells no position in the first step and behind //");
}

Lines get_notes(const Predicate& predicate) {
    Lines notes;
    switch (predicate.handler) {
        case Handler::last:
            note_last(predicate, notes);
            break;
        case Handler::position:
            note_position(predicate, notes);
            break;
        case Handler::item:
            note_item(predicate, notes);
            break;
        case Handler::literal:
            note_literal(predicate, notes);
            break;
        case Handler::test_attribute:
            note_test_of_attribute(predicate, notes);
            break;
        case Handler::attribute:
        case Handler::child_value:
            note_name(predicate, notes);
            note_value(predicate, notes);
            break;
        default:
            note_words_of_positions(predicate, notes);
    }
    return notes;
}

void add_predicate(const Predicate& predicate, Lines& lines) {
    const std::string opening = '[' + predicate.text + "] ";
    if (!predicate.fault.empty()) {
        lines.push_back("error: " + opening + predicate.fault);
        return;
    }
    lines.push_back(opening + describe(predicate));
    for (const std::string& note : get_notes(predicate))
        lines.push_back("note: " + note);
}

// ---- Steps

std::string describe_name_test(const Step& step, Names names) {
    if (step.name_test == "*")
        return "any name";
    if (step.name_test.empty() && names == Names::whole)
        return "no name, which no element has";
    return std::string(names == Names::prefixes ? "a name that begins with " : "the name ") +
           quote(step.name_test) + " in upper or lower case";
}

std::string describe_children(const Step& step, Names names) {
    if (step.name_test.empty())
        return "children: none, since there is no name before the predicate; any name is *";
    return "children: those with " + describe_name_test(step, names);
}

std::string describe_nodes(const Step& step, Names names) {
    const std::string name = describe_name_test(step, names);
    switch (step.kind) {
        case StepKind::start:
            return "start node: the root element, if it has " + name;
        case StepKind::search:
            return "search: the root element and all below it, for " + name;
        case StepKind::search_below:
            return "search: all below the nodes so far, for " + name;
        case StepKind::children:
            return describe_children(step, names);
        case StepKind::all_children:
            return "children: all of them, texts too";
        default:
            return "nothing: an empty step here never matches";
    }
}

bool is_search(const Step& step) {
    return step.kind == StepKind::search || step.kind == StepKind::search_below;
}

std::string get_note_on_search(const Step& step) {
    if (step.text != "*")
        return "the search stops at the first match of each branch; what is inside of a match is not found";
    return step.is_last ? "every node is a match, texts too"
                        : "everything matches, so the search does not go deeper than where it begins";
}

Lines get_notes(const Step& step) {
    Lines notes;
    if (step.kind == StepKind::start)
        notes.emplace_back("the first step names the root element itself, not a child of it");
    if (is_search(step))
        notes.push_back(get_note_on_search(step));
    if (!step.is_closed)
        notes.emplace_back("there is no ] at the end; a path is cut at every /, also between quotes");
    if (!step.ignored.empty())
        notes.push_back("only one predicate counts in the first step and behind //; ignored: " +
                        step.ignored);
    return notes;
}

}  // namespace

std::vector<std::string> describe(const Step& step, Names names) {
    Lines lines{describe_nodes(step, names)};
    for (const std::string& note : get_notes(step))
        lines.push_back("note: " + note);
    for (const Predicate& predicate : step.predicates)
        add_predicate(predicate, lines);
    return lines;
}

bool has_fault(const Step& step) {
    return std::any_of(step.predicates.begin(), step.predicates.end(),
                       [](const Predicate& predicate) { return !predicate.fault.empty(); });
}

}  // namespace tool
