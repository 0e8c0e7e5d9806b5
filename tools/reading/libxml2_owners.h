// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_READING_LIBXML2_OWNERS_H
#define QUXML_TOOLS_READING_LIBXML2_OWNERS_H

#include <libxml/encoding.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <climits>
#include <memory>
#include <new>
#include <string_view>

namespace tool {

// Owners of what libxml2 hands out.

struct FreeParser {
    void operator()(xmlParserCtxt* parser) const {
        xmlFreeDoc(parser->myDoc);
        xmlFreeParserCtxt(parser);
    }
};

using ParserOwner = std::unique_ptr<xmlParserCtxt, FreeParser>;

struct FreeBuffer {
    void operator()(xmlBuffer* buffer) const { xmlBufferFree(buffer); }
};

using BufferOwner = std::unique_ptr<xmlBuffer, FreeBuffer>;

struct CloseConverter {
    void operator()(xmlCharEncodingHandler* converter) const { xmlCharEncCloseFunc(converter); }
};

using ConverterOwner = std::unique_ptr<xmlCharEncodingHandler, CloseConverter>;

/// libxml2 makes no parser for other sizes.
inline bool can_be_parsed(std::string_view document) {
    return !document.empty() && document.size() <= INT_MAX;
}

/// A parser that reads `document`, which has to outlive it and can be parsed.
/// \throws std::bad_alloc
inline ParserOwner create_parser(std::string_view document) {
    ParserOwner parser(xmlCreateMemoryParserCtxt(document.data(), static_cast<int>(document.size())));
    if (!parser)
        throw std::bad_alloc();
    return parser;
}

}  // namespace tool

#endif
