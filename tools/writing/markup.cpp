// SPDX-License-Identifier: MIT

// Where things stand is asked of libxml2, which the library reads with as well: the n-th start tag that it reports is
// the n-th element of the tree.
//
// For each open element it is known where it begins and, if it is one of those that are looked for, which.

#include "writing/markup.h"

#include <algorithm>

#include "reading/start_tag.h"
#include "reading/xml_events.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr std::size_t none = std::string_view::npos;
constexpr std::string_view line_end_characters = "\r\n";
/// How deeper levels are indented: by what a child that begins a line has before it and its parent, which does so as
/// well, has not. The first child for which that is not nothing decides.
class IndentFinder {
public:
    explicit IndentFinder(std::string_view text) : document(text) {}

    void take_child(std::size_t parent, std::size_t child) {
        if (!indent.empty())
            return;
        const std::size_t child_line = get_line_begin(document, child);
        const std::size_t parent_line = get_line_begin(document, parent);
        if (child_line == none || parent_line == none)
            return;
        has_lines = true;
        const std::string_view outer = document.substr(parent_line, parent - parent_line);
        const std::string_view inner = document.substr(child_line, child - child_line);
        if (begins_with(inner, outer))
            indent = inner.substr(outer.size());
    }

    std::string get() const { return has_lines ? indent : "  "; }

private:
    std::string_view document;
    bool has_lines = false;
    std::string indent;
};

class ExtentFinder {
public:
    ExtentFinder(std::string_view text, const std::vector<std::size_t>& wanted)
        : document(text), numbers(wanted), indents(text) {
        extents.reserve(wanted.size());
    }

    void take(const Event& event) {
        if (event.kind == EventKind::start_tag) {
            open(event);
        } else if (event.kind == EventKind::end_tag) {
            close(event);
        } else if (!opened.empty() && opened.back().extent != none) {
            note(extents[opened.back().extent], event);
        }
    }

    std::vector<Extent>& get_extents() { return extents; }

    std::string get_indent() const { return indents.get(); }

private:
    struct Open {
        std::size_t begin;
        std::size_t extent;  // among `extents`; none if it is not looked for
    };

    void open(const Event& event) {
        if (!opened.empty()) {
            indents.take_child(opened.back().begin, event.begin);
            if (opened.back().extent != none)
                note_child(extents[opened.back().extent], event);
        }
        const bool is_wanted = extents.size() < numbers.size() && numbers[extents.size()] == count;
        opened.push_back({event.begin, is_wanted ? extents.size() : none});
        if (is_wanted)
            add_extent(event);
        ++count;
    }

    void add_extent(const Event& event) {
        Extent extent{event.begin, event.end + 1};
        extent.is_empty_tag = document[event.end] == '/';
        extent.tag_end += extent.is_empty_tag ? 1 : 0;
        extent.loses_prefix = event.element_loses_prefix;
        extent.attributes_losing_prefix = event.prefixed_attributes;
        extents.push_back(std::move(extent));
    }

    void close(const Event& event) {
        const std::size_t index = opened.back().extent;
        opened.pop_back();
        mate_end = none;
        if (index == none)
            return;
        extents[index].content_end = event.begin;
        extents[index].end = event.end;
    }

    void note(Extent& extent, const Event& event) {
        switch (event.kind) {
            case EventKind::comment:
                ++extent.comments;
                note_mate(extent, event);
                break;
            case EventKind::instruction:
                ++extent.instructions;
                note_mate(extent, event);
                break;
            case EventKind::entity:
                ++extent.references;
                note_mate(extent, event);
                break;
            case EventKind::cdata:
                ++extent.sections;
                mate_end = none;
                break;
            default:
                extent.has_text = extent.has_text || !is_white_space(event.content);
        }
    }

    /// What stands before a child on the same line, if it is no element.
    void note_mate(Extent& extent, const Event& event) {
        mate_begin = get_begin_with_mates(event.begin);
        mate_end = event.end;
        if (extent.elements == 0)
            extent.last_child = mate_begin;
    }

    void note_child(Extent& extent, const Event& event) {
        ++extent.elements;
        extent.last_child = get_begin_with_mates(event.begin);
        mate_end = none;
    }

    std::size_t get_begin_with_mates(std::size_t begin) const {
        const bool has_mate = mate_end != none && mate_end <= begin &&
                              document.substr(mate_end, begin - mate_end).find_first_not_of(" \t") == none;
        return has_mate ? mate_begin : begin;
    }

    std::string_view document;
    const std::vector<std::size_t>& numbers;
    IndentFinder indents;
    std::vector<Extent> extents;
    std::vector<Open> opened;
    std::size_t count = 0;
    std::size_t mate_begin = 0;
    std::size_t mate_end = none;
};

}  // namespace

std::string find_line_end(std::string_view document) {
    const std::size_t end = document.find_first_of(line_end_characters);
    if (end == none || document[end] == '\n')
        return "\n";
    return document.substr(end, 2) == "\r\n" ? "\r\n" : "\r";
}

Markup find_extents(std::string_view document, const std::vector<std::size_t>& numbers) {
    ExtentFinder finder(document, numbers);
    read_events(document, [&](const Event& event) { finder.take(event); });
    return {std::move(finder.get_extents()), finder.get_indent(), find_line_end(document)};
}

std::string_view get_written_name(std::string_view document, const Extent& extent) {
    const std::size_t begin = extent.begin + 1;
    return document.substr(begin, get_name_end(document, extent.begin) - begin);
}

std::size_t get_line_begin(std::string_view document, std::size_t position) {
    const std::size_t before = document.substr(0, position).find_last_not_of(" \t");
    if (before == none)
        return 0;
    return line_end_characters.find(document[before]) == none ? none : before + 1;
}

}  // namespace tool
