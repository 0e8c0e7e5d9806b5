// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_RECORDS_H
#define QUXML_TOOLS_COMMANDS_RECORDS_H

#include <quxml/Node.h>

#include <string>
#include <vector>

#include "trees/node_paths.h"

namespace tool {

// Several values of a match, as `query` writes them. `trees/columns.h` describes columns.

/// The names of columns, with tabs between them.
std::string get_header(const std::vector<std::string>& columns);

/// The values, with tabs between them, and empty where they are absent; what would break the line is escaped.
std::string get_row(const quxml::Node& match, const std::vector<std::string>& columns);

/// An object of JSON with the columns as keys; null where a value is absent.
std::string get_object(const quxml::Node& match, const std::vector<std::string>& columns);

/// An object of JSON with name, path, attributes and text.
std::string get_object(const quxml::Node& match, NodePaths& paths);

}  // namespace tool

#endif
