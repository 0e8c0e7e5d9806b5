// SPDX-License-Identifier: MIT
#include "commands/argument_checks.h"

#include <libxml/tree.h>

#include <algorithm>
#include <charconv>
#include <system_error>

#include "terminal/Failure.h"
#include "terminal/words.h"

namespace tool {

namespace {

void require_no(const std::string& complaint, const std::string& argument) {
    if (!complaint.empty())
        throw Failure(ExitCode::usage, argument + ": " + complaint);
}

bool is_column(const std::string& text) {
    const std::string name = text.substr(begins_with(text, "@") ? 1 : 0);
    return text == "." || xmlValidateName(reinterpret_cast<const xmlChar*>(name.c_str()), 0) == 0;
}

}  // namespace

bool is_name(const std::string& text) {
    return xmlValidateNCName(reinterpret_cast<const xmlChar*>(text.c_str()), 0) == 0;
}

std::string check_name(const std::string& text) {
    return is_name(text) ? "" : '"' + text + "\" is not a name without a prefix";
}

std::string check_columns(const std::string& text) {
    for (const std::string& column : split_at_commas(text)) {
        if (!is_column(column))
            return quote(column) + " is not a column: write NAME, @NAME or a dot";
    }
    return "";
}

std::vector<std::string> split_at_commas(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t comma = text.find(','); comma != std::string::npos; comma = text.find(',', begin)) {
        parts.push_back(text.substr(begin, comma - begin));
        begin = comma + 1;
    }
    parts.push_back(text.substr(begin));
    return parts;
}

bool is_setting(const std::string& text) {
    const std::size_t equal_sign = text.find('=');
    return equal_sign != std::string::npos && is_name(text.substr(0, equal_sign));
}

std::string check_setting(const std::string& text) {
    if (begins_with(text, "xmlns="))
        return quote(text) + " would declare a namespace, which is not an attribute";
    return is_setting(text) ? "" : '"' + text + "\" is not NAME=VALUE, with a name without a prefix";
}

std::string check_number(const std::string& text) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (text.empty() || rest != end)
        return "expected a whole number, not " + quote(text);
    return error == std::errc() ? "" : quote(text) + " is beyond the numbers from -2147483648 to 2147483647";
}

void require_name(const std::string& argument, const std::string& text) {
    require_no(check_name(text), argument);
}

void require_setting(const std::string& argument, const std::string& text) {
    require_no(check_setting(text), argument);
}

void require_distinct(const std::string& argument, std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    const auto twice = std::adjacent_find(names.begin(), names.end());
    if (twice != names.end())
        require_no(quote(*twice) + " is given more than once", argument);
}

std::vector<std::string> get_setting_names(const std::vector<std::string>& settings) {
    std::vector<std::string> names;
    names.reserve(settings.size());
    for (const std::string& setting : settings)
        names.push_back(setting.substr(0, setting.find('=')));
    return names;
}

std::vector<std::pair<std::string, std::string>> split_settings(const std::vector<std::string>& settings) {
    std::vector<std::pair<std::string, std::string>> pairs;
    pairs.reserve(settings.size());
    for (const std::string& setting : settings) {
        const std::size_t equal_sign = setting.find('=');
        pairs.emplace_back(setting.substr(0, equal_sign), setting.substr(equal_sign + 1));
    }
    return pairs;
}

}  // namespace tool
