// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_PATHS_SELECTION_H
#define QUXML_TOOLS_PATHS_SELECTION_H

#include <quxml/Document.h>
#include <quxml/Node.h>

#include <functional>
#include <string>
#include <vector>

#include "paths/Note.h"
#include "paths/names.h"
#include "paths/steps.h"
#include "terminal/Failure.h"

namespace tool {

/// Takes each note on a path: on surprises and, if it selects nothing, on what may be the reason. An empty one wants none.
using PathNotes = std::function<void(const Note& note)>;

/// The nodes that a path selects from the root element, in document order.
/// \throws Failure  (bad_query)
std::vector<quxml::Node*> select(const quxml::Document& document, const Path& path, const PathNotes& notes,
                                 NameMatch names = NameMatch::whole);

/// Gives what there is to say about a path and the nodes that it selects: surprises, and if there are none, the reason.
/// \param start  at which the path begins
/// \param steps  of the path, without a fault
void give_notes(quxml::Node* start, const std::vector<PathStep>& steps,
                const std::vector<quxml::Node*>& nodes, NameMatch names, const PathNotes& notes);

/// A path that is refused, with the reason.
Failure bad_query(const Path& path, const std::string& reason);

/// Where the library refuses a predicate, and why: the first one of the path. Empty if there is none.
std::string get_fault(const std::vector<PathStep>& steps);

/// Refuses a path with a predicate that the library refuses.
/// \throws Failure  (bad_query)
void require_no_fault(const Path& path, const std::vector<PathStep>& steps);

/// Refuses a path with a gap in it, as scripts make it of a variable that is not set: it would select too much.
/// \throws Failure  (bad_query)
void require_no_gap(const Path& path);

/// The elements that a path selects, for a command that changes them; the path must have no gap.
/// \throws Failure  (bad_query, or no_match if there are none)
std::vector<quxml::Element*> select_elements(const quxml::Document& document, const Path& path,
                                             const PathNotes& notes);

}  // namespace tool

#endif
