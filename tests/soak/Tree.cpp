// SPDX-License-Identifier: MIT
#include "soak/Tree.h"

#include "TreeWalk.h"

#include <QFile>
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
        const QString minimum = property->GetMinText();
        const QString maximum = property->GetMaxText();
        const QString text = property->GetText();
        // Reading a decimal text keeps the order of numbers, so no kind needs a way of its own.
        const double value = text.toDouble();
        const bool isWithin = (minimum.isEmpty() || minimum.toDouble() <= value) &&
                              (maximum.isEmpty() || value <= maximum.toDouble());
        const bool isNamed = property->GetEnumNameInfo() == nullptr || !text.isEmpty();
        if (!isWithin || !isNamed)
        {
            verdict.Violated(QStringLiteral("%1 is \"%2\", limits %3 … %4")
                                 .arg(property->GetPath(), text, minimum, maximum));
        }
    }
}

QByteArray SavedText(const t_Root& root, const QString& fileName, CVerdict& verdict)
{
    if (root->Save(fileName) != eKW_ACC_OK)
    {
        verdict.Violated(QStringLiteral("not saved: ") + fileName);
    }
    QFile file(fileName);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}
