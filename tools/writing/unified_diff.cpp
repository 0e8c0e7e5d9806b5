// SPDX-License-Identifier: MIT
#include "writing/unified_diff.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "terminal/colours.h"
#include "writing/line_differences.h"

namespace tool {

namespace {

constexpr std::size_t lines_around = 3;

using Lines = std::vector<std::string_view>;
using Differences = std::vector<LineDifference>;

/// With their line feeds.
Lines get_lines(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

/// As "diff" does it: a name that "patch" might take for something else stands between quotes.
std::string get_name(const std::string& file) {
    const bool is_plain = std::all_of(file.begin(), file.end(), [](char byte) {
        return byte != '"' && byte != '\\' && static_cast<unsigned char>(byte) >= ' ';
    });
    if (is_plain)
        return file.find(' ') == std::string::npos ? file : file + '\t';
    std::string name = "\"";
    for (const char byte : file) {
        if (byte == '"' || byte == '\\') {
            name += '\\';
            name += byte;
        } else if (static_cast<unsigned char>(byte) < ' ') {
            const unsigned number = static_cast<unsigned char>(byte);
            name += {'\\', static_cast<char>('0' + number / 64), static_cast<char>('0' + number / 8 % 8),
                     static_cast<char>('0' + number % 8)};
        } else {
            name += byte;
        }
    }
    return name + '"';
}

std::string get_range(std::size_t begin, std::size_t end) {
    const std::size_t size = end - begin;
    const std::string first = std::to_string(size == 0 ? begin : begin + 1);
    return size == 1 ? first : first + ',' + std::to_string(size);
}

class Writer {
public:
    Writer(const Lines& some, const Lines& more, bool with_colours)
        : lines(some), others(more), has_colour(with_colours) {}

    void write_names(const std::string& name) {
        write_coloured(Colour::bold, "--- " + name);
        write_coloured(Colour::bold, "+++ " + name);
    }

    /// Differences that are close to each other, with the lines around them.
    void write_hunk(Differences::const_iterator first, Differences::const_iterator end) {
        const LineDifference& last = *(end - 1);
        const std::size_t before = std::min(first->begin, lines_around);
        const std::size_t after = std::min(lines.size() - last.end, lines_around);
        write_coloured(Colour::cyan, "@@ -" + get_range(first->begin - before, last.end + after) + " +" +
                                         get_range(first->other_begin - before, last.other_end + after) +
                                         " @@");
        std::size_t line = first->begin - before;
        for (; first != end; ++first) {
            write_lines(lines, line, first->begin, ' ', Colour::plain);
            write_lines(lines, first->begin, first->end, '-', Colour::red);
            write_lines(others, first->other_begin, first->other_end, '+', Colour::green);
            line = first->end;
        }
        write_lines(lines, line, line + after, ' ', Colour::plain);
    }

    std::string take() { return std::move(out); }

private:
    void write_coloured(Colour colour, const std::string& line) {
        out += (has_colour ? in_colour(colour, line) : line) + '\n';
    }

    void write_lines(const Lines& from, std::size_t begin, std::size_t end, char sign, Colour colour) {
        for (; begin != end; ++begin) {
            const std::string_view line = from[begin];
            const bool is_whole = line.back() == '\n';
            write_coloured(colour, sign + std::string(line.substr(0, line.size() - (is_whole ? 1 : 0))));
            if (!is_whole)
                write_coloured(Colour::plain, "\\ No newline at end of file");
        }
    }

    const Lines& lines;
    const Lines& others;
    bool has_colour;
    std::string out;
};

}  // namespace

std::string get_unified_diff(const std::string& file, const std::string& before, const std::string& after) {
    if (before == after)
        return "";
    const Lines lines = get_lines(before);
    const Lines others = get_lines(after);
    const Differences differences = find_line_differences(lines, others);
    Writer writer(lines, others, has_colours(STDOUT_FILENO));
    writer.write_names(get_name(file));
    for (auto first = differences.begin(); first != differences.end();) {
        const auto is_far = [](const LineDifference& one, const LineDifference& next) {
            return next.begin - one.end > 2 * lines_around;
        };
        const auto last = std::adjacent_find(first, differences.end(), is_far);
        const auto end = last == differences.end() ? last : last + 1;
        writer.write_hunk(first, end);
        first = end;
    }
    return writer.take();
}

}  // namespace tool
