// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelList.h"
#include "LabelList/LabelListFile.h"
#include "Session.h"

#include <QJsonArray>
#include <string>
#include <vector>

/** The list of a file; an empty one where it can not be read. */
KW_LabelList ReadQuietly(const std::string& file);

/** What the files of label lists that a command reads and writes had to say. */
class CLabelFindings
{
public:
    explicit CLabelFindings(CSession& session) : m_session(session) {}

    /** Reads a file; `skipsBad` leaves bad messages out. Gives the code of the reader. */
    KW_ACCEPTANCE Read(const std::string& file, bool skipsBad, KW_LabelList& list);
    /** The same; fails when it is refused. */
    KW_LabelList Require(const std::string& file, bool skipsBad);
    /** Takes over what was said of a file; fails for a refusing code. */
    void Require(KW_ACCEPTANCE code, const QString& file,
                 const std::vector<KW_LabelReport>& reports);

    bool IsEmpty() const { return m_lines.isEmpty(); }
    /** Each as "file:line:column: text". */
    const QStringList& GetLines() const { return m_lines; }
    /** "2 errors, 1 warning". */
    QString GetCounts() const;
    /** A field of a document. */
    void AddTo(CReply& reply) const;
    /** On the standard error. */
    void Show() const;
    /** Sends an answer with the findings, which are in the document or on the standard error:
        status and code 1 where there are any. What the command does is done all the same. */
    t_Answer Send(CReply& reply) const;

private:
    void Add(const QString& file, const std::vector<KW_LabelReport>& reports);
    CFailure Refuse(KW_ACCEPTANCE code, const QString& file) const;

    CSession& m_session;
    QStringList m_lines;
    QJsonArray m_json;
    int m_errors = 0;
};
