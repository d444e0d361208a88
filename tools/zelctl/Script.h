// SPDX-License-Identifier: MIT
#pragma once

#include "Session.h"

#include <string>
#include <vector>

/** The text that bytes of a line or an argument are. Fails for what is no UTF-8: a file name that
    was mended by replacing characters would be another file. */
QString FromUtf8(const QByteArray& bytes);

/** Words of a line: parted by blanks; in single or double quotes as they stand, but for \" and \\
    in double ones; from a "#" at the beginning of a word on it is a comment. Fails for a quote that
    is not closed. */
std::vector<std::string> SplitWords(const QString& line);

/** Carries out one line of a script or of the shell: any command, "echo TEXT" or "expect CODE
    COMMAND"; no words do nothing. */
t_Answer ExecuteWords(CSession& session, const std::vector<std::string>& words);

/** Writes a failure as the program does: a line on the standard error, or a document where the
    session's style asks for one. */
void ShowFailure(CSession& session, const CFailure& failure);

/** Reads lines from the terminal, or from a pipe without prompts, until the end or "quit". */
t_Answer RunShell(CSession& session);
