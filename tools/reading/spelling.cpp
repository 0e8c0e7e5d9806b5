// SPDX-License-Identifier: MIT

// Where a document is first spelled differently from how the library would write it.
//
// Nothing of the document would be lost, so it has nothing but tags, texts that are alone in their elements, and white
// space between tags. So three things are looked at, from left to right: each start tag by itself; what stands between
// a start tag and the end tag that directly follows it, which is a text, or nothing where <a/> would do; and each end tag,
// which has no blanks. White space between tags is layout and does not count.

#include "reading/spelling.h"

#include <cstddef>
#include <string_view>

#include "reading/entities.h"
#include "reading/start_tag.h"
#include "reading/xml_events.h"
#include "terminal/terminal.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr std::size_t none = std::string_view::npos;

/// One space before it, none around the "=", and double quotes.
bool is_canonical(std::string_view tag, const AttributeExtent& attribute) {
    return tag.substr(attribute.begin, attribute.name - attribute.begin) == " " &&
           tag.substr(attribute.name_end, attribute.value - attribute.name_end) == "=\"";
}

/// Values that need a reference are noted as such.
bool is_canonical_tag(std::string_view tag) {
    std::size_t end = get_name_end(tag, 0);
    for (const AttributeExtent& attribute : get_attributes(tag, 0)) {
        if (!is_canonical(tag, attribute) || get_value(tag, attribute).find_first_of("&\t\r\n") != none)
            return false;
        end = attribute.get_end();
    }
    const std::string_view rest = tag.substr(end);
    return rest == ">" || rest == "/>";
}

bool is_canonical_text(std::string_view text) {
    return text.find_first_of(">\"'") == none &&
           !any_reference(text, [](std::string_view reference) { return !is_predefined(reference); });
}

class SpellingFinder {
public:
    explicit SpellingFinder(std::string_view text) : document(text) {
        if (!begins_with(document, library_declaration))
            note(0, begins_with(document, "<?xml") ? document.find("?>") + 2 : 0);
    }

    void take(const Event& event) {
        if (event.kind == EventKind::start_tag)
            take_start_tag(event);
        else if (event.kind == EventKind::end_tag && event.begin != event.end)
            take_end_tag(event);
    }

    bool is_found() const { return found; }
    std::size_t get_begin() const { return begin; }
    std::string_view get_text() const { return get_part(begin, end); }

private:
    void take_start_tag(const Event& tag) {
        const bool is_empty = document[tag.end] == '/';
        content = tag.end + (is_empty ? 2 : 1);
        if (!is_canonical_tag(get_part(tag.begin, content)))
            note(tag.begin, content);
        is_open = !is_empty;
    }

    void take_end_tag(const Event& tag) {
        if (is_open)
            take_content(tag);
        if (get_part(tag.begin, tag.end).find_first_of(white_space) != none)
            note(tag.begin, tag.end);
        is_open = false;
    }

    /// What stands between a start tag and the end tag after it.
    void take_content(const Event& end_tag) {
        if (content == end_tag.begin)
            note(content, end_tag.end);
        else if (!is_canonical_text(get_part(content, end_tag.begin)))
            note(content, end_tag.begin);
    }

    std::string_view get_part(std::size_t first, std::size_t after) const {
        return document.substr(first, after - first);
    }

    /// Only the first one counts.
    void note(std::size_t first, std::size_t after) {
        if (found)
            return;
        found = true;
        begin = first;
        end = after;
    }

    std::string_view document;
    std::size_t content = 0;  // of the last element
    bool is_open = false;     // whether there were nothing but texts since its start tag
    bool found = false;
    std::size_t begin = 0;
    std::size_t end = 0;
};

}  // namespace

std::vector<Loss> find_spelling(const std::string& document) {
    SpellingFinder finder(document);
    read_events(document, [&](const Event& event) { finder.take(event); });
    if (!finder.is_found())
        return {};
    const std::string excerpt =
        finder.get_text().empty() ? "no XML declaration" : get_excerpt(finder.get_text());
    return {{LossKind::spelling, PlaceFinder(document).find(finder.get_begin()), excerpt, std::nullopt}};
}

}  // namespace tool
