// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_TEXT_SINK_H
#define QUXML_EXTRAS_TEXT_SINK_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include "quxml/extras/writing.h"

namespace quxml {
namespace extras {

/// Gathers pieces of text and hands them on in large ones.
class TextSink {
public:
    explicit TextSink(const Output& output)
        : out(output), capacity(is_file(output) ? for_files : for_memory), gathered(new char[capacity]) {}

    /// Appends the pieces one after another, and looks only once whether they fit.
    /// \throws std::system_error
    template <class... Pieces>
    void put(const Pieces&... pieces) {
        put_views(std::string_view(pieces)...);
    }

    /// Hands on what has been gathered.
    /// \throws std::system_error
    void flush() {
        hand_on({gathered.get(), size});
        size = 0;
    }

private:
    static constexpr std::size_t for_memory = std::size_t{48} * 1024;
    /// Each piece that a file gets costs a call of the operating system, and perhaps a place of its own on the disk.
    static constexpr std::size_t for_files = std::size_t{256} * 1024;

    /// Whether copying a word that may lie anywhere in memory is not a call itself.
#if defined(__OPTIMIZE_SIZE__) || (defined(__arm__) && !defined(__ARM_FEATURE_UNALIGNED))
    static constexpr bool has_cheap_words = false;
#else
    static constexpr bool has_cheap_words = true;
#endif

    static bool is_file(const Output& output) {
        return output.text == nullptr && output.stream == nullptr;
    }

    template <class... Views>
    void put_views(Views... pieces) {
        const std::size_t length = (pieces.size() + ...);
        if (length > capacity - size)
            flush();
        if (length <= capacity) {
            (copy(pieces), ...);
        } else {
            (hand_on(pieces), ...);
        }
    }

    /// For most pieces a call of `memcpy` would take longer than the copy itself.
    void copy(std::string_view piece) {
        char* const to = gathered.get() + size;
        size += piece.size();
        if (piece.size() < sizeof(std::uint32_t)) {
            for (std::size_t i = 0; i < piece.size(); ++i)
                to[i] = piece[i];
        } else if (has_cheap_words && piece.size() < sizeof(std::uint64_t)) {
            copy_ends<std::uint32_t>(to, piece);
        } else if (has_cheap_words && piece.size() <= 2 * sizeof(std::uint64_t)) {
            copy_ends<std::uint64_t>(to, piece);
        } else {
            std::memcpy(to, piece.data(), piece.size());
        }
    }

    /// Copies the first and the last word of a piece; they may overlap.
    template <class Word>
    static void copy_ends(char* to, std::string_view piece) {
        const std::size_t last = piece.size() - sizeof(Word);
        Word word = 0;
        std::memcpy(&word, piece.data(), sizeof word);
        std::memcpy(to, &word, sizeof word);
        std::memcpy(&word, piece.data() + last, sizeof word);
        std::memcpy(to + last, &word, sizeof word);
    }

    void hand_on(std::string_view text);

    Output out;
    std::size_t capacity;
    std::unique_ptr<char[]> gathered;  // NOLINT(modernize-avoid-c-arrays): filled piece by piece
    std::size_t size = 0;
};

}  // namespace extras
}  // namespace quxml

#endif
