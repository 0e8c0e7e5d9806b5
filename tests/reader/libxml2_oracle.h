// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_READER_LIBXML2_ORACLE_H
#define QUXML_TESTS_READER_LIBXML2_ORACLE_H

// What reading a text must give, worked out from libxml2 itself: from its tree by a conversion of its own, as
// simple as can be, or from the record of its last error.

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "quxml/Document.h"
#include "quxml/DomParserError.h"
#include "support/tree_text.h"

namespace quxml_test {

/// Literals that hold for one version of libxml2 are checked with that version only.
inline bool is_libxml2_2_9_14() {
    return std::string(xmlParserVersion).rfind("20914", 0) == 0;
}

#define QUXML_SKIP_UNLESS_LIBXML2_2_9_14()  \
    if (!::quxml_test::is_libxml2_2_9_14()) \
    GTEST_SKIP() << "these literals are those of libxml2 2.9.14; running with " << xmlParserVersion

/// Silences libxml2 for a scope and puts back whatever handler there was.
class SilentLibxml2 {
public:
    SilentLibxml2() : handler(xmlGenericError), context(xmlGenericErrorContext) {
        xmlSetGenericErrorFunc(nullptr, ignore);
    }
    ~SilentLibxml2() { xmlSetGenericErrorFunc(context, handler); }
    SilentLibxml2(const SilentLibxml2&) = delete;
    SilentLibxml2& operator=(const SilentLibxml2&) = delete;

private:
    static void ignore(void* /*context*/, const char* /*format*/, ...) {}  // NOLINT(cert-dcl50-cpp)

    xmlGenericErrorFunc handler;
    void* context;
};

struct FreeTree {
    void operator()(xmlDoc* tree) const { xmlFreeDoc(tree); }
};

/// libxml2's tree; null if the text is refused.
inline std::unique_ptr<xmlDoc, FreeTree> parse_with_libxml2(const std::string& text) {
    xmlResetLastError();
    return std::unique_ptr<xmlDoc, FreeTree>(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), "", nullptr, 0));
}

/// libxml2's last error as the reader words it.
inline std::string describe_last_error() {
    const auto* error = xmlGetLastError();
    if (error == nullptr)
        return "libxml2 recorded no error";
    std::string message = error->message;
    message.pop_back();
    return message + " (error code: " + std::to_string(error->code) + ") at line " +
           std::to_string(error->line) + ", column " + std::to_string(error->int2);
}

/// The message of the exception that the text must give; empty if libxml2 reads it.
inline std::string expected_error(const std::string& text) {
    const SilentLibxml2 silence;
    const auto tree = parse_with_libxml2(text);
    std::string message = tree == nullptr ? describe_last_error() : "";
    xmlResetLastError();
    return message;
}

/// Turns libxml2's tree into the notation of `to_line`.
class TreeConversion {
public:
    explicit TreeConversion(bool sorted) : keep_sorted(sorted) {}

    std::string line_of(const xmlNode* element) const {
        std::string line = word(bytes(element->name)) + attributes_of(element);
        const std::vector<Child> children = children_of(element);
        if (children.empty())
            return line;
        line += "{";
        for (const Child& child : children)
            line += (&child == &children.front() ? "" : " ") + child.line;
        return line + "}";
    }

private:
    struct Child {
        std::string name;  // empty for text
        std::string line;
    };

    static std::string bytes(const xmlChar* s) {
        return s == nullptr ? "" : std::string(s, s + xmlStrlen(s));
    }

    /// As `to_line` quotes text, and whatever is not a plain word.
    static std::string quote(const std::string& text, char mark) {
        std::string quoted(1, mark);
        for (const char c : text) {
            if (c == '\n')
                quoted += "\\n";
            if (c == mark || c == '\\')
                quoted += '\\';
            if (c != '\n')
                quoted += c;
        }
        return quoted + mark;
    }

    static std::string word(const std::string& text) {
        const bool is_plain = !text.empty() && text.find_first_of(" \n\\\"'(){},=") == std::string::npos;
        return is_plain ? text : quote(text, '\'');
    }

    static std::string attributes_of(const xmlNode* element) {
        std::vector<std::pair<std::string, std::string>> attributes;
        for (const xmlAttr* attribute = element->properties; attribute != nullptr;
             attribute = attribute->next) {
            const xmlNode* first = attribute->children;
            set(attributes, bytes(attribute->name), first == nullptr ? "" : bytes(first->content));
        }
        std::string line;
        for (const auto& attribute : attributes) {
            line += (line.empty() ? "(" : ",") + word(attribute.first) + "=" + word(attribute.second);
        }
        return line.empty() ? "" : line + ")";
    }

    static void set(std::vector<std::pair<std::string, std::string>>& attributes, const std::string& name,
                    const std::string& value) {
        for (auto& attribute : attributes) {
            if (attribute.first != name)
                continue;
            attribute.second = value;
            return;
        }
        attributes.emplace_back(name, value);
    }

    std::vector<Child> children_of(const xmlNode* element) const {
        std::vector<Child> children;
        for (const xmlNode* node = element->children; node != nullptr; node = node->next) {
            if (node->type == XML_ELEMENT_NODE)
                add(children, {bytes(node->name), line_of(node)});
            if (node->type == XML_TEXT_NODE && is_kept(*node))
                children.push_back({"", quote(bytes(node->content), '"')});
        }
        return children;
    }

    /// Elements arrive without an item, so each goes after those with a smaller name and after its
    /// namesakes.
    void add(std::vector<Child>& children, Child child) const {
        auto place = keep_sorted ? children.begin() : children.end();
        while (place != children.end() && place->name <= child.name)
            ++place;
        children.insert(place, std::move(child));
    }

    static bool is_kept(const xmlNode& text) {
        if (text.next != nullptr || text.prev != nullptr)
            return false;
        const std::string content = bytes(text.content);
        return content[0] != '\n' || content.find_first_not_of(" \t\n\v\f\r") != std::string::npos;
    }

    bool keep_sorted;
};

/// What reading the text must give: the tree as a line, or "refused: " and the message.
inline std::string expected_outcome(const std::string& text, bool keep_sorted = false) {
    const SilentLibxml2 silence;
    const auto tree = parse_with_libxml2(text);
    std::string outcome = tree == nullptr
                              ? "refused: " + describe_last_error()
                              : TreeConversion(keep_sorted).line_of(xmlDocGetRootElement(tree.get()));
    xmlResetLastError();
    return outcome;
}

/// What reading the text gives, in the same words.
inline std::string outcome(const std::string& text, bool keep_sorted = false) {
    try {
        return to_line(quxml::from_string(text, keep_sorted)->get_root_node());
    } catch (const quxml::DomParserError& error) {
        return std::string("refused: ") + error.what();
    }
}

}  // namespace quxml_test

#endif
