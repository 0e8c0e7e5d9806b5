// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_RECORDS_H
#define QUXML_TOOLS_COMMANDS_RECORDS_H

#include <quxml/Node.h>
#include <quxml/extras/paths.h>

#include <string>
#include <vector>

namespace tool {

// Several values of a match, as `query` writes them. `trees/columns.h` describes columns.

/// The names of columns, with tabs between them.
std::string get_header(const std::vector<std::string>& columns);

/// The values, with tabs between them, and empty where they are absent; what would break the line is escaped.
std::string get_row(const quxml::Node& match, const std::vector<std::string>& columns);

/// A value as it stands in a row.
std::string escape_for_line(const std::string& value);

/// An object of JSON, member by member.
class JsonObject {
public:
    /// \param value  JSON
    JsonObject& add(const std::string& key, const std::string& value);

    std::string get() const { return '{' + text + '}'; }

private:
    std::string text;
};

/// The object with the columns as further keys; null where a value is absent.
JsonObject add_columns(JsonObject object, const quxml::Node& match, const std::vector<std::string>& columns);

/// The object with name, path, attributes and text.
JsonObject add_all(JsonObject object, const quxml::Node& match, quxml::extras::NodePaths& paths);

}  // namespace tool

#endif
