// SPDX-License-Identifier: MIT

// libxml2 calls back once it has read something, and says how far it has come. With text it may not have come
// to the end yet when it calls. Everything else begins at the next "<", which no text holds, or it is a
// reference, whose length follows from its name.
//
// Entities and the DOCTYPE go to libxml2's own handlers, which know what later references to entities mean;
// no tree is built. What stands inside an entity is read by a parser of its own and does not matter here.

#include "reading/xml_events.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/xmlerror.h>

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "reader/entity_loop.h"
#include "reading/libxml2_owners.h"

namespace tool {

namespace {

struct Reading {
    xmlParserCtxtPtr parser;
    std::string_view document;
    const EventHandler& handler;
    std::vector<Problem> problems{};
    std::size_t reached = 0;  // the end of the last event
    bool out_of_memory = false;
    std::exception_ptr failure = nullptr;  // of the handler: exceptions must not pass through libxml2
};

Reading& get_reading(void* context) {
    return *static_cast<Reading*>(static_cast<xmlParserCtxtPtr>(context)->_private);
}

bool is_outside(const Reading& reading, const void* context) {
    return context != reading.parser || reading.parser->inSubset != 0 || reading.failure != nullptr;
}

std::size_t find_begin(const Reading& reading, EventKind kind, std::string_view content, std::size_t end) {
    if (kind == EventKind::text)
        return reading.reached;
    if (kind == EventKind::entity)
        return end - content.size() - std::string_view("&;").size();
    return std::min(reading.document.find('<', reading.reached), end);
}

/// No exception may pass through libxml2.
template <typename Work>
void guard(Reading& reading, const Work& work) {
    try {
        work();
    } catch (...) {
        reading.failure = std::current_exception();
        xmlStopParser(reading.parser);
    }
}

/// Gives the event its place and hands it on.
void report(Reading& reading, Event event) {
    event.end = static_cast<std::size_t>(xmlByteConsumed(reading.parser));
    event.begin = find_begin(reading, event.kind, event.content, event.end);
    reading.reached = event.end;
    guard(reading, [&] { reading.handler(event); });
}

void report(Reading& reading, EventKind kind, std::string_view content) {
    report(reading, {kind, 0, 0, content});
}

void report_if_inside(void* context, EventKind kind, std::string_view content = {}) {
    Reading& reading = get_reading(context);
    if (!is_outside(reading, context))
        report(reading, kind, content);
}

std::string_view to_view(const xmlChar* text, int size) {
    return {reinterpret_cast<const char*>(text), static_cast<std::size_t>(size)};
}

std::string to_string(const xmlChar* text) {
    return reinterpret_cast<const char*>(text);
}

/// libxml2 gives five pointers for each attribute: its local name, its prefix, the prefix's meaning, and its value.
std::vector<std::string> get_prefixed(const xmlChar** attributes, int count) {
    constexpr std::ptrdiff_t size = 5;
    std::vector<std::string> names;
    for (const xmlChar** one = attributes; one != attributes + count * size; one += size) {
        if (one[1] != nullptr && one[2] != nullptr)
            names.push_back(to_string(one[1]) + ':' + to_string(one[0]));
    }
    return names;
}

void on_start(void* context, const xmlChar* /*name*/, const xmlChar* prefix, const xmlChar* uri,
              int /*namespaces*/, const xmlChar** /*namespace_list*/, int attributes, int /*defaulted*/,
              const xmlChar** attribute_list) {
    Reading& reading = get_reading(context);
    if (is_outside(reading, context))
        return;
    Event event{EventKind::start_tag, 0, 0, {}, prefix != nullptr && uri != nullptr};
    guard(reading, [&] { event.prefixed_attributes = get_prefixed(attribute_list, attributes); });
    if (reading.failure == nullptr)
        report(reading, std::move(event));
    if (reading.document.substr(reading.reached, 1) == ">")
        ++reading.reached;
}

void on_end(void* context, const xmlChar* /*name*/, const xmlChar* /*prefix*/, const xmlChar* /*uri*/) {
    report_if_inside(context, EventKind::end_tag);
}

void on_text(void* context, const xmlChar* text, int size) {
    report_if_inside(context, EventKind::text, to_view(text, size));
}

void on_cdata(void* context, const xmlChar* text, int size) {
    report_if_inside(context, EventKind::cdata, to_view(text, size));
}

void on_comment(void* context, const xmlChar* /*text*/) {
    report_if_inside(context, EventKind::comment);
}

void on_instruction(void* context, const xmlChar* /*target*/, const xmlChar* /*data*/) {
    report_if_inside(context, EventKind::instruction);
}

void on_entity(void* context, const xmlChar* name) {
    report_if_inside(context, EventKind::entity, to_view(name, xmlStrlen(name)));
}

/// The XML declaration has been read.
void on_start_of_document(void* context) {
    Reading& reading = get_reading(context);
    if (context == reading.parser)
        reading.reached = static_cast<std::size_t>(xmlByteConsumed(reading.parser));
    xmlSAX2StartDocument(context);
}

/// This comes once the DOCTYPE has been read to its end. Nothing outside of the document is loaded.
void on_doctype(void* context, const xmlChar* /*name*/, const xmlChar* /*public_id*/,
                const xmlChar* /*system_id*/) {
    Reading& reading = get_reading(context);
    if (context == reading.parser)
        report(reading, EventKind::doctype, {});
}

Problem to_problem(const xmlError& error) {
    std::string message = error.message == nullptr ? "unknown" : error.message;
    while (!message.empty() && message.back() == '\n')
        message.pop_back();
    return {error.level == XML_ERR_FATAL, error.line, error.int2, message};
}

void on_problem(void* context, const xmlError& error) {
    [[maybe_unused]] auto* parser = static_cast<xmlParserCtxtPtr>(context);
    Reading& reading = get_reading(context);
    reading.out_of_memory = reading.out_of_memory || error.code == XML_ERR_NO_MEMORY;
    try {
        reading.problems.push_back(to_problem(error));
    } catch (const std::bad_alloc&) {
        reading.out_of_memory = true;
    }
#ifdef QUXML_ENTITY_LOOPS_GO_ON
    if (quxml::goes_on_for_ever(error, *parser))
        xmlStopParser(parser);
#endif
}

void set_handlers(xmlSAXHandler& handlers) {
    handlers.startDocument = on_start_of_document;
    handlers.externalSubset = on_doctype;
    handlers.startElementNs = on_start;
    handlers.endElementNs = on_end;
    handlers.characters = on_text;
    handlers.ignorableWhitespace = on_text;
    handlers.cdataBlock = on_cdata;
    handlers.comment = on_comment;
    handlers.processingInstruction = on_instruction;
    handlers.reference = on_entity;
    // The error is const from libxml2 2.12 on.
    handlers.serror = [](void* context, auto* error) { on_problem(context, *error); };
}

}  // namespace

std::vector<Problem> read_events(std::string_view document, const EventHandler& handler) {
    if (!can_be_parsed(document))
        return {};
    const ParserOwner parser = create_parser(document);
    Reading reading{parser.get(), document, handler};
    parser->_private = &reading;
    xmlCtxtUseOptions(parser.get(), XML_PARSE_IGNORE_ENC);
    set_handlers(*parser->sax);
    xmlParseDocument(parser.get());
    if (reading.failure != nullptr)
        std::rethrow_exception(reading.failure);
    if (reading.out_of_memory)
        throw std::bad_alloc();
    return reading.problems;
}

}  // namespace tool
