// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_CREATION_H
#define QUXML_TOOLS_COMMANDS_CREATION_H

#include <quxml/Element.h>

#include <vector>

#include "paths/selection.h"
#include "paths/steps.h"
#include "writing/EditedDocument.h"

namespace tool {

/// Refuses a path from which nothing can be made.
/// \throws Failure  (bad_query)
void require_makeable(const Path& path);

/// The elements that a path selects. If there are none, those that it misses are added to the document, each after the
/// others of its parent, so that the path selects one. The root element is never made.
/// \throws Failure  (bad_query, no_match, malformed)
std::vector<quxml::Element*> select_or_create(EditedDocument& document, const Path& path,
                                              const PathNotes& notes);

/// Whether an element has one in it that is as a new one would be.
bool has_such_child(const quxml::Element& parent, const NewElement& wanted);

}  // namespace tool

#endif
