// SPDX-License-Identifier: MIT
#include "reading/input.h"

#include <libxml/xmlerror.h>
#include <quxml/DomParserError.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <new>
#include <system_error>

#include "reading/diagnostics.h"
#include "reading/encoding.h"
#include "terminal/Failure.h"
#include "terminal/Progress.h"
#include "terminal/memory.h"
#include "terminal/messages.h"
#include "terminal/words.h"

namespace tool {

namespace {

struct FileCloser {
    /// A file that was only read has nothing to lose when closing fails. Standard input is left open.
    void operator()(std::FILE* file) const {
        if (file != stdin)
            static_cast<void>(std::fclose(file));
    }
};

using OpenFile = std::unique_ptr<std::FILE, FileCloser>;

Failure read_failure(const std::string& file) {
    return {ExitCode::io, get_label(file) + ": " + std::generic_category().message(errno)};
}

OpenFile open(const std::string& file) {
    if (file == standard_input)
        return OpenFile(stdin);
    OpenFile opened(std::fopen(file.c_str(), "rbe"));
    if (!opened)
        throw read_failure(file);
    return opened;
}

/// 0 if it is not known, as for pipes.
std::size_t get_size(std::FILE& file) {
    struct stat status {};
    const bool is_known = fstat(fileno(&file), &status) == 0 && S_ISREG(status.st_mode);
    return is_known ? static_cast<std::size_t>(status.st_size) : 0;
}

/// What libxml2's tree and the library's take for each byte of a document.
constexpr std::size_t bytes_for_each_character = 32;

/// Whether the library did not find an encoding that there is: iconv had no memory to convert from it.
bool is_out_of_memory(const quxml::DomParserError& error, const std::string& text) {
    const std::string unsupported = " (error code: " + std::to_string(XML_ERR_UNSUPPORTED_ENCODING) + ") ";
    return contains(error.what(), unsupported.c_str()) && !get_encoding(text).empty();
}

}  // namespace

std::string read_text(const std::string& file) {
    const OpenFile opened = open(file);
    Progress progress("reading " + get_label(file), get_size(*opened));
    std::string text;
    std::array<char, 65536> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), opened.get())) {
        text.append(block.data(), count);
        progress.set_done(text.size());
    }
    if (std::ferror(opened.get()) != 0)
        throw read_failure(file);
    return text;
}

std::shared_ptr<quxml::Document> parse_document(const std::string& file, const std::string& text,
                                                Errors errors) {
    try {
        const Progress progress("parsing " + get_label(file), 0);
        if (has_zero_character(text))
            throw quxml::DomParserError("there is a zero character");
        expect_memory(bytes_for_each_character * text.size());
        return quxml::from_string(text, false);
    } catch (const quxml::DomParserError& error) {
        if (is_out_of_memory(error, text))
            throw std::bad_alloc();
        if (errors == Errors::written)
            write_errors(file, text, error.what());
        throw Failure(ExitCode::malformed);
    }
}

}  // namespace tool
