// SPDX-License-Identifier: MIT

// Covers reading and replacing files: what an error says, and that a file is never left half written.

#include "quxml/extras/files.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <new>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>

#include "quxml/Element.h"
#include "quxml/TextNode.h"
#include "support/expect_throw.h"
#include "support/tree_text.h"

namespace quxml_test {

namespace {

using namespace quxml::extras;
using quxml::Document;
using quxml::Element;

/// A folder of its own for each test, removed with what is in it.
class Files : public ::testing::Test {
protected:
    void SetUp() override {
        std::string name = ::testing::TempDir() + "quxml-extras-XXXXXX";
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name + '/';
        build(document, "r(a='1 & 2'){b{\"text\"}}");
    }

    void TearDown() override {
        for (const std::string& name : list())
            ::unlink((folder + name).c_str());
        ::rmdir(folder.c_str());
    }

    std::string put(const std::string& name, const std::string& text) const {
        std::ofstream(folder + name, std::ios::binary) << text;
        return folder + name;
    }

    static std::string get(const std::string& name) {
        std::ostringstream text;
        text << std::ifstream(name, std::ios::binary).rdbuf();
        return text.str();
    }

    /// The names in the folder, hidden ones included.
    std::set<std::string> list() const {
        std::set<std::string> names;
        DIR* opened = ::opendir(folder.c_str());
        while (const dirent* entry = ::readdir(opened)) {
            const std::string name = entry->d_name;
            if (name != "." && name != "..")
                names.insert(name);
        }
        ::closedir(opened);
        return names;
    }

    static mode_t mode_of(const std::string& name) {
        struct stat status {};
        EXPECT_EQ(::lstat(name.c_str(), &status), 0);
        return status.st_mode & 07777U;
    }

    static bool is_link(const std::string& name) {
        struct stat status {};
        return ::lstat(name.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
    }

    std::string folder;
    Document document{false};
    const std::string written = "<?xml version=\"1.0\"?>\n<r a=\"1 &amp; 2\">\n  <b>text</b>\n</r>\n";
};

TEST_F(Files, are_read_into_documents) {
    const std::string name = put("a.xml", "<r><b/><a/></r>");
    EXPECT_EQ(to_line(read_file(name)->get_root_node()), "r{b a}");
    EXPECT_EQ(to_line(read_file(name, true)->get_root_node()), "r{a b}");
    const std::string large = put("large.xml", "<r>" + std::string(300000, 'x') + "</r>");
    EXPECT_EQ(read_file(large)->get_root_node()->get_child_text()->get_content().size(), 300000U);
}

TEST_F(Files, that_cannot_be_read_are_named) {
    EXPECT_THROW_MESSAGE(read_file(folder + "none.xml"), FileError,
                         folder + "none.xml: No such file or directory");
    EXPECT_THROW_MESSAGE(read_file(folder), FileError, folder + ": Is a directory");
    EXPECT_THROW_MESSAGE(read_file(""), FileError, ": No such file or directory");
}

TEST_F(Files, that_are_not_xml_are_named_with_line_and_column) {
    const std::string name = put("a.xml", "<r>\n  <b>\n</r>");
    try {
        read_file(name);
        FAIL();
    } catch (const FileError& error) {
        EXPECT_EQ(error.get_file(), name);
        EXPECT_EQ(error.get_line(), 3);
        EXPECT_EQ(error.get_column(), 5);
        EXPECT_EQ(std::string(error.what()).find(name + ":3:5: Premature end of data in tag r"), 0U)
            << error.what();
    }
    EXPECT_THROW_MESSAGE(read_file(put("empty.xml", "")), FileError, folder + "empty.xml: Empty document.");
}

TEST_F(Files, that_are_not_xml_have_errors_at_columns_of_characters) {
    const auto column_of_error_in = [this](const std::string& text) {
        try {
            read_file(put("a.xml", text));
        } catch (const FileError& error) {
            return error.get_column();
        }
        return 0;
    };
    EXPECT_EQ(column_of_error_in("<a>ee</b>"), 10);
    EXPECT_EQ(column_of_error_in("<a>\u00e9\u00e9</b>"), 10);
    EXPECT_EQ(column_of_error_in("<a b='\u00e9'>\u20ac</b>"), 15);
    std::string longer = "<a>";
    for (int i = 0; i != 100000; ++i)
        longer += "\u00e9";
    EXPECT_EQ(column_of_error_in(longer + "</b>"), 100008);
}

TEST_F(Files, are_created_with_the_mode_of_new_files) {
    const std::string name = folder + "a.xml";
    const mode_t former = ::umask(027);
    write_file(name, document);
    ::umask(former);
    EXPECT_EQ(get(name), written);
    EXPECT_EQ(mode_of(name), 0640U);
    EXPECT_EQ(list().size(), 1U);
}

TEST_F(Files, are_replaced_and_keep_their_mode) {
    const std::string name = put("a.xml", "old");
    for (const mode_t mode : {0600U, 0644U, 0664U, 0755U}) {
        ASSERT_EQ(::chmod(name.c_str(), mode), 0);
        write_file(name, document);
        EXPECT_EQ(mode_of(name), mode);
    }
    EXPECT_EQ(get(name), written);
    EXPECT_EQ(list().size(), 1U);
    write_file(name, document, Layout::compact());
    EXPECT_EQ(get(name), to_text(document));
}

TEST_F(Files, are_replaced_in_the_current_folder) {
    const std::string former = [] {
        std::string name(4096, '\0');
        return std::string(::getcwd(name.data(), name.size()));
    }();
    ASSERT_EQ(::chdir(folder.c_str()), 0);
    write_file("a.xml", document);
    write_file("./a.xml", document);
    EXPECT_EQ(get("a.xml"), written);
    ASSERT_EQ(::chdir(former.c_str()), 0);
}

TEST_F(Files, are_replaced_where_symbolic_links_lead) {
    put("a.xml", "old");
    ASSERT_EQ(::symlink("a.xml", (folder + "one").c_str()), 0);
    ASSERT_EQ(::symlink((folder + "one").c_str(), (folder + "two").c_str()), 0);
    ASSERT_EQ(::symlink("b.xml", (folder + "dangling").c_str()), 0);
    write_file(folder + "two", document);
    write_file(folder + "dangling", document);
    EXPECT_TRUE(is_link(folder + "one") && is_link(folder + "two") && is_link(folder + "dangling"));
    EXPECT_EQ(get(folder + "a.xml"), written);
    EXPECT_EQ(get(folder + "b.xml"), written);
    ASSERT_EQ(::symlink("loop", (folder + "loop").c_str()), 0);
    EXPECT_THROW_MESSAGE(write_file(folder + "loop", document), FileError,
                         folder + "loop: Too many levels of symbolic links");
}

TEST_F(Files, stay_as_they_are_if_they_cannot_be_replaced) {
    EXPECT_THROW_MESSAGE(write_file(folder + "none/a.xml", document), FileError,
                         folder + "none/a.xml: No such file or directory");
    EXPECT_THROW_MESSAGE(write_file(folder, document), FileError, folder + ": Is a directory");
    EXPECT_THROW_MESSAGE(write_file("/dev/null", document), FileError, "/dev/null: Invalid argument");
    EXPECT_TRUE(list().empty());
}

TEST_F(Files, stay_as_they_are_if_what_writes_them_fails) {
    const std::string name = put("a.xml", "old");
    EXPECT_THROW(replace_file(name, [](FileDescriptor /*file*/) { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_THROW(replace_file(name, [](FileDescriptor /*file*/) { throw std::logic_error("mine"); }),
                 std::logic_error);
    EXPECT_THROW_MESSAGE(
        replace_file(
            name, [](FileDescriptor /*file*/) { throw std::system_error(ENOSPC, std::generic_category()); }),
        FileError, name + ": No space left on device");
    EXPECT_EQ(get(name), "old");
    EXPECT_EQ(list().size(), 1U);
}

TEST_F(Files, are_whole_for_whoever_reads_them_meanwhile) {
    Document large(false);
    Element* root = large.create_root_node("r");
    for (int i = 0; i < 2000; ++i)
        root->add_child("entry", i);
    const std::string name = folder + "a.xml";
    write_file(name, large);
    std::atomic<bool> is_done{false};
    std::thread writer([&] {
        for (int i = 0; i < 30; ++i)
            write_file(name, i % 2 == 0 ? document : large);
        is_done = true;
    });
    std::size_t reads = 0;
    while (!is_done) {
        const auto seen = read_file(name);
        const std::size_t children = seen->get_root_node()->get_children().size();
        ASSERT_TRUE(children == 1 || children == 2000) << children;
        ++reads;
    }
    writer.join();
    EXPECT_GT(reads, 0U);
}

TEST_F(Files, that_must_not_be_written_are_not_replaced) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "root may write everything";
    const std::string name = put("a.xml", "old");
    ASSERT_EQ(::chmod(name.c_str(), 0444), 0);
    EXPECT_THROW_MESSAGE(write_file(name, document), FileError, name + ": Permission denied");
    EXPECT_EQ(get(name), "old");
}

}  // namespace

}  // namespace quxml_test
