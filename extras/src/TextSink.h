// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_TEXT_SINK_H
#define QUXML_EXTRAS_TEXT_SINK_H

#include <cstddef>
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

    static bool is_file(const Output& output) { return output.text == nullptr && output.stream == nullptr; }

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

    void copy(std::string_view piece) { size += piece.copy(gathered.get() + size, piece.size()); }

    void hand_on(std::string_view text);

    Output out;
    std::size_t capacity;
    std::unique_ptr<char[]> gathered;  // NOLINT(modernize-avoid-c-arrays): filled piece by piece
    std::size_t size = 0;
};

}  // namespace extras
}  // namespace quxml

#endif
