// SPDX-License-Identifier: MIT
#ifndef QUXML_QUERY_STEP_H
#define QUXML_QUERY_STEP_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "Candidates.h"
#include "ListPredicate.h"
#include "NodePredicate.h"
#include "comparators.h"

namespace quxml {

/// One step of a path: a name test and predicates. A path may have millions of steps, so a step is four words
/// that look into the path's text, which must outlive it; predicates are read when the step first needs them.
class Step {
public:
    explicit Step(std::string_view step);

    /// An empty step stands between two "/" or after the last one.
    bool is_empty() const { return text.empty(); }

    /// Whether the step is exactly "*", which takes any node and has no predicates.
    bool is_star() const { return text == "*"; }

    bool has_predicates() const { return name_size != text.size(); }

    /// The name test where single nodes are tested. None passes an empty step.
    NameTest test_of_node(NameComparator& names) const;

    /// The name test where children are selected. Any passes an empty step.
    NameTest test_of_child(NameComparator& names) const;

    /// The rest of the single-node test, for a node whose name has passed: the text between the first "[" and
    /// the first "]".
    bool accepts_by_predicate(const Node* node) {
        return !has_predicates() || get_node_predicate().accepts(node);
    }

    /// The single-node test.
    bool accepts(const Node* node, NameComparator& names) {
        return test_of_node(names).accepts(node) && accepts_by_predicate(node);
    }

    /// The list filter: the children of `parent` whose names pass, with every predicate applied in order.
    /// \param selected replaced by the children selected.
    void select_children(const Node* parent, NameComparator& names, Candidates& selected);

private:
    /// A step is used in one way or in the other.
    struct Predicates {
        std::optional<NodePredicate> of_node;
        std::vector<ListPredicate> of_list;
    };

    std::string_view name_test() const { return text.substr(0, name_size); }
    bool takes_any_name() const { return name_size == 1 && text.front() == '*'; }
    const NodePredicate& get_node_predicate();
    void note_before_testing(const Node* parent, NameComparator& names, Candidates& selected) const;
    void test_before_noting(const Node* parent, NameComparator& names, Candidates& selected) const;
    std::vector<ListPredicate>& get_list_predicates();

    std::string_view text;
    std::size_t name_size;  // of what stands before the first "["
    std::unique_ptr<Predicates> predicates;
};

/// Cuts a path, or the rest of one, at every "/".
std::vector<Step> read_steps(std::string_view path);

/// Takes apart a run of predicates, written `p1][p2` without the outer brackets. Empty ones, which leave
/// every list as it is, are left out.
std::vector<ListPredicate> read_predicates(std::string_view predicates);

}  // namespace quxml

#endif
