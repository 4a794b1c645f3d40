#pragma once
/* What the command lines of the programs have in common; for programs that use CLI11. */

#include <functional>
#include <string>

#include <CLI/CLI.hpp>

#include "text.h"

namespace vesk_port {

/* The exit code of every command line that makes no sense. */
inline constexpr int kMisused = 2;

namespace command_line {

inline std::string names_of_commands(const CLI::App &command)
{
    std::string names;
    for (const CLI::App *each : command.get_subcommands(std::function<bool(const CLI::App *)>()))
        names.append(names.empty() ? "" : ", ").append(each->get_name());
    return names;
}

/* What is wrong, for a word that nobody took or one that is missing. */
inline std::string explain(const CLI::App &program, const CLI::Error &error)
{
    const CLI::App *command = &program;
    std::string path = program.get_name();
    while (!command->get_subcommands().empty()) {
        command = command->get_subcommands().back();
        path += " " + command->get_name();
    }
    const std::string commands = names_of_commands(*command);
    const auto words = program.remaining(true);
    if (words.empty() && !commands.empty())
        return "a command is missing; use " + commands;
    if (words.empty())
        return std::string(error.what()) + "; see " + path + " --help";
    const std::string word = in_quotes(words.front());
    if (words.front().size() > 1 && words.front().front() == '-')
        return "unknown option " + word + "; see " + path + " --help";
    if (!commands.empty())
        return "unknown command " + word + "; use " + commands;
    return "unexpected argument " + word + "; see " + path + " --help";
}

} // namespace command_line

/* One line for a command line that cannot be understood; to be set as the program's failure_message(). */
inline std::string usage_message(const CLI::App *program, const CLI::Error &error)
{
    const int code = error.get_exit_code();
    const bool about_words = code == static_cast<int>(CLI::ExitCodes::ExtrasError) ||
                             code == static_cast<int>(CLI::ExitCodes::RequiredError);
    const std::string sentence = about_words ? command_line::explain(*program, error) : error.what();
    return program->get_name() + ": " + short_message(sentence) + "\n";
}

} // namespace vesk_port
