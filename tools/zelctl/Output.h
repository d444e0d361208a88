// SPDX-License-Identifier: MIT
#pragma once

#include "KWErrorReport.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <string_view>
#include <vector>

/**
 * What the program writes, in UTF-8: answers on the standard output, everything that is wrong on
 * the standard error. A reader that closes its end of the pipe ends the output quietly and lets the
 * command go on, so that what it has to write elsewhere is written.
 */
class COutput
{
public:
    COutput();
    /** Gives the library's reports back to its default handler. */
    ~COutput();
    COutput(const COutput&) = delete;
    COutput& operator=(const COutput&) = delete;

    void Line(const QString& text);
    /** One JSON document in one line. */
    void Document(const QJsonObject& document);
    /** Many lines at once, with their ends, which are shown at once. */
    void Block(std::string_view text);
    /** Whether nobody reads the output any more. */
    bool IsClosed() const { return m_closed; }
    /** One line on the standard error, behind everything that was answered before; of a long text
        its beginning and its end. */
    void Problem(const QString& text);
    /** Writes what is still held back; false when the output can not be written. */
    bool Finish();

    /** Number of errors that the library has reported so far. */
    int GetReportedErrors() const { return m_reportedErrors; }

    /** While on, what the library reports is kept for the document that answers the command. */
    void KeepReports(bool on);
    /** Reports since the last call. */
    QStringList TakeReports();

    /** Holds back what the library reports: for writes that only try what happens. */
    class CSilence
    {
    public:
        explicit CSilence(COutput& output) : m_output(output) { m_output.m_silent = true; }
        ~CSilence() { m_output.m_silent = false; }
        CSilence(const CSilence&) = delete;
        CSilence& operator=(const CSilence&) = delete;

    private:
        COutput& m_output;
    };

private:
    void Write(std::string_view bytes);
    void Flush();
    void CheckWritten(bool written);
    void Report(const KW_ErrorReport& report);

    int m_reportedErrors = 0;
    bool m_closed = false;
    bool m_failed = false;
    bool m_silent = false;
    bool m_keepsReports = false;
    QStringList m_reports;
    KW_ErrorHandler m_previousHandler;
};

/** A text of a reader's length: of a longer one the beginning and the end, and how much is left
    out between them. */
QString Shortened(const QString& text);

/** Writes a file, whole or not at all; fails where it can not be written. */
void WriteWhole(const QString& fileName, const QByteArray& bytes);

/** Columns of the terminal that shows the answers; 0 (unlimited) when they go elsewhere. */
int GetTerminalWidth();

/** Lines of cells in columns as wide as they need. Where the width does not suffice, cells of
    the columns named at the construction are shortened, the first column named first. */
class CTable
{
public:
    /** A column and the width that it is never shortened below. */
    struct t_Shrinking
    {
        int column;
        int least;
    };

    explicit CTable(std::vector<t_Shrinking> shrinking = {}) : m_shrinking(std::move(shrinking)) {}
    void Add(const QStringList& row) { m_rows.push_back(row); }
    /** `width` 0 is unlimited. */
    QStringList GetLines(int width) const;

private:
    std::vector<int> GetWidths(int available) const;

    std::vector<t_Shrinking> m_shrinking;
    std::vector<QStringList> m_rows;
};
