// SPDX-License-Identifier: MIT

// The program itself, with allocations that fail: a single one, and all from some one on. It either ends with 5 and leaves
// the file alone, or it does what it always does.

#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

#include "program.h"

namespace quxml_test {

namespace {

#ifdef QUXML_FAILING_MEMORY
constexpr const char* failing_memory = QUXML_FAILING_MEMORY;
#else
constexpr const char* failing_memory = "";
#endif

/// Among these the file is replaced, and each of them is made to fail.
constexpr int last_allocations = 40;

/// How many allocations go between two that are made to fail; all of them would take minutes.
struct Steps {
    int once;
    int from;
};

class FailingMemory : public Quxml {
protected:
    void SetUp() override {
        if (failing_memory[0] == '\0')
            GTEST_SKIP() << "this build needs memory itself, or has an allocator that cannot be replaced";
    }

    /// What the program does with enough memory, and how many allocations that takes.
    int count_allocations(const std::string& arguments, int& code) const {
        fs::copy_file(folder / "before.xml", folder / "a.xml", fs::copy_options::overwrite_existing);
        code = run("quxml " + arguments + " >normal").code;
        fs::copy_file(folder / "a.xml", folder / "after.xml", fs::copy_options::overwrite_existing);
        fs::copy_file(folder / "before.xml", folder / "a.xml", fs::copy_options::overwrite_existing);
        const std::string count =
            run("QUXML_COUNT=1 LD_PRELOAD='" + std::string(failing_memory) + "' '" QUXML_TOOL "' " +
                arguments + " >ignored 2>counted; tail -c 8 counted | tr -cd 0-9")
                .out;
        return count.empty() ? 0 : std::stoi(count);
    }

    void expect_no_harm(const std::string& arguments, int first, Steps steps) const {
        SCOPED_TRACE(arguments);
        int code = 0;
        const int last = count_allocations(arguments, code);
        ASSERT_GT(last, first);
        const auto check = [&](const char* variable, int from, int step) {
            return run("LIBRARY='" + std::string(failing_memory) +
                       "' PROGRAM='" QUXML_TOOL "' sh '" QUXML_REPOSITORY "/tests/tools/failing_memory.sh' " +
                       variable + ' ' + std::to_string(from) + ' ' + std::to_string(step) + ' ' +
                       std::to_string(last) + ' ' + std::to_string(code) + ' ' + arguments);
        };
        expect_done(check("QUXML_FAIL_ONCE", first, steps.once), "");
        if (contains(arguments, "-i "))
            expect_done(check("QUXML_FAIL_ONCE", last - last_allocations, 1), "");
        expect_done(check("QUXML_FAIL_FROM", first, steps.from), "");
        EXPECT_FALSE(written("refused").empty());
        for (const auto& file : fs::directory_iterator(folder))
            EXPECT_FALSE(contains(file.path().filename().string(), ".quxml-")) << file;
    }

    /// The number of the last allocation before a command begins its work.
    int count_start() const {
        int code = 0;
        return count_allocations("--version", code) - 100;
    }
};

const std::string text = "<a><b n='1'>gr\xc3\xbc\xc3\x9f</b><b n='2'/></a>\n";

/// The same in encodings of one byte, of two bytes, and of those that iconv converts.
const std::vector<std::string>& get_documents() {
    static const std::vector<std::string> documents = {
        "<?xml version='1.0'?>\n" + text,
        "<?xml version='1.0' encoding='ISO-8859-1'?>\n<a><b n='1'>gr\xfc\xdf</b><b n='2'/></a>\n",
        "<?xml version='1.0' encoding='Shift_JIS'?>\n<a><b n='1'>\x82\xa0</b><b n='2'/></a>\n",
        std::string("\xff\xfe<\0a\0>\0<\0"
                    "b\0/\0>\0<\0/\0a\0>\0",
                    24),
    };
    return documents;
}

TEST_F(FailingMemory, ends_with_5_before_the_command_line_has_been_read) {
    write("before.xml", text);
    expect_no_harm("--version", 1, {97, 131});
}

TEST_F(FailingMemory, ends_with_5_and_leaves_the_file_alone_in_every_encoding) {
    for (const std::string& document : get_documents()) {
        write("before.xml", document);
        expect_no_harm("set -i /a/b x=1 a.xml", count_start(), {11, 47});
        expect_no_harm("edit -i -e 'add /a c' -e 'text /a/c \xe2\x82\xac' a.xml", count_start(), {29, 83});
        expect_no_harm("query --value /a/b a.xml", count_start(), {23, 71});
    }
}

TEST_F(FailingMemory, ends_with_5_in_every_command) {
    write("before.xml", text);
    for (const char* arguments :
         {"check a.xml", "loss a.xml", "outline a.xml", "diff a.xml before.xml", "explain \"//b[@id='1']\"",
          "format a.xml", "sort -i --backup a.xml", "unset -i /a/b n a.xml", "text -i /a/b x a.xml",
          "add -i /a c a.xml", "add -i --sorted /a c a.xml", "remove -i /a/b a.xml",
          "edit -i -e 'set /a x=1' -e 'remove /a/b' a.xml", "check broken.xml", "query '/a/b[3]' a.xml"}) {
        write("broken.xml", "<a><b></a>");
        expect_no_harm(arguments, count_start(), {41, 101});
    }
}

}  // namespace

}  // namespace quxml_test
