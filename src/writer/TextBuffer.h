#ifndef QUXML_WRITER_TEXT_BUFFER_H
#define QUXML_WRITER_TEXT_BUFFER_H

#include <array>
#include <cstddef>
#include <cstring>
#include <string>

namespace quxml {

/// Gathers the many small pieces of XML text and appends them to a string in few large ones, which takes less
/// than half the time of appending each.
class TextBuffer {
public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): what is read of the buffer has been written before
    explicit TextBuffer(std::string& text) : out(text) {}

    void append(char c) {
        if (size == buffer.size())
            flush();
        buffer[size++] = c;
    }

    void append(const char* piece, std::size_t length) {
        if (length > buffer.size() - size) {
            flush();
            if (length > buffer.size()) {
                out.append(piece, length);
                return;
            }
        }
        std::memcpy(buffer.data() + size, piece, length);
        size += length;
    }

    void append(const std::string& piece) { append(piece.data(), piece.size()); }

    template <std::size_t Size>
    void append(const char (&literal)[Size]) {
        append(literal, Size - 1);
    }

    /// Appends what has been gathered. To be called at the end, and before anybody else appends to the
    /// string; what was not flushed when an exception leaves has not been written.
    void flush() {
        out.append(buffer.data(), size);
        size = 0;
    }

    /// The string, for somebody else to append to.
    std::string& flushed() {
        flush();
        return out;
    }

private:
    std::string& out;
    std::size_t size = 0;
    std::array<char, 1024> buffer;
};

}  // namespace quxml

#endif
