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

bool is_white(std::string_view text) {
    return text.find_first_not_of(white_space) == std::string_view::npos;
}

bool has(std::string_view text, char character) {
    return text.find(character) != std::string_view::npos;
}

/// An attribute as it stands in a start tag.
struct RawAttribute {
    std::size_t begin;
    std::string_view name;
    std::string_view value;
    std::size_t end;
};

/// Takes the attributes out of a start tag, which is known to be well-formed, one after the other.
class AttributeScanner {
public:
    AttributeScanner(std::string_view scanned_text, std::size_t first, std::size_t limit)
        : text(scanned_text.substr(0, limit)), next(first), end(text.size()) {
        skip_name();
    }

    bool has_next() {
        next = std::min(text.find_first_not_of(white_space, next), end);
        return next < end;
    }

    RawAttribute take_next() {
        const std::size_t begin = next;
        skip_name();
        const std::string_view name = text.substr(begin, next - begin);
        const std::size_t opening = text.find_first_of("\"'", next);
        const std::size_t closing = text.find(text[opening], opening + 1);
        next = closing + 1;
        return {begin, name, text.substr(opening + 1, closing - opening - 1), next};
    }

private:
    void skip_name() { next = std::min(text.find_first_of(" \t\r\n=", next), end); }

    std::string_view text;
    std::size_t next;
    std::size_t end;
};

constexpr std::array<std::string_view, 5> predefined{"amp", "lt", "gt", "quot", "apos"};

bool is_entity(std::string_view reference) {
    return reference.substr(0, 1) != "#" &&
           std::find(predefined.begin(), predefined.end(), reference) == predefined.end();
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

template <typename Test>
bool any_reference(std::string_view value, Test test) {
    for (std::size_t ampersand = value.find('&'); ampersand != std::string_view::npos;
         ampersand = value.find('&', ampersand + 1)) {
        if (test(value.substr(ampersand + 1, value.find(';', ampersand) - ampersand - 1)))
            return true;
    }
    return false;
}

class LossFinder {
public:
    explicit LossFinder(std::string_view searched_text) : text(searched_text) {}

    /// What libxml2 does not report: the XML declaration, and line ends, which are listed once.
    void take_text_itself() {
        const std::string_view beginning = "<?xml";
        if (begins_with(text, beginning) && is_white(text.substr(beginning.size(), 1)))
            take_declaration(text.find("?>"));
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

    void add_content(LossKind kind, std::size_t begin, std::size_t end) {
        add(kind, begin, end);
        if (!open.empty())
            found.back().element = open.back().element;
    }

    /// UTF-8 is what is read when no encoding is named, so the name is not a loss.
    void take_declaration(std::size_t end) {
        AttributeScanner attributes(text, 0, end);
        while (attributes.has_next()) {
            const RawAttribute attribute = attributes.take_next();
            if (attribute.name == "standalone")
                add(LossKind::standalone, attribute.begin, attribute.end);
            else if (attribute.name == "version" && attribute.value != "1.0")
                add(LossKind::version, attribute.begin, attribute.end);
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
        last.is_white = last.is_white && is_white(event.content);
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
        std::map<std::string_view, RawAttribute> kept;
        AttributeScanner attributes(text, event.begin, event.end);
        while (attributes.has_next()) {
            const RawAttribute attribute = attributes.take_next();
            if (attribute.name == "xmlns" || begins_with(attribute.name, "xmlns:"))
                add(LossKind::namespace_declaration, attribute.begin, attribute.end);
            else
                take_attribute(attribute, event.prefixed_attributes, kept);
        }
    }

    /// Of attributes with the same name the last value is read.
    void take_attribute(const RawAttribute& attribute, const std::vector<std::string>& prefixed,
                        std::map<std::string_view, RawAttribute>& kept) {
        const bool loses_prefix =
            std::find(prefixed.begin(), prefixed.end(), attribute.name) != prefixed.end();
        const std::string_view name =
            loses_prefix ? attribute.name.substr(attribute.name.find(':') + 1) : attribute.name;
        const auto [namesake, is_first] = kept.insert({name, attribute});
        if (!is_first)
            add(LossKind::replaced_attribute, namesake->second.begin, namesake->second.end);
        namesake->second = attribute;
        if (loses_prefix)
            add(LossKind::prefix, attribute.begin, attribute.end);
        if (any_reference(attribute.value, is_entity))
            add(LossKind::entity, attribute.begin, attribute.end);
        else if (has(attribute.value, '"') || any_reference(attribute.value, needs_escape))
            add(LossKind::escape, attribute.begin, attribute.end);
    }

    std::string_view text;
    std::vector<Content> open;
    std::size_t elements = 0;
    std::vector<Found> found;
};

std::string get_excerpt(std::string_view text, const Found& one) {
    if (one.kind == LossKind::line_ends)
        return one.end - one.begin == 2 ? "CR LF" : "CR";
    constexpr std::size_t longest = 50;
    std::size_t end = std::min(one.end, one.begin + longest);
    while (end > one.begin && end < text.size() && !begins_character(text[end]))
        --end;
    return to_printable(text.substr(one.begin, end - one.begin)) + (end < one.end ? "..." : "");
}

std::vector<Loss> locate(std::string_view text, const std::vector<Found>& found) {
    PlaceFinder places(text);
    std::vector<Loss> losses;
    losses.reserve(found.size());
    for (const Found& one : found)
        losses.push_back({one.kind, places.find(one.begin), get_excerpt(text, one), one.element});
    return losses;
}

struct Name {
    const char* one;
    const char* many;
};

/// In the order of LossKind.
constexpr std::array<Name, 18> kind_names{{
    {"encoding", "encodings"},
    {"byte-order mark", "byte-order marks"},
    {"XML version", "XML versions"},
    {"standalone declaration", "standalone declarations"},
    {"line ends", "line ends"},
    {"DOCTYPE", "DOCTYPEs"},
    {"comment", "comments"},
    {"processing instruction", "processing instructions"},
    {"CDATA section", "CDATA sections"},
    {"text beside other content", "texts beside other content"},
    {"white space", "white spaces"},
    {"entity reference", "entity references"},
    {"prefix", "prefixes"},
    {"namespace declaration", "namespace declarations"},
    {"replaced attribute", "replaced attributes"},
    {"carriage return", "carriage returns"},
    {"attribute value that needs escapes", "attribute values that need escapes"},
    {"spelling", "spellings"},
}};

/// Line ends are listed once, however many there are.
std::string count_in_words(LossKind kind, std::size_t count) {
    const Name name = kind_names.at(static_cast<std::size_t>(kind));
    if (kind == LossKind::line_ends)
        return name.many;
    return std::to_string(count) + ' ' + (count == 1 ? name.one : name.many);
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

bool is_content(const Loss& loss) {
    return loss.kind == LossKind::text || loss.kind == LossKind::cdata || loss.kind == LossKind::entity ||
           loss.kind == LossKind::replaced_attribute;
}

std::vector<Loss> get_content(const std::vector<Loss>& losses) {
    std::vector<Loss> content;
    std::copy_if(losses.begin(), losses.end(), std::back_inserter(content), is_content);
    return content;
}

bool is_note(const Loss& loss) {
    return loss.kind == LossKind::escape || loss.kind == LossKind::carriage_return ||
           loss.kind == LossKind::spelling;
}

bool has_losses(const std::vector<Loss>& losses) {
    return !std::all_of(losses.begin(), losses.end(), is_note);
}

std::string get_advice(const std::string& file) {
    return "\"quxml loss" + (file == standard_input ? "" : ' ' + get_label(file)) + "\" lists them";
}

std::string get_name(LossKind kind) {
    return kind_names.at(static_cast<std::size_t>(kind)).one;
}

std::string get_summary(const std::vector<Loss>& losses) {
    std::array<std::size_t, kind_names.size()> counts{};
    for (const Loss& loss : losses) {
        if (!is_note(loss))
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
