// SPDX-License-Identifier: MIT
#pragma once

#include "Session.h"

#include <string>
#include <vector>

/** Whether the words of the program ask for a tree that a service serves: "--connect" before the
    command. */
bool IsConnected(const std::vector<std::string>& words);

/** Carries out the command of the words on that tree. */
t_Answer RunConnected(CSession& session, std::vector<std::string> words);
