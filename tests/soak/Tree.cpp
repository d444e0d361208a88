// SPDX-License-Identifier: MIT
#include "soak/Tree.h"

#include "FileText.h"
#include "TreeWalk.h"

#include <cstdio>

void CVerdict::Violated(const QString& what)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_count++ < kPrinted)
    {
        m_first.push_back(what);
    }
}

void CVerdict::Print() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (const QString& what : m_first)
    {
        std::fprintf(stderr, "violated: %s\n", qPrintable(what));
    }
    std::printf("soak: %s, %d violations\n", IsGood() ? "passed" : "FAILED", m_count.load());
}

std::vector<t_Group> Functions(const t_Root& root)
{
    const t_Group node = root->GetDbObject();
    std::vector<t_Group> groups;
    for (INT32 i = 0; i < node->GetGroupCount(); ++i)
    {
        groups.push_back(node->GetGroup(i));
    }
    return groups;
}

std::vector<t_Property> Properties(const t_Group& group)
{
    std::vector<t_Property> properties;
    Walk<IDbProperty>(group, [&](const t_Property& property) { properties.push_back(property); });
    return properties;
}

void CheckLimits(const std::vector<t_Property>& properties, CVerdict& verdict)
{
    for (const t_Property& property : properties)
    {
        if (!IsWithinLimits(*property))
        {
            verdict.Violated(QStringLiteral("%1 is \"%2\", limits %3 … %4")
                                 .arg(property->GetPath(), property->GetText(),
                                      property->GetMinText(), property->GetMaxText()));
        }
    }
}

QByteArray SavedText(const t_Root& root, const QString& fileName, CVerdict& verdict)
{
    if (root->Save(fileName) != eKW_ACC_OK)
    {
        verdict.Violated(QStringLiteral("not saved: ") + fileName);
    }
    return ContentsOf(fileName);
}
