// Nothing of the document would be lost, so it has nothing but tags, texts that are alone in their elements, and white
// space between tags.

#include "reading/spelling.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "reading/xml_events.h"
#include "terminal/terminal.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr std::size_t none = std::string_view::npos;
constexpr std::string_view declaration = "<?xml version=\"1.0\"?>";

/// Attributes one space apart, between double quotes and with no space around the "=". Values that need a reference are
/// noted as such.
bool is_canonical_tag(std::string_view tag) {
    std::size_t place = tag.find_first_of(" \t\r\n/>");
    while (tag[place] == ' ') {
        const std::size_t equals = tag.find('=', place);
        if (equals == none || tag.find_first_of(white_space, place + 1) < equals || tag[equals + 1] != '"')
            return false;
        const std::size_t end = tag.find('"', equals + 2);
        if (tag.substr(0, end).find_first_of("&\t\r\n", equals) != none)
            return false;
        place = end + 1;
    }
    const std::string_view rest = tag.substr(place);
    return rest == ">" || rest == "/>";
}

bool is_canonical_text(std::string_view text) {
    constexpr std::array<std::string_view, 5> references{"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"};
    for (std::size_t place = text.find_first_of("&>\"'"); place != none;
         place = text.find_first_of("&>\"'", place + 1)) {
        const auto is_here = [&](std::string_view one) { return begins_with(text.substr(place), one); };
        if (std::none_of(references.begin(), references.end(), is_here))
            return false;
    }
    return true;
}

class SpellingFinder {
public:
    explicit SpellingFinder(std::string_view text) : document(text) {
        if (!begins_with(document, declaration))
            note(0, begins_with(document, "<?xml") ? document.find("?>") + 2 : 0);
    }

    void take(const Event& event) {
        if (event.kind == EventKind::start_tag) {
            const bool is_empty = document[event.end] == '/';
            content = event.end + (is_empty ? 2 : 1);
            if (!is_canonical_tag(get_part(event.begin, content)))
                note(event.begin, content);
            is_open = !is_empty;
        } else if (event.kind == EventKind::end_tag && event.begin != event.end) {
            if (is_open && (content == event.begin || !is_canonical_text(get_part(content, event.begin))))
                note(content, content == event.begin ? event.end : event.begin);
            if (get_part(event.begin, event.end).find_first_of(white_space) != none)
                note(event.begin, event.end);
            is_open = false;
        }
    }

    bool is_found() const { return found; }
    std::size_t get_begin() const { return begin; }
    std::string_view get_text() const { return get_part(begin, end); }

private:
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

std::string get_excerpt(std::string_view text) {
    constexpr std::size_t longest = 50;
    std::size_t size = std::min(text.size(), longest);
    while (size < text.size() && !begins_character(text[size]))
        --size;
    return to_printable(text.substr(0, size)) + (size < text.size() ? "..." : "");
}

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
