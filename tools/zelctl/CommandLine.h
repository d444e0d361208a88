// SPDX-License-Identifier: MIT
#pragma once

#include "Commands.h"

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

    CCommandLine(CSession& session, ePLACE place);

    CLI::App& GetApp() { return m_app; }
    const t_Style& GetStyle() const { return m_style; }
    /** Reads the words behind the program's name; false when they asked for help, which is then
        shown. Fails for what is no command line, with the nearest command. */
    bool Parse(std::vector<std::string> words);
    t_Answer Run();

private:
    CFailure Explain(const CLI::ParseError& error);

    CSession& m_session;
    ePLACE m_place;
    t_Style m_style;
    t_Run m_run;
    CLI::App m_app;
};
