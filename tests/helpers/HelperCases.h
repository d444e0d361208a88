// SPDX-License-Identifier: MIT
#pragma once

#include "Reports.h"

#include <gtest/gtest.h>

#include <string>

enum KW_PROBE_TYPE : INT32;

/** Any number as a type of probe, also one that is none. */
inline KW_PROBE_TYPE Probe(INT32 value)
{
    return static_cast<KW_PROBE_TYPE>(value);
}

inline constexpr char kHelpers[] = "src/IKWFunctionZELHelpers";

/** Since the last look exactly one report came, an error of this text from `file` by a function
    whose signature has `function` in it; none where `message` is empty. */
inline void ExpectReport(CReports& reports, const std::string& message, const std::string& file,
                         const std::string& function)
{
    std::vector<std::string> messages;
    for (const KW_ErrorReport& report : reports.Take())
    {
        messages.push_back(report.message.toStdString());
        EXPECT_EQ(report.file.toStdString(), file);
        EXPECT_NE(report.function.indexOf(QString::fromStdString(function)), -1)
            << report.function.toStdString() << " lacks " << function;
        EXPECT_EQ(report.type, e_KW_MESSAGE_TYPE_ERROR);
        EXPECT_GT(report.line, 0);
    }
    EXPECT_EQ(messages, OneMessage(message));
}
