// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TREES_NODE_PATHS_H
#define QUXML_TOOLS_TREES_NODE_PATHS_H

#include <quxml/Node.h>

#include <string>
#include <unordered_map>

namespace tool {

/// Paths that select exactly one node of a document that was read: what is counted are the siblings whose
/// names are the same without regard to case, as queries see them. A text is all that its element has, so a
/// path with a "/" at its end selects it.
class NodePaths {
public:
    std::string get(const quxml::Node& node);

private:
    const std::string& get_step(const quxml::Node& node);
    void number_children(const quxml::Node& parent);

    std::unordered_map<const quxml::Node*, std::string> steps;
};

}  // namespace tool

#endif
