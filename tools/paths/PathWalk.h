// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_PATH_WALK_H
#define QUXML_TOOLS_PATHS_PATH_WALK_H

#include <quxml/Node.h>
#include <quxml/XPathHelper.h>

#include <vector>

#include "paths/names.h"
#include "paths/steps.h"

namespace tool {

using Nodes = std::vector<quxml::Node*>;

/// Goes along a path step by step, so that values may be given for names, and so that it can be seen how far a path
/// leads.
class PathWalk {
public:
    explicit PathWalk(NameMatch names) : comparator(get_comparator(names)), library(comparator) {}

    /// What a step selects, in document order.
    /// \param step  without a fault
    /// \param from  what the step before has selected, in document order; the root element before the first step.
    Nodes take(const PathStep& step, const Nodes& from) const;

    /// What all steps select.
    Nodes take(const std::vector<PathStep>& steps, quxml::Node* root) const;

    /// The children of a node that a step selects among children, with the first of its predicates only.
    /// \param count  of predicates, no more than the step has
    quxml::NodeList get_children(quxml::Node* parent, const PathStep& step, std::size_t count) const;

    /// Whether the name of a single node passes, whatever the predicate.
    bool passes_name_test(quxml::Node* node, const PathStep& step) const;

private:
    void search(quxml::Node* node, const PathStep& step, Nodes& found) const;
    bool passes(quxml::Node* node, const PathStep& step) const;
    bool passes_given(quxml::Node* node, const Predicate& predicate) const;
    quxml::NodeList filter(quxml::NodeList nodes, const Predicate& predicate) const;
    quxml::NodeList filter_given(quxml::NodeList nodes, const Predicate& predicate) const;

    quxml::StringComparator comparator;
    quxml::XPathHelper library;
};

}  // namespace tool

#endif
