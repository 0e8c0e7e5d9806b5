// White space that is all there is in an element is no layout: the library reads it as a text unless it begins with a
// line feed, and others read it always. It stays.

#include "writing/formatting.h"

#include <cstddef>
#include <string>

#include "writing/markup.h"

namespace tool {

namespace {

class Formatter {
public:
    Formatter(std::string_view text, const std::vector<Item>& outline, const Layout& chosen)
        : document(text), items(outline), layout(chosen), line_end(find_line_end(text)) {}

    std::vector<Patch> run() {
        opened.push_back(0);
        for (std::size_t i = get_first(); i != items.size();) {
            while (items[opened.back()].after <= i)
                close();
            replace_space(items[i].begin, edge == 0 ? "" : get_separator(opened.size() - 1));
            if (has_lines_inside(i)) {
                opened.push_back(i);
                edge = items[i++].content;
            } else {
                edge = items[i].end;
                i = items[i].after;
            }
        }
        while (opened.size() > 1)
            close();
        replace_space(document.size(), line_end);
        return std::move(patches);
    }

private:
    std::size_t get_first() const {
        return layout.has_declaration || items[1].kind != ItemKind::declaration ? 1 : 2;
    }

    bool has_lines_inside(std::size_t i) const {
        return items[i].after > i + 1 && !items[i].is_mixed && !items[i].preserves_space;
    }

    void close() {
        const Item& item = items[opened.back()];
        opened.pop_back();
        replace_space(item.content_end, get_separator(opened.size() - 1));
        edge = item.end;
    }

    std::string get_separator(std::size_t level) const {
        std::string separator;
        if (layout.compact)
            return separator;
        separator.reserve(line_end.size() + level * layout.indent.size());
        separator = line_end;
        for (std::size_t i = 0; i != level; ++i)
            separator += layout.indent;
        return separator;
    }

    /// That between the edge and what comes next.
    void replace_space(std::size_t next, std::string space) {
        if (document.substr(edge, next - edge) != space)
            patches.push_back({edge, next, std::move(space)});
    }

    std::string_view document;
    const std::vector<Item>& items;
    const Layout& layout;
    std::string line_end;
    std::vector<std::size_t> opened;  // the items that are still open
    std::size_t edge = 0;             // where the last tag or remark ends
    std::vector<Patch> patches;
};

}  // namespace

std::vector<Patch> format(std::string_view document, const std::vector<Item>& items, const Layout& layout) {
    return Formatter(document, items, layout).run();
}

}  // namespace tool
