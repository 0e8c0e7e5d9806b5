// SPDX-License-Identifier: MIT
#include "quxml/DomParserError.h"

namespace quxml {

DomParserError::DomParserError(const std::string& text) : message(text) {}

DomParserError::~DomParserError() = default;

const char* DomParserError::what() const noexcept {
    return message.c_str();
}

}  // namespace quxml
