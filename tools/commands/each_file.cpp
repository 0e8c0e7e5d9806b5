// SPDX-License-Identifier: MIT

// With a single file everything is said at once. With several, what is said of each would be a flood: a note on a surprise
// holds for all of them, and that a path selects nothing in a file matters only in the end, when it is known whether it
// selects something in another. So notes are kept until a file is done, and files without a match until all are.

#include "commands/each_file.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>

#include "commands/file_arguments.h"
#include "terminal/Failure.h"
#include "terminal/Progress.h"
#include "terminal/files.h"
#include "terminal/messages.h"
#include "terminal/output.h"
#include "terminal/terminal.h"
#include "terminal/words.h"

namespace tool {

namespace {

/// A message, and the files that it is about.
struct Unmatched {
    std::string message;
    std::vector<std::string> files;
};

/// Such as "a.xml, b.xml, c.xml and 4 more".
std::string get_labels(const std::vector<std::string>& files) {
    constexpr std::size_t most = 3;
    std::string text;
    for (std::size_t i = 0; i != std::min(files.size(), most); ++i)
        text += (i == 0 ? "" : ", ") + get_label(files[i]);
    return files.size() > most ? text + " and " + std::to_string(files.size() - most) + " more" : text;
}

class EachFile {
public:
    EachFile(const std::vector<std::string>& all_files, const FileTask& task_of_each)
        : files(all_files), task(task_of_each) {}

    ExitCode run() {
        for (const std::string& file : files) {
            const FileProgress progress(done_with++, files.size());
            run(file);
        }
        if (has_several()) {
            report_unmatched();
            write_summary();
        }
        return get_code();
    }

private:
    bool has_several() const { return files.size() > 1; }

    void run(const std::string& file) {
        try {
            ++(task.act(file, choose_notes()) ? having : lacking);
            write_notes_once();
        } catch (const OutputFailure&) {
            throw;
        } catch (const Failure& failure) {
            take(file, failure);
        }
        notes.clear();
    }

    PathNotes choose_notes() {
        if (task.quiet)
            return {};
        if (has_several())
            return [this](const Note& note) { notes.push_back(note.text); };
        return [](const Note& note) { write_note(note.text); };
    }

    void write_notes_once() {
        for (const std::string& note : notes) {
            if (written.insert(note).second)
                write_note(note);
        }
    }

    void take(const std::string& file, const Failure& failure) {
        if (failure.get_code() == ExitCode::no_match) {
            ++unmatched;
            take_unmatched(file, failure.what());
            return;
        }
        ++failed;
        worst = std::max(worst, failure.get_code());
        write_notes_once();
        report(file, failure.what());
    }

    void take_unmatched(const std::string& file, const std::string& message) {
        if (!has_several())
            return report(file, message);
        if (reasons.empty()) {
            for (const std::string& note : notes)
                reasons.push_back(get_label(file) + ": " + note);
        }
        const auto same = std::find_if(messages.begin(), messages.end(),
                                       [&](const Unmatched& one) { return one.message == message; });
        if (same == messages.end())
            messages.push_back({message, {file}});
        else
            same->files.push_back(file);
    }

    /// Many messages begin with the file's name.
    void report(const std::string& file, const std::string& message) const {
        if (message.empty() || task.silent)
            return;
        const std::string label = get_label(file) + ": ";
        const bool is_named = !has_several() || begins_with(message, label) ||
                              begins_with(message, get_label(get_true_name(file)) + ": ");
        write_failure(is_named ? message : label + message);
    }

    /// If the path selects something in another file, it may well be meant to select nothing in these.
    void report_unmatched() const {
        const bool is_failure = having + lacking + failed == 0;
        if (is_failure)
            std::for_each(reasons.begin(), reasons.end(), write_note);
        for (const Unmatched& one : messages) {
            if (one.message.empty())
                continue;
            const std::string text = get_labels(one.files) + ": " + one.message;
            if (is_failure)
                write_failure(text);
            else if (!task.quiet)
                write_note(text);
        }
    }

    void write_summary() const {
        if (task.having == nullptr || task.quiet || !has_terminal())
            return;
        const std::vector<std::pair<std::size_t, const char*>> parts = {{having, task.having},
                                                                        {lacking, task.lacking},
                                                                        {unmatched, "without a match"},
                                                                        {failed, "failed"}};
        std::string text;
        for (const auto& [count, what] : parts) {
            if (count != 0)
                text += (text.empty() ? "" : ", ") + std::to_string(count) + ' ' + what;
        }
        write_failure(std::to_string(files.size()) + " files: " + text);
    }

    ExitCode get_code() const {
        if (worst != ExitCode::done)
            return worst;
        if (having + lacking == 0)
            return ExitCode::no_match;
        return having != 0 ? task.if_any : ExitCode::done;
    }

    const std::vector<std::string>& files;
    const FileTask& task;
    std::vector<std::string> notes;    // on the path, of the file at hand
    std::set<std::string> written;     // those of files before
    std::vector<std::string> reasons;  // why the path selects nothing in the first file where it does not
    std::vector<Unmatched> messages;
    std::size_t done_with = 0;
    std::size_t having = 0;
    std::size_t lacking = 0;
    std::size_t unmatched = 0;
    std::size_t failed = 0;
    ExitCode worst = ExitCode::done;
};

}  // namespace

ExitCode do_with_each(const std::vector<std::string>& files, const FileTask& task) {
    require_one_standard_input(files);
    return EachFile(files, task).run();
}

}  // namespace tool
