// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_DOCS_MARKDOWN_H
#define QUXML_TESTS_DOCS_MARKDOWN_H

// The pages of the documentation, cut into what the tests look at.

#include <ostream>
#include <string>
#include <vector>

namespace quxml_test {

/// A fenced or indented block. What is indented has the language "sh".
struct Block {
    std::string marker;  // of the comment above it, `<!-- MARKER -->`; empty if there is none
    std::string language;
    std::string text;
};

/// A cell as it is written, and the code in it: what stands between backquotes.
struct Cell {
    std::string text;
    std::vector<std::string> code;
};

struct Table {
    std::string marker;
    std::string head;  // its first line
    std::vector<std::vector<Cell>> rows;
};

struct Page {
    std::string name;                // below the top of the repository, such as "docs/paths.md"
    std::vector<std::string> prose;  // the lines outside of blocks
    std::vector<Block> blocks;
    std::vector<Table> tables;
};

inline std::ostream& operator<<(std::ostream& out, const Page& page) {
    return out << page.name;
}

/// The top of the repository, with a slash at its end.
extern const std::string top;

/// Every page that is written for readers: at the top and in docs/.
std::vector<Page> read_pages();

/// A file of the repository as it is.
std::string read_repository_file(const std::string& name);

bool is_file(const std::string& name);

/// What matches the regular expression's first group, everywhere in a text.
std::vector<std::string> find_all(const std::string& text, const std::string& expression);

}  // namespace quxml_test

#endif
