// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_PATH_ARGUMENTS_H
#define QUXML_TOOLS_COMMANDS_PATH_ARGUMENTS_H

#include <string>
#include <vector>

#include "paths/steps.h"

namespace CLI {  // NOLINT(readability-identifier-naming): the name is CLI11's
class App;
}  // namespace CLI

namespace tool {

/// Adds to a command the argument PATH, and the option that gives values for names in it.
void add_path_arguments(CLI::App& command, Path& path, const std::string& description);

/// Adds to a command just that option.
void add_values_option(CLI::App& command, Values& values);

/// Refuses a value whose name stands in none of the paths: it would be ignored. A name without a value, which may be
/// the same one misspelt, is left to the query, which refuses it.
/// \throws Failure  (usage)
void require_all_named(const Values& values, const std::vector<Path>& paths);

}  // namespace tool

#endif
