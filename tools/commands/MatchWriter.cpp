// SPDX-License-Identifier: MIT
#include "commands/MatchWriter.h"

#include <quxml/Element.h>
#include <quxml/extras/paths.h>
#include <quxml/extras/writing.h>

#include "commands/records.h"
#include "terminal/json.h"
#include "terminal/messages.h"
#include "terminal/output.h"
#include "trees/text.h"

namespace tool {

namespace {

/// Output is passed on when this much has gathered.
constexpr std::size_t block_size = 65536;

/// Text is written compact: formatted text ends with a line feed or not, depending on its siblings.
std::string get_xml(const quxml::Node& match) {
    if (dynamic_cast<const quxml::Element*>(&match) == nullptr)
        return quxml::extras::to_text(match);
    std::string text = quxml::extras::to_text(match, quxml::extras::Layout());
    text.pop_back();  // the line feed that closes it
    return text;
}

std::string get_attribute_of(const quxml::Node& match, const std::string& name) {
    return dynamic_cast<const quxml::Element&>(match).get_attribute_value(name);
}

/// Whether each match is one text.
bool is_text(const MatchFormat& format) {
    return format.value || format.node_path || !format.attribute.empty();
}

/// An object that begins with the file, if that is wanted.
JsonObject get_object(const MatchFormat& format, const std::string& file) {
    JsonObject object;
    if (format.with_filename)
        object.add("file", to_json(file));
    return object;
}

}  // namespace

MatchWriter::ToText MatchWriter::choose_text() const {
    if (!format.columns.empty())
        return [this](const quxml::Node& match) { return get_row(match, format.columns); };
    if (format.value)
        return get_text;
    if (!format.attribute.empty())
        return [this](const quxml::Node& match) { return get_attribute_of(match, format.attribute); };
    if (format.node_path)
        return [paths = quxml::extras::NodePaths()](const quxml::Node& match) mutable {
            return paths.get(match);
        };
    return get_xml;
}

MatchWriter::ToText MatchWriter::choose_json(const std::string& file) const {
    const JsonObject start = get_object(format, file);
    if (is_text(format) && !format.with_filename)
        return [to_text = choose_text()](const quxml::Node& match) { return to_json(to_text(match)); };
    if (is_text(format))
        return [start, to_text = choose_text()](const quxml::Node& match) {
            return JsonObject(start).add("value", to_json(to_text(match))).get();
        };
    if (!format.columns.empty())
        return [this, start](const quxml::Node& match) {
            return add_columns(start, match, format.columns).get();
        };
    return [start, paths = quxml::extras::NodePaths()](const quxml::Node& match) mutable {
        return tool::add_all(start, match, paths).get();
    };
}

/// What stands before a match that is not JSON. With zero bytes the name of the file is left as it is, and a zero byte
/// follows it, too: it may hold colons and line feeds.
std::string MatchWriter::get_prefix(const std::string& file) const {
    if (!format.with_filename || format.json)
        return "";
    if (!format.columns.empty())
        return escape_for_line(file) + '\t';
    return format.null ? file + '\0' : get_label(file) + ':';
}

std::string MatchWriter::get_count(const std::string& file, std::size_t count) const {
    const std::string number = std::to_string(count);
    if (format.json && format.with_filename)
        return get_object(format, file).add("count", number).get();
    return get_prefix(file) + number;
}

void MatchWriter::write(const std::string& file, const std::vector<quxml::Node*>& matches) {
    open();
    if (format.count)
        add(get_count(file, matches.size()));
    else
        add_all(file, matches);
    // What follows a line of JSON is not known yet, and a message about the next file needs a line of its own.
    if (!is_array())
        flush();
}

void MatchWriter::add_all(const std::string& file, const std::vector<quxml::Node*>& matches) {
    const std::string prefix = get_prefix(file);
    const ToText to_text = format.json ? choose_json(file) : choose_text();
    for (auto match = matches.begin(); match != matches.end() && is_read; ++match) {
        add(prefix + to_text(**match));
        if (text.size() >= block_size)
            flush();
    }
}

void MatchWriter::close() {
    if (is_open && is_array())
        text += std::string(has_record ? "\n]" : "]") + end;
    flush();
}

void MatchWriter::open() {
    if (is_open)
        return;
    is_open = true;
    if (is_array())
        text += '[';
    if (format.header)
        text += (format.with_filename ? "file\t" : "") + get_header(format.columns) + end;
}

void MatchWriter::add(const std::string& record) {
    if (is_array())
        text += has_record ? ",\n  " : "\n  ";
    text += record;
    if (!is_array())
        text += end;
    has_record = true;
}

void MatchWriter::flush() {
    is_read = is_read && (text.empty() || write_output(text));
    text.clear();
}

}  // namespace tool
