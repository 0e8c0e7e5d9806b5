#ifndef QUXML_TOOLS_UNSEEN_H
#define QUXML_TOOLS_UNSEEN_H

#include <string>

namespace tool {

/// Warns of what a query answers as if it were not in the document: CDATA sections, text beside other content and
/// entity references. Comments and the like are no answer to any query, so nothing is said of them.
void warn_of_unseen(const std::string& file, const std::string& document);

}  // namespace tool

#endif
