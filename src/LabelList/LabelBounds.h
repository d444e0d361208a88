// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <cstddef>

/** What a label list and its files can hold: no file takes more memory than these allow. */
namespace NLabelBounds
{
constexpr qint64 kMaxFileSize = qint64{64} << 20U; ///< bytes
constexpr std::size_t kMaxMessages = 65536;
constexpr std::size_t kMaxSignals = 262144;          ///< in all messages
constexpr std::size_t kMaxSignalsPerMessage = 16384; ///< pages of multiplexed ones included
constexpr std::size_t kMaxItems = 1048576; ///< labels, attributes, senders and receivers, in all
constexpr std::size_t kMaxObjects = 65536; ///< nodes, value tables, definitions of attributes
constexpr std::size_t kMaxColumns = 256;
constexpr int kMaxXmlElements = 2097152;
constexpr int kMaxXmlDepth = 16;
constexpr int kMaxXmlAttributes = 64; ///< of one tag
constexpr std::size_t kMaxReports = 100;
} // namespace NLabelBounds
