// SPDX-License-Identifier: MIT
#pragma once

#include "Session.h"

#include <QString>
#include <memory>
#include <optional>

/** Reads lines from the standard input: in a terminal with a prompt, editing, history and
    completion where the program was built with them, else as they come. The lines of a terminal are
    kept for the next shell in zelctl/history below $XDG_STATE_HOME, or ~/.local/state. */
class CLineEditor
{
public:
    explicit CLineEditor(CSession& session);
    ~CLineEditor();
    CLineEditor(const CLineEditor&) = delete;
    CLineEditor& operator=(const CLineEditor&) = delete;

    /** The next line without its end; nothing at the end of the input. */
    std::optional<QString> Read();
    static bool IsTerminal();

private:
    struct t_State;
    std::unique_ptr<t_State> m_state;
};
