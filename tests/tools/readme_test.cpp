#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// Keeps README.md true: its programs and their outputs are those of examples/, and its shell sessions are run
// again.

namespace {

const std::string root = QUXML_TEST_DATA "/../../";

/// A fenced block, with the line above it and the word behind the fence.
struct Block {
    std::string above;
    std::string language;
    std::string text;
};

std::vector<Block> read_blocks() {
    std::ifstream readme(root + "README.md");
    std::vector<Block> blocks;
    bool inside = false;
    std::string above;
    for (std::string line; std::getline(readme, line); above = line) {
        const bool is_fence = line.rfind("```", 0) == 0;
        if (is_fence && !inside)
            blocks.push_back({above, line.substr(3), ""});
        else if (!is_fence && inside)
            blocks.back().text += line + '\n';
        inside = inside != is_fence;
    }
    return blocks;
}

std::vector<Block> read_blocks(const std::string& language) {
    std::vector<Block> blocks = read_blocks();
    const auto is_other = [&](const Block& block) { return block.language != language; };
    blocks.erase(std::remove_if(blocks.begin(), blocks.end(), is_other), blocks.end());
    return blocks;
}

// Above such a block stands `<!-- FILE -->`.
void expect_to_be_its_file(const Block& block) {
    const std::string opening = "<!-- ";
    const std::string closing = " -->";
    ASSERT_EQ(block.above.rfind(opening, 0), 0U) << block.above;
    const std::string name =
        block.above.substr(opening.size(), block.above.size() - opening.size() - closing.size());
    std::ifstream file(root + name);
    ASSERT_TRUE(file) << name;
    std::ostringstream text;
    text << file.rdbuf();
    EXPECT_EQ(block.text, text.str()) << name;
}

std::string run(const std::string& command) {
    const std::string script = "cd '" + root + "'\nquxml() { '" QUXML_TOOL "' \"$@\"; }\n" + command;
    // NOLINTNEXTLINE(cert-env33-c): the session in README.md is one with a shell.
    std::FILE* shell = popen(script.c_str(), "r");
    std::string out;
    std::array<char, 4096> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), shell))
        out.append(block.data(), count);
    pclose(shell);
    return out;
}

// Runs what stands behind each "$ " and gives the session as it then reads.
std::string replay(const std::string& session) {
    std::istringstream lines(session);
    std::string replayed;
    for (std::string line; std::getline(lines, line);)
        if (line.rfind("$ ", 0) == 0)
            replayed += line + '\n' + run(line.substr(2));
    return replayed;
}

TEST(Readme, shows_a_program_of_at_most_15_lines_as_it_stands_in_the_examples) {
    const std::vector<Block> programs = read_blocks("cpp");
    ASSERT_FALSE(programs.empty());
    for (const Block& program : programs)
        expect_to_be_its_file(program);
    EXPECT_LE(std::count(programs[0].text.begin(), programs[0].text.end(), '\n'), 15);
}

TEST(Readme, shows_the_output_that_the_examples_are_tested_for) {
    const std::vector<Block> outputs = read_blocks("xml");
    ASSERT_FALSE(outputs.empty());
    for (const Block& output : outputs)
        expect_to_be_its_file(output);
}

TEST(Readme, shows_what_the_program_prints) {
    const std::vector<Block> sessions = read_blocks("console");
    ASSERT_FALSE(sessions.empty());
    for (const Block& session : sessions)
        EXPECT_EQ(replay(session.text), session.text);
}

}  // namespace
