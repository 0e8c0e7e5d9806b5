// SPDX-License-Identifier: MIT

// What the reader uses of libxml2, declared as libxml2 of the version STUB_LIBXML_VERSION declares it. Nothing here is
// ever linked.
#ifndef QUXML_TESTS_STUB_PARSER_H
#define QUXML_TESTS_STUB_PARSER_H

#include <libxml/xmlerror.h>

using xmlChar = unsigned char;

enum xmlElementType { XML_ELEMENT_NODE = 1, XML_ATTRIBUTE_NODE = 2, XML_TEXT_NODE = 3 };
enum xmlParserInputState { XML_PARSER_EOF = -1, XML_PARSER_START = 0, XML_PARSER_DTD = 3 };

struct xmlDoc;
struct xmlAttr;

struct xmlNode {
    xmlElementType type;
    const xmlChar* name;
    xmlNode* children;
    xmlNode* next;
    xmlChar* content;
    xmlAttr* properties;
};

struct xmlAttr {
    const xmlChar* name;
    xmlNode* children;
    xmlAttr* next;
};

struct xmlParserCtxt {
    DEPRECATED_SINCE(21400) xmlParserInputState instate;
};

using xmlNodePtr = xmlNode*;
using xmlDocPtr = xmlDoc*;
using xmlParserCtxtPtr = xmlParserCtxt*;

#define LIBXML_VERSION STUB_LIBXML_VERSION
#define LIBXML_TEST_VERSION xmlCheckVersion(LIBXML_VERSION);

extern "C" {
void xmlCheckVersion(int version);
xmlDocPtr xmlReadMemory(const char* buffer, int size, const char* url, const char* encoding, int options);
void xmlFreeDoc(xmlDocPtr document);
xmlNodePtr xmlDocGetRootElement(const xmlDoc* document);
DEPRECATED_SINCE(21400) void xmlStopParser(xmlParserCtxtPtr parser);
}

#endif
