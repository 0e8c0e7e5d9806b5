// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_TEXT_SINK_H
#define QUXML_EXTRAS_TEXT_SINK_H

#include <cstddef>
#include <string>

#include "quxml/extras/writing.h"

namespace quxml {
namespace extras {

/// Gathers text and hands it on in large pieces; what is for a string goes there at once.
class TextSink {
public:
    explicit TextSink(const Output& output) : out(output) {
        if (out.text == nullptr)
            gathered.reserve(limit + limit / 4);
    }

    /// What has been gathered: to append to, and to change from where it was appended to.
    std::string& text() { return out.text != nullptr ? *out.text : gathered; }

    /// Hands on what has been gathered if it is much.
    /// \throws std::system_error
    void settle() {
        if (gathered.size() >= limit)
            flush();
    }

    /// Hands on what has been gathered.
    /// \throws std::system_error
    void flush();

private:
    static constexpr std::size_t limit = std::size_t{48} * 1024;

    Output out;
    std::string gathered;
};

}  // namespace extras
}  // namespace quxml

#endif
