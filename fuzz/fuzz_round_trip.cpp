// SPDX-License-Identifier: MIT

// Writing, reading and writing again. Both layouts of any tree must survive being read; and if the tree is one that XML
// text and the reader can represent, both must give the same tree, and the same text when that is written.
//
// Input: a tree (see `tree_input.h`), at most 1,000 bytes, and not deeper than the 256 levels that libxml2 reads: longer
// inputs repeat what shorter ones do. Names and values can be any bytes.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "check.h"
#include "quxml/quxml.h"
#include "support/check_links.h"
#include "support/tree_text.h"
#include "tree_input.h"

namespace {

using quxml::Attribute;
using quxml::Document;
using quxml::Element;
using quxml::Node;
using quxml::TextNode;
using quxml_fuzz::check;

constexpr std::size_t longest_input = 1000;

/// Conditions that are narrower than XML's: ASCII names without a colon, since the reader drops prefixes.
bool is_plain_name(const std::string& name) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_";
    return !name.empty() && letters.find(name.front()) != std::string::npos &&
           name.find_first_not_of(letters + "0123456789-.") == std::string::npos;
}

/// The length of the UTF-8 sequence that begins with this byte; 0 if none does.
std::size_t get_sequence_length(unsigned char first) {
    if (first < 0x80)
        return 1;
    if (first < 0xc2 || first > 0xf4)
        return 0;
    return first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
}

/// The character that one UTF-8 sequence stands for; 0, which XML does not know, if it is malformed.
std::uint32_t read_character(const std::string& sequence) {
    constexpr std::array<std::uint32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    const auto first = static_cast<unsigned char>(sequence.front());
    std::uint32_t character = sequence.size() == 1 ? first : first & (0x7fU >> sequence.size());
    for (std::size_t i = 1; i < sequence.size(); ++i) {
        const auto byte = static_cast<unsigned char>(sequence[i]);
        if ((byte & 0xc0U) != 0x80U)
            return 0;
        character = character << 6U | (byte & 0x3fU);
    }
    return character < smallest[sequence.size()] ? 0 : character;
}

/// Whether the character may stand in XML text and comes back as it is: a carriage return does not, it is read as a
/// line feed.
bool is_carried(std::uint32_t character) {
    if (character < 0x20)
        return character == '\t' || character == '\n';
    return character < 0xd800 || (character > 0xdfff && character < 0xfffe) ||
           (character > 0xffff && character < 0x110000);
}

bool is_carried(const std::string& text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = get_sequence_length(static_cast<unsigned char>(text[at]));
        if (length == 0 || at + length > text.size() || !is_carried(read_character(text.substr(at, length))))
            return false;
        at += length;
    }
    return true;
}

/// A namespace declaration is not an attribute. White space other than a blank becomes one.
bool is_carried(const Attribute& attribute) {
    return is_plain_name(attribute.get_name()) && attribute.get_name() != "xmlns" &&
           is_carried(attribute.get_value()) &&
           attribute.get_value().find_first_of("&<\"\t\n") == std::string::npos;
}

/// Text alone in its element, not empty, and not white space that begins with a line feed.
bool is_carried(const TextNode& text) {
    const std::string content = text.get_content();
    const bool is_alone = text.get_previous_sibling() == nullptr && text.get_next_sibling() == nullptr;
    const bool is_white_space = content.find_first_not_of(" \t\n") == std::string::npos;
    return is_alone && is_carried(content) && !content.empty() &&
           !(is_white_space && content.front() == '\n');
}

bool is_carried(const Element& element) {
    const quxml::AttributeList attributes = element.get_attributes();
    return is_plain_name(element.get_name()) &&
           std::all_of(attributes.begin(), attributes.end(),
                       [](const Attribute* a) { return is_carried(*a); });
}

bool is_carried(const Node* node) {
    const auto* text = dynamic_cast<const TextNode*>(node);
    return text != nullptr ? is_carried(*text) : is_carried(dynamic_cast<const Element&>(*node));
}

bool is_carried(const Document& document) {
    const auto nodes = quxml_fuzz::list_nodes(document.get_root_node());
    return std::all_of(nodes.begin(), nodes.end(), [](const Node* node) { return is_carried(node); });
}

/// The nesting of a tree, from 1.
std::size_t get_height(const Document& document) {
    std::size_t height = 0;
    for (const Node* node : quxml_fuzz::list_nodes(document.get_root_node())) {
        std::size_t level = 0;
        for (; node != nullptr; node = node->get_parent())
            ++level;
        height = std::max(height, level);
    }
    return height;
}

/// Writes the document in the layout that is under test.
using Write = std::string (*)(const Document&);

void read_back(const Document& document, bool keep_sorted, Write write) {
    const std::string text = write(document);
    const auto copy = quxml::from_string(text, keep_sorted);
    const auto links = quxml_test::links_agree(copy->get_root_node());
    check(links, links.message());
    quxml_fuzz::check_same("the tree that was read back", quxml_test::to_line(copy->get_root_node()),
                           quxml_test::to_line(document.get_root_node()), text);
    quxml_fuzz::check_same("the text that was written again", write(*copy), text);
}

void check_round_trip(const Document& document, bool keep_sorted, Write write) {
    try {
        read_back(document, keep_sorted, write);
    } catch (const quxml::DomParserError& error) {
        quxml_fuzz::fail(std::string(error.what()) + " in " + write(document));
    }
}

void check_survival(const Document& document, Write write) {
    try {
        const auto copy = quxml::from_string(write(document), true);
        check(copy->get_root_node() != nullptr, "a document that was read has no root");
    } catch (const quxml::DomParserError& error) {
        check(!std::string(error.what()).empty(), "an error without a message");
    }
}

const std::array<Write, 3> layouts = {
    [](const Document& document) { return document.write_to_string(); },
    [](const Document& document) { return document.write_to_string_formatted(true); },
    [](const Document& document) { return document.write_to_string_formatted(false); },
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > longest_input)
        return 0;
    const std::string input = quxml_fuzz::to_text(data, size);
    const bool keep_sorted = input.substr(0, 1) == "!";
    const Document document = quxml_fuzz::build_tree(input);
    if (get_height(document) > 256)
        return 0;
    const bool is_to_be_equal = is_carried(document);
    for (const Write write : layouts) {
        if (is_to_be_equal)
            check_round_trip(document, keep_sorted, write);
        else
            check_survival(document, write);
    }
    return 0;
}
