// SPDX-License-Identifier: MIT
#include "manual/completion.h"

#include <algorithm>
#include <string>
#include <vector>

#include "manual/help.h"

namespace tool {

namespace {

std::string join(const std::vector<std::string>& words, const char* separator) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : separator) + word;
    return text;
}

std::string get_words(const CLI::App& command) {
    std::vector<std::string> words;
    for (const CLI::Option* option : get_options(command)) {
        for (const std::string& name : get_names(*option))
            words.push_back(name);
    }
    return join(words, " ");
}

std::string get_command_words(const CLI::App& app) {
    std::vector<std::string> words;
    for (const CLI::App* command : get_commands(app))
        words.push_back(command->get_name());
    return join(words, " ");
}

/// Whether a command asks a file with a path.
bool has_path_and_file(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* argument : get_arguments(command))
        names.push_back(argument->get_name(true));
    return std::count(names.begin(), names.end(), "PATH") != 0 &&
           std::count(names.begin(), names.end(), "FILE") != 0;
}

std::string get_asking_commands(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : get_commands(app)) {
        if (has_path_and_file(*command))
            names.push_back(command->get_name());
    }
    return join(names, " | ");
}

// ---- bash ----

/// The program lists how the path may go on in the file that stands after it, or after <. Outside of quotes the shell
/// completes only what follows the last @ = or :, and backslashes stand before what means something to it.
constexpr const char* paths_in_bash =
    "_quxml_paths() {\n"
    "    local typed=${COMP_LINE:0:COMP_POINT} head='' file i\n"
    "    for ((i = 2; i < ${#COMP_WORDS[@]}; ++i)); do\n"
    "        file=${COMP_WORDS[i]//[\\\"\\'\\\\]/}\n"
    "        if ((i > COMP_CWORD)) || { ((i < COMP_CWORD)) && [ \"${COMP_WORDS[i - 1]}\" = '<' ]; }; then\n"
    "            [ -f \"$file\" ] && break\n"
    "        fi\n"
    "        file=\n"
    "    done\n"
    "    [ -n \"$file\" ] || return\n"
    "    typed=${typed##*[[:blank:]]}\n"
    "    case $typed in\n"
    "        [\\\"\\']*) typed=${typed:1} ;;\n"
    "        *)\n"
    "            typed=${typed//\\\\/}\n"
    "            head=${typed%\"${typed##*[@=:]}\"}\n"
    "            ;;\n"
    "    esac\n"
    "    mapfile -t COMPREPLY < <(\"${COMP_WORDS[0]}\" complete -- \"$typed\" \"$file\" 2>/dev/null)\n"
    "    COMPREPLY=(\"${COMPREPLY[@]#\"$head\"}\")\n"
    "    compopt -o nospace 2>/dev/null\n"
    "}\n";

// ---- zsh ----

/// Between single quotes; brackets and colons mean something to _arguments.
std::string escape_for_zsh(const std::string& text) {
    std::string escaped;
    for (const char character : text) {
        if (character == '\'')
            escaped += "'\\''";
        else if (character == '[' || character == ']' || character == ':')
            escaped += std::string("\\") + character;
        else
            escaped += character;
    }
    return escaped;
}

std::string get_zsh_value(const CLI::Option& option) {
    const std::string value = get_value_name(option);
    if (value.empty())
        return "";
    return value[0] == '[' ? "::suffix:" : ':' + escape_for_zsh(value) + ':';
}

std::string get_zsh_option(const CLI::Option& option) {
    std::string text;
    for (const std::string& name : get_names(option)) {
        const bool has_suffix = get_value_name(option)[0] == '[' && name.size() > 2;
        text += " \\\n                '" + name + (has_suffix ? "=-" : "") + '[' +
                escape_for_zsh(option.get_description()) + ']' + get_zsh_value(option) + '\'';
    }
    return text;
}

std::string get_zsh_command(const CLI::App& command) {
    std::string text = "        " + command.get_name() + ")\n            _arguments";
    for (const CLI::Option* option : get_options(command))
        text += get_zsh_option(*option);
    const std::string argument = has_path_and_file(command) ? "_quxml_paths" : "_files";
    return text + " \\\n                '*:argument:" + argument + "'\n            ;;\n";
}

/// The same as for bash.
constexpr const char* paths_in_zsh =
    "_quxml_paths() {\n"
    "    local file i\n"
    "    local -a found\n"
    "    for ((i = CURRENT + 1; i <= $#words; ++i)); do\n"
    "        file=${(Q)words[i]}\n"
    "        [[ -f $file ]] && break\n"
    "        file=\n"
    "    done\n"
    "    [[ -n $file ]] && found=(${(f)\"$(${(Q)words[1]} complete -- \"${(Q)PREFIX}\" \"$file\" "
    "2>/dev/null)\"})\n"
    "    if (($#found)); then\n"
    "        compadd -S '' -a found\n"
    "    else\n"
    "        _files\n"
    "    fi\n"
    "}\n";

}  // namespace

std::string get_bash_completion(const CLI::App& app) {
    std::string text = std::string("# bash completion for quxml\n") + paths_in_bash +
                       "_quxml() {\n"
                       "    local current=${COMP_WORDS[COMP_CWORD]} words=\n"
                       "    COMPREPLY=()\n"
                       "    case $COMP_CWORD:${COMP_WORDS[1]} in\n"
                       "        1:*) words=\"" +
                       get_command_words(app) + ' ' + get_words(app) + "\" ;;\n";
    for (const CLI::App* command : get_commands(app))
        text += "        *:" + command->get_name() + ") words=\"" + get_words(*command) + "\" ;;\n";
    return text +
           "    esac\n"
           "    if [ \"$COMP_CWORD\" -gt 1 ] && [ \"${current:0:1}\" != - ]; then\n"
           "        case ${COMP_WORDS[1]} in\n"
           "            " +
           get_asking_commands(app) +
           ") _quxml_paths ;;\n"
           "        esac\n"
           "        [ \"${#COMPREPLY[@]}\" -gt 0 ] || mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
           "    else\n"
           "        mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
           "    fi\n"
           "}\n"
           "complete -o filenames -F _quxml quxml\n";
}

std::string get_zsh_completion(const CLI::App& app) {
    std::string text = std::string("#compdef quxml\n") + paths_in_zsh +
                       "_quxml() {\n"
                       "    local -a commands\n"
                       "    commands=(\n";
    for (const CLI::App* command : get_commands(app))
        text += "        '" + command->get_name() + ':' + escape_for_zsh(command->get_description()) + "'\n";
    text +=
        "    )\n"
        "    if ((CURRENT == 2)); then\n"
        "        _describe command commands\n"
        "        return\n"
        "    fi\n"
        "    case $words[2] in\n";
    for (const CLI::App* command : get_commands(app))
        text += get_zsh_command(*command);
    return text +
           "    esac\n"
           "}\n"
           "_quxml \"$@\"\n";
}

}  // namespace tool
