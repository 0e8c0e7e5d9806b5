// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_VALUE_ERROR_H
#define QUXML_EXTRAS_VALUE_ERROR_H

#include <memory>
#include <stdexcept>
#include <string>

namespace quxml {
namespace extras {

/// A value of a document that is missing or is not what was asked for. `what()` says so in one line, for
/// example:
///
///     /settings/server/@port is "8o80", which is not an integer from 0 to 65535
class ValueError : public std::runtime_error {
public:
    /// \param place where the value stands, see `get_place`; copied.
    /// \param value as it is stored; empty if it is missing; copied.
    /// \param message what `what()` returns; copied.
    /// \throws std::bad_alloc
    ValueError(const std::string& place, const std::string& value, const std::string& message);

    /// Shares the texts with the other exception; so does assignment.
    ValueError(const ValueError&) noexcept = default;

    /// As the copy above.
    ValueError& operator=(const ValueError&) noexcept = default;

    ~ValueError() override;

    /// The path of the element (see `path_of`), and after it a slash, an at sign and the name for an attribute.
    /// Valid as long as the exception.
    const std::string& get_place() const noexcept;

    /// The value as it is stored; empty if it is missing. Valid as long as the exception.
    const std::string& get_value() const noexcept;

private:
    struct Parts {
        std::string place;
        std::string value;
    };

    std::shared_ptr<const Parts> parts;
};

}  // namespace extras
}  // namespace quxml

#endif
