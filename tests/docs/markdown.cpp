// SPDX-License-Identifier: MIT
#include "markdown.h"

#include <algorithm>
#include <filesystem>
#include <regex>
#include <sstream>

#include "support/read_file.h"

namespace quxml_test {

const std::string top = QUXML_REPOSITORY "/";

namespace {

bool begins_with(const std::string& text, const std::string& beginning) {
    return text.rfind(beginning, 0) == 0;
}

std::string trim(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

Cell make_cell(const std::string& text) {
    return {trim(text), find_all(text, "`([^`]+)`")};
}

/// The cells of `| a | b |`; `\|` is not a border.
std::vector<Cell> make_row(const std::string& line) {
    std::vector<Cell> cells;
    std::string cell;
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (line[i] == '\\' && i + 1 < line.size() && line[i + 1] == '|') {
            cell += line[++i];
        } else if (line[i] == '|') {
            cells.push_back(make_cell(cell));
            cell.clear();
        } else {
            cell += line[i];
        }
    }
    return cells;
}

class Reader {
public:
    explicit Reader(const std::string& name) : page{name, {}, {}, {}} {}

    void add(const std::string& line) {
        if (in_block)
            add_to_block(line);
        else if (begins_with(line, "```"))
            open(line.substr(3));
        else if (begins_with(line, "    ") && (above.empty() || in_indented))
            add_indented(line);
        else
            add_prose(line);
        above = line;
    }

    Page page;

private:
    void open(const std::string& language) {
        page.blocks.push_back({marker, language, ""});
        in_block = true;
    }

    void add_to_block(const std::string& line) {
        in_block = !begins_with(line, "```");
        if (in_block)
            page.blocks.back().text += line + '\n';
    }

    // Blocks that are indented follow an empty line and are not part of a list.
    void add_indented(const std::string& line) {
        if (!in_indented)
            page.blocks.push_back({marker, "sh", ""});
        in_indented = true;
        page.blocks.back().text += line.substr(4) + '\n';
    }

    void add_prose(const std::string& line) {
        in_indented = false;
        page.prose.push_back(line);
        if (begins_with(line, "|"))
            add_to_table(line);
        else if (!line.empty())
            marker = begins_with(line, "<!-- ") ? line.substr(5, line.size() - 9) : "";
    }

    // The first two lines of a table are its head.
    void add_to_table(const std::string& line) {
        if (!begins_with(above, "|")) {
            page.tables.push_back({marker, line, {}});
            lines_of_table = 0;
        }
        if (++lines_of_table > 2)
            page.tables.back().rows.push_back(make_row(line));
    }

    std::string above;
    std::string marker;
    bool in_block = false;
    bool in_indented = false;
    int lines_of_table = 0;
};

Page read_page(const std::string& name) {
    Reader reader(name);
    std::istringstream lines(read_repository_file(name));
    for (std::string line; std::getline(lines, line);)
        reader.add(line);
    return reader.page;
}

}  // namespace

std::vector<Page> read_pages() {
    std::vector<std::string> names;
    for (const std::string folder : {"", "docs/"}) {
        for (const auto& entry : std::filesystem::directory_iterator(top + folder)) {
            if (entry.path().extension() == ".md")
                names.push_back(folder + entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    std::vector<Page> pages;
    std::transform(names.begin(), names.end(), std::back_inserter(pages), read_page);
    return pages;
}

std::string read_repository_file(const std::string& name) {
    return read_file(top + name);
}

bool is_file(const std::string& name) {
    return std::filesystem::is_regular_file(top + name);
}

std::vector<std::string> find_all(const std::string& text, const std::string& expression) {
    const std::regex regex(expression);
    return {std::sregex_token_iterator(text.begin(), text.end(), regex, 1), std::sregex_token_iterator()};
}

}  // namespace quxml_test
