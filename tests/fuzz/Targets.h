// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/**
 * What the fuzzers try, one function for each folder of the corpus: KW_Try<folder>. Each takes any
 * bytes and ends the program when what it promises does not hold, as a fuzzer wants it.
 */

/** The bytes are a settings file for a fresh tree: a refusal says why, and a tree that a file
    brought about is saved and read back the same. */
void KW_TrySettingsXml(const QByteArray& text);
void KW_TrySettingsCsv(const QByteArray& text);

/** The bytes are a label list: a refusal says why, and what was read is written and read back the
    same; of XML and CSV without any loss. */
void KW_TryLabelDbc(const QByteArray& text);
void KW_TryLabelXml(const QByteArray& text);
void KW_TryLabelCsv(const QByteArray& text);

/** The bytes are a mask: a refusal says why, and what was read is written and read back the same.
 */
void KW_TryMaskFiles(const QByteArray& text);

/** Lines "Property=text" are client writes to a tree that has every kind of property: a refused one
    changes nothing; one that is taken leaves limits that hold and a text that reads back to the
    same value. */
void KW_TryTexts(const QByteArray& lines);

/** Lines are paths in a tree with arrays and maps: each leads nowhere, or to the node that gives
    that very path for its own. */
void KW_TryPaths(const QByteArray& lines);

/** Words "type length factor offset value bits", missing ones 0: a value becomes bits of the
    length, bits become a text, and whole numbers that six digits hold survive both ways. The rest
    of the line labels raw values. */
void KW_TrySignals(const QByteArray& words);

/** A text that reads as an expression is written as one that reads back to the same elements and
    has the same unit. */
void KW_TryExpressions(const QByteArray& text);

/** Lines of a log of frames: each frame has an identifier and a payload that a bus can have, and
    written as candump logs it, it is read back the same. */
void KW_TryFrameLines(const QByteArray& lines);

/** The bytes are a record file, as they are and with a digest that fits: a refusal says why and
    where, and what was read is written and read back the same. */
void KW_TryRecordFiles(const QByteArray& bytes);

/** Ends the program with a message unless `holds`. */
void KW_FuzzRequire(bool holds, const char* what, const QByteArray& detail);
