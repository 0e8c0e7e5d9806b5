// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_EXTRAS_H
#define QUXML_EXTRAS_EXTRAS_H

/// \file
/// All of the extras: everyday work with trees in one line. They are a static library beside the library, use
/// its interface, and are included by it nowhere.

#include "SortedChildren.h"
#include "files.h"
#include "finding.h"
#include "paths.h"
#include "ranges.h"
#include "trees.h"
#include "values.h"
#include "writing.h"

namespace quxml {

/// Everyday work with trees in one line. Each header says what its functions throw, what stays valid and what they
/// cost; what they have in common stands at its top.
namespace extras {}

}  // namespace quxml

#endif
