// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_COMMANDS_H
#define QUXML_TOOLS_COMMANDS_COMMANDS_H

#include <functional>

#include "terminal/exit_codes.h"

namespace CLI {
class App;
}  // namespace CLI

namespace tool {

/// Does the work of a command once the whole command line has been understood.
using Action = std::function<ExitCode()>;

/// Each of these adds one command, in a file of its own. Reading a command line that names the command sets
/// `action`.
void add_add(CLI::App& app, Action& action);
void add_check(CLI::App& app, Action& action);
void add_complete(CLI::App& app, Action& action);
void add_diff(CLI::App& app, Action& action);
void add_edit(CLI::App& app, Action& action);
void add_explain(CLI::App& app, Action& action);
void add_format(CLI::App& app, Action& action);
void add_loss(CLI::App& app, Action& action);
void add_outline(CLI::App& app, Action& action);
void add_query(CLI::App& app, Action& action);
void add_remove(CLI::App& app, Action& action);
void add_set(CLI::App& app, Action& action);
void add_sort(CLI::App& app, Action& action);
void add_text(CLI::App& app, Action& action);
void add_unset(CLI::App& app, Action& action);

}  // namespace tool

#endif
