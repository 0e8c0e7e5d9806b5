// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_INPUT_H
#define QUXML_TOOLS_READING_INPUT_H

#include <quxml/Document.h>

#include <memory>
#include <string>

namespace tool {

/// The whole text of a file, or of standard input for "-".
/// \throws Failure  (io) with the file's name.
std::string read_text(const std::string& file);

/// What becomes of the errors in a document.
enum class Errors { written, silent };

/// The document in a text that was read from `file`. What is wrong with it is written to standard error.
/// \throws Failure  (io, malformed)
std::shared_ptr<quxml::Document> parse_document(const std::string& file, const std::string& text,
                                                Errors errors = Errors::written);

}  // namespace tool

#endif
