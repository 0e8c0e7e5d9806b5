// SPDX-License-Identifier: MIT

// Patches are made for the UTF-8 text, and applied to the bytes. Which bytes they are meant for is found by
// converting once more, each time with no more room for the result than there is up to the next place looked for.
// Whether all of that is right is seen by converting the patched bytes: they have to give the patched text.

#include "writing/EncodedText.h"

#include <iconv.h>
#include <libxml/xmlstring.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <new>
#include <utility>

#include "reading/encoding.h"
#include "terminal/Failure.h"
#include "terminal/messages.h"
#include "terminal/words.h"

namespace tool {

namespace {

constexpr const char* utf_8 = "UTF-8";

Failure refusal(const std::string& file, const std::string& encoding) {
    return {ExitCode::malformed, get_label(file) + ": not written: it cannot be converted to " + encoding +
                                     " and back; convert the file to UTF-8 first"};
}

/// One conversion by iconv.
class Conversion {
public:
    /// What iconv knows at a second try, it had no memory for at the first.
    Conversion(const std::string& to, const std::string& from)
        : converter(iconv_open(to.c_str(), from.c_str())) {
        if (is_known())
            return;
        converter = iconv_open(to.c_str(), from.c_str());
        if (is_known())
            iconv_close(converter);
        if (is_known() || errno == ENOMEM)
            throw std::bad_alloc();
    }

    ~Conversion() {
        if (is_known())
            iconv_close(converter);
    }

    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;

    bool is_known() const {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): iconv_open is declared so
        return converter != reinterpret_cast<iconv_t>(-1);
    }

    /// Converts text from the front of `in`, at most `room` bytes of the result at once. False if that is no text, or
    /// if a character had to be replaced, as some versions of iconv do.
    bool convert(std::string_view& in, std::size_t room, std::string& out) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): what is read of the buffer has been written before
        std::array<char, 4096> buffer;
        char* from = const_cast<char*>(in.data());
        std::size_t from_size = in.size();
        char* to = buffer.data();
        std::size_t to_size = std::min(room, buffer.size());
        const std::size_t result = iconv(converter, &from, &from_size, &to, &to_size);
        if (result == static_cast<std::size_t>(-1) && errno == ENOMEM)
            throw std::bad_alloc();
        const bool is_full = result == static_cast<std::size_t>(-1) && errno == E2BIG;
        in.remove_prefix(in.size() - from_size);
        out.append(buffer.data(), to);
        return (result == 0 || is_full) && to != buffer.data();
    }

    /// Takes back to its first state what has states.
    void finish(std::string& out) {
        std::array<char, 16> buffer{};
        char* to = buffer.data();
        std::size_t to_size = buffer.size();
        iconv(converter, nullptr, nullptr, &to, &to_size);
        out.append(buffer.data(), to);
    }

private:
    iconv_t converter;
};

std::size_t get_character_size(std::string_view text) {
    return static_cast<std::size_t>(std::find_if(text.begin() + 1, text.end(), begins_character) -
                                    text.begin());
}

int get_code_point(std::string_view character) {
    int size = static_cast<int>(character.size());
    return xmlGetUTF8Char(reinterpret_cast<const unsigned char*>(character.data()), &size);
}

/// Finds the bytes of a document for places in its UTF-8 text, from the first to the last.
class ByteFinder {
public:
    ByteFinder(std::string_view document, const std::string& encoding)
        : conversion(utf_8, encoding), size(document.size()), rest(document) {}

    std::size_t find(std::size_t place) {
        std::string ignored;
        while (done < place) {
            ignored.clear();
            if (!conversion.is_known() || !conversion.convert(rest, place - done, ignored))
                return std::string::npos;
            done += ignored.size();
        }
        return size - rest.size();
    }

private:
    Conversion conversion;
    std::size_t size;
    std::string_view rest;
    std::size_t done = 0;
};

}  // namespace

/// It is opened once: that takes much longer than converting a value.
class Encoder {
public:
    explicit Encoder(const std::string& encoding) : conversion(encoding, utf_8) {}

    /// Whether this machine can convert to the encoding.
    bool is_known() const { return conversion.is_known(); }

    /// Empty if the encoding lacks a character, unless the text is.
    std::string encode(std::string_view text) {
        std::string bytes;
        while (!text.empty()) {
            if (!conversion.is_known())
                return {};
            if (!conversion.convert(text, text.size() * 4 + 16, bytes)) {
                conversion.finish(bytes);
                return {};
            }
        }
        if (!bytes.empty())
            conversion.finish(bytes);
        return bytes;
    }

    std::string with_references(const std::string& text) {
        if (text.empty() || !encode(text).empty())
            return text;
        std::string result;
        for (std::string_view rest = text; !rest.empty();) {
            const std::string_view character = rest.substr(0, get_character_size(rest));
            const bool is_known = !encode(character).empty();
            result +=
                is_known ? std::string(character) : "&#" + std::to_string(get_code_point(character)) + ';';
            rest.remove_prefix(character.size());
        }
        return result;
    }

private:
    Conversion conversion;
};

namespace {

/// Of the UTF-8 text; false if a place is not found.
bool make_patches_of_bytes(std::vector<Patch>& patches, std::string_view bytes, const std::string& encoding,
                           Encoder& encoder) {
    ByteFinder finder(bytes, encoding);
    for (Patch& patch : patches) {
        patch.begin = finder.find(patch.begin);
        patch.end = finder.find(patch.end);
        patch.text = encoder.encode(patch.text);
        if (patch.begin == std::string::npos || patch.end == std::string::npos)
            return false;
    }
    return true;
}

}  // namespace

EncodedText::EncodedText(std::string file_name, std::string document)
    : file(std::move(file_name)), bytes(std::move(document)), encoding(tool::get_encoding(bytes)) {
    if (encoding.empty())
        return;
    decoded = to_utf8(bytes, encoding);
    encoder = std::make_shared<Encoder>(encoding);
}

std::string_view EncodedText::get_text() const {
    return without_mark(encoding.empty() ? bytes : decoded);
}

bool EncodedText::has_characters(const std::string& text) const {
    return encoding.empty() || text.empty() || !encoder->is_known() || !encoder->encode(text).empty();
}

void EncodedText::apply(std::vector<Patch> patches) {
    const std::size_t mark = (encoding.empty() ? bytes : decoded).size() - get_text().size();
    sort(patches);
    for (Patch& patch : patches) {
        patch.begin += mark;
        patch.end += mark;
        if (!encoding.empty())
            patch.text = encoder->with_references(patch.text);
    }
    if (encoding.empty()) {
        bytes = tool::apply(bytes, patches);
        return;
    }
    std::string patched = tool::apply(decoded, patches);
    if (!make_patches_of_bytes(patches, bytes, encoding, *encoder))
        throw refusal(file, encoding);
    std::string patched_bytes = tool::apply(bytes, patches);
    if (to_utf8(patched_bytes, encoding) != patched)
        throw refusal(file, encoding);
    bytes = std::move(patched_bytes);
    decoded = std::move(patched);
}

}  // namespace tool
