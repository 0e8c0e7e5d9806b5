// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_MANUAL_COMPLAINTS_H
#define QUXML_TOOLS_MANUAL_COMPLAINTS_H

#include <CLI/CLI.hpp>
#include <string>

namespace tool {

/// What is wrong with a word of the command line that nothing takes, and what it is perhaps meant to be. Empty if all
/// words are taken.
std::string get_complaint(const CLI::App& app);

}  // namespace tool

#endif
