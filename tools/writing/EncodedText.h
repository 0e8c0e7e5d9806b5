// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_WRITING_ENCODED_TEXT_H
#define QUXML_TOOLS_WRITING_ENCODED_TEXT_H

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "writing/patches.h"

namespace tool {

class Encoder;

/// A document in its own encoding and, for those who read and change it, in UTF-8. Bytes outside of what is patched
/// stay as they are, also where an encoding has several ways to write a character.
class EncodedText {
public:
    /// \param file_name  for messages
    /// \param document  well-formed
    EncodedText(std::string file_name, std::string document);

    /// The document as UTF-8 without a byte-order mark.
    std::string_view get_text() const;

    /// The document in its own encoding.
    const std::string& get_bytes() const { return bytes; }

    /// The same; the document is not to be used any more.
    std::string take_bytes() { return std::move(bytes); }

    /// The encoding's name; empty for UTF-8.
    const std::string& get_encoding() const { return encoding; }

    /// Whether the encoding has all characters of a UTF-8 text, as far as this machine knows the encoding; `apply`
    /// refuses one that it does not know.
    bool has_characters(const std::string& text) const;

    /// Applies patches of `get_text()`. Characters that the encoding lacks become references such as &#8364;.
    /// \throws Failure  (malformed) if the patched text cannot be written in the encoding; it stays as it was.
    void apply(std::vector<Patch> patches);

private:
    std::string file;
    std::string bytes;
    std::string encoding;
    std::string decoded;               // empty if the document is in UTF-8
    std::shared_ptr<Encoder> encoder;  // null then
};

}  // namespace tool

#endif
