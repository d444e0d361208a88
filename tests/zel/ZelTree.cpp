// SPDX-License-Identifier: MIT
#include "ZelTree.h"

#include <cmath>
#include <gtest/gtest.h>

void VisitGroups(const std::shared_ptr<IDbGroup>& group,
                 const std::function<void(const std::shared_ptr<IDbGroup>&)>& visit)
{
    visit(group);
    for (INT32 i = 0; i < group->GetGroupCount(); ++i)
    {
        VisitGroups(group->GetGroup(i), visit);
    }
    IDbContainer* const container = group->AsContainer();
    for (INT32 i = 0; container != nullptr && i < container->GetCount(); ++i)
    {
        VisitGroups(container->GetItemByPosition(i), visit);
    }
}

std::vector<QString> Snapshot(const std::shared_ptr<IDbGroup>& root)
{
    std::vector<QString> entries;
    VisitGroups(root,
                [&entries](const std::shared_ptr<IDbGroup>& group)
                {
                    const QString path = group->GetPath() + QLatin1Char('/');
                    for (INT32 i = 0; i < group->GetPropertyCount(); ++i)
                    {
                        const auto p = group->GetProperty(i);
                        QString& entry = entries.emplace_back(path + p->GetNodeName());
                        for (const QString& part :
                             {p->GetText(), p->GetMinText(), p->GetMaxText(), p->GetStepText()})
                        {
                            entry += QLatin1Char(';') + part;
                        }
                        for (const QString& value : p->GetValueTexts())
                        {
                            entry += QLatin1Char('|') + value;
                        }
                        entry += QLatin1String(p->GetValidity() == eKW_VALIDITY_VALID ? "" : "-");
                    }
                });
    return entries;
}

QString FirstDifference(const std::vector<QString>& a, const std::vector<QString>& b)
{
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
    {
        if (a[i] != b[i])
        {
            return a[i] + QStringLiteral("  ->  ") + b[i];
        }
    }
    return a.size() == b.size() ? QString()
                                : QStringLiteral("%1 -> %2 properties").arg(a.size()).arg(b.size());
}

std::shared_ptr<IDbProperty> Property(const std::shared_ptr<IKWFunctionZEL>& root, const char* path)
{
    auto property = std::dynamic_pointer_cast<IDbProperty>(
        root->GetDbObject()->Find(QString::fromLatin1(path)));
    EXPECT_TRUE(property) << path;
    return property;
}

std::shared_ptr<IDbContainer> Container(const std::shared_ptr<IKWFunctionZEL>& root,
                                        const char* path)
{
    const auto group =
        std::dynamic_pointer_cast<IDbGroup>(root->GetDbObject()->Find(QString::fromLatin1(path)));
    EXPECT_TRUE(group && group->AsContainer()) << path;
    return {group, group->AsContainer()};
}

void CFindings::Check(bool holds, const QByteArray& what)
{
    if (!holds)
    {
        m_wrong.append(what);
    }
}

double CDice::Logarithmic(double min, double max)
{
    return min * std::pow(max / min, Share());
}
