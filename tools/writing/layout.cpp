#include "writing/layout.h"

#include <quxml/Element.h>
#include <quxml/TextNode.h>

#include <cstddef>
#include <vector>

#include "reading/encoding.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr const char* library_indent = "  ";

/// The root element's tag begins at the first "<" that a name follows.
std::size_t find_root(std::string_view document) {
    std::size_t tag = document.find('<');
    while (tag != std::string_view::npos && document.find_first_of("?!", tag) == tag + 1)
        tag = document.find('<', tag + 1);
    return tag;
}

std::string get_declaration(std::string_view document) {
    const bool has_one =
        begins_with(document, "<?xml") && white_space.find(document.substr(5, 1)) != std::string_view::npos;
    if (!has_one)
        return "";
    const std::size_t end = document.find("?>") + 2;
    return std::string(document.substr(0, end)) + (document.substr(end, 1) == "<" ? "" : "\n");
}

bool is_indent(std::string_view text) {
    return text.find_first_not_of(" \t") == std::string_view::npos;
}

/// Writes as the library does, with another indentation.
class IndentingWriter {
public:
    explicit IndentingWriter(std::string indent_of_a_level) : indent(std::move(indent_of_a_level)) {}

    std::string write(const quxml::Node& root) {
        pending.push_back({&root, 0, false});
        while (!pending.empty()) {
            const Step step = pending.back();
            pending.pop_back();
            write_step(step);
        }
        return out;
    }

private:
    struct Step {
        const quxml::Node* node;
        std::size_t level;
        bool is_end;  // only the closing tag is left to write
    };

    void write_step(const Step& step) {
        const auto* element = dynamic_cast<const quxml::Element*>(step.node);
        if (element == nullptr || !has_lines_inside(*element))
            write_line(*step.node, step.level);
        else if (step.is_end)
            write_closing_tag(*element, step.level);
        else
            open(*element, step.level);
    }

    /// Text that is alone stands on the line of its tags.
    static bool has_lines_inside(const quxml::Element& element) {
        const quxml::NodeList children = element.get_children();
        return !children.empty() && !(children.size() == 1 && element.has_child_text());
    }

    void write_indent(std::size_t level) {
        for (std::size_t i = 0; i < level && !indent.empty(); ++i)
            out += indent;
    }

    void write_line(const quxml::Node& node, std::size_t level) {
        write_indent(level);
        node.write_to_string(out, -1);
        out += '\n';
    }

    void write_closing_tag(const quxml::Element& element, std::size_t level) {
        write_indent(level);
        element.write_closing_tag(out, -1);
        out += '\n';
    }

    void open(const quxml::Element& element, std::size_t level) {
        write_indent(level);
        element.write_opening_tag(out, -1);
        out += '\n';
        pending.push_back({&element, level, true});
        const quxml::NodeList children = element.get_children();
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            pending.push_back({*child, level + 1, false});
    }

    std::string indent;
    std::string out;
    std::vector<Step> pending;
};

std::string write_tree(const quxml::Node& root, const Layout& layout) {
    if (!layout.compact && layout.indent != library_indent)
        return IndentingWriter(layout.indent).write(root);
    std::string text;
    root.write_to_string(text, layout.compact ? -1 : 0);
    return layout.compact ? text + '\n' : text;
}

}  // namespace

Layout guess_layout(const std::string& document) {
    Layout layout;
    layout.declaration = std::string(standard_declaration) + '\n';
    if (!get_encoding(document).empty())
        return layout;
    const std::string_view text = without_mark(document);
    layout.declaration = get_declaration(text);
    const std::size_t child = text.find('<', text.find('>', find_root(text)));
    if (child == std::string_view::npos || text.substr(child, 2) == "</")
        return layout;
    const std::size_t newline = text.rfind('\n', child);
    const std::size_t line = newline == std::string_view::npos ? 0 : newline + 1;
    layout.compact = line <= find_root(text);
    if (!layout.compact && is_indent(text.substr(line, child - line)))
        layout.indent = text.substr(line, child - line);
    return layout;
}

std::string write_document(const quxml::Document& document, const Layout& layout) {
    return layout.declaration + write_tree(*document.get_root_node(), layout);
}

}  // namespace tool
