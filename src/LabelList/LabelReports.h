// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelListFile.h"

#include <QString>
#include <string>
#include <vector>

/** A place in a text: line and column from 1, the column in bytes; 0 for no place. */
struct t_TextPlace
{
    UINT32 line = 0;
    UINT32 column = 0;
};

/** A name as reports show it: in quotation marks. */
QString QuotedName(const std::string& name);

/** Collects what is to be said of a file: the first hundred of it, and how much more there was. */
class CLabelReports
{
public:
    void Error(t_TextPlace place, const QString& text);
    void Warning(t_TextPlace place, const QString& text);

    bool IsEmpty() const { return m_reports.empty(); }
    std::size_t ErrorCount() const { return m_errors; }

    /** Appends what was collected to a client's reports. */
    void MoveTo(std::vector<KW_LabelReport>& reports);

private:
    void Add(e_KW_MESSAGE_TYPE type, t_TextPlace place, const QString& text);

    std::vector<KW_LabelReport> m_reports;
    std::size_t m_errors = 0;
    std::size_t m_more = 0; ///< beyond what is kept
};
