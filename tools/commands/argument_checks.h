// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_ARGUMENT_CHECKS_H
#define QUXML_TOOLS_COMMANDS_ARGUMENT_CHECKS_H

#include <string>
#include <utility>
#include <vector>

namespace tool {

/// Whether an element or an attribute can have this name and keep it when it is read back: a prefix would be
/// dropped.
bool is_name(const std::string& text);

/// What is wrong with a name, as a check of an argument; empty if nothing is.
std::string check_name(const std::string& text);

/// The same for the columns of a table, with commas between them: NAME, @NAME or a dot. Here a name can have a prefix,
/// since one that is not declared stays in the name.
std::string check_columns(const std::string& text);

/// The parts of a text between its commas.
std::vector<std::string> split_at_commas(const std::string& text);

/// Whether a text is NAME=VALUE.
bool is_setting(const std::string& text);

/// The same as `check_name`, for NAME=VALUE.
std::string check_setting(const std::string& text);

/// The same for a whole number, as items are.
std::string check_number(const std::string& text);

/// \throws Failure  (usage) for what is not a name, or not NAME=VALUE
void require_name(const std::string& argument, const std::string& text);
void require_setting(const std::string& argument, const std::string& text);

/// \throws Failure  (usage) if a name is there twice.
void require_distinct(const std::string& argument, std::vector<std::string> names);

/// The names of several NAME=VALUE.
std::vector<std::string> get_setting_names(const std::vector<std::string>& settings);

/// NAME and VALUE of several NAME=VALUE.
std::vector<std::pair<std::string, std::string>> split_settings(const std::vector<std::string>& settings);

}  // namespace tool

#endif
