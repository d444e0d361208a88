// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <cstddef>

/** How far input may go: what a tree holds at most and what one file may do. The counts that belong
    to a property or a container stand in the model; these are of memory and time. Whatever a tree
    saves within them can be recalled. */
namespace NDbBounds
{
/** Bytes of a settings file, read or written. */
constexpr qint64 kMaxFileSize = 16 * 1024 * 1024;
/** Elements inside one another. */
constexpr int kMaxDepth = 40;
/** Attributes of an element; none that is written has more than six. Qt's reader compares each with
    each. */
constexpr int kMaxAttributes = 16;
/** Elements of a file. The smallest that is written takes 24 bytes, so that the size of a file that
    was saved is met first. */
constexpr int kMaxElements = 700'000;
/** Fields of a CSV file: seven or more bytes for two of them, by the same reasoning. */
constexpr int kMaxFields = 5'000'000;
/** Nodes that the items of one file bring into being: each is an element of a file that was saved.
 */
constexpr int kMaxNewNodes = kMaxElements;
/** Entries of a file that are reported one by one; the rest is one number. */
constexpr int kMaxReports = 100;
/** Characters of a file that a report repeats. */
constexpr int kMaxReportLength = 300;

/** Characters of a file's path, and of the name that a user sees an item by. */
constexpr int kMaxPathLength = 4096;
constexpr int kMaxDisplayNameLength = 256;

/** What a node takes, all in all. */
constexpr std::size_t kBytesPerNode = 300;
/** Items of a container, whatever count it is declared with. */
constexpr std::size_t kMaxContainerBytes = 128 * 1024 * 1024;
/** Below this count nobody asks how large an item is. */
constexpr int kSmallContainer = 1000;
/** What the steps of the history keep; the newest step stays whatever it keeps. */
constexpr std::size_t kMaxHistoryBytes = 64 * 1024 * 1024;
} // namespace NDbBounds
