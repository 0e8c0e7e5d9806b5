// White space that is all there is in an element is no layout: the library reads it as a text unless it begins with a
// line feed, and others read it always. It stays.

#include "writing/formatting.h"

#include <cstddef>
#include <string>

#include "writing/markup.h"

namespace tool {

namespace {

bool has_lines_inside(const std::vector<Item>& items, std::size_t i) {
    return items[i].after > i + 1 && !items[i].is_mixed && !items[i].preserves_space;
}

/// What is written in an item itself: all of it, or its tags if only white space stands between the items in it.
struct Written {
    std::string_view start;
    std::string_view end;
};

Written get_written(std::string_view document, const std::vector<Item>& items, std::size_t i) {
    const Item& item = items[i];
    if (item.kind == ItemKind::document)
        return {};
    if (!has_lines_inside(items, i))
        return {document.substr(item.begin, item.end - item.begin), {}};
    return {document.substr(item.begin, item.content - item.begin),
            document.substr(item.content_end, item.end - item.content_end)};
}

class Formatter {
public:
    Formatter(std::string_view text, const std::vector<Item>& outline, const Layout& chosen)
        : document(text), items(outline), layout(chosen), line_end(find_line_end(text)) {}

    std::vector<Patch> run() {
        opened.push_back(0);
        for (std::size_t i = 1; i != items.size();) {
            while (items[opened.back()].after <= i)
                close();
            replace_space(items[i].begin, edge == 0 ? "" : get_separator(opened.size() - 1));
            if (has_lines_inside(items, i)) {
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

bool differ_only_in_layout(std::string_view one, const std::vector<Item>& items, std::string_view other,
                           const std::vector<Item>& other_items) {
    if (items.size() != other_items.size())
        return false;
    for (std::size_t i = 0; i != items.size(); i = has_lines_inside(items, i) ? i + 1 : items[i].after) {
        const Written written = get_written(one, items, i);
        const Written other_written = get_written(other, other_items, i);
        const bool is_same = items[i].kind == other_items[i].kind && items[i].after == other_items[i].after &&
                             written.start == other_written.start && written.end == other_written.end;
        if (!is_same)
            return false;
    }
    return true;
}

}  // namespace tool
