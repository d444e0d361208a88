// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionZEL.h"
#include "ZelTree.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

/**
 * A tree, written by texts: "path = text", a client's write; "path", an action; "+ path", a new
 * item ("+3 path": three); or "@path = text", a result that the acquisition delivers.
 *
 * Several stand in a row with "; " between them. A path that begins with a dot is below the group
 * of the path before it, each further dot is one group up.
 */
class CRuleTree
{
public:
    CRuleTree();

    /** One write; answers the code. */
    KW_ACCEPTANCE Do(const QByteArray& write) const;
    void DoAll(const QByteArray& writes) const;
    QString Text(const QByteArray& path) const;
    double Number(const QByteArray& path) const { return Text(path).toDouble(); }
    /** The text; "-" behind it while it is invalid, "!" while clients can not write it. Of
        "path.min", "path.max", "path.step" and "path.values", what clients may select; "path.unit",
        "path.count" of an array, and "path.6", the number in six digits, for what an unlike
       logarithm may move. */
    QString State(const QByteArray& path) const;
    std::shared_ptr<IDbContainer> Items(const char* path) const { return Container(root, path); }

    std::vector<QString> State() const { return Snapshot(root->GetDbObject()); }
    /** Names what a second computation of everything changes. */
    QString Unsettled() const;
    /** Saves, presets, recalls; names the first line that is saved otherwise afterwards. */
    QString Forgotten() const;

    std::shared_ptr<IKWFunctionZEL> root = GetZELRoot();
    QTemporaryDir folder;
    CReports reports;
};

/** One coupling: after `setup` and the write, properties read as `expected` ("path = state"), the
    write answers `code`, and `report` is all that was reported, line by line. The three make one
    row: a dot reaches back to the text before. */
struct t_Rule
{
    const char* name;
    const char* setup;
    const char* write;
    const char* expected;
    KW_ACCEPTANCE code = 0;
    const char* report = "";
};

void PrintTo(const t_Rule& rule, std::ostream* stream);

/** Runs t_Rule in a fresh tree; then everything computed once more changes nothing, one undo takes
    everything back, and a saved state comes back. */
class Rules : public testing::TestWithParam<t_Rule>
{
public:
    static std::string Name(const testing::TestParamInfo<t_Rule>& test) { return test.param.name; }
};

/** A part of what an engineer does, and what must stand afterwards; texts as in t_Rule, a dot
    reaches back to the text and the part before. */
struct t_SessionPart
{
    const char* done;
    const char* stands;
};

/** Parts in their order, in one tree. The name says what would be lost or wrong. */
struct t_Session
{
    const char* name;
    std::vector<t_SessionPart> parts;
};

void PrintTo(const t_Session& session, std::ostream* stream);

/** Runs t_Session in a fresh tree, where everything is taken and nothing reported; what stands is
    looked at after each part, and once more when everything has been computed again. Undo leads
    back, and a saved state comes back. */
class Sessions : public testing::TestWithParam<t_Session>
{
public:
    static std::string Name(const testing::TestParamInfo<t_Session>& test)
    {
        return test.param.name;
    }
};

/** A text that is legal for a property, or likely so. */
QString AnyText(const IDbProperty& property, CDice& dice);

/** One random write below these groups, mostly legal; answers which. */
QString DoAnything(const CRuleTree& tree, const QList<QByteArray>& tops, CDice& dice);

/** A result, as the acquisition delivers it. */
KW_ACCEPTANCE DeliverText(IDbProperty& property, const QString& text);

/** Random writes below `groups` (separated by blanks), mostly legal, in fresh trees. After each of
    them `check` finds nothing wrong; now and then everything computed once more changes nothing; at
    the end nothing but `reports` (a regular expression) was reported, all undone leads back, and a
   saved state comes back. */
struct t_Walk
{
    const char* setup;
    const char* groups;
    void (*check)(const CRuleTree&, CFindings&);
    int trees = 8;
    const char* reports = "^$";
};

class Walks : public testing::TestWithParam<t_Walk>
{
};
