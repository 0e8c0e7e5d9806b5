// SPDX-License-Identifier: MIT
#ifndef QUXML_DOM_FAILURE_H
#define QUXML_DOM_FAILURE_H

namespace quxml {

/// Throws `std::invalid_argument`. Throwing takes more code than the test that leads to it, so it is written here,
/// once.
[[noreturn]] void throw_invalid_argument(const char* message);

}  // namespace quxml

#endif
