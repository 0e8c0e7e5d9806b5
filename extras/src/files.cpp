// SPDX-License-Identifier: MIT
#include "quxml/extras/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <utility>

#include "quxml/DomParserError.h"

namespace quxml {
namespace extras {

namespace {

std::string make_message(const std::string& file, int line, int column, const std::string& reason) {
    const std::string place = line == 0 ? "" : ':' + std::to_string(line) + ':' + std::to_string(column);
    return file + place + ": " + reason;
}

}  // namespace

FileError::FileError(const std::string& file_name, int error_line, int error_column,
                     const std::string& reason)
    : std::runtime_error(make_message(file_name, error_line, error_column, reason)),
      file(std::make_shared<const std::string>(file_name)),
      line(error_line),
      column(error_column) {}

FileError::~FileError() = default;

const std::string& FileError::get_file() const noexcept {
    return *file;
}

int FileError::get_line() const noexcept {
    return line;
}

int FileError::get_column() const noexcept {
    return column;
}

namespace {

/// Throws the system's last error if `done` is false.
void require(bool done) {
    if (!done)
        throw std::system_error(errno, std::generic_category());
}

/// Does something with files; a `std::system_error` becomes a `FileError` about the file `name`.
template <class Work>
auto name_errors(const std::string& name, Work work) {
    try {
        return work();
    } catch (const std::system_error& error) {
        throw FileError(name, 0, 0, error.code().message());
    }
}

/// An open file that is closed on every path.
class OpenFile {
public:
    OpenFile(const std::string& name, int flags, mode_t mode = 0)
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): open is declared so
        : number(::open(name.c_str(), flags | O_CLOEXEC, mode)) {}

    ~OpenFile() {
        if (is_open())
            static_cast<void>(::close(number));
    }

    OpenFile(OpenFile&& other) noexcept : number(std::exchange(other.number, -1)) {}

    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    OpenFile& operator=(OpenFile&&) = delete;

    bool is_open() const { return number >= 0; }
    int get() const { return number; }

    /// Some file systems say only here that writing failed.
    void close() { require(::close(std::exchange(number, -1)) == 0); }

private:
    int number;
};

/// Makes room for a whole regular file at once.
void reserve_for(const OpenFile& file, std::string& text) {
    struct stat status {};
    if (::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0)
        text.reserve(static_cast<std::size_t>(status.st_size) + 1);
}

std::string read_text(const std::string& name) {
    const OpenFile file(name, O_RDONLY);
    require(file.is_open());
    std::string text;
    reserve_for(file, text);
    constexpr std::size_t size = 64 * std::size_t{1024};
    const auto piece = std::make_unique<std::array<char, size>>();
    for (;;) {
        const ssize_t count = ::read(file.get(), piece->data(), size);
        if (count < 0 && errno == EINTR)
            continue;
        require(count >= 0);
        if (count == 0)
            return text;
        text.append(piece->data(), static_cast<std::size_t>(count));
    }
}

/// The number after `label` at the end of a message of the reader; the label and the number are cut off. 0 if
/// there is none.
int take_number(std::string& message, const std::string& label) {
    const std::size_t at = message.rfind(label);
    if (at == std::string::npos)
        return 0;
    const int number = std::atoi(message.c_str() + at + label.size());  // NOLINT(cert-err34-c): ours
    message.resize(at);
    return number;
}

FileError make_error(const std::string& name, const DomParserError& error) {
    std::string message = error.what();
    const int column = take_number(message, ", column ");
    const int line = take_number(message, " at line ");
    return FileError(name, line, column, message);
}

}  // namespace

std::shared_ptr<Document> read_file(const std::string& name, bool keep_sorted) {
    const std::string text = name_errors(name, [&name] { return read_text(name); });
    try {
        return from_string(text, keep_sorted);
    } catch (const DomParserError& error) {
        throw make_error(name, error);
    }
}

namespace {

/// The folder in a name with the slash after it; empty if there is none.
std::string get_folder(const std::string& name) {
    const std::size_t slash = name.rfind('/');
    return slash == std::string::npos ? std::string() : name.substr(0, slash + 1);
}

/// What a name leads to, in the end, whether or not there is a file yet.
std::string follow_links(std::string name) {
    constexpr int most_links = 40;  // as many as Linux follows
    for (int links = 0; links < most_links; ++links) {
        std::array<char, PATH_MAX> target = {};
        const ssize_t size = ::readlink(name.c_str(), target.data(), target.size());
        if (size < 0) {
            require(errno == EINVAL || errno == ENOENT);  // no link, or nothing at all
            return name;
        }
        std::string next(target.data(), static_cast<std::size_t>(size));
        if (next[0] != '/')
            next.insert(0, get_folder(name));
        name = std::move(next);
    }
    errno = ELOOP;
    require(false);
    return name;
}

/// A new file in the folder of another. Unless it is given that one's name, it is removed again.
class NewFile {
public:
    NewFile(const std::string& beside, mode_t mode) : file(create(beside, mode, name)) {}

    ~NewFile() {
        if (!name.empty())
            static_cast<void>(::unlink(name.c_str()));
    }

    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    int get() const { return file.get(); }

    /// The mode comes after the owner and the text, since changing these can clear bits of it.
    void take_mode(const struct stat& status) {
        constexpr mode_t all_bits = 07777;
        require(::fchmod(file.get(), status.st_mode & all_bits) == 0);
    }

    /// Not every file system lets an owner be set, be it the right one.
    void take_owner(const struct stat& status) {
        struct stat now {};
        require(::fstat(file.get(), &now) == 0);
        if (now.st_uid != status.st_uid || now.st_gid != status.st_gid)
            require(::fchown(file.get(), status.st_uid, status.st_gid) == 0);
    }

    void rename_to(const std::string& other) {
        require(::fsync(file.get()) == 0);
        file.close();
        require(std::rename(name.c_str(), other.c_str()) == 0);
        name.clear();
    }

private:
    /// Opens a file that was not there before; `name` is set to its name.
    static OpenFile create(const std::string& beside, mode_t mode, std::string& name) {
        constexpr int most_tries = 1000;
        const auto start = std::chrono::steady_clock::now().time_since_epoch().count();
        for (int i = 0;; ++i) {
            std::string candidate =
                get_folder(beside) + ".quxml-" + std::to_string(::getpid()) + '-' + std::to_string(start + i);
            OpenFile created(candidate, O_WRONLY | O_CREAT | O_EXCL, mode);
            if (created.is_open()) {
                name.swap(candidate);
                return created;
            }
            require(errno == EEXIST && i < most_tries);
        }
    }

    std::string name;  // empty once the file has another one
    OpenFile file;
};

/// The state of the file, if there is one, that can be replaced.
bool check_original(const std::string& name, struct stat& status) {
    if (::stat(name.c_str(), &status) != 0) {
        require(errno == ENOENT);
        return false;
    }
    errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    require(S_ISREG(status.st_mode));
    // The folder alone decides about renaming, but a file that must not be written is not meant to be replaced.
    require(::access(name.c_str(), W_OK) == 0);
    return true;
}

void replace(const std::string& name, const std::function<void(FileDescriptor)>& write) {
    constexpr mode_t mode_of_new_files = 0666;
    constexpr mode_t only_for_owner = 0600;
    const std::string target = follow_links(name);
    struct stat original {};
    const bool is_there = check_original(target, original);
    NewFile file(target, is_there ? only_for_owner : mode_of_new_files);
    if (is_there)
        file.take_owner(original);
    write(FileDescriptor(file.get()));
    if (is_there)
        file.take_mode(original);
    const std::string folder = get_folder(target);
    const OpenFile opened_folder(folder.empty() ? "." : folder, O_RDONLY | O_DIRECTORY);
    file.rename_to(target);
    // From here on nothing can fail. Not every file system can make a new name outlast a loss of power.
    if (opened_folder.is_open())
        static_cast<void>(::fsync(opened_folder.get()));
}

}  // namespace

void replace_file(const std::string& name, const std::function<void(FileDescriptor)>& write) {
    name_errors(name, [&] { replace(name, write); });
}

void write_file(const std::string& name, const Document& document, const Layout& layout) {
    replace_file(name, [&](FileDescriptor file) { extras::write(file, document, layout); });
}

}  // namespace extras
}  // namespace quxml
