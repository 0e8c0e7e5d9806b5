// SPDX-License-Identifier: MIT
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
///
/// Code that is optimised for size handles each piece by itself and copies it with `memcpy`. So does code for ARM
/// without unaligned access, where each of two words would be a call of `memcpy`.
class TextBuffer {
public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): what is read of the buffer has been written before
    explicit TextBuffer(std::string& text) : out(text) {}

    void append(char c) {
        if (size == buffer.size())
            flush();
        buffer[size++] = c;
    }

    /// Appends the pieces one after another, and looks only once whether they fit. Inlined with all that it calls,
    /// whatever the compiler thinks of it: the lengths of most pieces are known where it is called.
    template <typename... Pieces>
    [[gnu::always_inline]] void append(const Pieces&... pieces) {
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
#if defined(__OPTIMIZE_SIZE__) || (defined(__arm__) && !defined(__ARM_FEATURE_UNALIGNED))
    static constexpr bool is_plain = true;
#else
    static constexpr bool is_plain = false;
#endif

    template <typename... Views>
    [[gnu::always_inline]] void append_views(Views... pieces) {
        if (!is_plain) {
            const std::size_t length = (pieces.size() + ...);
            if (length > buffer.size() - size)
                flush();
            if (length <= buffer.size() - size) {
                (copy(pieces), ...);
                return;
            }
        }
        (append_alone(pieces), ...);
    }

    [[gnu::noinline]] void append_alone(std::string_view piece) {
        if (piece.size() > buffer.size() - size)
            flush();
        if (piece.size() > buffer.size()) {
            out.append(piece);
        } else {
            copy(piece);
        }
    }

    /// Most pieces are short, and for these a call of `memcpy` would take longer than the copy itself: they are
    /// copied as two words of fixed size, which overlap.
    [[gnu::always_inline]] void copy(std::string_view piece) {
        char* const to = buffer.data() + size;
        size += piece.size();
        if (is_plain || piece.size() > 32) {
            std::memcpy(to, piece.data(), piece.size());
        } else if (piece.size() >= 16) {
            copy_ends<16>(to, piece);
        } else if (piece.size() >= 8) {
            copy_ends<8>(to, piece);
        } else if (piece.size() >= 4) {
            copy_ends<4>(to, piece);
        } else if (piece.size() >= 2) {
            copy_ends<2>(to, piece);
        } else if (!piece.empty()) {
            *to = piece.front();
        }
    }

    /// Copies the first and the last `Length` bytes of a piece that has at most twice as many.
    template <std::size_t Length>
    [[gnu::always_inline]] static void copy_ends(char* to, std::string_view piece) {
        const std::size_t rest = piece.size() - Length;
        std::array<char, Length> first;  // NOLINT(cppcoreguidelines-pro-type-member-init)
        std::array<char, Length> last;   // NOLINT(cppcoreguidelines-pro-type-member-init)
        std::memcpy(first.data(), piece.data(), Length);
        std::memcpy(last.data(), piece.data() + rest, Length);
        std::memcpy(to, first.data(), Length);
        std::memcpy(to + rest, last.data(), Length);
    }

    std::string& out;
    std::size_t size = 0;
    std::array<char, 1024> buffer;
};

}  // namespace quxml

#endif
