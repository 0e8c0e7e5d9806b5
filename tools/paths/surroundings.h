// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_SURROUNDINGS_H
#define QUXML_TOOLS_PATHS_SURROUNDINGS_H

#include <quxml/Element.h>

#include <string>

#include "paths/DistinctWords.h"
#include "paths/PathWalk.h"

namespace tool {

// What there is at some nodes, to be listed instead of what was asked for.

const quxml::Element* to_element(const quxml::Node* node);

/// The names of their attributes.
DistinctWords get_attributes(const Nodes& nodes);

/// The values of an attribute.
DistinctWords get_values(const Nodes& nodes, const std::string& attribute);

/// The elements in these nodes.
Nodes get_children(const Nodes& nodes);

/// All elements below some nodes, with these themselves if they are elements.
Nodes get_all(const Nodes& nodes);

/// The names of the nodes themselves.
DistinctWords get_names(const Nodes& nodes);

/// The texts of those that have a name.
DistinctWords get_texts(const Nodes& nodes, const std::string& name);

}  // namespace tool

#endif
