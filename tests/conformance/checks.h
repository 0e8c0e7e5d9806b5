// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_CONFORMANCE_CHECKS_H
#define QUXML_TESTS_CONFORMANCE_CHECKS_H

#include <string>
#include <vector>

namespace quxml_conformance {

struct Verdict {
    bool is_accepted = false;           // by libxml2
    bool is_carried = false;            // the tree could be compared with the one read from what was written
    std::vector<std::string> findings;  // empty if all is as it must be
};

/// Reads a text, plain and sorted, and compares the outcome with libxml2's: the tree, or the error. Checks
/// the links, writes and queries what was read.
Verdict check_text(const std::string& text);

}  // namespace quxml_conformance

#endif
