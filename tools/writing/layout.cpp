// SPDX-License-Identifier: MIT
#include "writing/layout.h"

#include <quxml/Element.h>

#include <cstddef>
#include <vector>

#include "reading/spelling.h"

namespace tool {

namespace {

constexpr const char* library_indent = "  ";

/// Writes as the library does, with another indentation.
class IndentingWriter {
public:
    explicit IndentingWriter(std::string indent_of_a_level) : indent(std::move(indent_of_a_level)) {}

    std::string write(const quxml::Node& root) {
        pending.push_back({&root, 0, false});
        while (!pending.empty()) {
            const Pending next = pending.back();
            pending.pop_back();
            write_next(next);
        }
        return out;
    }

private:
    struct Pending {
        const quxml::Node* node;
        std::size_t level;
        bool is_end;  // only the closing tag is left to write
    };

    void write_next(const Pending& next) {
        const auto* element = dynamic_cast<const quxml::Element*>(next.node);
        if (element == nullptr || !has_lines_inside(*element))
            write_line(*next.node, next.level);
        else if (next.is_end)
            write_closing_tag(*element, next.level);
        else
            open(*element, next.level);
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
    std::vector<Pending> pending;
};

std::string write_tree(const quxml::Node& root, const Layout& layout) {
    if (!layout.compact && layout.indent != library_indent)
        return IndentingWriter(layout.indent).write(root);
    std::string text;
    root.write_to_string(text, layout.compact ? -1 : 0);
    return layout.compact ? text + '\n' : text;
}

}  // namespace

Layout get_layout(const RewriteOptions& options) {
    Layout layout;
    layout.has_declaration = !options.no_declaration;
    layout.compact = options.compact;
    if (!options.indent.empty())
        layout.indent = options.indent == "tab" ? "\t" : std::string(std::stoul(options.indent), ' ');
    return layout;
}

std::string write_document(const quxml::Document& document, const Layout& layout) {
    const std::string declaration = layout.has_declaration ? library_declaration : "";
    const char* const line_end = layout.has_declaration && !layout.compact ? "\n" : "";
    return declaration + line_end + write_tree(*document.get_root_node(), layout);
}

}  // namespace tool
