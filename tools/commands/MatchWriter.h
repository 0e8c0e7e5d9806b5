// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_COMMANDS_MATCH_WRITER_H
#define QUXML_TOOLS_COMMANDS_MATCH_WRITER_H

#include <quxml/Node.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace tool {

/// What is written of matches, and how. At most one of the first five is wanted; if none is, it is XML or, with `json`,
/// all that an object can hold of a match.
struct MatchFormat {
    bool value = false;
    std::string attribute;
    bool node_path = false;
    bool count = false;
    std::vector<std::string> columns;
    bool header = false;  // above the columns
    bool json = false;
    bool null = false;           // zero bytes instead of line feeds
    bool with_filename = false;  // each match with the file that it is in
    bool several = false;        // there is more than one file
};

/// Writes the matches in files to standard output.
class MatchWriter {
public:
    explicit MatchWriter(const MatchFormat& wanted) : format(wanted), end(wanted.null ? '\0' : '\n') {}

    /// Writes the matches in a file, or how many there are.
    /// \throws OutputFailure
    void write(const std::string& file, const std::vector<quxml::Node*>& matches);

    /// Writes what stands after all matches, if any file could be asked.
    /// \throws OutputFailure
    void close();

    /// False once nobody reads any more what is written.
    bool has_reader() const { return is_read; }

private:
    using ToText = std::function<std::string(const quxml::Node&)>;

    ToText choose_text() const;
    ToText choose_json(const std::string& file) const;
    std::string get_prefix(const std::string& file) const;
    std::string get_count(const std::string& file, std::size_t count) const;
    bool is_array() const { return format.json && (!format.count || format.several || format.with_filename); }

    void open();
    void add_all(const std::string& file, const std::vector<quxml::Node*>& matches);
    void add(const std::string& record);
    void flush();

    const MatchFormat& format;
    char end;  // of each match, or of JSON
    std::string text;
    bool is_open = false;
    bool has_record = false;
    bool is_read = true;
};

}  // namespace tool

#endif
