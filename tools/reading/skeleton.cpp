// SPDX-License-Identifier: MIT

// Start and end tags tell where in the skeleton an element belongs: below the one that is open. Each
// knows the names below it, so that most elements make nothing new. Where values are kept, no element is taken for
// another one, since each may be the one that a predicate selects.

#include "reading/skeleton.h"

#include <quxml/Element.h>

#include <algorithm>
#include <deque>
#include <map>
#include <set>
#include <string_view>
#include <vector>

#include "reading/encoding.h"
#include "reading/start_tag.h"
#include "reading/xml_events.h"
#include "terminal/memory.h"
#include "terminal/words.h"

namespace tool {

namespace {

/// An element of the skeleton, and what is known below it. The names are parts of the text.
struct KnownElement {
    quxml::Element* element = nullptr;
    std::map<std::string_view, KnownElement> children{};
    std::set<std::string_view> attributes{};
};

/// Whether libxml2 reads a value as it is written, whatever a DOCTYPE says of the attribute.
bool is_read_as_written(std::string_view value) {
    if (value.empty())
        return true;
    return value.front() != ' ' && value.back() != ' ' && value.find("  ") == std::string_view::npos &&
           value.find_first_of("&\t\n\r") == std::string_view::npos;
}

class SkeletonBuilder {
public:
    SkeletonBuilder(std::string_view of, AttributeValues wanted) : text(of), values(wanted) {}

    void take(const Event& event) {
        if (event.kind == EventKind::start_tag)
            open.push_back(&add_element(event));
        else if (event.kind == EventKind::end_tag)
            close_element();
        else if (event.kind == EventKind::entity)
            needs_tree = true;
    }

    /// Null if there is no element, or if the tree has to be read.
    std::shared_ptr<quxml::Document> get_document() const {
        return needs_tree || document->get_root_node() == nullptr ? nullptr : document;
    }

private:
    void close_element() {
        open.pop_back();
        if (values == AttributeValues::kept)
            unique.pop_back();
    }

    KnownElement& add_element(const Event& event) {
        const std::size_t name_end = get_name_end(text, event.begin);
        std::string_view name = text.substr(event.begin + 1, name_end - event.begin - 1);
        if (event.element_loses_prefix)
            name.remove_prefix(name.find(':') + 1);
        KnownElement& known = values == AttributeValues::kept
                                  ? unique.emplace_back()
                                  : (open.empty() ? above : *open.back()).children[name];
        if (known.element == nullptr)
            known.element = make_element(std::string(name));
        if (name_end != event.end)
            add_attributes(known, event);
        return known;
    }

    quxml::Element* make_element(const std::string& name) {
        return open.empty() ? document->create_root_node(name) : open.back()->element->add_child(name);
    }

    void add_attributes(KnownElement& known, const Event& event) {
        for (const AttributeExtent& attribute : get_attributes(text, event.begin)) {
            const std::string_view name = get_read_name(get_name(text, attribute), event.prefixed_attributes);
            if (name.empty())
                continue;
            const bool is_new = known.attributes.insert(name).second;
            if (values == AttributeValues::kept)
                add_value(*known.element, name, is_new, get_value(text, attribute));
            else if (is_new)
                known.element->set_attribute(std::string(name), "");
        }
    }

    void add_value(quxml::Element& element, std::string_view name, bool is_new, std::string_view value) {
        needs_tree = needs_tree || !is_new || !is_read_as_written(value);
        element.set_attribute(std::string(name), std::string(value));
    }

    std::string_view text;
    AttributeValues values;
    std::shared_ptr<quxml::Document> document = std::make_shared<quxml::Document>(false);
    KnownElement above;
    std::deque<KnownElement> unique;  // the open ones, where none is taken for another one
    std::vector<KnownElement*> open;
    bool needs_tree = false;
};

/// Nothing else is converted for a few names.
bool is_utf8(const std::string& document) {
    const std::string_view text = without_mark(document);
    const std::string_view declaration = begins_with(text, "<?xml") ? text.substr(0, text.find("?>")) : "";
    const bool names_encoding = declaration.find("encoding") != std::string_view::npos;
    const bool names_utf8 = declaration.find("UTF-8") != std::string_view::npos ||
                            declaration.find("utf-8") != std::string_view::npos;
    return names_encoding == names_utf8 && get_encoding(document).empty() && !has_zero_character(document);
}

/// What elements with their attributes take for each byte of a document.
constexpr std::size_t bytes_for_each_character = 16;

bool is_fatal(const Problem& problem) {
    return problem.is_fatal;
}

}  // namespace

std::shared_ptr<quxml::Document> read_skeleton(const std::string& document, AttributeValues values) {
    if (!is_utf8(document))
        return nullptr;
    const std::string_view text = without_mark(document);
    if (values == AttributeValues::kept)
        expect_memory(bytes_for_each_character * text.size());
    SkeletonBuilder builder(text, values);
    const std::vector<Problem> problems = read_events(text, [&](const Event& event) { builder.take(event); });
    return std::any_of(problems.begin(), problems.end(), is_fatal) ? nullptr : builder.get_document();
}

}  // namespace tool
