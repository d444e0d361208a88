// SPDX-License-Identifier: MIT
#pragma once

#include "Session.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <string>

/** What a line of words asks for. */
struct t_Run
{
    std::string only;                           ///< the one command to declare; all when empty
    std::function<t_Answer(CSession&)> command; ///< the command whose words have been read

    bool Declares(const char* name) const { return only.empty() || only == name; }
};

inline QString ToText(const std::string& text)
{
    return QString::fromStdString(text);
}

/** As AddCommand, of a command that consists of several. */
template <typename TOptions>
void AddSubcommand(CLI::App& app, t_Run& run, const char* name, const char* brief,
                   const char* footer)
{
    const auto options = std::make_shared<TOptions>();
    CLI::App* const command = app.add_subcommand(name, brief);
    command->footer(footer);
    options->Declare(*command);
    command->preparse_callback([options](std::size_t) { *options = TOptions(); });
    command->callback(
        [options, &run]
        { run.command = [chosen = *options](CSession& session) { return chosen.Run(session); }; });
}

/**
 * Adds a command, where `run` wants it declared. Its words are read into an object of TOptions,
 * which has `void Declare(CLI::App&)` to bind them and `t_Answer Run(CSession&) const` to carry the
 * command out. Declarations serve many lines: each begins with a TOptions as it is constructed, and
 * what it has chosen is a copy, which a script that runs a script keeps.
 */
template <typename TOptions>
void AddCommand(CLI::App& app, t_Run& run, const char* name, const char* brief, const char* footer)
{
    if (run.Declares(name))
    {
        AddSubcommand<TOptions>(app, run, name, brief, footer);
    }
}

/** "tree" and "find". */
void AddTreeCommands(CLI::App& app, t_Run& run);
void AddPropertyCommands(CLI::App& app, t_Run& run);
/** "reset" and "step". */
void AddResetCommands(CLI::App& app, t_Run& run);
void AddEnumCommand(CLI::App& app, t_Run& run);
void AddFileCommands(CLI::App& app, t_Run& run);
void AddEditCommands(CLI::App& app, t_Run& run);
void AddCalcCommand(CLI::App& app, t_Run& run);
/** "labels", which consists of several. */
void AddLabelsCommand(CLI::App& app, t_Run& run);
/** "wave", which consists of several. */
void AddWaveCommand(CLI::App& app, t_Run& run);
/** "mask", which consists of several. */
void AddMaskCommand(CLI::App& app, t_Run& run);
void AddMathCommand(CLI::App& app, t_Run& run);
/** "couplings" and "why". */
void AddCouplingCommands(CLI::App& app, t_Run& run);
void AddWatchCommand(CLI::App& app, t_Run& run);
/** "complete", which no help lists. */
void AddCompleteCommand(CLI::App& app, t_Run& run);
void AddScriptCommands(CLI::App& app, t_Run& run);
/** "undo", "redo" and "history", which need a tree that was there before. */
void AddReplayCommands(CLI::App& app, t_Run& run);
/** Commands that make sense only where several share one process. */
void AddSessionCommands(CLI::App& app, t_Run& run);
