// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsSerialBus.h"

#include <QString>
#include <string_view>

class CLabelReports;
struct KW_LabelList;

/** What XML and CSV files begin with: the version of the format and the protocol. */
namespace NLabelHead
{
constexpr const char* kVersion = "1.0";

/** Whether a file of this version is read: what a newer minor version adds is passed over and
    reported, a newer major one is refused. Answers what is wrong, or nothing. */
QString ReadVersion(std::string_view text);

QString ReadProtocol(std::string_view text, KW_ZEL_SERIALBUS_PROTOCOL& protocol);

/** The report of a file that NLabelTexts::FindUnholdable finds something in. */
QString NotText();

/** Warns of characters that were replaced while a file was written, if any were. */
void WarnOfReplaced(std::size_t replaced, CLabelReports& reports);
} // namespace NLabelHead
