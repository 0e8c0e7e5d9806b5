// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_DOCS_SOURCE_TABLES_H
#define QUXML_TESTS_DOCS_SOURCE_TABLES_H

// Compares tables of the documentation with the repository: with the names that it declares and the files that it has.

#include <map>
#include <string>

#include "markdown.h"

namespace quxml_test {

/// Checks a table of a page; the subject is what stands after ": " in the comment above it.
using SourceCheck = void (*)(const Page& page, const Table& table, const std::string& subject);

/// The checks by the words of the comment, such as "files" for `<!-- files: src/dom -->`.
const std::map<std::string, SourceCheck>& source_checks();

}  // namespace quxml_test

#endif
