// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_XML_EVENTS_H
#define QUXML_TOOLS_READING_XML_EVENTS_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

enum class EventKind { doctype, start_tag, end_tag, text, cdata, comment, instruction, entity };

/// What libxml2 meets in a document, in document order and with its place there. Text comes in pieces, of which
/// only the first's `begin` is exact, and no `end`. A start tag ends before its ">" or "/>", and an
/// element without content has an end tag without length.
struct Event {
    EventKind kind;
    std::size_t begin;         // byte of the document
    std::size_t end;           // the byte after it
    std::string_view content;  // of text, with references resolved; the name of an entity
    /// Of a start tag: what has a prefix that a namespace declaration explains. The library reads these names without
    /// it, and names with any other prefix as they stand.
    bool element_loses_prefix = false;
    std::vector<std::string> prefixed_attributes{};
};

using EventHandler = std::function<void(const Event&)>;

/// What libxml2 has to say against a document, in the order in which it says it.
struct Problem {
    bool is_fatal;  // the document is not well-formed
    int line;
    int column;  // in characters
    std::string message;
};

/// Lets libxml2 read `document` as the library does and hands `handler` what there is outside the DOCTYPE.
/// \param document  UTF-8 without a byte-order mark, whatever encoding it declares. Nothing is reported of
/// a document that is empty or has 2 GiB or more.
/// \throws std::bad_alloc, and what `handler` throws
std::vector<Problem> read_events(std::string_view document, const EventHandler& handler);

}  // namespace tool

#endif
