// SPDX-License-Identifier: MIT
#include "failure.h"

#include <stdexcept>

namespace quxml {

void throw_invalid_argument(const char* message) {
    throw std::invalid_argument(message);
}

}  // namespace quxml
