// SPDX-License-Identifier: MIT
#include "reading/encoding.h"

#include <libxml/SAX2.h>
#include <libxml/encoding.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <new>

#include "reading/libxml2_owners.h"
#include "terminal/memory.h"
#include "terminal/words.h"

namespace tool {

namespace {

/// The XML declaration has been read by now, and nothing else has.
void note_encoding(void* context) {
    auto* parser = static_cast<xmlParserCtxtPtr>(context);
    const xmlParserInputBuffer* buffer = parser->input->buf;
    if (buffer != nullptr && buffer->encoder != nullptr)
        *static_cast<std::string*>(parser->_private) = buffer->encoder->name;
    xmlStopParser(parser);
}

/// iconv may have had no memory for an encoding that it knows; then it knows it at a second try.
void require_unknown(const xmlError& error) {
    if (error.code == XML_ERR_UNSUPPORTED_ENCODING && error.str1 != nullptr &&
        ConverterOwner(xmlFindCharEncodingHandler(error.str1)))
        end_for_lack_of_memory();
}

/// One call converts as much as it has room for.
bool convert(xmlCharEncodingHandler& converter, xmlBuffer& out, xmlBuffer& in) {
    while (xmlBufferLength(&in) > 0) {
        if (xmlCharEncInFunc(&converter, &out, &in) <= 0)
            return false;
    }
    return true;
}

}  // namespace

std::string get_encoding(const std::string& document) {
    std::string encoding;
    if (!can_be_parsed(document))
        return encoding;
    const ParserOwner parser = create_parser(document);
    parser->_private = &encoding;
    // The error is const from libxml2 2.12 on.
    parser->sax->serror = [](void* /*context*/, auto* error) { require_unknown(*error); };
    parser->sax->startDocument = note_encoding;
    xmlParseDocument(parser.get());
    return encoding;
}

std::string to_utf8(const std::string& document, const std::string& encoding) {
    if (encoding.empty())
        return document;
    const BufferOwner in(xmlBufferCreateStatic(const_cast<char*>(document.data()), document.size()));
    const BufferOwner out(xmlBufferCreate());
    const ConverterOwner converter(xmlFindCharEncodingHandler(encoding.c_str()));
    if (!in || !out || !converter)
        throw std::bad_alloc();
    if (!convert(*converter, *out, *in))
        return document;
    return std::string(reinterpret_cast<const char*>(xmlBufferContent(out.get())),
                       static_cast<std::size_t>(xmlBufferLength(out.get())));
}

// In some encodings other characters have zero bytes, too.
bool has_zero_character(const std::string& document) {
    return document.find('\0') != std::string::npos &&
           to_utf8(document, get_encoding(document)).find('\0') != std::string::npos;
}

std::string_view without_mark(std::string_view document) {
    constexpr std::string_view mark = "\xef\xbb\xbf";
    return begins_with(document, mark) ? document.substr(mark.size()) : document;
}

}  // namespace tool
