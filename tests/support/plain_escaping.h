// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_SUPPORT_PLAIN_ESCAPING_H
#define QUXML_TESTS_SUPPORT_PLAIN_ESCAPING_H

#include <string>

namespace quxml_test {

/// Appends a text as the library has to write it, escaped one byte after the other.
inline void escape_plainly(const std::string& text, std::string& out) {
    for (const char c : text) {
        switch (c) {
            case '"':
                out += "&quot;";
                break;
            case '&':
                out += "&amp;";
                break;
            case '\'':
                out += "&apos;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            default:
                out += c;
        }
    }
}

}  // namespace quxml_test

#endif
