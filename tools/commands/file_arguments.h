// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_FILE_ARGUMENTS_H
#define QUXML_TOOLS_COMMANDS_FILE_ARGUMENTS_H

#include <string>
#include <vector>

#include "commands/hints.h"

namespace CLI {  // NOLINT(readability-identifier-naming): the name is CLI11's
class App;
}  // namespace CLI

namespace tool {

/// Adds to a command the last argument, FILE, of which there may be several.
void add_files_argument(CLI::App& command, std::vector<std::string>& files);

/// Whether nothing but standard input is read.
bool is_standard_input(const std::vector<std::string>& files);

/// Moves the FILEs out of words of which the first is something else. They begin with a word that looks like a file's name,
/// or with the last word.
/// \param is_other  whether a word is something else, however it looks; the last one, too
std::vector<std::string> take_files(std::vector<std::string>& words,
                                    bool (*is_other)(const std::string& word));

/// Refuses an argument that is also a file: it would be left out, and its name perhaps be written into the others.
/// \param advice  what to do if it is meant to be a file
/// \throws Failure  (usage)
void require_no_file(const Argument& argument, const std::string& advice);

/// How to write a file that could be something else.
std::string get_advice_on_files(const std::string& word);

/// \throws Failure  (usage) if standard input is there more than once.
void require_one_standard_input(const std::vector<std::string>& files);

/// Refuses a file that is there twice, perhaps by another name.
/// \throws Failure  (usage)
void require_distinct_files(const std::vector<std::string>& files);

}  // namespace tool

#endif
