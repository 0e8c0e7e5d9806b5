#ifndef QUXML_DOM_INTEGER_H
#define QUXML_DOM_INTEGER_H

#include <string>

namespace quxml {

/// What `std::stoi` makes of a text, without its exceptions: leading white space is skipped, a sign is
/// allowed, and whatever follows the digits is ignored.
struct Integer {
    enum Kind { none, fits, out_of_range };
    Kind kind;
    int value;  // 0 unless the number fits
};

Integer read_integer(const std::string& text) noexcept;

}  // namespace quxml

#endif
