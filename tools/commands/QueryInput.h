// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_QUERY_INPUT_H
#define QUXML_TOOLS_COMMANDS_QUERY_INPUT_H

#include <quxml/Document.h>
#include <quxml/Node.h>

#include <memory>
#include <string>
#include <vector>

#include "commands/MatchWriter.h"
#include "reading/losses.h"

namespace tool {

/// A document that is queried. CDATA sections, text beside other content and entity references are content that a query
/// answers as if it were not there. Comments and the like are no answer to any query, so nothing is said of them.
struct QueryInput {
    std::string file;
    std::shared_ptr<quxml::Document> document;
    std::vector<Loss> unseen;
};

/// Reads the document in a file.
/// \throws Failure  (io, malformed)
QueryInput read_query_input(const std::string& file);

/// Warns of what queries do not see, if there is anything.
void warn_of_unseen(const QueryInput& input);

/// Refuses to write a value of which only a part is seen.
/// \throws Failure  (malformed)
void require_whole_values(const QueryInput& input, const MatchFormat& format,
                          const std::vector<quxml::Node*>& matches);

}  // namespace tool

#endif
