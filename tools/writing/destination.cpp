// SPDX-License-Identifier: MIT
#include "writing/destination.h"

#include "reading/input.h"
#include "terminal/output.h"
#include "writing/replace_file.h"
#include "writing/unified_diff.h"

namespace tool {

namespace {

bool change_in_place(const WritingOptions& options, const std::string& file, const Change& change) {
    const Original original = read_original(file);
    const std::string changed = change(original.text);
    if (changed == original.text)
        return false;
    replace_file(original, changed, options.backup);
    return true;
}

bool show_difference(const std::string& file, const Change& change) {
    const std::string text = read_text(file);
    std::string difference = get_unified_diff(file, text, change(text));
    const bool is_different = !difference.empty();
    write_output(difference);
    return is_different;
}

bool show_changed(const std::string& file, const Change& change) {
    const std::string text = read_text(file);
    std::string changed = change(text);
    const bool is_different = changed != text;
    write_output(changed);
    return is_different;
}

}  // namespace

bool change_document(const WritingOptions& options, const std::string& file, const Change& change) {
    if (options.in_place)
        return change_in_place(options, file, change);
    return options.diff ? show_difference(file, change) : show_changed(file, change);
}

}  // namespace tool
