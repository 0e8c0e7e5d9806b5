// SPDX-License-Identifier: MIT
#include <libxml/parser.h>
#include <libxml/xpath.h>

#include <stdexcept>

#include "libraries.h"

namespace bench {

namespace {

const xmlChar* xml_text(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

struct XPathDestroyer {
    void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
    void operator()(xmlXPathObject* object) const { xmlXPathFreeObject(object); }
};

/// The node after this one in document order, or null.
const xmlNode* next_in_document(const xmlNode* node) {
    if (node->type == XML_ELEMENT_NODE && node->children != nullptr)
        return node->children;
    while (node != nullptr && node->next == nullptr)
        node = node->parent;
    return node == nullptr ? nullptr : node->next;
}

}  // namespace

Libxml2::Document Libxml2::read(const std::string& text) {
    return Document(xmlReadMemory(text.data(), static_cast<int>(text.size()), "", nullptr, 0));
}

Libxml2::Text Libxml2::write(const Document& document, bool formatted) {
    xmlChar* text = nullptr;
    int size = 0;
    // Without the name of an encoding, every letter that is not ASCII would be written as a number.
    xmlDocDumpFormatMemoryEnc(document.get(), &text, &size, "UTF-8", formatted ? 1 : 0);
    return Text(text);
}

std::string Libxml2::to_string(const Text& text) {
    return reinterpret_cast<const char*>(text.get());
}

Libxml2::Document Libxml2::copy(const Document& document) {
    return Document(xmlCopyDoc(document.get(), 1));
}

Libxml2::Document Libxml2::build(std::size_t count, bool filled) {
    Document document(xmlNewDoc(xml_text("1.0")));
    xmlNode* root = xmlNewNode(nullptr, xml_text("list"));
    xmlDocSetRootElement(document.get(), root);
    for (std::size_t i = 0; i < count; ++i) {
        xmlNode* child = xmlNewChild(root, nullptr, xml_text("entry"), xml_text(filled ? "text" : nullptr));
        if (filled)
            xmlNewProp(child, xml_text("id"), xml_text("identifier"));
    }
    return document;
}

std::size_t Libxml2::count_elements(const Document& document) {
    std::size_t count = 0;
    const xmlNode* node = xmlDocGetRootElement(document.get());
    for (; node != nullptr; node = next_in_document(node))
        count += node->type == XML_ELEMENT_NODE ? 1U : 0U;
    return count;
}

std::size_t Libxml2::look_at_names(const Document& document) {
    std::size_t sum = 0;
    const xmlNode* node = xmlDocGetRootElement(document.get());
    for (; node != nullptr; node = next_in_document(node))
        sum += node->type == XML_ELEMENT_NODE ? *node->name : 0U;
    return sum;
}

std::size_t Libxml2::find(const Document& document, const Path& path) {
    const std::unique_ptr<xmlXPathContext, XPathDestroyer> context(xmlXPathNewContext(document.get()));
    const std::unique_ptr<xmlXPathObject, XPathDestroyer> found(
        xmlXPathEvalExpression(xml_text(path.xpath.c_str()), context.get()));
    if (!found)
        throw std::runtime_error("libxml2 cannot read " + path.xpath);
    return xmlXPathNodeSetIsEmpty(found->nodesetval) ? 0
                                                     : static_cast<std::size_t>(found->nodesetval->nodeNr);
}

}  // namespace bench
