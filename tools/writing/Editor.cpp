// SPDX-License-Identifier: MIT

// Each edit becomes patches of the text that change as little as possible, and keep the way in which the document is laid
// out.
//
// An attribute that is there keeps its place and its quotes; a new one follows the last, at the same distance and between the
// same quotes. An element that is added stands after everything in its parent, with the same white space before it as the
// last child there has. A parent without children gets its first line from its own indentation
// and from what each level of the document adds to it. An element that is removed takes its lines along if nothing else
// stands on them.
//
// What the library reads must come out as it was meant. An element that holds nothing but white space has that for a text,
// unless a line end comes first; so what remains when the last child goes may have to go too, and an edit after
// which a text would appear or vanish that nobody asked for is refused.

#include "writing/Editor.h"

#include <quxml/Attribute.h>
#include <quxml/extras/paths.h>

#include <algorithm>
#include <cstddef>

#include "reading/entities.h"
#include "reading/start_tag.h"
#include "terminal/Failure.h"
#include "terminal/words.h"
#include "trees/text.h"
#include "writing/references.h"

namespace tool {

namespace {

constexpr std::size_t none = std::string_view::npos;
constexpr std::string_view line_ends = "\r\n";
constexpr std::string_view blanks = " \t";

Failure refusal(const quxml::Element& element, const std::string& reason) {
    return {ExitCode::malformed, quxml::extras::path_of(element) + ' ' + reason};
}

std::string_view get_part(std::string_view document, std::size_t begin, std::size_t end) {
    return document.substr(begin, end - begin);
}

bool has_line_end(std::string_view text) {
    return text.find_first_of(line_ends) != none;
}

/// White space that the library takes for indentation and not for text, if an element has nothing else.
bool is_unread(std::string_view text) {
    return text.empty() || line_ends.find(text[0]) != none;
}

std::size_t get_number_of_children(const Extent& extent) {
    return extent.elements + extent.comments + extent.instructions + extent.references + extent.sections;
}

/// The end of what stands before `end`, white space left out.
std::size_t skip_white_space_before(std::string_view document, std::size_t end) {
    return get_place_after(document.substr(0, end).find_last_not_of(white_space));
}

/// What separates a child from what is before it: for one that begins a line, the line end and what its line has before
/// it.
std::string get_separator(std::string_view document, std::size_t child, const std::string& line_end) {
    const std::string_view space = get_part(document, skip_white_space_before(document, child), child);
    const std::size_t line = space.find_last_of(line_ends);
    return line == none ? std::string(space) : line_end + std::string(space.substr(line + 1));
}

struct Range {
    std::size_t begin;
    std::size_t end;
};

/// The whole lines of a range if nothing else is on them.
Range widen_to_lines(std::string_view document, const Range& range) {
    const std::size_t begin = get_line_begin(document, range.begin);
    const std::size_t after = document.find_first_not_of(blanks, range.end);
    if (begin == none || line_ends.find(document[after]) == none)
        return range;
    return {begin, after + (document.substr(after, 2) == "\r\n" ? 2 : 1)};
}

/// Elements that follow each other on a line are one range.
std::vector<Range> get_ranges(std::string_view document, const std::vector<const Extent*>& extents) {
    std::vector<Range> ranges;
    for (const Extent* extent : extents) {
        const bool follows =
            !ranges.empty() && document.find_first_not_of(blanks, ranges.back().end) == extent->begin;
        if (follows) {
            ranges.back().end = extent->end;
        } else {
            ranges.push_back({extent->begin, extent->end});
        }
    }
    std::transform(ranges.begin(), ranges.end(), ranges.begin(),
                   [&](const Range& range) { return widen_to_lines(document, range); });
    return ranges;
}

/// The first byte from `begin` on that is in none of the ranges.
std::size_t find_rest(std::size_t begin, const std::vector<Range>& ranges) {
    for (const Range& range : ranges) {
        if (range.begin > begin)
            break;
        begin = range.end;
    }
    return begin;
}

void require_to_hold_text_alone(const Located& located) {
    const char* const rest = ", which a text would take the place of; take it out of the element first";
    if (located.extent.elements != 0)
        throw refusal(located.element, "has elements in it; text beside them would be lost");
    if (located.extent.comments != 0)
        throw refusal(located.element, std::string("holds a comment") + rest);
    if (located.extent.instructions != 0)
        throw refusal(located.element, std::string("holds a processing instruction") + rest);
    if (located.extent.references != 0)
        throw refusal(located.element, std::string("holds a reference to an entity") + rest);
}

/// White space that is read as a text gives way to an element.
void require_no_text(std::string_view document, const Located& located) {
    const Extent& extent = located.extent;
    const bool has_text_alone = extent.elements == 0 && (extent.has_text || extent.sections != 0);
    const bool has_written_blanks = located.element.has_child_text() &&
                                    !is_white_space(get_part(document, extent.tag_end, extent.content_end));
    if (has_text_alone || has_written_blanks)
        throw refusal(located.element, "has text, which would be lost beside an element");
}

}  // namespace

void Editor::set_value(const Located& located, const AttributeExtent& attribute, const Setting& setting) {
    const quxml::Attribute* read = located.element.get_attribute(setting.first);
    if (read->get_value() != setting.second || has_entity(get_value(document, attribute)))
        patches.push_back({attribute.value, attribute.value_end,
                           to_attribute_value(setting.second, document[attribute.value - 1])});
}

void Editor::set(const Located& located, const std::vector<Setting>& settings) {
    const Extent& extent = located.extent;
    const std::vector<AttributeExtent> attributes = get_attributes(document, extent.begin);
    const std::size_t end =
        attributes.empty() ? get_name_end(document, extent.begin) : attributes.back().get_end();
    const std::string_view space =
        attributes.empty() ? " " : get_part(document, attributes.back().begin, attributes.back().name);
    const char quote = attributes.empty() ? '"' : document[attributes.back().value - 1];
    std::string added;
    for (const Setting& setting : settings) {
        const auto last =
            std::find_if(attributes.rbegin(), attributes.rend(), [&](const AttributeExtent& one) {
                return get_read_name(get_name(document, one), extent.attributes_losing_prefix) ==
                       setting.first;
            });
        if (last != attributes.rend()) {
            set_value(located, *last, setting);
        } else {
            added += std::string(space) + setting.first + '=' + quote +
                     to_attribute_value(setting.second, quote) + quote;
        }
    }
    if (!added.empty())
        patches.push_back({end, end, added});
}

void Editor::unset(const Located& located, const std::vector<std::string>& names,
                   const std::set<AttributeName>& defaults) {
    const std::string element(get_written_name(document, located.extent));
    const auto require_no_default = [&](const std::string& name) {
        if (defaults.count({element, name}) != 0)
            throw refusal(located.element, "would still have the attribute " + name +
                                               ": the DOCTYPE has a default for it; set it to another value");
    };
    for (const std::string& name : names)
        require_no_default(name);
    for (const AttributeExtent& attribute : get_attributes(document, located.extent.begin)) {
        const std::string_view written = get_name(document, attribute);
        const std::string_view read = get_read_name(written, located.extent.attributes_losing_prefix);
        if (std::find(names.begin(), names.end(), read) == names.end())
            continue;
        require_no_default(std::string(written));
        patches.push_back({attribute.begin, attribute.get_end(), ""});
    }
}

void Editor::fill_empty_tag(const Extent& extent, const std::string& content) {
    const std::size_t slash = extent.tag_end - 2;
    const std::size_t before = skip_white_space_before(document, slash);
    const bool stands_alone = has_line_end(get_part(document, before, slash));
    patches.push_back({stands_alone ? slash : before, extent.end,
                       '>' + content + "</" + std::string(get_written_name(document, extent)) + '>'});
}

/// A section of CDATA that is alone stays one.
void Editor::set_text(const Located& located, const std::string& value) {
    const Extent& extent = located.extent;
    require_to_hold_text_alone(located);
    const bool is_section = extent.sections != 0 && !extent.has_text;
    if (extent.sections == 0 && get_text(located.element) == value)
        return;
    if (is_section && contains(value, "\r"))
        throw refusal(located.element, "holds CDATA, in which a carriage return cannot stand");
    const std::string content =
        is_section && !value.empty() ? to_cdata(value, markup.line_end) : to_text(value, markup.line_end);
    if (extent.is_empty_tag) {
        fill_empty_tag(extent, content);
    } else {
        patches.push_back({extent.tag_end, extent.content_end, content});
    }
}

/// It is of the namespace of its parent.
std::string Editor::write(const Extent& parent, const NewElement& added) const {
    const std::string_view parent_name = get_written_name(document, parent);
    const std::string prefix(parent.loses_prefix ? parent_name.substr(0, parent_name.find(':') + 1) : "");
    std::string text = '<' + prefix + added.name;
    const auto write_attribute = [&](const std::string& name, const std::string& value) {
        text += ' ' + name + "=\"" + to_attribute_value(value, '"') + '"';
    };
    if (added.has_item)
        write_attribute("item", added.item);
    for (const auto& [name, value] : added.attributes)
        write_attribute(name, value);
    if (added.text.empty())
        return text + "/>";
    return text + '>' + to_text(added.text, markup.line_end) + "</" + prefix + added.name + '>';
}

Editor::Lines Editor::get_lines(const Extent& parent) const {
    const std::size_t line = get_line_begin(document, parent.begin);
    if (line == none)
        return {};
    const std::string outer = markup.line_end + std::string(get_part(document, line, parent.begin));
    return {outer + markup.indent, outer};
}

/// White space that is not read stays, after the new element.
void Editor::fill_white_space(const Extent& parent, const Lines& lines, const std::string& element) {
    const std::string_view space = get_part(document, parent.tag_end, parent.content_end);
    if (!space.empty() && is_unread(space)) {
        patches.push_back({parent.tag_end, parent.tag_end, lines.inner + element});
    } else {
        patches.push_back({parent.tag_end, parent.content_end, lines.inner + element + lines.outer});
    }
}

void Editor::append_to_last_child(const Extent& parent, const Lines& lines, const std::string& element) {
    const std::size_t end = skip_white_space_before(document, parent.content_end);
    const std::string separator = get_separator(document, parent.last_child, markup.line_end);
    const bool is_on_line_of_tag = parent.elements == 0 && !has_line_end(separator) &&
                                   has_line_end(get_part(document, end, parent.content_end));
    patches.push_back({end, end, (is_on_line_of_tag ? lines.inner : separator) + element});
}

void Editor::append(const Located& parent, const NewElement& added) {
    const Extent& extent = parent.extent;
    require_no_text(document, parent);
    const std::string element = write(extent, added);
    const Lines lines = get_lines(extent);
    if (extent.is_empty_tag) {
        fill_empty_tag(extent, lines.inner + element + lines.outer);
    } else if (is_white_space(get_part(document, extent.tag_end, extent.content_end))) {
        fill_white_space(extent, lines, element);
    } else if (extent.has_text || extent.sections != 0) {
        patches.push_back({extent.content_end, extent.content_end, element});
    } else {
        append_to_last_child(extent, lines, element);
    }
}

/// What stands there gets the same white space before it as it had.
void Editor::insert(const Located& parent, std::size_t place, const NewElement& added) {
    const std::string separator = get_separator(document, place, markup.line_end);
    patches.push_back({place, place, write(parent.extent, added) + separator});
}

void Editor::remove(const Located& parent, const std::vector<const Extent*>& children) {
    const Extent& extent = parent.extent;
    const std::vector<Range> ranges = get_ranges(document, children);
    if (get_number_of_children(extent) == children.size()) {
        if (extent.has_text)
            throw refusal(
                parent.element,
                "has text beside what is to be removed; that would be alone then, and be read as its value");
        const std::size_t rest = find_rest(extent.tag_end, ranges);
        if (rest < extent.content_end && !is_unread(document.substr(rest))) {
            clear(extent);
            return;
        }
    }
    for (const Range& range : ranges)
        patches.push_back({range.begin, range.end, ""});
}

}  // namespace tool
