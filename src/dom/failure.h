// SPDX-License-Identifier: MIT
#ifndef QUXML_DOM_FAILURE_H
#define QUXML_DOM_FAILURE_H

namespace quxml {

/// Throws `std::invalid_argument`. What throws takes more room than what looks for the reason, so it stands here once.
[[noreturn]] void throw_invalid_argument(const char* message);

}  // namespace quxml

#endif
