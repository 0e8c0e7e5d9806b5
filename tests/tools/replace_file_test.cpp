// SPDX-License-Identifier: MIT

// What others do to a file between its being read and its being replaced.

#include "writing/replace_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <optional>
#include <thread>

#include "program.h"
#include "terminal/Failure.h"

namespace quxml_test {

namespace {

using tool::Failure;
using tool::Original;

class ReplaceFile : public Quxml {
protected:
    ReplaceFile() { write("a.xml", "<old/>"); }

    std::string get_path() const { return (folder / "a.xml").string(); }

    /// Replaces the file after something has happened to it, and says what it complains of.
    template <typename Event>
    std::string replace_after(Event event) const {
        const Original original = tool::read_original(get_path());
        event();
        try {
            tool::replace_file(original, "<new/>", "");
            return "";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.get_code(), tool::ExitCode::io);
            return failure.what();
        }
    }

    std::string get_complaint() const { return get_path() + ": someone else changed it in the meantime"; }
};

TEST_F(ReplaceFile, replaces_what_nobody_else_touched) {
    EXPECT_EQ(replace_after([] {}), "");
    EXPECT_EQ(written("a.xml"), "<new/>");
}

TEST_F(ReplaceFile, refuses_a_file_whose_mode_was_changed) {
    EXPECT_EQ(replace_after([&] { fs::permissions(get_path(), fs::perms::owner_all); }), get_complaint());
    EXPECT_EQ(written("a.xml"), "<old/>");
    EXPECT_EQ(fs::status(get_path()).permissions(), fs::perms::owner_all);
}

TEST_F(ReplaceFile, refuses_a_text_of_the_same_size_whose_time_was_set_back) {
    const auto write_secretly = [&] {
        struct stat status {};
        ASSERT_EQ(::stat(get_path().c_str(), &status), 0);
        std::fstream(get_path()) << "<mod/>";
        const timespec times[] = {status.st_atim, status.st_mtim};
        ASSERT_EQ(::utimensat(AT_FDCWD, get_path().c_str(), times, 0), 0);
    };
    EXPECT_EQ(replace_after(write_secretly), get_complaint());
    EXPECT_EQ(written("a.xml"), "<mod/>");
}

TEST_F(ReplaceFile, refuses_a_link_in_the_place_of_the_file) {
    const auto put_link = [&] {
        fs::rename(get_path(), folder / "b.xml");
        fs::create_symlink("b.xml", get_path());
    };
    EXPECT_EQ(replace_after(put_link), get_complaint());
    EXPECT_TRUE(fs::is_symlink(get_path()));
    EXPECT_EQ(written("b.xml"), "<old/>");
}

TEST_F(ReplaceFile, refuses_a_file_that_is_gone) {
    EXPECT_EQ(replace_after([&] { fs::remove(get_path()); }), get_path() + ": No such file or directory");
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(ReplaceFile, waits_for_the_one_that_read_the_file_before_and_sees_its_text) {
    std::optional<Original> first = tool::read_original(get_path());
    std::string seen;
    std::thread second([&] { seen = tool::read_original(get_path()).text; });
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    tool::replace_file(*first, "<new/>", "");
    first.reset();
    second.join();
    EXPECT_EQ(seen, "<new/>");
}

TEST_F(ReplaceFile, waits_ten_seconds_and_no_longer) {
    const Original first = tool::read_original(get_path());
    const auto start = std::chrono::steady_clock::now();
    try {
        tool::read_original(get_path());
        ADD_FAILURE() << "the lock was given twice";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.get_code(), tool::ExitCode::io);
        EXPECT_EQ(failure.what(), get_path() + ": another process has been changing it for 10 seconds");
    }
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST_F(ReplaceFile, loses_no_edit_of_several_programs_at_once) {
    write("a.xml", "<a/>");
    const Result result =
        run("for round in 1 2 3 4 5 6 7 8 9 10; do\n"
            "    for name in b c d; do { quxml add -i /a $name a.xml || echo refused; } & done\n"
            "done\n"
            "wait");
    expect_done(result, "");
    expect_done(run("quxml query --count '/a/*' a.xml"), "30\n");
}

}  // namespace

}  // namespace quxml_test
