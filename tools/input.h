#ifndef QUXML_TOOLS_INPUT_H
#define QUXML_TOOLS_INPUT_H

#include <quxml/Document.h>

#include <memory>
#include <string>

namespace tool {

/// The FILE of a command line that names none.
constexpr const char* standard_input = "-";

/// How messages call a file: by its name, or "standard input" for "-".
std::string name_of(const std::string& file);

/// The whole text of a file, or of standard input for "-".
/// \throws Failure  (io) with the file's name.
std::string read_text(const std::string& file);

/// The document in a file, or in standard input for "-".
/// \throws Failure  (io, malformed) with the file's name.
std::shared_ptr<quxml::Document> read_document(const std::string& file, bool keep_sorted);

}  // namespace tool

#endif
