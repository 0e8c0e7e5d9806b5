// SPDX-License-Identifier: MIT

// A file is replaced in an order in which each step may fail, or be the last that the machine makes, and the file is whole:
//
// 1. The old file is locked, and read under the lock. Another process of this program waits until the result has its name,
//    and then finds that it has locked a file without a name: it locks again what stands there by then.
// 2. A new file is made in the same folder, since only within a file system can a file take another one's name at once.
// 3. It gets the owner of the old one while it is still empty and nobody else may read it.
// 4. It is written, and then gets the mode: both a new owner and new text can clear bits of a mode.
// 5. It is synced. If it got its name before, a loss of power could leave the name without the text.
// 6. The old file is compared with what it was when it was read: a program that knows nothing of the lock may have changed it.
// 7. The new file gets the old one's name. From here on nothing fails any more.
// 8. The folder is synced, so that the new name outlasts a loss of power too.
//
// Up to step 7 the old file is untouched, and the new one is removed if a step fails. A backup is made in the same way, before.

#include "writing/replace_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

#include "reading/input.h"
#include "terminal/Failure.h"
#include "terminal/Progress.h"
#include "terminal/memory.h"
#include "terminal/messages.h"

namespace tool {

namespace {

Failure io_failure(const std::string& path) {
    return {ExitCode::io, get_label(path) + ": " + std::generic_category().message(errno)};
}

void require(bool done, const std::string& path) {
    if (!done)
        throw io_failure(path);
}

/// The folder of a file whose path is absolute, with a slash at its end.
std::string get_folder(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

/// Keeps the signals that end a program at a user's wish waiting, so that no new file is left behind.
class SignalsHeld {
public:
    SignalsHeld() {
        sigset_t held;
        sigemptyset(&held);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT})
            sigaddset(&held, signal);
        sigprocmask(SIG_BLOCK, &held, &former);
    }

    ~SignalsHeld() { sigprocmask(SIG_SETMASK, &former, nullptr); }

    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

private:
    sigset_t former{};
};

class Descriptor {
public:
    Descriptor(int opened, const std::string& path) : number(opened) { require(opened >= 0, path); }

    ~Descriptor() {
        if (number >= 0)
            static_cast<void>(::close(number));
    }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return number; }

    /// Some file systems report only here that writing failed.
    bool close() { return ::close(std::exchange(number, -1)) == 0; }

private:
    int number;
};

/// A new file in the folder of another. Unless it gets that one's name, it is removed again.
class NewFile {
public:
    NewFile(const std::string& path, const struct stat& status)
        : NewFile(get_folder(path) + ".quxml-XXXXXX",
                  get_folder(path) + ": no new file can be made in this folder") {
        if (!set_owner(status))
            throw io_failure(path + ": its owner cannot be kept");
    }

    ~NewFile() {
        if (is_named)
            static_cast<void>(::unlink(name.c_str()));
    }

    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void write(std::string_view text) {
        while (!text.empty()) {
            const ssize_t count = ::write(file.get(), text.data(), text.size());
            if (count < 0 && errno == EINTR)
                continue;
            require(count >= 0, name);
            text.remove_prefix(static_cast<std::size_t>(count));
        }
    }

    /// Comes after the owner and the text, since changing these can clear bits of the mode.
    void set_mode(mode_t mode, const std::string& path) {
        constexpr mode_t all_bits = 07777;
        if (::fchmod(file.get(), mode & all_bits) != 0)
            throw io_failure(path + ": its mode cannot be kept");
    }

    void close() {
        require(::fsync(file.get()) == 0, name);
        require(file.close(), name);
    }

    void rename_to(const std::string& path) {
        require(std::rename(name.c_str(), path.c_str()) == 0, path);
        is_named = false;
    }

private:
    /// Once this has made the file, the destructor runs whatever fails; and what may fail for lack of memory comes before.
    NewFile(std::string pattern, const std::string& refusal)
        : name(std::move(pattern)), file(mkostemp(name.data(), O_CLOEXEC), refusal) {}

    /// Not every file system lets an owner be set, be it the right one.
    bool set_owner(const struct stat& status) {
        struct stat now {};
        if (::fstat(file.get(), &now) == 0 && now.st_uid == status.st_uid && now.st_gid == status.st_gid)
            return true;
        return ::fchown(file.get(), status.st_uid, status.st_gid) == 0;
    }

    std::string name;
    Descriptor file;
    bool is_named = true;
};

/// A folder in which files get new names, opened before they do, since what comes after may not fail. Not every folder can
/// be opened.
class Folder {
public:
    explicit Folder(const std::string& path)
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): open is declared so
        : file(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

    ~Folder() {
        if (file >= 0)
            static_cast<void>(::close(file));
    }

    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    /// Makes new names outlast a loss of power. Not every file system can.
    void sync() const {
        if (file >= 0)
            static_cast<void>(::fsync(file));
    }

private:
    int file;
};

struct FreeMemory {
    void operator()(char* memory) const { std::free(memory); }  // NOLINT(cppcoreguidelines-no-malloc)
};

std::string resolve(const std::string& file) {
    const std::unique_ptr<char, FreeMemory> path(::realpath(file.c_str(), nullptr));
    require(path != nullptr, file);
    return path.get();
}

bool is_same(const timespec& one, const timespec& other) {
    return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

/// What stands at a path without symbolic links: a link that has taken a file's place is another file.
struct stat get_status(const std::string& path) {
    struct stat status {};
    require(::lstat(path.c_str(), &status) == 0, path);
    return status;
}

bool is_same_file(const struct stat& one, const struct stat& other) {
    return one.st_ino == other.st_ino && one.st_dev == other.st_dev;
}

/// The time of the last change shows a new mode or owner as well, and a text of the same size whose own time was set
/// back.
bool is_unchanged(const struct stat& one, const struct stat& other) {
    return is_same_file(one, other) && one.st_size == other.st_size && is_same(one.st_mtim, other.st_mtim) &&
           is_same(one.st_ctim, other.st_ctim);
}

void require_unchanged(const Original& original) {
    if (!is_unchanged(get_status(original.path), original.status))
        throw Failure(ExitCode::io, get_label(original.path) + ": someone else changed it in the meantime");
}

// ---- The lock ----

constexpr std::chrono::seconds longest_wait{10};
constexpr std::chrono::milliseconds between_tries{20};

/// Tries until the time is over. Not every file system has locks; there the file is changed without one.
bool lock(int file) {
    const auto end = std::chrono::steady_clock::now() + longest_wait;
    while (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return true;
        if (std::chrono::steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(between_tries);
    }
    return true;
}

/// Opens a file as if to write to it: the folder alone decides about renaming, but a file that must not be written is not
/// meant to be replaced.
std::shared_ptr<const Descriptor> open_locked(const std::string& path, struct stat& status) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): open is declared so
    const int number = ::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC);
    auto file = std::make_shared<const Descriptor>(number, path);
    if (!lock(file->get()))
        throw Failure(ExitCode::io, get_label(path) + ": another process has been changing it for " +
                                        std::to_string(longest_wait.count()) + " seconds");
    require(::fstat(file->get(), &status) == 0, path);
    return file;
}

/// Who held the lock before may have put another file in this one's place, which then is the one to lock.
std::shared_ptr<const Descriptor> lock_file(const std::string& path, struct stat& status) {
    std::shared_ptr<const Descriptor> file = open_locked(path, status);
    while (!is_same_file(get_status(path), status))
        file = open_locked(path, status);
    return file;
}

void write_new_file(const Original& original, const std::string& text, const std::string& path) {
    NewFile file(original.path, original.status);
    file.write(text);
    file.set_mode(original.status.st_mode, original.path);
    file.close();
    require_unchanged(original);
    file.rename_to(path);
}

}  // namespace

Original read_original(const std::string& file) {
    Original original{resolve(file), {}, "", nullptr};
    require(::stat(original.path.c_str(), &original.status) == 0, file);
    if (!S_ISREG(original.status.st_mode))
        throw Failure(ExitCode::io, get_label(file) + ": is not a regular file");
    original.lock = lock_file(original.path, original.status);
    original.text = read_text(original.path);
    return original;
}

void replace_file(const Original& original, const std::string& text, const std::string& backup) {
    const SignalsHeld held;
    const LackOfMemoryThrown thrown;
    const Progress progress("writing " + get_label(original.path), 0);
    const Folder folder(get_folder(original.path));
    if (!backup.empty())
        write_new_file(original, original.text, original.path + backup);
    write_new_file(original, text, original.path);
    folder.sync();
}

}  // namespace tool
