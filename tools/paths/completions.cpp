// SPDX-License-Identifier: MIT

// The last name of the path is not complete. What stands before it is a path of its own, and says where the name has to
// be: in what that selects, anywhere below it, or among its attributes. A star in its place selects all that may stand
// there.

#include "paths/completions.h"

#include <quxml/Attribute.h>
#include <quxml/Element.h>

#include <cstddef>
#include <unordered_set>
#include <utility>

#include "paths/PathWalk.h"
#include "paths/selection.h"
#include "terminal/Failure.h"
#include "terminal/words.h"

namespace tool {

namespace {

class Completions {
public:
    Completions(const quxml::Document& of, const std::string& text, std::size_t name_begin)
        : document(of), head(text.substr(0, name_begin)), beginning(text.substr(name_begin)) {}

    void add_attributes_of(const Nodes& nodes) {
        for (const quxml::Node* node : nodes) {
            if (const auto* element = dynamic_cast<const quxml::Element*>(node))
                for (const quxml::Attribute* attribute : element->get_attributes())
                    add(attribute->get_name());
        }
    }

    void add_names(const Nodes& nodes) {
        for (const quxml::Node* node : nodes)
            add(node->get_name());
    }

    /// What a path selects; nothing if it cannot be understood. A set of all nodes would take longer than the walk.
    Nodes select(const std::string& path) const {
        try {
            const std::vector<PathStep> steps = get_steps({path, {}});
            require_no_fault({path, {}}, steps);
            return PathWalk(NameMatch::whole).take(steps, document.get_root_node());
        } catch (const Failure&) {
            return {};
        }
    }

    std::vector<std::string> take() { return std::move(found); }

private:
    /// Texts have no name.
    void add(const std::string& name) {
        if (!name.empty() && begins_with(name, beginning) && known.insert(name).second)
            found.push_back(head + name);
    }

    const quxml::Document& document;
    std::string head;
    std::string beginning;
    std::unordered_set<std::string> known;
    std::vector<std::string> found;
};

/// Whether the name test of the step in which a predicate begins is empty or ends with a star.
bool takes_any_name(const std::string& path, std::size_t bracket) {
    const std::size_t step = get_place_after(path.rfind('/', bracket));
    const std::size_t name_end = path.find('[', step);
    return name_end == step || path[name_end - 1] == '*';
}

/// Whether a predicate may look at the text of a child, or count texts: "*" selects them too.
bool may_ask_for_text(const std::string& path, std::size_t bracket) {
    const std::string predicate = path.substr(bracket + 1, path.find(']', bracket) - bracket - 1);
    if (contains(predicate, "position()") || contains(predicate, "last()"))
        return takes_any_name(path, bracket);
    return predicate.empty() ||
           (predicate.front() != '@' && predicate.find_first_not_of("0123456789") != std::string::npos);
}

}  // namespace

NeededParts get_needed_parts(const std::string& beginning) {
    const std::size_t first = beginning.find_first_of("[]");
    if (first == std::string::npos || beginning.find_first_of("/[]", first + 1) == std::string::npos)
        return NeededParts::names;
    for (std::size_t bracket = beginning.find('['); bracket != std::string::npos;
         bracket = beginning.find('[', bracket + 1)) {
        if (may_ask_for_text(beginning, bracket))
            return NeededParts::everything;
    }
    return NeededParts::elements;
}

std::vector<std::string> get_completions(const quxml::Document& document, const std::string& beginning) {
    const std::size_t step = get_place_after(beginning.rfind('/'));
    const std::size_t bracket =
        beginning.find('[', step) == std::string::npos ? std::string::npos : beginning.rfind('[');
    if (bracket != std::string::npos) {
        if (beginning.compare(bracket, 2, "[@") != 0)
            return {};
        Completions completions(document, beginning, bracket + 2);
        completions.add_attributes_of(completions.select(beginning.substr(0, bracket)));
        return completions.take();
    }
    Completions completions(document, beginning, step);
    const std::string head = beginning.substr(0, step);
    if (step <= 1)
        completions.add_names({document.get_root_node()});
    else
        completions.add_names(completions.select(head + '*'));
    return completions.take();
}

}  // namespace tool
