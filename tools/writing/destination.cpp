// SPDX-License-Identifier: MIT
#include "writing/destination.h"

#include "reading/input.h"
#include "terminal/Failure.h"
#include "terminal/output.h"
#include "terminal/words.h"
#include "writing/replace_file.h"
#include "writing/unified_diff.h"

namespace tool {

namespace {

ExitCode change_in_place(const WritingOptions& options, const Change& change) {
    const Original original = read_original(options.file);
    const std::string changed = change(original.text);
    if (changed != original.text)
        replace_file(original, changed, options.backup);
    return ExitCode::done;
}

ExitCode show_difference(const WritingOptions& options, const Change& change) {
    const std::string text = read_text(options.file);
    std::string difference = get_unified_diff(options.file, text, change(text));
    const bool is_different = !difference.empty();
    write_output(difference);
    return is_different ? ExitCode::no_match : ExitCode::done;
}

}  // namespace

ExitCode change_document(const WritingOptions& options, const Change& change) {
    if (options.diff)
        return show_difference(options, change);
    if (!options.in_place) {
        std::string changed = change(read_text(options.file));
        write_output(changed);
        return ExitCode::done;
    }
    if (options.file == standard_input)
        throw Failure(ExitCode::usage, "--in-place needs a FILE");
    return change_in_place(options, change);
}

}  // namespace tool
