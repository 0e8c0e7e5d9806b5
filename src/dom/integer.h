// SPDX-License-Identifier: MIT
#ifndef QUXML_DOM_INTEGER_H
#define QUXML_DOM_INTEGER_H

#include <optional>
#include <string>
#include <string_view>

namespace quxml {

/// The number that a text begins with, as `std::stoi` reads it: leading white space is skipped, a sign is
/// allowed, and whatever follows the digits is ignored. Nothing if there is no number, which costs no
/// exception.
/// \throws std::out_of_range ("stoi") if the number is beyond the range of `int`.
std::optional<int> read_integer(std::string_view text);

/// The same where there has to be a number.
/// \throws std::invalid_argument ("stoi") if there is none.
/// \throws std::out_of_range ("stoi") if it is beyond the range of `int`.
int require_integer(std::string_view text);

/// A number in decimal, as `std::to_string` writes it.
std::string write_integer(int number);

}  // namespace quxml

#endif
