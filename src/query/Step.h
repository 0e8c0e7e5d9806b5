#ifndef QUXML_QUERY_STEP_H
#define QUXML_QUERY_STEP_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "Candidates.h"
#include "ListPredicate.h"
#include "NodePredicate.h"
#include "quxml/XPathHelper.h"

namespace quxml {

/// One step of a path, taken apart once: a name test and predicates.
class Step {
public:
    explicit Step(std::string step);

    /// An empty step stands between two "/" or after the last one.
    bool is_empty() const { return text.empty(); }

    /// Whether the step is exactly "*", which takes any node and has no predicates.
    bool is_star() const { return takes_any_name && !has_predicates(); }

    /// The single-node test: the name, and the text between the first "[" and the first "]".
    bool accepts(const Node* node, const StringComparator& comparator);

    /// The list filter: the children of `parent` whose names pass, with every predicate applied in order. An
    /// empty step selects them all.
    /// \param selected replaced by the children selected.
    void select_children(const Node* parent, const StringComparator& comparator, Candidates& selected);

private:
    bool has_predicates() const { return bracket != std::string::npos; }
    bool accepts_name(const Node* node, const StringComparator& comparator) const;
    void read_node_predicate();
    void read_list_predicates();

    std::string text;
    std::size_t bracket;    // of the first "["
    std::string name_test;  // what stands before it
    bool takes_any_name;    // the name test is "*"

    // Read when the step first needs them: a step is used in one way or in the other.
    std::optional<NodePredicate> node_predicate;
    std::optional<std::vector<ListPredicate>> list_predicates;
};

/// Takes apart a run of predicates, written `p1][p2` without the outer brackets.
std::vector<ListPredicate> read_predicates(const std::string& predicates);

}  // namespace quxml

#endif
