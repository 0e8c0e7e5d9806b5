// SPDX-License-Identifier: MIT

// A path as the library's queries take it, without a document. Two rules of the library are repeated here: where a path is
// cut, and which way each step takes. They cannot be asked of the library, which cuts a path only to follow it at once: it
// has no operation that gives its steps, and of a single step it says what is selected, not how it came by that. What the
// predicates mean is not repeated but asked (predicates.cpp). The tests compare all of it with what the library selects.
//
// A path is cut at every "/", also between quotes. A "/" before the first step means nothing, "//" a search:
//
//     a/b   /a/b   the start node is tested with a, and its children are filtered with b
//     //b          the start node and all below it are searched for b
//     a//b         an empty step between others: all below a is searched for b
//     a/           an empty last step: all children of a
//
// A step is cut at its first "[". What stands before is its name test. A step among children filters a list, with every
// predicate between "[" and "]" in turn; that the step ends with "]" is taken for granted. The other steps test single
// nodes, with the one predicate from the first "[" to the first "]".

#include "paths/steps.h"

#include <cstddef>

#include "paths/cutting.h"
#include "terminal/words.h"

namespace tool {

namespace {

// ---- Predicates ----

void take_list_predicates(PathStep& step, std::size_t bracket, const Values& values) {
    if (bracket == std::string::npos)
        return;
    step.is_closed = step.text.back() == ']';
    std::string predicates = step.text.substr(bracket + 1);
    if (!predicates.empty())
        predicates.pop_back();
    for (const std::string& text : split(predicates, "[]")) {
        if (!text.empty())
            step.predicates.push_back(get_list_predicate(text, values));
    }
}

void take_single_predicate(PathStep& step, std::size_t bracket, const Values& values) {
    if (bracket == std::string::npos)
        return;
    const std::size_t end = step.text.find(']');
    step.is_closed = end != std::string::npos;
    step.predicates.push_back(get_single_predicate(step.text.substr(bracket + 1, end - bracket - 1), values));
    if (step.is_closed)
        step.ignored = step.text.substr(end + 1);
}

// ---- Steps ----

PathStep get_step(const std::string& text, StepKind kind, const Values& values) {
    PathStep step{text, text.empty() ? StepKind::nothing : kind, "", {}, "", true, false, false};
    const std::size_t bracket = text.find('[');
    step.name_test = text.substr(0, bracket);
    if (tests_single_nodes(step))
        take_single_predicate(step, bracket, values);
    else
        take_list_predicates(step, bracket, values);
    return step;
}

std::vector<std::string> get_pieces(const std::string& path, bool& searches) {
    const std::string trimmed = trim(path, blanks);
    searches = begins_with(trimmed, "//");
    std::vector<std::string> pieces = split(trimmed, "/");
    const bool is_rooted = pieces[0].empty() && pieces.size() > 1;
    pieces.erase(pieces.begin(), pieces.begin() + (searches ? 2 : (is_rooted ? 1 : 0)));
    return pieces;
}

StepKind get_kind(const std::vector<std::string>& pieces, std::size_t i) {
    if (pieces[i - 1].empty() && i > 1)
        return StepKind::search_below;
    return StepKind::children;
}

bool is_mark_of_search(const std::vector<std::string>& pieces, std::size_t i) {
    return pieces[i].empty() && !pieces[i - 1].empty() && i + 1 < pieces.size();
}

bool is_all_children(const std::vector<std::string>& pieces, std::size_t i) {
    return pieces[i].empty() && !pieces[i - 1].empty() && i + 1 == pieces.size();
}

}  // namespace

std::vector<PathStep> get_steps(const Path& path) {
    bool searches = false;
    const std::vector<std::string> pieces = get_pieces(path.text, searches);
    std::vector<PathStep> steps{
        get_step(pieces[0], searches ? StepKind::search : StepKind::start, path.values)};
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        if (is_all_children(pieces, i))
            steps.push_back({"", StepKind::all_children, "", {}, "", true, false, false});
        else if (!is_mark_of_search(pieces, i))
            steps.push_back(get_step(pieces[i], get_kind(pieces, i), path.values));
    }
    steps.back().is_last = true;
    steps.front().is_relative = !begins_with(trim(path.text, blanks), "/");
    return steps;
}

bool tests_single_nodes(const PathStep& step) {
    return step.kind == StepKind::start || step.kind == StepKind::search ||
           step.kind == StepKind::search_below;
}

bool has_empty_predicate(const PathStep& step) {
    return !tests_single_nodes(step) && contains(step.text, "[]");
}

}  // namespace tool
