// SPDX-License-Identifier: MIT
#include "reading/default_attributes.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>

#include <new>

#include "reading/libxml2_owners.h"

namespace tool {

namespace {

struct Defaults {
    std::set<AttributeName> names{};
    bool out_of_memory = false;
};

void on_attribute(void* context, const xmlChar* element, const xmlChar* name, int type, int presence,
                  const xmlChar* value, xmlEnumerationPtr values) {
    auto* parser = static_cast<xmlParserCtxtPtr>(context);
    auto& defaults = *static_cast<Defaults*>(parser->_private);
    try {
        if (value != nullptr)
            defaults.names.emplace(reinterpret_cast<const char*>(element),
                                   reinterpret_cast<const char*>(name));
    } catch (const std::bad_alloc&) {
        defaults.out_of_memory = true;
    }
    xmlSAX2AttributeDecl(context, element, name, type, presence, value, values);
}

/// By now the DOCTYPE has been read.
void on_start(void* context, const xmlChar* /*name*/, const xmlChar* /*prefix*/, const xmlChar* /*uri*/,
              int /*namespaces*/, const xmlChar** /*namespace_list*/, int /*attributes*/, int /*defaulted*/,
              const xmlChar** /*attribute_list*/) {
    xmlStopParser(static_cast<xmlParserCtxtPtr>(context));
}

}  // namespace

std::set<AttributeName> find_default_attributes(std::string_view document) {
    if (!can_be_parsed(document))
        return {};
    Defaults defaults;
    const ParserOwner parser = create_parser(document);
    parser->_private = &defaults;
    xmlCtxtUseOptions(parser.get(), XML_PARSE_IGNORE_ENC);
    // The error is const from libxml2 2.12 on.
    parser->sax->serror = [](void* /*context*/, auto* /*error*/) {};
    parser->sax->attributeDecl = on_attribute;
    parser->sax->startElementNs = on_start;
    xmlParseDocument(parser.get());
    if (defaults.out_of_memory)
        throw std::bad_alloc();
    return defaults.names;
}

}  // namespace tool
