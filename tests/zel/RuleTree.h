// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionZEL.h"
#include "SpectrumTree.h"
#include "ZelTree.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

/** A tree, written by paths. A write is "path = text", or a path alone for an action. */
class CRuleTree
{
public:
    CRuleTree();

    /** Answers the code. */
    KW_ACCEPTANCE Do(const QString& write) const;
    void DoAll(const QStringList& writes) const;
    QString Text(const QString& path) const;
    /** The value; "-" behind it while it is invalid, "!" while clients can not write it. */
    QString State(const QString& path) const;
    double Number(const QString& path) const { return Text(path).toDouble(); }
    std::shared_ptr<IDbContainer> Items(const char* path) const { return Container(root, path); }

    std::vector<QString> State() const { return Snapshot(root->GetDbObject()); }
    QByteArray Saved() const;
    /** Names what a second computation of everything, or saving and recalling, changes. */
    QString Instability() const;

    /** One random write, mostly legal, of anything settable below these groups. */
    QString DoAnything(const QStringList& groups, CDice& dice) const;

    std::shared_ptr<IKWFunctionZEL> root = GetZELRoot();
    QTemporaryDir folder;
    CZelReports reports;
};

/** One coupling: after `setup` and the write, properties read as `expected` ("path = state"), the
    write answers `code`, and one undo takes everything back. */
struct t_RuleCase
{
    const char* name;
    QStringList setup;
    QString write;
    QStringList expected;
    KW_ACCEPTANCE code = 0;
};

void PrintTo(const t_RuleCase& rule, std::ostream* stream);
void CheckRule(const t_RuleCase& rule);
/** Many random writes: `violations` names what does not hold of a state. */
void CheckWalk(UINT32 seed, const QStringList& setup, const QStringList& groups,
               const std::function<QStringList(const CRuleTree&)>& violations);
