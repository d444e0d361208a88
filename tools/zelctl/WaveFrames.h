// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Frames.h"

#include <QJsonArray>
#include <QStringList>

/** Frames of a trace as lines: time, bus, identifier, bytes and what was wrong; of many the first
    ones, and how many more there are. */
QStringList GetFrameLines(const CKWRecord& record, UINT32 trace);

/** All frames of a trace. */
QJsonArray GetFrameObjects(const CKWRecord& record, UINT32 trace);
