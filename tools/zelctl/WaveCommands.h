// SPDX-License-Identifier: MIT
#pragma once

#include "Commands.h"
#include "WaveFile.h"

/** Words that commands with files of samples share. */
///@{
void DeclareChannels(CLI::App& command, std::vector<std::string>& channels);
void DeclareInterval(CLI::App& command, std::string& interval);
t_WaveOptions ReadWaveOptions(const std::string& interval);
/** The answer with what there was to say of the files: status and code 1 where there is any. */
t_Answer SendWithNotes(CSession& session, CReply& reply, const QStringList& notes);
///@}

/** What a record is, and a drawing of it: lines, or a file where it has a name. */
void AddWavePicture(CSession& session, const CKWRecord& record, const QString& svg, CReply& reply);

/** "show" and "info" below "wave". */
void AddWaveShow(CLI::App& wave, t_Run& run);
