// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_TEXT_VIEW_H
#define QUXML_EXTRAS_TEXT_VIEW_H

#include <cstddef>
#include <cstring>
#include <string>
#include <type_traits>
#if __cplusplus >= 201703L
#include <string_view>
#endif

namespace quxml {
namespace extras {

/// A name or a value that somebody else holds: a literal, a `std::string` or, from C++17 on, a
/// `std::string_view` can be passed wherever one is asked for, and nothing is copied.
/// \par Lifetime
/// Valid as long as what it was made from; functions that keep it longer than their own call say so.
class TextView {
public:
    /// Linear in the length.
    /// \param text ends with a zero byte; not null.
    TextView(const char* text) noexcept : first(text), count(std::strlen(text)) {}

    /// All of a string, zero bytes included.
    TextView(const std::string& text) noexcept : first(text.data()), count(text.size()) {}

#if __cplusplus >= 201703L
    /// The same of a view, which does not have to end with a zero byte.
    TextView(std::string_view text) noexcept : first(text.data()), count(text.size()) {}
#endif

    /// The first byte, borrowed. No zero byte has to follow the last one.
    const char* data() const noexcept {
        return first;
    }

    /// In bytes.
    std::size_t size() const noexcept {
        return count;
    }

    /// A copy.
    /// \throws std::bad_alloc
    std::string str() const {
        return std::string(first, count);
    }

    /// Whether the bytes are the same.
    bool equals(const std::string& text) const noexcept {
        return text.size() == count && std::memcmp(text.data(), first, count) == 0;
    }

private:
    const char* first;
    std::size_t count;
};

/// What holds a value of type `T`: a `std::string` for text in any form, such as a literal or a view.
template <class T>
using Held = typename std::conditional<std::is_convertible<const T&, TextView>::value &&
                                           !std::is_same<T, std::nullptr_t>::value,
                                       std::string, T>::type;

/// A name that is kept for longer than the call that takes it: the same, but a temporary `std::string` is refused
/// by the compiler.
class LastingName : public TextView {
public:
    /// \param text ends with a zero byte; borrowed, not null.
    LastingName(const char* text) noexcept : TextView(text) {}

    /// \param text borrowed.
    LastingName(const std::string& text) noexcept : TextView(text) {}

    /// A temporary string would be gone before the name is used.
    LastingName(std::string&& text) = delete;

#if __cplusplus >= 201703L
    /// \param text borrowed; what it is a view of must not be a temporary, which the compiler cannot see.
    LastingName(std::string_view text) noexcept : TextView(text) {}
#endif
};

}  // namespace extras
}  // namespace quxml

#endif
