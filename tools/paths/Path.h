// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_PATH_H
#define QUXML_TOOLS_PATHS_PATH_H

#include <map>
#include <string>

namespace tool {

/// Values by their names.
using Values = std::map<std::string, std::string>;

/// A path, and the values that are given for the names in it: `$NAME`, as all that a predicate compares with, stands
/// for a value, whatever that holds. Without any value a `$` is a character like others.
struct Path {
    std::string text;
    Values values;
};

}  // namespace tool

#endif
