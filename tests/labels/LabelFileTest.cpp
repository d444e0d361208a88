// SPDX-License-Identifier: MIT
#include "labels/ReadLabels.h"

TEST(LabelFile, FormatDependsOnCaseOfItsName)
{
    EXPECT_EQ(KW_GetLabelFileFormat(QStringLiteral("a.dbc.DBC")), eKW_LABEL_FILE_FORMAT_DBC);
    EXPECT_EQ(KW_GetLabelFileFormat(QStringLiteral("a.Xml")), eKW_LABEL_FILE_FORMAT_XML);
    EXPECT_EQ(KW_GetLabelFileFormat(QStringLiteral(".csv")), eKW_LABEL_FILE_FORMAT_CSV);
    EXPECT_EQ(KW_GetLabelFileFormat(QStringLiteral("a.csv.txt")), eKW_LABEL_FILE_FORMAT_UNKNOWN);
}

TEST(LabelFile, ReportLosesItsPlace)
{
    KW_LabelReport report;
    report.text = QStringLiteral("what");
    EXPECT_EQ(KW_FormatLabelReport(QStringLiteral("f"), report), QStringLiteral("f: what"));
    report.line = 3;
    EXPECT_EQ(KW_FormatLabelReport(QStringLiteral("f"), report), QStringLiteral("f:3: what"));
    report.column = 7;
    EXPECT_EQ(KW_FormatLabelReport(QStringLiteral("f"), report), QStringLiteral("f:3:7: what"));
}

TEST(LabelFile, RefusalTouchesList)
{
    KW_LabelList list;
    list.name = "kept";
    std::vector<KW_LabelReport> reports;
    EXPECT_EQ(KW_ReadLabelFile(QStringLiteral("list.txt"), list, reports),
              eKW_ACC_FILE_NOT_UNDERSTOOD);
    EXPECT_EQ(KW_ReadLabelFile(QStringLiteral("/missing/list.dbc"), list, reports),
              eKW_ACC_FILE_NOT_READABLE);
    EXPECT_EQ(reports.size(), 2U);
    EXPECT_EQ(list.name, "kept");
}
