// SPDX-License-Identifier: MIT

// The library keeps elements, their attributes, and text that is alone in its element. White space that holds
// a line feed beside other content is taken for indentation and is not missed; white space without one may be
// meant, and so may white space that is all there is in an element.

#include "reading/losses.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <map>
#include <string_view>

#include "reading/encoding.h"
#include "reading/entities.h"
#include "reading/start_tag.h"
#include "reading/xml_events.h"
#include "terminal/Progress.h"
#include "terminal/messages.h"
#include "terminal/terminal.h"
#include "terminal/words.h"

namespace tool {

namespace {

struct Found {
    LossKind kind;
    std::size_t begin;
    std::size_t end;
    std::optional<std::size_t> element;
};

struct Text {
    std::size_t begin;
    std::size_t end;
    bool is_white;
    bool has_line_feed;
    bool has_carriage_return;
    bool begins_with_line_feed;
};

/// The content of an element that is still open.
struct Content {
    std::size_t element = 0;  // its number
    std::size_t pieces = 0;   // a text, an element, a comment and so on
    bool ends_with_text = false;
    std::vector<Text> texts;
};

bool has(std::string_view text, char character) {
    return text.find(character) != std::string_view::npos;
}

/// Whether a reference stands for a character that an attribute value cannot hold as it is.
bool needs_escape(std::string_view reference) {
    if (reference.substr(0, 1) != "#")
        return reference == "amp" || reference == "lt" || reference == "quot";
    const bool is_hexadecimal = reference.substr(1, 1) == "x";
    const std::string digits(reference.substr(is_hexadecimal ? 2 : 1));
    constexpr int base = 16;
    const unsigned long character = std::strtoul(digits.c_str(), nullptr, is_hexadecimal ? base : 10);
    return character < ' ' || character == '&' || character == '<' || character == '"';
}

class LossFinder {
public:
    explicit LossFinder(std::string_view searched_text) : text(searched_text) {}

    /// What libxml2 does not report: the XML declaration, and line ends, which are listed once.
    void take_text_itself() {
        const std::string_view beginning = "<?xml";
        if (begins_with(text, beginning) && is_white_space(text.substr(beginning.size(), 1)))
            take_declaration();
        const std::size_t end = text.find('\r');
        if (end != std::string_view::npos)
            add(LossKind::line_ends, end, end + (text.substr(end + 1, 1) == "\n" ? 2 : 1));
    }

    void take(const Event& event) {
        end_text(event);
        switch (event.kind) {
            case EventKind::start_tag:
                add_piece();
                open.emplace_back();
                open.back().element = elements++;
                take_tag(event);
                break;
            case EventKind::end_tag:
                close();
                break;
            case EventKind::text:
                take_text(event);
                break;
            default:
                add_piece();
                add_content(get_loss_kind(event.kind), event.begin, event.end);
        }
    }

    std::vector<Found> get_found() {
        std::stable_sort(found.begin(), found.end(),
                         [](const Found& one, const Found& other) { return one.begin < other.begin; });
        return found;
    }

private:
    static LossKind get_loss_kind(EventKind kind) {
        switch (kind) {
            case EventKind::doctype:
                return LossKind::doctype;
            case EventKind::cdata:
                return LossKind::cdata;
            case EventKind::comment:
                return LossKind::comment;
            case EventKind::instruction:
                return LossKind::instruction;
            default:
                return LossKind::entity;
        }
    }

    void add(LossKind kind, std::size_t begin, std::size_t end) {
        found.push_back({kind, begin, end, std::nullopt});
    }

    void add(LossKind kind, const AttributeExtent& attribute) {
        add(kind, attribute.name, attribute.get_end());
    }

    void add_content(LossKind kind, std::size_t begin, std::size_t end) {
        add(kind, begin, end);
        if (!open.empty())
            found.back().element = open.back().element;
    }

    /// UTF-8 is what is read when no encoding is named, so the name is not a loss.
    void take_declaration() {
        for (const AttributeExtent& attribute : get_attributes(text, 0)) {
            const std::string_view name = get_name(text, attribute);
            if (name == "standalone")
                add(LossKind::standalone, attribute);
            else if (name == "version" && get_value(text, attribute) != "1.0")
                add(LossKind::version, attribute);
        }
    }

    /// The end of a text is known once something else begins.
    void end_text(const Event& event) {
        if (!open.empty() && open.back().ends_with_text && event.kind != EventKind::text)
            open.back().texts.back().end = event.begin;
    }

    void add_piece() {
        if (open.empty())
            return;
        ++open.back().pieces;
        open.back().ends_with_text = false;
    }

    void take_text(const Event& event) {
        Content& content = open.back();
        if (!content.ends_with_text) {
            ++content.pieces;
            content.ends_with_text = true;
            content.texts.push_back(
                {event.begin, event.begin, true, false, false, has(event.content.substr(0, 1), '\n')});
        }
        Text& last = content.texts.back();
        last.is_white = last.is_white && is_white_space(event.content);
        last.has_line_feed = last.has_line_feed || has(event.content, '\n');
        last.has_carriage_return = last.has_carriage_return || has(event.content, '\r');
    }

    void close() {
        const Content& content = open.back();
        if (content.pieces > 1)
            add_texts_beside_others(content);
        else if (!content.texts.empty())
            add_only_text(content.texts.front());
        open.pop_back();
    }

    void add_texts_beside_others(const Content& content) {
        for (const Text& one : content.texts) {
            if (!one.is_white)
                add_content(LossKind::text, one.begin, one.end);
            else if (!one.has_line_feed)
                add(LossKind::blank_text, one.begin, one.end);
        }
    }

    void add_only_text(const Text& one) {
        if (one.is_white && one.begins_with_line_feed)
            add(LossKind::blank_text, one.begin, one.end);
        else if (one.has_carriage_return)
            add(LossKind::carriage_return, one.begin, one.end);
    }

    void take_tag(const Event& event) {
        if (event.element_loses_prefix)
            add(LossKind::prefix, event.begin, event.end);
        std::map<std::string_view, AttributeExtent> kept;
        for (const AttributeExtent& attribute : get_attributes(text, event.begin)) {
            if (declares_namespace(get_name(text, attribute)))
                add(LossKind::namespace_declaration, attribute);
            else
                take_attribute(attribute, event.prefixed_attributes, kept);
        }
    }

    /// Of attributes with the same name the last value is read.
    void take_attribute(const AttributeExtent& attribute, const std::vector<std::string>& prefixed,
                        std::map<std::string_view, AttributeExtent>& kept) {
        const std::string_view written = get_name(text, attribute);
        const std::string_view read = get_read_name(written, prefixed);
        const auto [namesake, is_first] = kept.insert({read, attribute});
        if (!is_first)
            add(LossKind::replaced_attribute, namesake->second);
        namesake->second = attribute;
        if (read != written)
            add(LossKind::prefix, attribute);
        const std::string_view value = get_value(text, attribute);
        if (has_entity(value))
            add(LossKind::entity, attribute);
        else if (has(value, '"') || any_reference(value, needs_escape))
            add(LossKind::escape, attribute);
    }

    std::string_view text;
    std::vector<Content> open;
    std::size_t elements = 0;
    std::vector<Found> found;
};

std::string get_excerpt_of(std::string_view text, const Found& one) {
    if (one.kind == LossKind::line_ends)
        return one.end - one.begin == 2 ? "CR LF" : "CR";
    return get_excerpt(text.substr(one.begin, one.end - one.begin));
}

std::vector<Loss> locate(std::string_view text, const std::vector<Found>& found) {
    PlaceFinder places(text);
    std::vector<Loss> losses;
    losses.reserve(found.size());
    for (const Found& one : found)
        losses.push_back(
            {one.kind, places.find(one.begin), get_excerpt_of(text, one), one.element, one.begin, one.end});
    return losses;
}

}  // namespace

std::vector<Loss> find_losses(const std::string& document) {
    const std::string encoding = get_encoding(document);
    const std::string converted = encoding.empty() ? "" : to_utf8(document, encoding);
    const std::string_view text = without_mark(encoding.empty() ? document : converted);
    LossFinder finder(text);
    finder.take_text_itself();
    {
        Progress progress("looking for what would be lost", text.size());
        read_events(text, [&](const Event& event) {
            finder.take(event);
            progress.set_done(event.end);
        });
    }
    std::vector<Loss> losses = locate(text, finder.get_found());
    if (!encoding.empty())
        losses.insert(losses.begin(), {LossKind::encoding, {1, 1}, to_printable(encoding), std::nullopt});
    else if (text.size() != document.size())
        losses.insert(losses.begin(), {LossKind::byte_order_mark, {1, 1}, "EF BB BF", std::nullopt});
    return losses;
}

std::vector<Loss> get_content(const std::vector<Loss>& losses) {
    std::vector<Loss> content;
    std::copy_if(losses.begin(), losses.end(), std::back_inserter(content),
                 [](const Loss& loss) { return is_content(loss.kind); });
    return content;
}

std::string get_note_on_content(const std::vector<Loss>& losses) {
    const std::string summary = get_summary(get_content(losses));
    return summary.empty() ? "" : "queries do not see " + summary;
}

bool has_losses(const std::vector<Loss>& losses) {
    return !std::all_of(losses.begin(), losses.end(),
                        [](const Loss& loss) { return is_harmless(loss.kind); });
}

std::string get_pointer_to_loss(const std::string& file) {
    return "\"quxml loss" + (file == standard_input ? "" : ' ' + get_label(file)) + "\" lists them";
}

std::string get_summary(const std::vector<Loss>& losses) {
    std::array<std::size_t, number_of_loss_kinds> counts{};
    for (const Loss& loss : losses) {
        if (!is_harmless(loss.kind))
            ++counts.at(static_cast<std::size_t>(loss.kind));
    }
    std::string summary;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (counts.at(i) != 0)
            summary += (summary.empty() ? "" : ", ") + count_in_words(static_cast<LossKind>(i), counts.at(i));
    }
    return summary;
}

}  // namespace tool
