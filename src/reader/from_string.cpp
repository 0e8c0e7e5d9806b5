// SPDX-License-Identifier: MIT

// Reading: libxml2 parses the text into its own tree, which is copied into nodes of this library and freed.
//
// What is kept: elements, their attributes, and text that is the only node in its element, unless it is white
// space that begins with a line feed. Text with siblings is dropped, which is what removes the indentation
// between elements.
//
// The conversion follows the links of libxml2's tree to first children and next siblings instead of recursing;
// a list of the elements whose content is being converted runs along.
//
// libxml2's tree stays as it is until all of it has been converted. Freeing it on the way would take less
// memory, but it would scatter the new tree over what has been freed, and everything that is done with the
// tree later would take longer.

#include <libxml/parser.h>
#include <libxml/xmlerror.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dom/Filling.h"
#include "dom/NodeAccess.h"
#include "dom/integer.h"
#include "quxml/Document.h"
#include "quxml/DomParserError.h"
#include "quxml/Element.h"
#include "reader/entity_loop.h"

namespace quxml {

namespace {

struct FreeXmlDoc {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};

/// libxml2's tree, freed on every path.
using XmlDocPtr = std::unique_ptr<xmlDoc, FreeXmlDoc>;

void silent_error_handler(void* /*context*/, const char* /*format*/, ...) {}

/// Keeps libxml2 from printing; errors are still recorded.
void silence_libxml2() {
#if LIBXML_VERSION < 21200
    xmlGenericErrorFunc handler = silent_error_handler;
    initGenericErrorDefaultFunc(&handler);
#else
    xmlSetGenericErrorFunc(nullptr, silent_error_handler);
#endif
}

#ifdef QUXML_ENTITY_LOOPS_GO_ON
/// While it lives, a parse on this thread is stopped once libxml2 has found an endless loop of entities.
class EntityLoopGuard {
public:
    EntityLoopGuard() : former_handler(xmlStructuredError), former_context(xmlStructuredErrorContext) {
        xmlSetStructuredErrorFunc(this, handle);
    }

    ~EntityLoopGuard() { xmlSetStructuredErrorFunc(former_context, former_handler); }

    EntityLoopGuard(const EntityLoopGuard&) = delete;
    EntityLoopGuard& operator=(const EntityLoopGuard&) = delete;

private:
    static void handle(void* context, xmlErrorPtr error) {
        const auto* guard = static_cast<const EntityLoopGuard*>(context);
        if (guard->former_handler != nullptr)
            guard->former_handler(guard->former_context, error);
        auto* parser = static_cast<xmlParserCtxtPtr>(error->ctxt);  // null if it is not the parser's error
        if (parser != nullptr && goes_on_for_ever(*error, *parser))
            xmlStopParser(parser);
    }

    xmlStructuredErrorFunc former_handler;
    void* former_context;
};
#else
class EntityLoopGuard {};
#endif

std::string_view view_from_xml(const xmlChar* s) {
    if (s == nullptr)
        return {};
    return reinterpret_cast<const char*>(s);
}

void append_number(std::string& text, const char* label, int number) {
    text.append(label).append(write_integer(number));
}

/// Describes libxml2's last error in one line, and resets it.
DomParserError take_last_error() {
    const xmlError none = {};
    const xmlError* last = xmlGetLastError();
    const xmlError& error = last == nullptr ? none : *last;
    std::string message;
    if (error.message != nullptr)
        message = error.message;
    if (!message.empty())
        message.pop_back();  // the line feed that ends every message of libxml2
    append_number(message, " (error code: ", error.code);
    append_number(message, ") at line ", error.line);
    append_number(message, ", column ", error.int2);
    xmlResetLastError();
    return DomParserError(message);
}

/// Whether libxml2 read all of the text. When it runs out of memory it may stop in the middle and return what
/// it has.
bool is_complete(const xmlDoc* document) {
    if (document == nullptr || xmlDocGetRootElement(document) == nullptr)
        return false;
    const xmlError* error = xmlGetLastError();
    return error == nullptr || error->code != XML_ERR_NO_MEMORY;
}

XmlDocPtr read_memory(const std::string& text) {
    [[maybe_unused]] const EntityLoopGuard guard;
    return XmlDocPtr(xmlReadMemory(text.data(), static_cast<int>(text.size()), "", nullptr, 0));
}

XmlDocPtr parse(const std::string& text) {
    if (text.empty())
        throw DomParserError("Empty document.");
    if (text.size() > INT_MAX)
        throw DomParserError("Document too large.");
    LIBXML_TEST_VERSION
    silence_libxml2();
    xmlResetLastError();
    XmlDocPtr document = read_memory(text);
    if (!is_complete(document.get()))
        throw take_last_error();
    xmlResetLastError();
    return document;
}

/// Deliberate: the prefix of a name is not looked at, and of a value only the first piece is.
/// Tests: Prefixes/ReadText.gives_this_tree/prefixes_and_declarations_are_dropped,
/// Attributes/ReadText.gives_this_tree/of_entity_reference_inside.
void convert_attributes(Element& element, const xmlNode& node) {
    AttributeFilling filling(element);
    for (const xmlAttr* attribute = node.properties; attribute != nullptr; attribute = attribute->next) {
        const xmlChar* value = attribute->children == nullptr ? nullptr : attribute->children->content;
        filling.set_attribute(view_from_xml(attribute->name), view_from_xml(value));
    }
}

bool is_white_space(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](unsigned char byte) { return std::isspace(byte) != 0; });
}

/// Deliberate: white space that begins with a line feed is dropped; other white space is kept, and kept text
/// is not trimmed. Tests: WhiteSpace/ReadText.gives_this_tree/line_feed_then_blanks,
/// WhiteSpace/ReadText.gives_this_tree/two_blanks_are_kept, Texts/ReadText.gives_this_tree/lone_text_is_not_trimmed.
void convert_text(Element& element, const xmlNode& node) {
    const std::string_view text = view_from_xml(node.content);
    if (text.substr(0, 1) == "\n" && is_white_space(text))
        return;
    Filling::add_text(element, text);
}

/// Whether one text is all the content of an element.
bool has_only_text(const xmlNode& node) {
    return node.children != nullptr && node.children->next == nullptr && node.children->type == XML_TEXT_NODE;
}

/// Copies what is below one element of libxml2's tree.
class Conversion {
public:
    void fill(Element& root, const xmlNode& xml_root) {
        const xmlNode* node = convert_content(root, xml_root);
        while (node != nullptr) {
            const xmlNode* below = node->type == XML_ELEMENT_NODE ? convert_element(*node) : nullptr;
            node = below != nullptr ? below : go_on(node);
        }
    }

private:
    const xmlNode* convert_element(const xmlNode& node) {
        Element& child =
            *Filling::add_element(*parent, view_from_xml(node.name), NodeAccess::keep_sorted(*parent));
        convert_attributes(child, node);
        return convert_content(child, node);
    }

    /// Returns the first node to put into the element; null if there are none, or if there was only text.
    ///
    /// Deliberate: text with any sibling is dropped.
    /// Test: Texts/ReadText.gives_this_tree/texts_around_an_element_are_dropped.
    const xmlNode* convert_content(Element& element, const xmlNode& node) {
        if (has_only_text(node)) {
            convert_text(element, *node.children);
            return nullptr;
        }
        if (node.children != nullptr) {
            open.push_back(&node);
            parent = &element;
        }
        return node.children;
    }

    /// The node after this one and all below it, or null. Elements that are complete on the way are settled.
    const xmlNode* go_on(const xmlNode* node) {
        while (node->next == nullptr) {
            Filling::settle(*parent);
            node = open.back();
            open.pop_back();
            if (open.empty())
                return nullptr;
            parent = parent->get_parent();
        }
        return node->next;
    }

    std::vector<const xmlNode*> open;  // elements whose content is being converted, the outermost first
    Element* parent = nullptr;         // the new element for the last of them
};

}  // namespace

std::shared_ptr<Document> from_string(const std::string& text, bool keep_sorted) {
    const XmlDocPtr xml_document = parse(text);
    auto document = std::make_shared<Document>(keep_sorted);
    const xmlNode* xml_root = xmlDocGetRootElement(xml_document.get());
    Element* root = document->create_root_node(std::string(view_from_xml(xml_root->name)));
    convert_attributes(*root, *xml_root);
    Conversion().fill(*root, *xml_root);
    return document;
}

}  // namespace quxml
