// SPDX-License-Identifier: MIT
#pragma once

#include "KWCouplings.h"
#include "Output.h"
#include "Session.h"

#include <QHash>
#include <map>
#include <set>
#include <vector>

/** A step of a row that was seen to change something. */
using t_Steps = std::vector<KW_CouplingStep>;

/** The rows that the rules declare, read from the tree when they are asked for. */
class CDeclaredRows
{
public:
    explicit CDeclaredRows(CSession& session) : m_session(session) {}

    /** The rows of a group and of what is below it, in the order of the tree. */
    std::vector<KW_CouplingRow> GetAtAndBelow(const QString& path);
    /** The rows that a property starts. */
    std::vector<KW_CouplingRow> GetStartedBy(const IDbProperty& property);
    /** "by Horizontal 2, On(ScaleGUI): SetScaleFromGui", a line for each step; without the
        condition where it is to be `brief`, or where a line before told it. */
    QStringList Describe(const t_Steps& steps, bool brief);
    QJsonArray ToJson(const t_Steps& steps);

private:
    const std::vector<KW_CouplingRow>& RowsOf(const QString& group);
    QString WhenOf(const KW_CouplingStep& step);

    CSession& m_session;
    std::map<QString, std::vector<KW_CouplingRow>> m_rows;
    std::set<std::pair<QString, int>> m_told; ///< group and number
};

/** "Horizontal 2, On(ScaleGUI): Do SetScaleFromGui, RunRecalculationChain" */
QString DescribeRow(const KW_CouplingRow& row);
QJsonObject ToJson(const KW_CouplingRow& row);

/** Notes which steps change which nodes, as long as it lives. There is one at a time. */
class CRowWatch
{
public:
    CRowWatch();
    ~CRowWatch();
    CRowWatch(const CRowWatch&) = delete;
    CRowWatch& operator=(const CRowWatch&) = delete;

    void Forget() { m_steps.clear(); }
    /** The steps that changed a node, or the container that it came into or left; each once, in
        order. Of steps inside others the innermost. */
    t_Steps GetSteps(const QString& path) const;

private:
    QHash<QString, t_Steps> m_steps;
};

/** Adds the steps that are not there yet. */
void AddSteps(t_Steps& steps, const t_Steps& further);
