// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelList.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <utility>
#include <vector>

std::size_t CountSignals(const KW_LabelList& list);

/** "0x123" with as many digits as the bus writes: 3 of 11 bits, 8 of 29; "–" of frames without. */
QString GetIdentifierText(const CLabelListMessage& message);

/** As short as it can be read back. */
QString GetNumberText(double number);

/** "every 10 ms", "every 0.25 s". */
QString GetCycleText(double seconds);

/** "little" or "big", and one word for each type, for columns. */
///@{
QString GetOrderText(const CLabelListSignal& signal);
QString GetTypeText(const CLabelListSignal& signal);
///@}

/** "0-3, 7". */
QString GetRangesText(const std::vector<KW_RawRange>& ranges);

/** "Mode = 0-3, 7"; empty for a signal that is in every frame. */
QString GetConditionText(const KW_LabelSignalDetails& details);

/** Raw values, as signed ones of signed signals, in their order, with their labels. */
std::vector<std::pair<QString, QString>> GetLabels(const KW_LabelSignal& signal);

QString ToText(const std::vector<std::string>& names);

/** "1 message", "3 messages". */
QString GetCountText(UINT64 count, const QString& what);

/** "3 messages, 17 signals". */
QString GetSizeText(const KW_LabelList& list);

QJsonObject ToJson(const KW_LabelEntry& entry);
/** What the list holds beside its messages: comment, nodes and named tables of labels. */
QJsonObject ToJson(const KW_LabelList& list);
