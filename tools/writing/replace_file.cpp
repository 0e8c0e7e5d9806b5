#include "writing/replace_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <system_error>
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
        : name(path.substr(0, path.rfind('/') + 1) + ".quxml-XXXXXX"),
          file(mkostemp(name.data(), O_CLOEXEC), path) {
        if (!set_owner(status))
            refuse(path + ": its owner cannot be kept");
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
    /// Not every file system lets an owner be set, be it the right one.
    bool set_owner(const struct stat& status) {
        struct stat now {};
        if (::fstat(file.get(), &now) == 0 && now.st_uid == status.st_uid && now.st_gid == status.st_gid)
            return true;
        return ::fchown(file.get(), status.st_uid, status.st_gid) == 0;
    }

    [[noreturn]] void refuse(const std::string& reason) {
        const int error = errno;
        static_cast<void>(::unlink(name.c_str()));
        errno = error;
        throw io_failure(reason);
    }

    std::string name;
    Descriptor file;
    bool is_named = true;
};

/// Makes a new name in a folder outlast a loss of power. Not every file system can.
void sync_folder_of(const std::string& path) {
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): open is declared so
    const int opened = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0)
        return;
    const Descriptor descriptor(opened, folder);
    static_cast<void>(::fsync(descriptor.get()));
}

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

void require_unchanged(const Original& original) {
    struct stat now {};
    require(::stat(original.path.c_str(), &now) == 0, original.path);
    const struct stat& then = original.status;
    if (now.st_ino != then.st_ino || now.st_dev != then.st_dev || now.st_size != then.st_size ||
        !is_same(now.st_mtim, then.st_mtim))
        throw Failure(ExitCode::io, get_label(original.path) + ": somebody else changed it in the meantime");
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
    Original original{resolve(file), {}, ""};
    require(::stat(original.path.c_str(), &original.status) == 0, file);
    if (!S_ISREG(original.status.st_mode))
        throw Failure(ExitCode::io, get_label(file) + ": is not a regular file");
    // The folder alone decides about renaming, but a file that must not be written is not meant to be replaced.
    require(::access(original.path.c_str(), W_OK) == 0, file);
    original.text = read_text(original.path);
    return original;
}

void replace_file(const Original& original, const std::string& text, const std::string& backup) {
    const SignalsHeld held;
    const LackOfMemoryThrown thrown;
    const Progress progress("writing " + get_label(original.path), 0);
    if (!backup.empty())
        write_new_file(original, original.text, original.path + backup);
    write_new_file(original, text, original.path);
    sync_folder_of(original.path);
}

}  // namespace tool
