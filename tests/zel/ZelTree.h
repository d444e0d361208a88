// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"
#include "IKWFunctionZEL.h"
#include "Reports.h"
#include "TreeWalk.h"

#include <QByteArrayList>
#include <random>
#include <vector>

class CDbPropBase;

// What the tests of the whole tree share.

/** Path, value, present limits, selectable values and validity of every property. */
std::vector<QString> Snapshot(const std::shared_ptr<IDbGroup>& root);

/** A group and all below it, items of containers included, parents first. */
std::vector<std::shared_ptr<IDbGroup>> GroupsFrom(const std::shared_ptr<IDbGroup>& top);

/** Names of the entries in which two snapshots differ; empty when they are the same. */
QString FirstDifference(const std::vector<QString>& a, const std::vector<QString>& b);

/** A property of the tree by its path; fails the test when there is none. */
std::shared_ptr<IDbProperty> Property(const std::shared_ptr<IKWFunctionZEL>& root,
                                      const char* path);
std::shared_ptr<IDbContainer> Container(const std::shared_ptr<IKWFunctionZEL>& root,
                                        const char* path);

/** Inserts items until every container that clients fill holds at least `count`, nested ones too.
 */
void FillContainers(const std::shared_ptr<IKWFunctionZEL>& root, INT32 count);

/** Recalls a file, as one writes it by hand, that names one property. */
KW_ACCEPTANCE RecallNaming(const std::shared_ptr<IKWFunctionZEL>& root, const CDbPropBase& property,
                           const QString& text);

/** What the tree writes into a file of settings. */
QByteArray Saved(const std::shared_ptr<IKWFunctionZEL>& root, const char* suffix = "xml");

/** Recalls a text from a file that holds it, as one seals it after an edit. */
KW_ACCEPTANCE RecallText(const std::shared_ptr<IKWFunctionZEL>& root, const QByteArray& text,
                         const char* suffix = "xml");

/** Collects what does not hold. */
class CFindings
{
public:
    void Check(bool holds, const QByteArray& what);
    std::string Text() const { return m_wrong.join(", ").toStdString(); }

private:
    QByteArrayList m_wrong;
};

/** Numbers that are the same on every machine for a seed. */
class CDice
{
public:
    explicit CDice(UINT32 seed) : m_engine(seed) {}
    double Share() { return static_cast<double>(m_engine()) / 4294967295.0; }
    INT32 Below(INT32 count) { return static_cast<INT32>(m_engine() % static_cast<UINT32>(count)); }
    double Logarithmic(double min, double max);
    template <typename TList>
    const auto& Of(const TList& list)
    {
        return list[static_cast<decltype(list.size())>(Below(static_cast<INT32>(list.size())))];
    }

private:
    std::mt19937 m_engine;
};
