// SPDX-License-Identifier: MIT
#pragma once

#include "Commands.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

/** One command line: all commands with their options, and the command that was chosen. */
class CCommandLine
{
public:
    /** Where a line stands decides which commands it may hold. */
    enum class ePLACE
    {
        Process, ///< the program's own arguments
        Session  ///< a line of a script or of the shell
    };

    /** Declares all commands of the place, or the one that is named `only`. */
    CCommandLine(CSession& session, ePLACE place, const std::string& only = {});

    CLI::App& GetApp() { return m_app; }
    const t_Style& GetStyle() const { return m_style; }
    /** False when no command of the place has the name that was given. */
    bool HasCommands() const;
    /** Reads the words behind the program's name; false when they asked for help, which is then
        shown. Fails for what is no command line, with the nearest command. */
    bool Parse(std::vector<std::string> words);
    t_Answer Run();

private:
    void SendText(const char* command, const QString& text);
    void RequireHistory() const;
    CFailure Explain(const CLI::ParseError& error);

    CSession& m_session;
    ePLACE m_place;
    t_Style m_style;
    t_Run m_run;
    CLI::App m_app;
};

/** The command lines of a session: each command is declared when a line first names it, alone, and
    serves all later lines. Reading the words of a line then costs what these words cost, not what
    all commands do. */
class CCommandLines
{
public:
    explicit CCommandLines(CSession& session) : m_session(session) {}

    /** The line that knows the command of these words; where they name none, the one with all. */
    CCommandLine& Get(const std::vector<std::string>& words);

private:
    CSession& m_session;
    std::map<std::string, std::unique_ptr<CCommandLine>> m_lines;
};
