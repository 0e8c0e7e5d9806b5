#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

// Drives the real program through a shell, in a folder of its own for each test. What a test runs is what a
// user types.

namespace {

namespace fs = std::filesystem;

struct Result {
    int code;  // what the shell exited with; -1 if a signal ended it
    std::string out;
    std::string err;
};

std::string read(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

fs::path create_folder() {
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

    // Runs a shell command in which `quxml` is the program; standard input is empty unless the command says
    // otherwise.
    Result run(const std::string& command) const {
        const std::string script = "cd '" + folder.string() + "'\nquxml() { '" QUXML_TOOL "' \"$@\"; }\n{\n" +
                                   command + "\n} </dev/null >out.txt 2>err.txt\n";
        // NOLINTNEXTLINE(cert-env33-c): the shell is what a user runs the program from.
        const int status = std::system(script.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, written("out.txt"), written("err.txt")};
    }

private:
    fs::path folder;
};

void expect(const Result& result, int code, const std::string& out, const std::string& err) {
    EXPECT_EQ(result.code, code);
    EXPECT_EQ(result.out, out);
    EXPECT_EQ(result.err, err);
}

void expect_done(const Result& result, const std::string& out) {
    expect(result, 0, out, "");
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

constexpr const char* declaration = "<?xml version=\"1.0\"?>";

// Books whose every text takes some escaping; large enough that it never fits into a pipe.
std::string many_books(int count) {
    std::string text = "<catalog>\n";
    for (int i = 0; i < count; ++i)
        text += "  <book>Nuts &amp; bolts, volume " + std::to_string(i) + "</book>\n";
    return text + "</catalog>\n";
}

// ---- The program as such

using Program = Quxml;

TEST_F(Program, tells_its_version) {
    expect_done(run("quxml --version"), "quxml 1.0.0\n");
}

TEST_F(Program, help_names_the_commands_and_the_exit_codes) {
    const Result result = run("quxml --help");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    for (const char* part : {"Usage: quxml [OPTIONS] SUBCOMMAND", "\n  format ", "\n  query ",
                             "\n  1  no match", "\n  5  reading, writing or memory failed\n"})
        EXPECT_TRUE(contains(result.out, part)) << part;
    EXPECT_EQ(run("quxml -h").out, result.out);
}

TEST_F(Program, help_on_a_command_names_its_options) {
    const Result format = run("quxml format --help");
    EXPECT_EQ(format.code, 0);
    EXPECT_EQ(format.err, "");
    for (const char* part : {"Usage: quxml format [OPTIONS] [FILE]", "--compact", "--sorted",
                             "--no-declaration", "Everything on one line, closed by a line feed"})
        EXPECT_TRUE(contains(format.out, part)) << part;

    const Result query = run("quxml query --help");
    EXPECT_EQ(query.code, 0);
    EXPECT_EQ(query.err, "");
    for (const char* part : {"Usage: quxml query [OPTIONS] PATH [FILE]", "--prefix", "in document order"})
        EXPECT_TRUE(contains(query.out, part)) << part;
}

struct Refused {
    const char* arguments;
    const char* message;
};

TEST_F(Program, exits_with_2_for_a_command_line_it_can_not_understand) {
    write("a.xml", "<a/>");
    const std::array<Refused, 12> refused{{
        {"", "A subcommand is required"},
        {"frobnicate", "A subcommand is required"},
        {"--frobnicate", "A subcommand is required"},
        {"format --frobnicate a.xml", "The following argument was not expected: --frobnicate"},
        {"format --prefix a.xml", "The following argument was not expected: --prefix"},
        {"format --version a.xml", "The following argument was not expected: --version"},
        {"format --compact=perhaps a.xml", "Could not convert: --compact = perhaps"},
        {"format a.xml b.xml", "The following argument was not expected: b.xml"},
        {"query", "PATH is required"},
        {"query --prefix", "PATH is required"},
        {"query --compact a a.xml", "The following argument was not expected: --compact"},
        {"query a a.xml b.xml", "The following argument was not expected: b.xml"},
    }};
    for (const Refused& one : refused) {
        SCOPED_TRACE(one.arguments);
        expect(run(std::string("quxml ") + one.arguments), 2, "",
               std::string("quxml: ") + one.message + "\nquxml --help tells more.\n");
    }
}

// ---- format

using Format = Quxml;

constexpr const char* library_text =
    "<library>\n\n<shelf n='1'><book>Tom &amp; Jerry</book><empty></empty></shelf>\n  <shelf "
    "n='2'/></library>";

constexpr const char* formatted_library =
    "<library>\n"
    "  <shelf n=\"1\">\n"
    "    <book>Tom &amp; Jerry</book>\n"
    "    <empty/>\n"
    "  </shelf>\n"
    "  <shelf n=\"2\"/>\n"
    "</library>\n";

constexpr const char* compact_library =
    "<library><shelf n=\"1\"><book>Tom &amp; Jerry</book><empty/></shelf><shelf n=\"2\"/></library>\n";

TEST_F(Format, writes_an_element_a_line) {
    write("library.xml", library_text);
    expect_done(run("quxml format library.xml"), std::string(declaration) + '\n' + formatted_library);
}

TEST_F(Format, leaves_out_the_declaration) {
    write("library.xml", library_text);
    expect_done(run("quxml format --no-declaration library.xml"), formatted_library);
}

TEST_F(Format, writes_compact_text_and_closes_it_with_one_line_feed) {
    write("library.xml", library_text);
    expect_done(run("quxml format --compact library.xml"), std::string(declaration) + compact_library);
}

TEST_F(Format, writes_compact_text_without_the_declaration) {
    write("library.xml", library_text);
    expect_done(run("quxml format --compact --no-declaration library.xml"), compact_library);
    expect_done(run("quxml format library.xml --no-declaration --compact --compact"), compact_library);
}

TEST_F(Format, leaves_its_own_output_as_it_is) {
    write("library.xml", library_text);
    expect_done(run("quxml format library.xml | quxml format --compact | quxml format | quxml format"),
                std::string(declaration) + '\n' + formatted_library);
}

// The library writes attribute values as they are stored.
TEST_F(Format, escapes_attribute_values_so_that_they_read_back_the_same) {
    write("a.xml", "<a x='&lt;&amp;>&quot;&apos;' y='&#10;&#9;&#13; '><b z='\xc3\xa4&amp;amp;'>&lt;</b></a>");
    const std::string escaped =
        "<a x=\"&lt;&amp;>&quot;'\" y=\"&#10;&#9;&#13; \"><b z=\"\xc3\xa4&amp;amp;\">&lt;</b></a>\n";
    expect_done(run("quxml format --compact --no-declaration a.xml"), escaped);
    expect_done(run("quxml format a.xml | quxml format --compact --no-declaration"), escaped);
}

TEST_F(Format, reads_standard_input_for_a_dash_or_no_file) {
    write("library.xml", library_text);
    expect_done(run("quxml format --no-declaration <library.xml"), formatted_library);
    expect_done(run("quxml format --no-declaration - <library.xml"), formatted_library);
    expect_done(run("cat library.xml | quxml format --no-declaration"), formatted_library);
}

TEST_F(Format, reads_files_whose_names_look_like_something_else) {
    for (const char* name : {"-", "--compact", "format", "a b.xml", "\xc3\xa4.xml"})
        write(name, "<a/>");
    expect_done(run("quxml format --no-declaration ./-"), "<a/>\n");
    expect_done(run("quxml format --no-declaration -- --compact"), "<a/>\n");
    expect_done(run("quxml format --no-declaration format"), "<a/>\n");
    expect_done(run("quxml format --no-declaration 'a b.xml'"), "<a/>\n");
    expect_done(run("quxml format --no-declaration \xc3\xa4.xml"), "<a/>\n");
}

TEST_F(Format, reads_and_writes_more_than_any_buffer_holds) {
    write("books.xml", many_books(50000));
    expect_done(run("quxml format --no-declaration books.xml"), many_books(50000));
    expect_done(run("cat books.xml | quxml format --no-declaration - | cat"), many_books(50000));
}

// ---- format --sorted

using FormatSorted = Quxml;

std::string sorted_command(const std::string& text) {
    return "echo '" + text + "' | quxml format --compact --no-declaration --sorted";
}

TEST_F(FormatSorted, puts_children_in_the_order_of_their_names_on_every_level) {
    expect_done(run(sorted_command("<r><b><z/><y/></b><a/><B/></r>")), "<r><B/><a/><b><y/><z/></b></r>\n");
}

TEST_F(FormatSorted, puts_namesakes_in_the_order_of_their_items_as_numbers) {
    expect_done(run(sorted_command("<r><b item=\"10\"/><b item=\"9\"/><a/><b item=\"-1\"/></r>")),
                "<r><a/><b item=\"-1\"/><b item=\"9\"/><b item=\"10\"/></r>\n");
}

TEST_F(FormatSorted, puts_items_that_are_no_numbers_in_the_order_of_their_text) {
    expect_done(run(sorted_command("<r><b item=\"y\"/><b item=\"x\"/><b item=\"2\"/></r>")),
                "<r><b item=\"2\"/><b item=\"x\"/><b item=\"y\"/></r>\n");
}

TEST_F(FormatSorted, leaves_namesakes_with_equal_items_in_document_order) {
    expect_done(
        run(sorted_command("<r><b item=\"1\" n=\"p\"/><b item=\"1\" n=\"q\"/><b item=\"1\" n=\"r\"/></r>")),
        "<r><b item=\"1\" n=\"p\"/><b item=\"1\" n=\"q\"/><b item=\"1\" n=\"r\"/></r>\n");
}

// The library's own sort reverses them.
TEST_F(FormatSorted, leaves_namesakes_without_items_in_document_order) {
    expect_done(run(sorted_command("<r><b n=\"p\"/><a/><b n=\"q\"/><b n=\"r\"/></r>")),
                "<r><a/><b n=\"p\"/><b n=\"q\"/><b n=\"r\"/></r>\n");
    expect_done(run(sorted_command("<r><b n=\"p\"/><a item=\"1\"/><b n=\"q\"/><b n=\"r\"/></r>")),
                "<r><a item=\"1\"/><b n=\"p\"/><b n=\"q\"/><b n=\"r\"/></r>\n");
}

TEST_F(FormatSorted, puts_namesakes_without_items_behind_those_with_numbers_and_leaves_attributes_alone) {
    expect_done(run(sorted_command(
                    "<r><b n=\"p\"/><b item=\"2\"/><b item=\"\" n=\"q\"/><b n=\"r\"/><b item=\"1\"/></r>")),
                "<r><b item=\"1\"/><b item=\"2\"/><b n=\"p\"/><b item=\"\" n=\"q\"/><b n=\"r\"/></r>\n");
}

TEST_F(FormatSorted, changes_nothing_when_repeated) {
    write("a.xml",
          "<r><b n=\"p\"/><b item=\"2\"/>\n<c/><b n=\"q\"/><a/><c item=\"x\"/><b "
          "item=\"1\"/><c><e/><d/></c></r>");
    const Result once = run("quxml format --sorted a.xml");
    EXPECT_EQ(once.code, 0);
    EXPECT_TRUE(contains(once.out, "<d/>\n    <e/>")) << once.out;
    expect_done(run("quxml format --sorted a.xml | quxml format --sorted"), once.out);
}

TEST_F(FormatSorted, exits_with_3_for_items_beyond_the_range_of_numbers) {
    write("a.xml", "<r><b item='99999999999'/><b item='1'/></r>");
    expect(run("quxml format --sorted a.xml"), 3, "",
           "quxml: a.xml: can not be sorted: an item is a number out of range\n");
    EXPECT_EQ(run("quxml format a.xml").code, 0);
}

// ---- query

class Query : public Quxml {
protected:
    Query() {
        write("library.xml",
              "<library>"
              "<book id='1' item='2'><title>Alpha</title></book>"
              "<book id='2' item='1'><title>Beta &lt; 3</title></book>"
              "<shelf><book id='3'><title>Gamma</title></book></shelf>"
              "</library>");
    }
};

TEST_F(Query, writes_each_match_as_formatted_text_without_a_declaration) {
    expect_done(run("quxml query /library/book library.xml"),
                "<book id=\"1\" item=\"2\">\n  <title>Alpha</title>\n</book>\n"
                "<book id=\"2\" item=\"1\">\n  <title>Beta &lt; 3</title>\n</book>\n");
}

TEST_F(Query, understands_predicates) {
    expect_done(run("quxml query \"/library/book[@id='2']/title\" library.xml"),
                "<title>Beta &lt; 3</title>\n");
    expect_done(run("quxml query '/library/book[2]/title' library.xml"), "<title>Alpha</title>\n");
    expect_done(run("quxml query '/library/book[position()=2]/title' library.xml"),
                "<title>Beta &lt; 3</title>\n");
    expect_done(run("quxml query \"/library/book[title='Alpha'][last()]/title\" library.xml"),
                "<title>Alpha</title>\n");
}

TEST_F(Query, writes_text_that_is_a_match_on_a_line_of_its_own) {
    expect_done(run("quxml query //title/ library.xml"), "Alpha\nBeta &lt; 3\nGamma\n");
}

TEST_F(Query, writes_matches_inside_matches_in_document_order) {
    write("a.xml", "<a><b><c>x</c></b><d/></a>");
    expect_done(run("quxml query '//*' a.xml"),
                "<a>\n  <b>\n    <c>x</c>\n  </b>\n  <d/>\n</a>\n"
                "<b>\n  <c>x</c>\n</b>\n"
                "<c>x</c>\n"
                "x\n"
                "<d/>\n");
}

TEST_F(Query, compares_attribute_values_as_they_are_read_and_escapes_them_once_when_writing) {
    write("a.xml", "<a><b x='&lt;'><c y='&amp;'/></b></a>");
    expect_done(run("quxml query \"a/b[@x='<']\" a.xml"), "<b x=\"&lt;\">\n  <c y=\"&amp;\"/>\n</b>\n");
    expect_done(run("quxml query 'a//*' a.xml"),
                "<b x=\"&lt;\">\n  <c y=\"&amp;\"/>\n</b>\n<c y=\"&amp;\"/>\n");
}

TEST_F(Query, writes_many_matches_in_document_order) {
    write("books.xml", many_books(20000));
    const std::string all = many_books(20000);
    std::string expected;
    std::istringstream lines(all);
    for (std::string line; std::getline(lines, line);)
        if (contains(line, "<book>"))
            expected += line.substr(2) + '\n';
    expect_done(run("quxml query /catalog/book books.xml"), expected);
    expect_done(run("quxml query //book books.xml | cat"), expected);
}

TEST_F(Query, finds_everything_in_the_deepest_document_that_can_be_read) {
    const int depth = 250;
    std::string text;
    std::string ends;
    for (int i = 0; i < depth; ++i) {
        text += "<d>";
        ends += "</d>";
    }
    write("deep.xml", text + "<leaf/>" + ends);
    expect_done(run("quxml query //leaf deep.xml"), "<leaf/>\n");
    expect_done(run("quxml query '//*' deep.xml | grep -c '^<d>'"), "250\n");
}

TEST_F(Query, prefix_lets_a_name_stand_for_all_that_begin_with_it) {
    expect(run("quxml query /lib/book/ti library.xml"), 1, "", "");
    expect_done(run("quxml query --prefix /lib/book/ti library.xml"),
                "<title>Alpha</title>\n<title>Beta &lt; 3</title>\n");
    expect(run("quxml query --prefix /library/ook library.xml"), 1, "", "");
}

TEST_F(Query, reads_standard_input_for_a_dash_or_no_file) {
    expect_done(run("quxml query //shelf/book/title <library.xml"), "<title>Gamma</title>\n");
    expect_done(run("quxml query //shelf/book/title - <library.xml"), "<title>Gamma</title>\n");
    expect_done(run("cat library.xml | quxml query //shelf/book/title"), "<title>Gamma</title>\n");
}

TEST_F(Query, exits_with_1_and_says_nothing_when_nothing_matches) {
    for (const char* path :
         {"book", "//nothing", "/library/book[7]", "/library/book[@id='7']", "", "' '", "/", "//"}) {
        SCOPED_TRACE(path);
        expect(run(std::string("quxml query \"") + path + "\" library.xml"), 1, "", "");
    }
}

TEST_F(Query, takes_paths_that_look_like_something_else) {
    write("format.xml", "<format><query/></format>");
    expect_done(run("quxml query format format.xml"), "<format>\n  <query/>\n</format>\n");
    expect_done(run("quxml query //query format.xml"), "<query/>\n");
    expect(run("quxml query query format.xml"), 1, "", "");
    expect(run("quxml query '[1]' format.xml"), 1, "", "");
    expect(run("quxml query -- --prefix format.xml"), 1, "", "");
    expect_done(run("quxml query '*' format.xml"), "<format>\n  <query/>\n</format>\n");
}

TEST_F(Query, exits_with_4_for_a_path_it_can_not_understand) {
    const char* number_missing = "A number is missing or can not be read; <= and >= are not known";
    const std::array<Refused, 7> refused{{
        {"library/book[position()>=1]", number_missing},
        {"library/book[last()-x]", number_missing},
        {"library/book[position()=]", number_missing},
        {"library/book[99999999999]", "A number is out of range"},
        {"library/book[@id==1]", "Can at most have one equal sign in attribute queries"},
        {"library/book[title==Alpha]", "Search for child node must contain exactly one equals sign"},
        {"//book[title==Alpha]", "Search for child node must contain exactly one equals sign"},
    }};
    for (const Refused& one : refused) {
        SCOPED_TRACE(one.arguments);
        const std::string reason =
            std::string(": bad query \"") + one.arguments + "\": " + one.message + '\n';
        const std::string command = std::string("quxml query '") + one.arguments + "' ";
        expect(run(command + "library.xml"), 4, "", "quxml: library.xml" + reason);
        expect(run(command + "<library.xml"), 4, "", "quxml: standard input" + reason);
    }
}

// ---- Input that can not be read

using Input = Quxml;

TEST_F(Input, exits_with_3_for_malformed_text_and_tells_file_line_and_column) {
    write("bad.xml", "<a>\n<b>\n</a>\n");
    const Result file = run("quxml format bad.xml");
    EXPECT_EQ(file.code, 3);
    EXPECT_EQ(file.out, "");
    EXPECT_EQ(file.err.rfind("quxml: bad.xml: ", 0), 0U) << file.err;
    EXPECT_TRUE(contains(file.err, " (error code: 7")) << file.err;
    EXPECT_TRUE(contains(file.err, ") at line ")) << file.err;

    const Result standard_input = run("quxml query //b <bad.xml");
    EXPECT_EQ(standard_input.code, 3);
    EXPECT_EQ(standard_input.out, "");
    EXPECT_EQ(standard_input.err.rfind("quxml: standard input: ", 0), 0U) << standard_input.err;
}

TEST_F(Input, exits_with_3_for_nothing_at_all) {
    write("empty.xml", "");
    expect(run("quxml format empty.xml"), 3, "", "quxml: empty.xml: Empty document.\n");
    expect(run("quxml query a"), 3, "", "quxml: standard input: Empty document.\n");
}

TEST_F(Input, a_bad_query_does_not_hide_malformed_text) {
    write("bad.xml", "<a>");
    EXPECT_EQ(run("quxml query 'a/b[99999999999]' bad.xml").code, 3);
}

TEST_F(Input, exits_with_5_for_files_that_can_not_be_read) {
    expect(run("quxml format nothing.xml"), 5, "", "quxml: nothing.xml: No such file or directory\n");
    expect(run("quxml query a nothing.xml"), 5, "", "quxml: nothing.xml: No such file or directory\n");
    expect(run("quxml format ''"), 5, "", "quxml: : No such file or directory\n");
    expect(run("mkdir folder; quxml format folder"), 5, "", "quxml: folder: Is a directory\n");
    expect(run("mkdir -p folder; quxml format <folder"), 5, "", "quxml: standard input: Is a directory\n");
    expect(run("quxml format <&-"), 5, "", "quxml: standard input: Bad file descriptor\n");
}

TEST_F(Input, exits_with_5_and_never_with_3_when_memory_runs_out) {
    write("books.xml", many_books(60000));
    const auto run_within = [&](int kilobytes) {
        return run("ulimit -v " + std::to_string(kilobytes) + "; quxml format books.xml");
    };
    if (run("ulimit -v 60000; quxml --version").code != 0)
        GTEST_SKIP() << "the program itself does not start within 60 MB: built with a sanitizer, or run in "
                        "an emulator";
    int refused = 0;
    for (int kilobytes = 60000; kilobytes <= 180000; kilobytes += 10000) {
        const Result result = run_within(kilobytes);
        SCOPED_TRACE(kilobytes);
        if (result.code == 0)
            continue;
        ++refused;
        EXPECT_EQ(result.code, 5);
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.err == "quxml: out of memory\n" ||
                    result.err == "quxml: books.xml: out of memory\n")
            << result.err;
    }
    EXPECT_GT(refused, 0);
    EXPECT_EQ(run_within(4000000).code, 0);
}

// ---- Output that can not be written

class Output : public Quxml {
protected:
    Output() {
        write("a.xml", "<a/>");
        write("books.xml", many_books(20000));
    }
};

TEST_F(Output, exits_with_5_on_a_full_disk) {
    const char* message = "quxml: standard output: No space left on device\n";
    expect(run("quxml format a.xml >/dev/full"), 5, "", message);
    expect(run("quxml format --compact books.xml >/dev/full"), 5, "", message);
    expect(run("quxml query a a.xml >/dev/full"), 5, "", message);
    expect(run("quxml query //book books.xml >/dev/full"), 5, "", message);
    expect(run("quxml --help >/dev/full"), 5, "", message);
    expect(run("quxml --version >/dev/full"), 5, "", message);
}

TEST_F(Output, a_full_disk_does_not_matter_when_there_is_nothing_to_write) {
    expect(run("quxml query b a.xml >/dev/full"), 1, "", "");
    expect(run("quxml query b a.xml >&-"), 1, "", "");
}

TEST_F(Output, exits_with_5_without_a_standard_output) {
    const char* message = "quxml: standard output: Bad file descriptor\n";
    expect(run("quxml format a.xml >&-"), 5, "", message);
    expect(run("quxml query a a.xml >&-"), 5, "", message);
    EXPECT_EQ(written("a.xml"), "<a/>");
}

TEST_F(Output, exits_with_the_same_codes_without_a_standard_error) {
    EXPECT_EQ(run("quxml format nothing.xml 2>&-").code, 5);
    EXPECT_EQ(run("quxml format nothing.xml 2>/dev/full").code, 5);
    EXPECT_EQ(run("quxml 2>&-").code, 2);
    EXPECT_EQ(written("a.xml"), "<a/>");
}

// What `head` did not want to see is no failure.
TEST_F(Output, ends_quietly_on_a_closed_pipe_as_though_all_had_been_read) {
    for (const char* command : {"format books.xml", "format --compact books.xml", "query //book books.xml"}) {
        SCOPED_TRACE(command);
        const Result result = run(std::string("{ quxml ") + command + "; echo $? >code; } | head -c 5");
        EXPECT_EQ(result.out.size(), 5U);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(written("code"), "0\n");
    }
}

TEST_F(Output, ends_quietly_on_a_closed_pipe_where_its_signal_is_ignored) {
    const Result result = run("trap '' PIPE; { quxml query //book books.xml; echo $? >code; } | head -n 1");
    expect_done(result, "<book>Nuts &amp; bolts, volume 0</book>\n");
    EXPECT_EQ(written("code"), "0\n");
}

}  // namespace
