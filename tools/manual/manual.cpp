// SPDX-License-Identifier: MIT
#include "manual/manual.h"

#include <sstream>
#include <string>

#include "manual/help.h"

namespace tool {

namespace {

constexpr const char* examples = "\nExamples:\n";

/// No character of it means anything to troff.
std::string to_troff(const std::string& text) {
    std::string escaped;
    for (const char character : text) {
        if (character == '\\')
            escaped += "\\e";
        else if (character == '-')
            escaped += "\\-";
        else if (character == '\'')
            escaped += "\\(aq";
        else
            escaped += character;
    }
    return escaped;
}

/// At the beginning of a line a dot would be a request.
std::string line(const std::string& text) {
    return (text[0] == '.' ? "\\&" : "") + to_troff(text) + '\n';
}

std::string lines(const std::string& text) {
    std::istringstream in(text);
    std::string out;
    for (std::string one; std::getline(in, one);)
        out += one.empty() ? ".PP\n" : line(one);
    return out;
}

/// Text whose lines stay as they are.
std::string verbatim(const std::string& text) {
    std::istringstream in(text);
    std::string out = ".PP\n.nf\n";
    for (std::string one; std::getline(in, one);)
        out += line(one);
    return out + ".fi\n";
}

/// Lines that begin with blanks are a table.
std::string paragraph(const std::string& text) {
    std::istringstream in(text);
    std::string out;
    bool is_table = false;
    for (std::string one; std::getline(in, one);) {
        const bool is_row = one[0] == ' ';
        if (is_row != is_table)
            out += is_row ? ".PP\n.nf\n" : ".fi\n.PP\n";
        is_table = is_row;
        out += line(one);
    }
    return out + (is_table ? ".fi\n" : "");
}

std::string get_option_entry(const CLI::Option& option) {
    std::string names;
    for (const std::string& name : get_names(option))
        names += (names.empty() ? "" : ", ") + ("\\fB" + to_troff(name) + "\\fR");
    const std::string value = get_value_name(option);
    if (!value.empty())
        names += (value[0] == '[' ? "" : " ") + ("\\fI" + to_troff(value) + "\\fR");
    return ".TP\n" + names + '\n' + line(option.get_description());
}

std::string get_argument_entry(const CLI::Option& argument) {
    return ".TP\n\\fI" + to_troff(argument.get_name(true)) + "\\fR\n" + line(argument.get_description());
}

std::string get_footer_part(const std::string& footer) {
    const std::size_t end = footer.find(examples);
    if (end == std::string::npos)
        return ".PP\n" + paragraph(footer);
    return ".PP\n" + paragraph(footer.substr(0, end)) + ".PP\nExamples:\n" +
           verbatim(footer.substr(end + std::string(examples).size()));
}

std::string get_command_part(const CLI::App& command) {
    std::string text =
        ".SS \"" + to_troff(get_synopsis(command)) + "\"\n" + line(command.get_description() + '.');
    for (const CLI::Option* argument : get_arguments(command))
        text += get_argument_entry(*argument);
    for (const CLI::Option* option : get_options(command)) {
        if (get_names(*option).back() != "--help")
            text += get_option_entry(*option);
    }
    return text + get_footer_part(command.get_footer());
}

constexpr const char* paths =
    "PATH is made of steps between slashes; it is cut at every / [ and ], also between quotes.\n"
    "  /a/b            the children b of the root element a; a/b is the same\n"
    "  //b             b anywhere\n"
    "  /a//b           b anywhere below a\n"
    "  /a/b/           all that is in b, its text too\n"
    "  /a/*            any node in a\n"
    "  /a/b[@n='v']    those whose attribute n is v; [@n] those that have it\n"
    "  /a/b[c='v']     those with a child c whose text is v\n"
    "  /a/b[2]         those whose attribute \"item\" is 2\n"
    "  //b[@n=$V]      those whose attribute n is what --arg V=VALUE says\n"
    "  /a/b[last()]    the last; [last()-1] the one before\n"
    "  /a/b[position()=2]    the second; [position()<2] those before it\n"
    "They look like XPath but sometimes mean something else:\n"
    "  - //b stops at the first b down each branch, which only \"quxml explain\" points out;\n"
    "    //* at the end of a path finds all nodes, texts too.\n"
    "  - [2] is not a position. [1] also selects the first of namesakes without an item.\n"
    "  - [position()>1] leaves out the last; <= and >= are not known.\n"
    "  - In the first step and after // only one predicate counts, and no position;\n"
    "    an attribute is compared as in [@n =v]: a blank before =, and no quotes.\n"
    "  - [@n=''] after a single / only asks for the attribute, and [] for nothing. Commands that\n"
    "    change documents refuse both, and a [ without its ], with 4.\n"
    "  - No value in a path can hold / [ or ], and often no = and no quotes. For such a value, and for\n"
    "    any that a script does not know, write $V as all that is compared, without quotes, and give it\n"
    "    with --arg V=VALUE: [@n=$V], [c=$V] or, for the attribute \"item\", [$V], alike after / and //.\n"
    "    Put the path between single quotes, or the shell will take $V. Without --arg a $ means nothing.\n"
    "  - There are no .. and |, no axes, no text(), no != and no \"and\", and no\n"
    "    functions but last() and position(). Attributes are not selected, but written\n"
    "    by query --attribute.\n"
    "  - Names of steps are compared without regard to case, but only of ASCII letters,\n"
    "    whatever the locale; names and values in predicates exactly.\n"
    "With a FILE after it, bash and zsh complete PATH: names of elements, and of attributes after [@.\n"
    "\"quxml explain\" shows how a path is taken and where that is a surprise. Commands that change\n"
    "documents warn of surprises as well, and so does query.\n";

constexpr const char* limits =
    "Documents that go beyond limits of libxml2 are refused, with 3:\n"
    "  too many levels of elements: with libxml2 2.9.14, more than 257\n"
    "  names of more than 50,000 bytes\n"
    "  values of attributes of nearly 10,000,000 bytes or more\n";

constexpr const char* several_files =
    "All commands but explain and diff take several FILEs, and do one after the other; - is standard input.\n"
    "One that fails is reported and does not stop the others. The exit code is the highest of 5, 4 and 3\n"
    "that any of them gives; else 0 if PATH selects something in any, and 1 if it does in none. With --diff\n"
    "it is 1 if any FILE would change.\n"
    "  - Commands that change documents want -i or --diff then, and otherwise exit with 2: documents one\n"
    "    after the other are not a document. Each FILE is changed as a whole or not at all.\n"
    "  - They refuse with 2 a FILE that is there twice, be it by another name. A FILE in which PATH selects\n"
    "    nothing stays as it is; a note lists all such FILEs in the end.\n"
    "  - A word that could be a FILE and something else, as where a pattern of the shell stands and PATH,\n"
    "    NAME or VALUE is missing, is refused with 2 before anything is changed. How set and unset know\n"
    "    which words are FILEs is described with them.\n"
    "  - A PATH that is refused with 4 whatever a document holds is refused before any FILE is read.\n"
    "  - A note on PATH is written once. Why it selects nothing is said only if it selects nothing in any\n"
    "    FILE, and of the first of them.\n"
    "  - On a terminal, the last line counts the FILEs, unless --quiet is given; and if the work takes\n"
    "    longer than a second, a bar shows how many of them are done.\n";

constexpr const char* sections =
    ".SH \"ERRORS IN DOCUMENTS\"\n"
    "Errors of parsing are shown as FILE:LINE:COLUMN: error: TEXT, the first one first, with the line\n"
    "and a caret. Columns count characters. Later errors often follow from the first.\n"
    ".SH \"EDITING IN PLACE\"\n"
    "With \\fB\\-i\\fR the new text is written to a new file in the folder of FILE, which gets the name\n"
    "of FILE once it has reached the disk. So FILE is whole at any moment, old or new. What is not a\n"
    "regular file, such as a folder, a device or a pipe, is refused with 5. Mode and owner\n"
    "stay, and symbolic links are followed; other hard links keep the old text, and access lists and\n"
    "extended attributes are not kept. FILE is not touched if nothing changes, if something of it\n"
    "would be lost with \\fB\\-\\-canonical\\fR (\\fB\\-\\-lossy\\fR overrules this), if the result would "
    "not be read back as it is,\n"
    "or if someone else changes it in the meantime. Another process of this program is waited for, up to\n"
    "10 seconds. A new file that a killed process left behind has a "
    "name\n"
    "that begins with .quxml\\-.\n"
    ".PP\n"
    "With \\fB\\-\\-backup\\fR the old text stays beside the file, that is beside the target of a link,\n"
    "and takes the place of an older backup.\n"
    ".SH ENVIRONMENT\n"
    ".TP\n"
    "\\fBNO_COLOR\\fR\n"
    "If it is not empty, nothing is coloured. Colours are used on terminals only.\n"
    ".TP\n"
    "\\fBTERM\\fR\n"
    "Nothing is coloured if it is \"dumb\".\n";

}  // namespace

std::string get_manual(const CLI::App& app, const std::string& version) {
    std::string text = R"(.TH QUXML 1 "" ")" + to_troff(version) + "\" \"User Commands\"\n";
    text += ".SH NAME\nquxml \\- look into XML documents and change them\n";
    text += ".SH SYNOPSIS\n\\fBquxml\\fR \\fICOMMAND\\fR [\\fIOPTIONS\\fR] \\fIARGUMENTS\\fR\n";
    text += ".SH DESCRIPTION\n" + lines(app.get_description());
    text += ".SH COMMANDS\n";
    for (const CLI::App* command : get_commands(app))
        text += get_command_part(*command);
    text += ".SH PATHS\n" + paragraph(paths);
    text += ".SH \"SEVERAL FILES\"\n" + paragraph(several_files);
    text += sections;
    text += ".SH LIMITS\n" + paragraph(limits);
    const std::string footer = app.get_footer();
    text += ".SH \"EXIT STATUS\"\n" + verbatim(footer.substr(footer.find('\n') + 1));
    return text;
}

}  // namespace tool
