// SPDX-License-Identifier: MIT
#ifndef QUXML_BENCH_LIBRARIES_H
#define QUXML_BENCH_LIBRARIES_H

// The libraries that are measured, each behind the same few functions: what an application would write to do
// the work with that library. A library lacks the functions that nothing asks of it.

#include <libxml/tree.h>
#include <quxml/quxml.h>
#include <tinyxml2.h>

#include <cstddef>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace bench {

/// One query in the two languages; made so that both select the same nodes of the tree they are meant for.
struct Path {
    std::string quxml;
    std::string xpath;
};

struct Quxml {
    static constexpr const char* name = "quxml";
    using Document = std::shared_ptr<quxml::Document>;
    using Text = std::string;

    static Document read(const std::string& text);
    static Document read_sorted(const std::string& text);
    static Text write(const Document& document, bool formatted);
    static std::string to_string(const Text& text) { return text; }
    static Document copy(const Document& document);
    /// A root with `count` children; `filled`: each has an attribute and a text.
    static Document build(std::size_t count, bool filled);
    static std::size_t count_elements(const Document& document);
    /// Walks over all elements and returns the sum of the first bytes of their names.
    static std::size_t look_at_names(const Document& document);
    /// Runs a query and returns how many nodes it found.
    static std::size_t find(const Document& document, const Path& path);
    /// Sorts the children of the root by name and item.
    static void sort(const Document& document);
    static bool has_child(const Document& document, const char* child_name);
    static bool has_attribute(const Document& document, const char* attribute_name);
    /// A root with a child for each item, in the order of the items: each one added at its place, or all of them
    /// appended and then sorted.
    static Document add_sorted(const std::vector<unsigned>& items);
    static Document append_and_sort(const std::vector<unsigned>& items);
    /// Writes formatted text into a file: safely, or as one string.
    static void write_file(const Document& document, const std::string& file);
    static void write_string(const Document& document, const std::string& file);
};

struct Libxml2 {
    static constexpr const char* name = "libxml2";

    struct Destroyer {
        void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
        void operator()(xmlChar* text) const { xmlFree(text); }
    };

    using Document = std::unique_ptr<xmlDoc, Destroyer>;
    using Text = std::unique_ptr<xmlChar, Destroyer>;

    static Document read(const std::string& text);
    static Text write(const Document& document, bool formatted);
    static std::string to_string(const Text& text);
    static Document copy(const Document& document);
    static Document build(std::size_t count, bool filled);
    static std::size_t count_elements(const Document& document);
    static std::size_t look_at_names(const Document& document);
    static std::size_t find(const Document& document, const Path& path);
};

struct Pugixml {
    static constexpr const char* name = "pugixml";
    using Document = std::unique_ptr<pugi::xml_document>;
    using Text = std::string;

    static Document read(const std::string& text);
    static Text write(const Document& document, bool formatted);
    static std::string to_string(const Text& text) { return text; }
    static Document copy(const Document& document);
    static Document build(std::size_t count, bool filled);
    static std::size_t count_elements(const Document& document);
    static std::size_t look_at_names(const Document& document);
    static std::size_t find(const Document& document, const Path& path);
    static void sort(const Document& document);
    static bool has_child(const Document& document, const char* child_name);
    static bool has_attribute(const Document& document, const char* attribute_name);
};

struct Tinyxml2 {
    static constexpr const char* name = "tinyxml2";
    using Document = std::unique_ptr<tinyxml2::XMLDocument>;
    using Text = std::unique_ptr<tinyxml2::XMLPrinter>;

    static Document read(const std::string& text);
    static Text write(const Document& document, bool formatted);
    static std::string to_string(const Text& text) { return text->CStr(); }
    static Document copy(const Document& document);
    static Document build(std::size_t count, bool filled);
    static std::size_t count_elements(const Document& document);
};

}  // namespace bench

#endif
