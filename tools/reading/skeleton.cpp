// SPDX-License-Identifier: MIT

// Start and end tags tell where in the skeleton an element belongs: below the one that is open. Each
// knows the names below it, so that most elements make nothing new.

#include "reading/skeleton.h"

#include <quxml/Element.h>

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <vector>

#include "reading/encoding.h"
#include "reading/start_tag.h"
#include "reading/xml_events.h"
#include "terminal/words.h"

namespace tool {

namespace {

/// An element of the skeleton, and what is known below it. The names are parts of the text.
struct KnownElement {
    quxml::Element* element = nullptr;
    std::map<std::string_view, KnownElement> children{};
    std::set<std::string_view> attributes{};
};

class SkeletonBuilder {
public:
    explicit SkeletonBuilder(std::string_view of) : text(of) {}

    void take(const Event& event) {
        if (event.kind == EventKind::start_tag)
            open.push_back(&add_element(event));
        else if (event.kind == EventKind::end_tag)
            open.pop_back();
        else if (event.kind == EventKind::entity)
            may_have_more = true;
    }

    /// Null if there is no element, or if an entity may hold some.
    std::shared_ptr<quxml::Document> get_document() const {
        return may_have_more || document->get_root_node() == nullptr ? nullptr : document;
    }

private:
    KnownElement& add_element(const Event& event) {
        const std::size_t name_end = get_name_end(text, event.begin);
        std::string_view name = text.substr(event.begin + 1, name_end - event.begin - 1);
        if (event.element_loses_prefix)
            name.remove_prefix(name.find(':') + 1);
        KnownElement& known = (open.empty() ? above : *open.back()).children[name];
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
            if (!name.empty() && known.attributes.insert(name).second)
                known.element->set_attribute(std::string(name), "");
        }
    }

    std::string_view text;
    std::shared_ptr<quxml::Document> document = std::make_shared<quxml::Document>(false);
    KnownElement above;
    std::vector<KnownElement*> open;
    bool may_have_more = false;
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

bool is_fatal(const Problem& problem) {
    return problem.is_fatal;
}

}  // namespace

std::shared_ptr<quxml::Document> read_skeleton(const std::string& document) {
    if (!is_utf8(document))
        return nullptr;
    const std::string_view text = without_mark(document);
    SkeletonBuilder builder(text);
    const std::vector<Problem> problems = read_events(text, [&](const Event& event) { builder.take(event); });
    return std::any_of(problems.begin(), problems.end(), is_fatal) ? nullptr : builder.get_document();
}

}  // namespace tool
