// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_LINE_DIFFERENCES_H
#define QUXML_TOOLS_WRITING_LINE_DIFFERENCES_H

#include <cstddef>
#include <string_view>
#include <vector>

namespace tool {

/// Lines of one text that stand in the place of lines of another, by their numbers from 0 on.
struct LineDifference {
    std::size_t begin;
    std::size_t end;
    std::size_t other_begin;
    std::size_t other_end;
};

/// The lines in which two texts differ, from first to last, and few of them; lines before and after each are common to
/// both.
std::vector<LineDifference> find_line_differences(const std::vector<std::string_view>& lines,
                                                  const std::vector<std::string_view>& others);

}  // namespace tool

#endif
