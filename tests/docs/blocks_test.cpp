// SPDX-License-Identifier: MIT

// Keeps the blocks of the documentation true. Programs and what they print are cut from the files that the comment above
// them names, and these are built and run; sessions with a shell are run again; CMake lists are configured. Commands to type,
// which would take too long, must at least name verbs of ./dev that there are.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "markdown.h"

namespace {

using quxml_test::Block;
using quxml_test::Page;
using quxml_test::read_repository_file;
using quxml_test::top;

struct Result {
    int status;
    std::string out;
};

Result run_in(const std::string& folder, const std::string& command) {
    const std::string script =
        "exec 2>&1\ncd '" + folder + "'\nquxml() { '" QUXML_TOOL "' \"$@\"; }\n" + command;
    // NOLINTNEXTLINE(cert-env33-c): the sessions are those with a shell.
    std::FILE* shell = popen(script.c_str(), "r");
    std::string out;
    std::array<char, 4096> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), shell))
        out.append(block.data(), count);
    return {pclose(shell), out};
}

/// A folder that is gone with the object.
class Folder {
public:
    Folder() : name(std::filesystem::temp_directory_path() / "quxml-docs-XXXXXX") {
        if (mkdtemp(name.data()) == nullptr)
            throw std::system_error(errno, std::generic_category(), name);
    }

    ~Folder() { std::filesystem::remove_all(name); }

    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string name;
};

/// Where the sessions of a page take place, one after the other: the examples are there, and a file that may be changed.
class SessionFolder : public Folder {
public:
    SessionFolder() {
        std::filesystem::create_directory_symlink(std::filesystem::canonical(top + "examples"),
                                                  name + "/examples");
        std::filesystem::copy_file(top + "examples/fonts.conf", name + "/fonts.conf");
    }
};

/// Runs what follows each "$ " and returns the session as it then reads.
std::string replay(const Folder& folder, const std::string& session) {
    std::istringstream lines(session);
    std::string replayed;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("$ ", 0) == 0)
            replayed += line + '\n' + run_in(folder.name, line.substr(2)).out;
    }
    return replayed;
}

std::vector<std::string> split_lines(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

std::size_t indentation(const std::vector<std::string>& lines) {
    std::size_t smallest = std::string::npos;
    for (const std::string& line : lines)
        smallest = std::min(smallest, line.find_first_not_of(' '));
    return smallest;
}

/// Whether the lines stand in the file as they are, or all of them further to the right.
bool is_cut_from(const std::vector<std::string>& lines, const std::vector<std::string>& file) {
    for (auto first = file.begin(); file.end() - first >= static_cast<std::ptrdiff_t>(lines.size());
         ++first) {
        std::vector<std::string> part(first, first + static_cast<std::ptrdiff_t>(lines.size()));
        const std::size_t margin = indentation(part);
        if (part == lines)
            return true;
        if (margin == std::string::npos)
            continue;
        for (std::string& line : part)
            line.erase(0, margin);
        if (part == lines)
            return true;
    }
    return false;
}

/// A program of examples/ is built and run if a file beside it says what it must print.
void expect_to_be_tested(const std::string& name) {
    const bool is_program = name.rfind("examples/", 0) == 0 && name.find(".cpp") != std::string::npos;
    if (is_program) {
        EXPECT_TRUE(quxml_test::is_file(name.substr(0, name.size() - 4) + ".out")) << name;
    }
}

void check_cut(const Block& block) {
    ASSERT_TRUE(quxml_test::is_file(block.marker)) << "no file is named above this block:\n" << block.text;
    expect_to_be_tested(block.marker);
    EXPECT_TRUE(is_cut_from(split_lines(block.text), split_lines(read_repository_file(block.marker))))
        << block.marker << " does not contain\n"
        << block.text;
}

void check_session(const Folder& folder, const Block& block) {
    EXPECT_EQ(replay(folder, block.text), block.text);
}

/// The project that the block describes, with the library in the folder quxml below it.
void check_configured(const Block& block) {
    const Folder folder;
    std::ofstream(folder.name + "/CMakeLists.txt") << block.text;
    std::filesystem::create_directory_symlink(std::filesystem::canonical(top), folder.name + "/quxml");
    std::filesystem::copy_file(top + "examples/quickstart.cpp", folder.name + "/catalog.cpp");
    const Result result = run_in(folder.name, QUXML_CONFIGURE " -S . -B build");
    EXPECT_EQ(result.status, 0) << result.out;
}

void check_commands(const Block& block) {
    for (const std::string& verb : quxml_test::find_all(block.text, R"(\./dev ([a-z]+))"))
        EXPECT_TRUE(quxml_test::is_file("scripts/" + verb + ".sh") || verb == "all") << "./dev " << verb;
}

/// A word in capitals stands for others, as in scripts/VERB.sh.
bool is_pattern(const std::string& name) {
    return !quxml_test::find_all(name, "([A-Z]{2,})").empty();
}

class Blocks : public testing::TestWithParam<Page> {};

TEST_P(Blocks, are_what_the_code_is_and_does) {
    const SessionFolder folder;
    for (const Block& block : GetParam().blocks) {
        if (block.language == "cpp" || block.language == "xml" || block.language == "text")
            check_cut(block);
        else if (block.language == "console")
            check_session(folder, block);
        else if (block.language == "cmake")
            check_configured(block);
        else if (block.language == "sh")
            check_commands(block);
        else  // gdb's are tested with gdb
            EXPECT_EQ(block.language, "gdb") << block.text;
    }
}

TEST_P(Blocks, name_files_and_folders_that_there_are) {
    static const std::string path =
        "`((?:bench|cmake|docs|examples|fuzz|include|scripts|src|tests|tools)/[A-Za-z0-9_./-]*)`";
    for (const std::string& line : GetParam().prose) {
        for (const std::string& name : quxml_test::find_all(line, path))
            EXPECT_TRUE(std::filesystem::exists(top + name) || is_pattern(name)) << name;
    }
}

std::string name_of(const testing::TestParamInfo<Page>& page) {
    std::string name = page.param.name;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '/' || c == '.'; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Docs, Blocks, testing::ValuesIn(quxml_test::read_pages()), name_of);

TEST(Readme, begins_with_a_program_of_at_most_15_lines) {
    for (const Page& page : quxml_test::read_pages()) {
        if (page.name != "README.md")
            continue;
        const auto program = std::find_if(page.blocks.begin(), page.blocks.end(),
                                          [](const Block& block) { return block.language == "cpp"; });
        ASSERT_NE(program, page.blocks.end());
        EXPECT_EQ("// SPDX-License-Identifier: MIT\n" + program->text, read_repository_file(program->marker));
        EXPECT_LE(split_lines(program->text).size(), 15U);
    }
}

}  // namespace
