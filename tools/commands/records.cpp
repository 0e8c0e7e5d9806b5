// SPDX-License-Identifier: MIT
#include "commands/records.h"

#include <quxml/Attribute.h>
#include <quxml/Element.h>

#include <optional>

#include "terminal/json.h"
#include "trees/columns.h"
#include "trees/text.h"

namespace tool {

namespace {

std::string to_json_or_null(const std::optional<std::string>& value) {
    return value ? to_json(*value) : "null";
}

std::string get_attributes_as_object(const quxml::Node& match) {
    JsonObject object;
    if (const auto* element = dynamic_cast<const quxml::Element*>(&match)) {
        for (const quxml::Attribute* attribute : element->get_attributes())
            object.add(attribute->get_name(), to_json(attribute->get_value()));
    }
    return object.get();
}

}  // namespace

std::string escape_for_line(const std::string& value) {
    std::string escaped;
    for (const char byte : value) {
        if (byte == '\t')
            escaped += "\\t";
        else if (byte == '\n')
            escaped += "\\n";
        else if (byte == '\r')
            escaped += "\\r";
        else if (byte == '\\')
            escaped += "\\\\";
        else
            escaped += byte;
    }
    return escaped;
}

std::string get_header(const std::vector<std::string>& columns) {
    std::string line;
    for (const std::string& column : columns)
        line += (line.empty() ? "" : "\t") + column;
    return line;
}

std::string get_row(const quxml::Node& match, const std::vector<std::string>& columns) {
    std::string line;
    for (const std::string& column : columns)
        line += escape_for_line(get_value(match, column).value_or("")) + '\t';
    line.pop_back();
    return line;
}

JsonObject& JsonObject::add(const std::string& key, const std::string& value) {
    text += (text.empty() ? "" : ", ") + to_json(key) + ": " + value;
    return *this;
}

JsonObject add_columns(JsonObject object, const quxml::Node& match, const std::vector<std::string>& columns) {
    for (const std::string& column : columns)
        object.add(column, to_json_or_null(get_value(match, column)));
    return object;
}

JsonObject add_all(JsonObject object, const quxml::Node& match, quxml::extras::NodePaths& paths) {
    object.add("name", to_json(match.get_name()))
        .add("path", to_json(paths.get(match)))
        .add("attributes", get_attributes_as_object(match))
        .add("text", to_json(get_text(match)));
    return object;
}

}  // namespace tool
