// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_NAMES_H
#define QUXML_TOOLS_PATHS_NAMES_H

#include <quxml/XPathHelper.h>

namespace tool {

/// How the names in a path are compared, in either way without regard to case.
enum class NameMatch { whole, prefix };

/// The comparison that a query of the library makes in the program, which leaves the locale as it is: only letters of
/// ASCII have an upper and a lower case.
quxml::StringComparator get_comparator(NameMatch names);

}  // namespace tool

#endif
