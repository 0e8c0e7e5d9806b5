// SPDX-License-Identifier: MIT

// The tree tells which elements an edit is meant for, and is changed by the library's own means; the text is patched.
// In the end the two are compared.

#include "writing/EditedDocument.h"

#include <libxml/xmlstring.h>
#include <quxml/TextNode.h>
#include <quxml/extras/paths.h>
#include <quxml/extras/trees.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <utility>

#include "reading/default_attributes.h"
#include "reading/input.h"
#include "reading/xml_events.h"
#include "terminal/Failure.h"
#include "terminal/messages.h"
#include "terminal/terminal.h"
#include "terminal/words.h"
#include "trees/differences.h"
#include "trees/element_numbers.h"
#include "writing/SortedPlaces.h"

namespace tool {

namespace {

void set_text_of(quxml::Element& element, const std::string& value) {
    for (quxml::Node* child : element.get_children())
        element.remove_child(child);
    if (!value.empty())
        element.add_child_text(value);
}

void append_to(quxml::Element& parent, const NewElement& added) {
    if (quxml::Node* const blanks = parent.get_child_text())
        parent.remove_child(blanks);
    quxml::Element* const element =
        added.has_item ? parent.add_child(added.name, added.item) : parent.add_child(added.name);
    for (const auto& [name, value] : added.attributes)
        element->set_attribute(name, value);
    if (!added.text.empty())
        element->add_child_text(added.text);
}

/// Only a node itself can name a place among its children. So those from there on become the first ones, the new
/// element the last one, and then it and the others the first ones again: moving the last child to the front takes no time.
void insert_into(quxml::Element& parent, std::size_t place, const NewElement& added) {
    const auto set_first = [&](quxml::Node* child) { parent.set_child_first(child); };
    const quxml::NodeList children = parent.get_children();
    const auto next = std::next(children.begin(), static_cast<std::ptrdiff_t>(place));
    std::for_each(children.rbegin(), std::make_reverse_iterator(next), set_first);
    append_to(parent, added);
    set_first(parent.get_children().back());
    std::for_each(std::make_reverse_iterator(next), children.rend(), set_first);
}

/// Removing a child takes as long as finding it, but for the last one; nor is there a quicker way to move one to the
/// front. So from the last to the first each child becomes the first one, or is removed.
void remove_children(quxml::Element& parent, const std::unordered_set<const quxml::Node*>& removed) {
    const quxml::NodeList children = parent.get_children();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        if (removed.count(*child) != 0) {
            parent.remove_child(*child);
        } else {
            parent.set_child_first(*child);
        }
    }
}

bool is_forbidden(char character) {
    const bool is_control = static_cast<unsigned char>(character) < ' ';
    return is_control && white_space.find(character) == std::string_view::npos;
}

std::unordered_set<quxml::Element*> get_elements_and_parents(const std::vector<quxml::Node*>& nodes) {
    std::unordered_set<quxml::Element*> elements;
    for (quxml::Node* node : nodes) {
        elements.insert(node->get_parent());
        if (auto* element = dynamic_cast<quxml::Element*>(node))
            elements.insert(element);
    }
    return elements;
}

std::string get_first_difference(const quxml::Node& wanted, const quxml::Node& read) {
    std::string difference = "its elements would have another order";
    find_differences(wanted, read, [&](const std::string& line) {
        difference = line;
        return false;
    });
    return difference;
}

std::string get_first_error(std::string_view document) {
    for (const Problem& problem : read_events(document, [](const Event& /*event*/) {})) {
        if (problem.is_fatal)
            return problem.message;
    }
    return "it would not be well-formed";
}

}  // namespace

EditedDocument::EditedDocument(std::string name_of_file, std::string document)
    : file(std::move(name_of_file)),
      text(file, std::move(document)),
      tree(parse_document(file, text.get_bytes())) {}

EditedDocument::Selected EditedDocument::locate(const std::unordered_set<quxml::Element*>& elements) const {
    NumberedElements numbered = number_elements(tree->get_root_node(), elements);
    Selected selected{std::move(numbered.elements), find_extents(text.get_text(), numbered.numbers)};
    if (selected.elements.size() != selected.markup.extents.size())
        throw Failure(ExitCode::malformed,
                      get_label(file) + ": not all of its elements are found in its text");
    return selected;
}

EditedDocument::Selected EditedDocument::locate(const std::vector<quxml::Element*>& elements) const {
    return locate(std::unordered_set<quxml::Element*>(elements.begin(), elements.end()));
}

/// Not even a reference can stand for these characters.
void EditedDocument::require_characters_of_value(const std::string& value) const {
    if (xmlCheckUTF8(reinterpret_cast<const unsigned char*>(value.c_str())) == 0)
        throw Failure(ExitCode::malformed,
                      get_label(file) + ": not written: " + quote(escape_controls(value)) + " is not UTF-8");
    if (std::any_of(value.begin(), value.end(), is_forbidden))
        throw Failure(ExitCode::malformed, get_label(file) +
                                               ": not written: " + quote(escape_controls(value)) +
                                               " holds a control character, which XML does not allow");
}

/// No reference can stand in a name.
void EditedDocument::require_characters_of_name(const std::string& name) const {
    if (!text.has_characters(name))
        throw Failure(ExitCode::malformed, get_label(file) + ": not written: " + text.get_encoding() +
                                               " lacks a character of the name " + quote(name));
}

void EditedDocument::require_characters_of_attributes(const std::vector<Setting>& attributes) const {
    for (const auto& [name, value] : attributes) {
        require_characters_of_name(name);
        require_characters_of_value(value);
    }
}

void EditedDocument::require_characters_of_section(const quxml::Element& element,
                                                   const std::string& value) const {
    if (!text.has_characters(value))
        throw Failure(ExitCode::malformed, quxml::extras::path_of(element) +
                                               " holds CDATA, in which a character stands for itself; " +
                                               text.get_encoding() + " lacks one of " + quote(value));
}

void EditedDocument::set(const std::vector<quxml::Element*>& elements, const std::vector<Setting>& settings) {
    require_characters_of_attributes(settings);
    const Selected selected = locate(elements);
    Editor editor(text.get_text(), selected.markup);
    for (std::size_t i = 0; i != selected.elements.size(); ++i) {
        editor.set({*selected.elements[i], selected.markup.extents[i]}, settings);
        for (const auto& [name, value] : settings)
            selected.elements[i]->set_attribute(name, value);
    }
    text.apply(std::move(editor.get_patches()));
}

void EditedDocument::unset(const std::vector<quxml::Element*>& elements,
                           const std::vector<std::string>& names) {
    const Selected selected = locate(elements);
    const std::set<AttributeName> defaults = find_default_attributes(text.get_text());
    Editor editor(text.get_text(), selected.markup);
    for (std::size_t i = 0; i != selected.elements.size(); ++i) {
        editor.unset({*selected.elements[i], selected.markup.extents[i]}, names, defaults);
        for (const std::string& name : names)
            selected.elements[i]->remove_attribute(name);
    }
    text.apply(std::move(editor.get_patches()));
}

/// What is in CDATA is not in the tree.
void EditedDocument::set_text(const std::vector<quxml::Element*>& elements, const std::string& value) {
    require_characters_of_value(value);
    const Selected selected = locate(elements);
    Editor editor(text.get_text(), selected.markup);
    for (std::size_t i = 0; i != selected.elements.size(); ++i) {
        const Extent& extent = selected.markup.extents[i];
        editor.set_text({*selected.elements[i], extent}, value);
        if (extent.sections == 0 || extent.has_text)
            set_text_of(*selected.elements[i], value);
        else
            require_characters_of_section(*selected.elements[i], value);
    }
    text.apply(std::move(editor.get_patches()));
}

void EditedDocument::add(const std::vector<quxml::Element*>& parents, const NewElement& added) {
    require_characters_of_name(added.name);
    require_characters_of_attributes(added.attributes);
    require_characters_of_value(added.text);
    const Selected selected = locate(parents);
    Editor editor(text.get_text(), selected.markup);
    const auto places = added.is_sorted ? std::make_unique<SortedPlaces>(text.get_text()) : nullptr;
    for (std::size_t i = 0; i != selected.elements.size(); ++i) {
        quxml::Element& parent = *selected.elements[i];
        const Located located{parent, selected.markup.extents[i]};
        if (const auto place = places ? places->find(located, added) : std::nullopt) {
            editor.insert(located, place->begin, added);
            insert_into(parent, place->child, added);
        } else {
            editor.append(located, added);
            append_to(parent, added);
        }
    }
    text.apply(std::move(editor.get_patches()));
}

void EditedDocument::remove(const std::vector<quxml::Node*>& nodes) {
    const std::unordered_set<const quxml::Node*> removed(nodes.begin(), nodes.end());
    const Selected selected = locate(get_elements_and_parents(nodes));
    std::vector<Patch> patches = make_removal(selected, removed);
    for (quxml::Element* parent : selected.elements) {
        if (removed.count(parent) == 0)
            remove_children(*parent, removed);
    }
    text.apply(std::move(patches));
}

/// Of an element of which no child element is removed, all that it has is: a text.
std::vector<Patch> EditedDocument::make_removal(const Selected& selected,
                                                const std::unordered_set<const quxml::Node*>& removed) const {
    std::unordered_map<const quxml::Node*, std::vector<const Extent*>> children;
    for (std::size_t i = 0; i != selected.elements.size(); ++i) {
        if (removed.count(selected.elements[i]) != 0)
            children[selected.elements[i]->get_parent()].push_back(&selected.markup.extents[i]);
    }
    Editor editor(text.get_text(), selected.markup);
    for (std::size_t i = 0; i != selected.elements.size(); ++i) {
        const quxml::Element& parent = *selected.elements[i];
        const auto found = children.find(&parent);
        if (found != children.end()) {
            editor.remove({parent, selected.markup.extents[i]}, found->second);
        } else if (removed.count(&parent) == 0) {
            editor.clear(selected.markup.extents[i]);
        }
    }
    return std::move(editor.get_patches());
}

void EditedDocument::require_to_read_back() const {
    try {
        const std::shared_ptr<quxml::Document> read = parse_document(file, text.get_bytes(), Errors::silent);
        const quxml::Node& wanted = *tree->get_root_node();
        if (!quxml::extras::is_same_tree(wanted, *read->get_root_node()))
            throw Failure(ExitCode::malformed, get_label(file) +
                                                   ": not written: it would be read back otherwise: " +
                                                   get_first_difference(wanted, *read->get_root_node()));
    } catch (const Failure& failure) {
        if (failure.get_code() != ExitCode::malformed || !std::string_view(failure.what()).empty())
            throw;
        throw Failure(ExitCode::malformed,
                      get_label(file) + ": not written: " + get_first_error(text.get_text()));
    }
}

}  // namespace tool
