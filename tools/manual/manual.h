// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_MANUAL_MANUAL_H
#define QUXML_TOOLS_MANUAL_MANUAL_H

#include <CLI/CLI.hpp>
#include <string>

namespace tool {

/// The manual page, for the program "man".
std::string get_manual(const CLI::App& app, const std::string& version);

}  // namespace tool

#endif
