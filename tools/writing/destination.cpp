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

ExitCode change_in_place(const Destination& destination, const Change& change) {
    const Original original = read_original(destination.file);
    const std::string changed = change(original.text);
    if (changed != original.text)
        replace_file(original, changed, destination.backup);
    return ExitCode::done;
}

ExitCode show_difference(const Destination& destination, const Change& change) {
    const std::string text = read_text(destination.file);
    std::string difference = get_unified_diff(destination.file, text, change(text));
    const bool is_different = !difference.empty();
    write_output(difference);
    return is_different ? ExitCode::no_match : ExitCode::done;
}

}  // namespace

ExitCode change_document(const Destination& destination, const Change& change) {
    if (destination.diff)
        return show_difference(destination, change);
    if (!destination.in_place) {
        std::string changed = change(read_text(destination.file));
        write_output(changed);
        return ExitCode::done;
    }
    if (destination.file == standard_input)
        throw Failure(ExitCode::usage, "--in-place needs a FILE");
    return change_in_place(destination, change);
}

}  // namespace tool
