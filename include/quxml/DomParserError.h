// SPDX-License-Identifier: MIT
#ifndef QUXML_DOM_PARSER_ERROR_H
#define QUXML_DOM_PARSER_ERROR_H

#include <exception>
#include <string>

#include "export.h"

namespace quxml {

/// Thrown by `from_string` for text that cannot be read. The message is "Empty document.",
/// "Document too large.", or libxml2's description followed by
/// " (error code: C) at line L, column N", lines and columns as libxml2 counts them, from 1; 0 where it does
/// not say.
class QUXML_EXPORT DomParserError : public std::exception {
public:
    /// An error with this message, which is copied.
    explicit DomParserError(const std::string& message);

    ~DomParserError() override;

    /// The message; valid as long as this object lives.
    const char* what() const noexcept override;

private:
    std::string message;
};

}  // namespace quxml

#endif
