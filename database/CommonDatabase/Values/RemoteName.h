// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/** The word of remote control that a node's name makes: the short form as capitals, the rest in
    lower case. The model's generator has the same rule (tools/modelgen/remote.py). */
QString RemoteMnemonic(const QString& name);
