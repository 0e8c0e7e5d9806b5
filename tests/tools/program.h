// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_TOOLS_PROGRAM_H
#define QUXML_TESTS_TOOLS_PROGRAM_H

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

// Drives the real program through a shell, in a folder of its own for each test. What a test runs is what a
// user types.

namespace quxml_test {

namespace fs = std::filesystem;

struct Result {
    int code;  // what the shell exited with; -1 if a signal ended it
    std::string out;
    std::string err;
};

inline std::string read(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

inline fs::path create_folder() {
    std::string name = fs::temp_directory_path() / "quxml-test-XXXXXX";
    if (!mkdtemp(name.data()))
        throw fs::filesystem_error("mkdtemp", name, std::make_error_code(std::errc::io_error));
    return name;
}

class Quxml : public testing::Test {
public:
    Quxml() : folder(create_folder()) {}

    ~Quxml() override {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }

protected:
    void write(const std::string& file, const std::string& text) const {
        std::ofstream(folder / file, std::ios::binary) << text;
    }

    std::string written(const std::string& file) const { return read(folder / file); }

    /// Runs a shell command in which `quxml` is the program; standard input is empty unless the command says
    /// otherwise.
    Result run(const std::string& command) const {
        // Where the program is another machine's, so are the converters of encodings that this test was started with.
        const std::string script = "unset GCONV_PATH\ncd '" + folder.string() +
                                   "'\nquxml() { '" QUXML_TOOL "' \"$@\"; }\n{\n" + command +
                                   "\n} </dev/null >out.txt 2>err.txt\n";
        // NOLINTNEXTLINE(cert-env33-c): the shell is what a user runs the program from.
        const int status = std::system(script.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, written("out.txt"), written("err.txt")};
    }

    fs::path folder;
};

inline void expect(const Result& result, int code, const std::string& out, const std::string& err) {
    EXPECT_EQ(result.code, code);
    EXPECT_EQ(result.out, out);
    EXPECT_EQ(result.err, err);
}

inline void expect_done(const Result& result, const std::string& out) {
    expect(result, 0, out, "");
}

inline bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

constexpr const char* declaration = R"(<?xml version="1.0"?>)";

/// Books whose every text takes some escaping; large enough that it never fits into a pipe.
inline std::string many_books(int count) {
    std::string text = "<catalog>\n";
    for (int i = 0; i < count; ++i)
        text += "  <book>Nuts &amp; bolts, volume " + std::to_string(i) + "</book>\n";
    return text + "</catalog>\n";
}

/// A command that is not done, and what is said about it.
struct Refused {
    const char* arguments;
    const char* message;
};

}  // namespace quxml_test

#endif
