// Reading: libxml2 parses the text into its own tree, which is copied into nodes of this library and freed.
//
// What is kept: elements, their attributes, and text that is the only node in its element, unless it is white
// space that begins with a line feed. Text with siblings is dropped, which is what removes the indentation
// between elements.
//
// The conversion follows the links of libxml2's tree instead of recursing; a list of the elements being
// filled runs along.
//
// libxml2's tree stays as it is until all of it has been converted. Freeing it on the way would take less
// memory, but it would scatter the new tree over what has been freed, and everything that is done with the
// tree later would take longer.

#include <libxml/parser.h>
#include <libxml/xmlerror.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

#include "dom/Filling.h"
#include "quxml/Document.h"
#include "quxml/DomParserError.h"
#include "quxml/Element.h"

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

#if LIBXML_VERSION < 21100
/// While it lives, a parse on this thread is stopped once libxml2 has found a loop of entities in a DTD.
/// Versions before 2.11 report the loop and go on, and a few hundred bytes of parameter entities keep them
/// going for ever. In the content of a document they stop by themselves.
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
        auto* parser = static_cast<xmlParserCtxtPtr>(error->ctxt);
        if (error->code == XML_ERR_ENTITY_LOOP && parser->instate == XML_PARSER_DTD)
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

/// Describes libxml2's last error in one line, and resets it.
DomParserError take_last_error() {
    const xmlError* error = xmlGetLastError();
    std::string message;
    if (error != nullptr && error->message != nullptr)
        message = error->message;
    if (!message.empty())
        message.pop_back();  // the line feed that ends every message of libxml2
    message += " (error code: " + std::to_string(error == nullptr ? 0 : error->code);
    message += ") at line " + std::to_string(error == nullptr ? 0 : error->line);
    message += ", column " + std::to_string(error == nullptr ? 0 : error->int2);
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
    element.add_child_text(std::string(text));
}

/// Whether one text is all the content of an element.
bool has_only_text(const xmlNode& node) {
    return node.children != nullptr && node.children->next == nullptr && node.children->type == XML_TEXT_NODE;
}

/// An element that is being filled, and the next node of libxml2's tree to put into it.
struct OpenElement {
    OpenElement(Element& open, const xmlNode* first) : next(first), filling(open) {}

    const xmlNode* next;
    Filling filling;
};

using OpenElements = std::deque<OpenElement>;

/// Deliberate: text with any sibling is dropped.
/// Test: Texts/ReadText.gives_this_tree/texts_around_an_element_are_dropped.
void convert_content(OpenElements& open, Element& element, const xmlNode& node) {
    if (has_only_text(node)) {
        convert_text(element, *node.children);
    } else if (node.children != nullptr) {
        open.emplace_back(element, node.children);
    }
}

void convert_element(OpenElements& open, const xmlNode& node) {
    Element& child = *open.back().filling.add_element(view_from_xml(node.name));
    convert_attributes(child, node);
    convert_content(open, child, node);
}

void convert_children(Element& root, const xmlNode& xml_root) {
    OpenElements open;
    convert_content(open, root, xml_root);
    while (!open.empty()) {
        const xmlNode* node = open.back().next;
        if (node == nullptr) {
            open.pop_back();
            continue;
        }
        open.back().next = node->next;
        if (node->type == XML_ELEMENT_NODE)
            convert_element(open, *node);
    }
}

}  // namespace

std::shared_ptr<Document> from_string(const std::string& text, bool keep_sorted) {
    const XmlDocPtr xml_document = parse(text);
    auto document = std::make_shared<Document>(keep_sorted);
    const xmlNode* xml_root = xmlDocGetRootElement(xml_document.get());
    Element* root = document->create_root_node(std::string(view_from_xml(xml_root->name)));
    convert_attributes(*root, *xml_root);
    convert_children(*root, *xml_root);
    return document;
}

}  // namespace quxml
