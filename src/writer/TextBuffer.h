#ifndef QUXML_WRITER_TEXT_BUFFER_H
#define QUXML_WRITER_TEXT_BUFFER_H

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

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

    /// Appends the pieces one after another, and looks only once whether they fit.
    template <typename... Pieces>
    void append(const Pieces&... pieces) {
        append_views(std::string_view(pieces)...);
    }

    /// Appends what has been gathered. To be called at the end, and before anybody else appends to the
    /// string; what was not flushed when an exception leaves has not been written.
    void flush() {
        if (size != 0)
            out.append(buffer.data(), size);
        size = 0;
    }

    /// The string, for somebody else to append to.
    std::string& flushed() {
        flush();
        return out;
    }

private:
    template <typename... Views>
    void append_views(Views... pieces) {
        const std::size_t length = (pieces.size() + ...);
        if (length > buffer.size() - size) {
            flush();
            if (length > buffer.size()) {
                (out.append(pieces), ...);
                return;
            }
        }
        (copy(pieces), ...);
    }

    void copy(std::string_view piece) {
        std::memcpy(buffer.data() + size, piece.data(), piece.size());
        size += piece.size();
    }

    std::string& out;
    std::size_t size = 0;
    std::array<char, 1024> buffer;
};

}  // namespace quxml

#endif
