// SPDX-License-Identifier: MIT
#pragma once

#include "Session.h"

#include <QByteArray>
#include <memory>
#include <optional>

/** Reads lines from the standard input: in a terminal with a prompt, editing, history and
    completion where the program was built with them, else as they come. Each line of a terminal is
    kept when it is read, for this and later shells, in zelctl/history below $XDG_STATE_HOME, or
    ~/.local/state: however the shell ends. */
class CLineEditor
{
public:
    explicit CLineEditor(CSession& session);
    ~CLineEditor();
    CLineEditor(const CLineEditor&) = delete;
    CLineEditor& operator=(const CLineEditor&) = delete;

    /** The next line without its end; nothing at the end of the input. An interrupt at the prompt
        drops what was typed and gives an empty line. */
    std::optional<QByteArray> Read();
    static bool IsTerminal();

private:
    struct t_State;
    std::unique_ptr<t_State> m_state;
};
