#include "names.h"

#include <libxml/tree.h>

#include "Failure.h"

namespace tool {

bool is_name(const std::string& text) {
    return xmlValidateNCName(reinterpret_cast<const xmlChar*>(text.c_str()), 0) == 0;
}

std::string check_name(const std::string& text) {
    return is_name(text) ? "" : '"' + text + "\" is no name without a prefix";
}

bool is_setting(const std::string& text) {
    const std::size_t equal_sign = text.find('=');
    return equal_sign != std::string::npos && is_name(text.substr(0, equal_sign));
}

std::string check_setting(const std::string& text) {
    return is_setting(text) ? "" : '"' + text + "\" is not NAME=VALUE, with a name without a prefix";
}

void require_name(const std::string& text) {
    const std::string complaint = check_name(text);
    if (!complaint.empty())
        throw Failure(ExitCode::usage, complaint);
}

void require_setting(const std::string& text) {
    const std::string complaint = check_setting(text);
    if (!complaint.empty())
        throw Failure(ExitCode::usage, complaint);
}

std::pair<std::string, std::string> split_setting(const std::string& setting) {
    const std::size_t equal_sign = setting.find('=');
    return {setting.substr(0, equal_sign), setting.substr(equal_sign + 1)};
}

}  // namespace tool
