// SPDX-License-Identifier: MIT
#ifndef QUXML_TOOLS_TERMINAL_OUTPUT_H
#define QUXML_TOOLS_TERMINAL_OUTPUT_H

#include <string>

#include "terminal/Failure.h"

namespace tool {

/// Standard output cannot be written, so that there is no sense in going on.
class OutputFailure : public Failure {
public:
    using Failure::Failure;
};

/// Writes `text` to standard output and empties it.
/// \return false if nobody reads any more (a closed pipe): more output is pointless, and no message is needed.
/// \throws OutputFailure  (io) if it cannot be written, on a full disk for example.
bool write_output(std::string& text);

/// Closes standard output; some file systems report only then that writing failed.
/// \throws OutputFailure  (io) in that case.
void close_output();

}  // namespace tool

#endif
