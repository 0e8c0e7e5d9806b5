// SPDX-License-Identifier: MIT
#ifndef QUXML_READER_ENTITY_LOOP_H
#define QUXML_READER_ENTITY_LOOP_H

#include <libxml/parser.h>
#include <libxml/xmlerror.h>

// Versions of libxml2 before 2.11 report a loop of entities in a DTD and go on, and a few hundred bytes of
// parameter entities keep them going for ever. In the content of a document they stop by themselves.
#if LIBXML_VERSION < 21100
#define QUXML_ENTITY_LOOPS_GO_ON
#endif

namespace quxml {

#ifdef QUXML_ENTITY_LOOPS_GO_ON
/// Whether `parser`, which reports `error`, would go on for ever unless it is stopped.
inline bool goes_on_for_ever(const xmlError& error, const xmlParserCtxt& parser) {
    return error.code == XML_ERR_ENTITY_LOOP && parser.instate == XML_PARSER_DTD;
}
#endif

}  // namespace quxml

#endif
