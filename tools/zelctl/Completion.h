// SPDX-License-Identifier: MIT
#pragma once

#include "CommandLine.h"

#include <QStringList>

/** What may stand at the end of a line that has been typed so far. */
struct t_Completion
{
    int begin = 0;          ///< where in the line the word begins that the candidates replace
    QStringList candidates; ///< whole words; one that can not go on ends in a blank
};

/** Completes commands, options, paths, values of properties and file names. */
t_Completion Complete(CSession& session, const QString& line,
                      CCommandLine::ePLACE place = CCommandLine::ePLACE::Session);

/** Longest beginning that all texts share. */
QString GetCommonBeginning(const QStringList& texts);
