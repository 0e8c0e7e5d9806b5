// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_PATHS_H
#define QUXML_EXTRAS_PATHS_H

#include <quxml/Node.h>

#include <string>
#include <unordered_map>

namespace quxml {
namespace extras {

/// A path that selects a node and no other when it is queried at the root, for example
/// "/settings/server[position()=2]/port". A position counts the siblings whose names are the same without
/// regard to case under the global locale, as queries see them; it is left out where there is only one.
///
/// A text has the path of its parent with "/" at the end, which selects all children of the parent, and an
/// attribute that of its element with "/@" and its name, which selects nothing. Names that hold a "/", a
/// bracket or an asterisk give paths that say where the node is and select something else.
/// \return an absolute path, for a free-standing node the one that it has as a root. A copy.
/// \throws std::bad_alloc
/// \par Complexity
/// Linear in the siblings of the node and of everything above it.
std::string path_of(const Node& node);

/// Paths of many nodes of one tree, which must not change meanwhile: all children of a node are numbered when
/// the path of one is asked for, so the paths of all nodes take no more than one walk and their own length.
class NodePaths {
public:
    /// As `path_of`.
    /// \return a copy.
    /// \throws std::bad_alloc what has been asked for before can be asked for again.
    /// \par Complexity
    /// Linear in the length of the path, and once in the children of each node above.
    std::string get(const Node& node);

private:
    const std::string& get_step(const Node& node);
    void number_children(const Node& parent);

    std::unordered_map<const Node*, std::string> steps;
};

}  // namespace extras
}  // namespace quxml

#endif
