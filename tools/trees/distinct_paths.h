// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TREES_DISTINCT_PATHS_H
#define QUXML_TOOLS_TREES_DISTINCT_PATHS_H

#include <quxml/Element.h>

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace tool {

/// All elements with the same names from the root element down to them, or all attributes with the same name of such
/// elements. Upper and lower case count.
struct DistinctPath {
    std::string name;        // with @ before it for an attribute
    std::size_t parent = 0;  // its number
    std::size_t depth = 0;   // 1 for a root element
    std::size_t count = 0;
    std::string
        example;  // the first value that is not empty, as `quote_excerpt` gives it; empty if there is none

    // Their numbers, in order of first appearance.
    std::vector<std::size_t> attributes;
    std::vector<std::size_t> children;
};

/// The distinct paths of one or more documents.
class DistinctPaths {
public:
    DistinctPaths() : paths(1), known(1) {}

    /// Adds a document, in time linear in its size.
    void add(const quxml::Element& root);

    /// Each path once, in order of first appearance. The first one, whose number is 0, has no name: its children are the
    /// root elements.
    const std::vector<DistinctPath>& get() const { return paths; }

private:
    std::size_t count(std::size_t parent, const std::string& name);
    void append(std::size_t parent, const std::string& name);
    void count_attributes(const quxml::Element& element, std::size_t path);

    std::vector<DistinctPath> paths;
    std::vector<std::unordered_map<std::string, std::size_t>> known;  // the numbers below each path, by name
};

/// Whether it is one of attributes.
inline bool is_attribute(const DistinctPath& path) {
    return !path.name.empty() && path.name.front() == '@';
}

}  // namespace tool

#endif
