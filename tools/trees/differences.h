// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TREES_DIFFERENCES_H
#define QUXML_TOOLS_TREES_DIFFERENCES_H

#include <quxml/Node.h>

#include <functional>
#include <string>

namespace tool {

/// Takes each difference, as one line without its end; false ends the comparison.
using TakeDifference = std::function<bool(const std::string& line)>;

/// Compares two documents by their root elements, by content: the order of attributes does not count, nor that of
/// children with different names or items. Namesakes without items are matched in their order.
void find_differences(const quxml::Node& one, const quxml::Node& other, const TakeDifference& take);

}  // namespace tool

#endif
