#include "manual/completion.h"

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
    return text + " \\\n                '*:argument:_files'\n            ;;\n";
}

}  // namespace

std::string get_bash_completion(const CLI::App& app) {
    std::string text =
        "# bash completion for quxml\n"
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
           "        mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
           "    else\n"
           "        mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
           "    fi\n"
           "}\n"
           "complete -o filenames -F _quxml quxml\n";
}

std::string get_zsh_completion(const CLI::App& app) {
    std::string text =
        "#compdef quxml\n"
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
