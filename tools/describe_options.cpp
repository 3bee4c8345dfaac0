// Writes what the option table says in the words of a shell or of a manual page:
// describe_options bash|zsh|fish|man

#include <fmt/core.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "environment/CommandLine.h"

namespace {

using thermopix::CommandLineOption;

// Options for people; the others serve automated tests.
std::vector<CommandLineOption> publicOptions() {
    std::vector<CommandLineOption> found;
    for (const auto& option : thermopix::commandLineOptions()) {
        if (!option.flag.starts_with("--uitest-")) {
            found.push_back(option);
        }
    }
    return found;
}

std::string escaped(std::string_view text, std::string_view special) {
    std::string result;
    for (const char character : text) {
        if (special.find(character) != std::string_view::npos) {
            result += '\\';
        }
        result += character;
    }
    return result;
}

bool takesDirectory(const CommandLineOption& option) {
    return option.valueName == "DIRECTORY";
}

std::string bash() {
    std::string flags;
    std::string directories;
    for (const auto& option : publicOptions()) {
        flags += (flags.empty() ? "" : " ") + std::string(option.flag);
        if (takesDirectory(option)) {
            directories += (directories.empty() ? "" : "|") + std::string(option.flag);
        }
    }
    return fmt::format(
        "# bash completion for thermopix\n"
        "_thermopix() {{\n"
        "    local current=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD - 1]}}\n"
        "    case $previous in\n"
        "        {}) mapfile -t COMPREPLY < <(compgen -d -- \"$current\") ;;\n"
        "        *) mapfile -t COMPREPLY < <(compgen -W \"{}\" -- \"$current\") ;;\n"
        "    esac\n"
        "}}\n"
        "complete -o filenames -F _thermopix thermopix\n",
        directories, flags);
}

// In a word between single quotes, which ends and starts again around a quote.
std::string zshText(std::string_view text) {
    std::string result;
    for (const char character : escaped(text, "[]:")) {
        result += character == '\'' ? "'\\''" : std::string(1, character);
    }
    return result;
}

std::string zsh() {
    std::string text = "#compdef thermopix\n\n_arguments";
    for (const auto& option : publicOptions()) {
        const std::string value = option.valueName.empty() ? ""
                                  : takesDirectory(option) ? ":directory:_files -/"
                                                           : ":value:";
        text += fmt::format(" \\\n    '{}[{}]{}'", option.flag, zshText(option.help), value);
    }
    return text + "\n";
}

std::string fish() {
    std::string text = "complete -c thermopix -f\n";
    for (const auto& option : publicOptions()) {
        const std::string value = option.valueName.empty() ? ""
                                  : takesDirectory(option) ? " -x -a '(__fish_complete_directories)'"
                                                           : " -x";
        text += fmt::format("complete -c thermopix -l {}{} -d '{}'\n", option.flag.substr(2), value,
                            escaped(option.help, "'"));
    }
    return text;
}

// The list of the manual page's OPTIONS, in roff.
std::string manual() {
    std::string text;
    for (const auto& option : publicOptions()) {
        const std::string value = option.valueName.empty() ? "" : fmt::format(" \\fI{}\\fR", option.valueName);
        std::string help = escaped(option.help, "\\");
        text += fmt::format(".TP\n\\fB{}\\fR{}\n{}.\n", escaped(option.flag, "-"), value, help);
    }
    return text;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view form = argc == 2 ? argv[1] : "";
    std::string text;
    if (form == "bash") {
        text = bash();
    } else if (form == "zsh") {
        text = zsh();
    } else if (form == "fish") {
        text = fish();
    } else if (form == "man") {
        text = manual();
    } else {
        std::fputs("usage: describe_options bash|zsh|fish|man\n", stderr);
        return EXIT_FAILURE;
    }
    return std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
