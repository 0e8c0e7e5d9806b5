// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_MANUAL_COMPLETION_H
#define QUXML_TOOLS_MANUAL_COMPLETION_H

#include <CLI/CLI.hpp>
#include <string>

namespace tool {

/// What shells need to complete command lines.
std::string get_bash_completion(const CLI::App& app);
std::string get_zsh_completion(const CLI::App& app);

}  // namespace tool

#endif
