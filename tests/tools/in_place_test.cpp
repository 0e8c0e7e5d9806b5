// SPDX-License-Identifier: MIT

// Editing in place: a file is whole at any moment, old or new, and it stays the same file to everybody else.

#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "program.h"

namespace quxml_test {

namespace {

constexpr const char* old_text = "<settings>\n  <host name=\"kitchen\"/>\n</settings>\n";
constexpr const char* new_text = "<settings>\n  <host name=\"kitchen\" port=\"80\"/>\n</settings>\n";

class InPlace : public Quxml {
protected:
    InPlace() { write("a.xml", old_text); }

    struct stat get_status(const std::string& file) const {
        struct stat status {};
        EXPECT_EQ(lstat((folder / file).c_str(), &status), 0) << file;
        return status;
    }

    /// The names of all files but those of `run`.
    std::vector<std::string> get_files() const {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() != ".txt")
                names.push_back(entry.path().filename());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
};

using Files = std::vector<std::string>;

TEST_F(InPlace, changes_the_file_and_writes_nothing_else) {
    expect_done(run("quxml set -i //host port=80 a.xml"), "");
    EXPECT_EQ(written("a.xml"), new_text);
    EXPECT_EQ(get_files(), Files{"a.xml"});
    expect_done(run("quxml unset --in-place //host port a.xml"), "");
    EXPECT_EQ(written("a.xml"), old_text);
}

struct Changed {
    const char* command;
    const char* text;
};

TEST_F(InPlace, works_with_every_command_that_writes_documents) {
    const std::vector<Changed> all = {
        {"set -i /settings a=1", "<settings a=\"1\">\n  <host name=\"kitchen\"/>\n</settings>\n"},
        {"unset -i //host name", "<settings>\n  <host/>\n</settings>\n"},
        {"text -i //host x", "<settings>\n  <host name=\"kitchen\">x</host>\n</settings>\n"},
        {"add -i /settings a", "<settings>\n  <host name=\"kitchen\"/>\n  <a/>\n</settings>\n"},
        {"remove -i //host", "<settings>\n</settings>\n"},
        {"edit -i -e 'set /settings a=1'", "<settings a=\"1\">\n  <host name=\"kitchen\"/>\n</settings>\n"},
        {"format -i --canonical",
         "<?xml version=\"1.0\"?>\n<settings>\n  <host name=\"kitchen\"/>\n</settings>\n"},
        {"format -i --indent tab --no-declaration", "<settings>\n\t<host name=\"kitchen\"/>\n</settings>\n"},
        {"format -i --compact --no-declaration", "<settings><host name=\"kitchen\"/></settings>\n"},
    };
    for (const Changed& one : all) {
        SCOPED_TRACE(one.command);
        write("a.xml", old_text);
        expect_done(run(std::string("quxml ") + one.command + " a.xml"), "");
        EXPECT_EQ(written("a.xml"), one.text);
    }
    write("a.xml", "<a>\n  <c/>\n  <b/>\n</a>\n");
    expect_done(run("quxml sort -i a.xml"), "");
    EXPECT_EQ(written("a.xml"), "<a>\n  <b/>\n  <c/>\n</a>\n");
}

TEST_F(InPlace, keeps_mode_and_owner) {
    EXPECT_EQ(run("chmod 4751 a.xml; quxml set -i //host port=80 a.xml").code, 0);
    EXPECT_EQ(get_status("a.xml").st_mode & 07777U, 04751U);
    EXPECT_EQ(run("chmod 0620 a.xml; quxml set -i //host port=81 a.xml").code, 0);
    EXPECT_EQ(get_status("a.xml").st_mode & 07777U, 0620U);
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give files away";
    EXPECT_EQ(run("chown 1234:4321 a.xml; chmod 2640 a.xml; quxml set -i --backup //host port=82 a.xml").code,
              0);
    for (const char* file : {"a.xml", "a.xml~"}) {
        EXPECT_EQ(get_status(file).st_uid, 1234U) << file;
        EXPECT_EQ(get_status(file).st_gid, 4321U) << file;
        EXPECT_EQ(get_status(file).st_mode & 07777U, 02640U) << file;
    }
}

TEST_F(InPlace, follows_symbolic_links) {
    EXPECT_EQ(run("mkdir sub; mv a.xml sub; ln -s sub/a.xml link; ln -s link link2").code, 0);
    expect_done(run("quxml set -i --backup //host port=80 link2"), "");
    EXPECT_EQ(written("sub/a.xml"), new_text);
    EXPECT_EQ(written("sub/a.xml~"), old_text);
    EXPECT_TRUE(fs::is_symlink(folder / "link2"));
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(get_files(), (Files{"link", "link2", "sub"}));
}

TEST_F(InPlace, leaves_other_hard_links_with_the_old_text) {
    EXPECT_EQ(run("ln a.xml b.xml; quxml set -i //host port=80 a.xml").code, 0);
    EXPECT_EQ(written("b.xml"), old_text);
}

TEST_F(InPlace, does_not_touch_the_file_when_nothing_changes) {
    const std::string odd = "<settings ><host  name='kitchen'/></settings>";
    write("a.xml", odd);
    write("sorted.xml", "<a><b/><c/></a>");
    write("formatted.xml", "<?xml version=\"1.0\"?>\n<a/>\n");
    for (const char* command :
         {"set -i //host name=kitchen a.xml", "unset -i //host port a.xml", "text -i //host '' a.xml",
          "sort -i sorted.xml", "format -i formatted.xml", "set -i --backup //host name=kitchen a.xml"}) {
        SCOPED_TRACE(command);
        const std::string file = std::string(command).substr(std::string(command).rfind(' ') + 1);
        const struct stat before = get_status(file);
        expect_done(run(std::string("quxml ") + command), "");
        const struct stat after = get_status(file);
        EXPECT_EQ(after.st_ino, before.st_ino);
        EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
        EXPECT_EQ(after.st_ctim.tv_nsec, before.st_ctim.tv_nsec);
    }
    EXPECT_EQ(written("a.xml"), odd);
    EXPECT_EQ(get_files(), (Files{"a.xml", "formatted.xml", "sorted.xml"}));
}

TEST_F(InPlace, keeps_a_backup_of_the_old_text) {
    expect_done(run("quxml set -i --backup //host port=80 a.xml"), "");
    EXPECT_EQ(written("a.xml~"), old_text);
    expect_done(run("quxml set -i --backup=.old //host port=81 a.xml"), "");
    EXPECT_EQ(written("a.xml.old"), new_text);
    expect_done(run("quxml set -i --backup //host port=82 a.xml"), "");
    EXPECT_EQ(written("a.xml~"), "<settings>\n  <host name=\"kitchen\" port=\"81\"/>\n</settings>\n");
    EXPECT_EQ(get_files(), (Files{"a.xml", "a.xml.old", "a.xml~"}));
}

TEST_F(InPlace, wants_a_suffix_for_backups) {
    const std::vector<Refused> all = {
        {"--backup=", "--backup=: a value is missing after the equal sign\nquxml set --help"},
        {"--backup=x/y", "--backup: expected a suffix for a file name, not \"x/y\"\nquxml set --help"},
    };
    for (const Refused& one : all) {
        SCOPED_TRACE(one.arguments);
        expect(run(std::string("quxml set -i ") + one.arguments + " //host port=80 a.xml"), 2, "",
               std::string("quxml: ") + one.message + " says more.\n");
    }
    EXPECT_EQ(written("a.xml"), old_text);
    EXPECT_EQ(get_files(), Files{"a.xml"});
    EXPECT_EQ(run("quxml text -i -- //host --backup= a.xml").code, 0);
}

// ---- What is refused ----

TEST_F(InPlace, refuses_with_3_what_would_lose_something) {
    const std::string text = "<settings><!-- mine --><host/><b/></settings>";
    for (const char* command : {"sort -i --canonical", "format -i --canonical"}) {
        SCOPED_TRACE(command);
        write("a.xml", text);
        expect(run(std::string("quxml ") + command + " a.xml"), 3, "",
               "quxml: a.xml: not touched, this would be lost: 1 comment; \"quxml loss a.xml\" lists them, "
               "--lossy "
               "changes the file anyway\n");
        EXPECT_EQ(written("a.xml"), text);
    }
    EXPECT_EQ(get_files(), Files{"a.xml"});
}

TEST_F(InPlace, lossy_changes_the_file_all_the_same) {
    write("a.xml", "<settings><!-- mine --><host/><b/></settings>");
    expect(run("quxml sort -i --canonical --lossy a.xml"), 0, "",
           "a.xml: warning: this is lost: 1 comment\n");
    EXPECT_EQ(written("a.xml"), std::string(declaration) + "\n<settings>\n  <b/>\n  <host/>\n</settings>\n");
    write("a.xml", "<settings><!-- mine --><host/><b/></settings>");
    expect_done(run("quxml sort -i --canonical --lossy --quiet a.xml"), "");
}

TEST_F(InPlace, attribute_values_and_texts_that_need_escapes_are_not_a_loss) {
    write("a.xml", "<a b=\"&lt;&amp;&quot;&#10;\">\n  <c>&#13;</c>\n</a>\n");
    expect_done(run("quxml set -i /a x=1 a.xml"), "");
    EXPECT_EQ(written("a.xml"), "<a b=\"&lt;&amp;&quot;&#10;\" x=\"1\">\n  <c>&#13;</c>\n</a>\n");
}

TEST_F(InPlace, leaves_the_file_alone_when_the_work_fails) {
    const std::vector<std::pair<const char*, int>> all = {
        {"set -i //nothing a=1", 1},
        {"set -i //host a:b=1", 2},
        {"text -i //host '\n'", 3},
        {"remove -i /settings", 3},
        {"set -i '/settings/host[position()<=1]' a=1", 4},
    };
    for (const auto& [command, code] : all) {
        SCOPED_TRACE(command);
        const struct stat before = get_status("a.xml");
        EXPECT_EQ(run(std::string("quxml ") + command + " a.xml").code, code);
        EXPECT_EQ(get_status("a.xml").st_ino, before.st_ino);
        EXPECT_EQ(written("a.xml"), old_text);
    }
    EXPECT_EQ(get_files(), Files{"a.xml"});
}

TEST_F(InPlace, exits_with_5_for_what_is_not_a_file_to_be_replaced) {
    EXPECT_EQ(run("mkdir folder; mkfifo pipe; ln -s nowhere broken").code, 0);
    const std::vector<Refused> all = {
        {"folder", "folder: is not a regular file"},
        {"pipe", "pipe: is not a regular file"},
        {"/dev/null", "/dev/null: is not a regular file"},
        {"nothing.xml", "nothing.xml: No such file or directory"},
        {"broken", "broken: No such file or directory"},
        {"a.xml/", "a.xml/: Not a directory"},
    };
    for (const Refused& one : all)
        expect(run(std::string("quxml set -i //host port=80 ") + one.arguments), 5, "",
               std::string("quxml: ") + one.message + '\n');
}

TEST_F(InPlace, exits_with_5_where_nothing_may_be_written) {
    if (geteuid() == 0)
        GTEST_SKIP() << "root may write everything";
    const Result result =
        run("mkdir sub; mv a.xml sub; chmod 555 sub; quxml set -i //host port=80 sub/a.xml");
    EXPECT_EQ(result.code, 5);
    EXPECT_TRUE(contains(result.err, "Permission denied")) << result.err;
    EXPECT_EQ(written("sub/a.xml"), old_text);
    EXPECT_EQ(run("chmod 755 sub; chmod 444 sub/a.xml").code, 0);
    expect(run("quxml set -i //host port=80 sub/a.xml"), 5, "", "quxml: sub/a.xml: Permission denied\n");
}

// ---- Full disks ----

TEST_F(InPlace, exits_with_5_and_leaves_the_file_whole_when_the_new_one_has_no_room) {
    const std::string text = many_books(2000);
    write("a.xml", text);
    const Result result = run("ulimit -f 4; quxml set -i /catalog n=1 a.xml");
    EXPECT_EQ(result.code, 5);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(contains(result.err, ": File too large\n")) << result.err;
    EXPECT_TRUE(written("a.xml") == text);
    EXPECT_EQ(get_files(), Files{"a.xml"});
    EXPECT_EQ(run("ulimit -f 4; quxml set /catalog n=1 a.xml").code, 5);
    EXPECT_EQ(run("ulimit -f 4; quxml format -i --indent 4 a.xml").code, 5);
    EXPECT_TRUE(written("a.xml") == text);
}

/// Mounts a small file system, where that is allowed.
TEST_F(InPlace, leaves_the_file_whole_on_a_full_disk) {
    EXPECT_EQ(run("mkdir disk").code, 0);
    if (run("mount -t tmpfs -o size=1m none disk").code != 0)
        GTEST_SKIP() << "no file system can be mounted here";
    const std::string text = many_books(15000);
    write("disk/a.xml", text);
    for (const char* options : {"", "--backup"}) {
        SCOPED_TRACE(options);
        const Result result = run(std::string("quxml set -i ") + options +
                                  " /catalog n=1 disk/a.xml; code=$?; ls -A disk; exit $code");
        EXPECT_EQ(result.code, 5);
        EXPECT_EQ(result.out, "a.xml\n");
        EXPECT_TRUE(contains(result.err, ": No space left on device\n")) << result.err;
        EXPECT_TRUE(written("disk/a.xml") == text);
    }
    EXPECT_EQ(run("quxml remove -i '/catalog/book[position()>9]' disk/a.xml && quxml query --count //book "
                  "disk/a.xml")
                  .code,
              0);
    EXPECT_EQ(run("umount disk").code, 0);
}

// ---- Processes that are killed ----

/// Starts the program and kills it after some time.
class Victim {
public:
    explicit Victim(const std::string& command) : process(fork()) {
        if (process == 0) {
            execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
    }

    void kill_after(std::chrono::microseconds time, int signal) const {
        std::this_thread::sleep_for(time);
        kill(process, signal);
        int status = 0;
        waitpid(process, &status, 0);
    }

private:
    pid_t process;
};

class Killed : public InPlace {
protected:
    static std::string get_text(int number, const std::string& rest) {
        return "<catalog n=\"" + std::to_string(number) + '"' + rest;
    }

    std::string get_command(int number) const {
        return "cd '" + folder.string() +
               "'; exec '" QUXML_TOOL "' set -i /catalog n=" + std::to_string(number) + " a.xml 2>/dev/null";
    }

    std::chrono::microseconds measure(int number) const {
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(run(get_command(number)).code, 0);
        return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() -
                                                                     begin);
    }

    /// Kills the program at random moments; after each the file must have the old text or the new one.
    void expect_old_or_new(int rounds, int signal) {
        const std::string rest = many_books(3000).substr(8);
        write("a.xml", get_text(0, rest));
        const std::chrono::microseconds whole = measure(1);
        std::mt19937 random(static_cast<unsigned>(signal));
        std::uniform_int_distribution<std::int64_t> times(0, 2 * whole.count());
        int number = 1;
        for (int round = 2; round < rounds + 2; ++round) {
            Victim(get_command(round)).kill_after(std::chrono::microseconds(times(random)), signal);
            const std::string text = written("a.xml");
            if (text == get_text(round, rest))
                number = round;
            else
                ASSERT_TRUE(text == get_text(number, rest))
                    << "in round " << round << ": " << text.substr(0, 100);
        }
    }
};

TEST_F(Killed, leaves_the_old_file_or_the_new_one) {
    expect_old_or_new(40, SIGKILL);
}

TEST_F(Killed, leaves_no_other_file_behind_when_asked_to_end) {
    expect_old_or_new(20, SIGTERM);
    expect_old_or_new(20, SIGINT);
    EXPECT_EQ(get_files(), Files{"a.xml"});
}

}  // namespace

}  // namespace quxml_test
