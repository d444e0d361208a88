// SPDX-License-Identifier: MIT
#include "ZelTree.h"

#include "CommonDatabase/Containers/DbContainerBase.h"
#include "KWSettingsFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>

namespace
{
/** A file, as one writes it by hand, that names one property. */
QByteArray FileNaming(const CDbPropBase& property, const QString& text)
{
    QString file = QStringLiteral("<Prop Name=\"%1\" Value=\"%2\"/>")
                       .arg(property.GetNodeName(), text.toHtmlEscaped());
    for (const CDbPropertyGroup* group = property.GetParent(); group != nullptr;
         group = group->GetParent())
    {
        const bool isItem = dynamic_cast<CDbContainerBase*>(group->GetParent()) != nullptr;
        file = QStringLiteral("<%1 Name=\"%2\">%3</%1>")
                   .arg(isItem ? QStringLiteral("ArrayItem") : group->GetXMLElementName(),
                        group->GetNodeName(), file);
    }
    return QStringLiteral("<Settings Kind=\"ZEL\" Version=\"1.0\">%1</Settings>")
        .arg(file)
        .toUtf8();
}

/** Writes a file; answers its name. */
QString Written(const QTemporaryDir& folder, const QByteArray& text, const char* suffix)
{
    QFile file(folder.filePath(QStringLiteral("settings.") + QLatin1String(suffix)));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    return file.fileName();
}
} // namespace

std::vector<QString> Snapshot(const std::shared_ptr<IDbGroup>& root)
{
    std::vector<QString> entries;
    Walk<IDbProperty>(root,
                      [&entries](const auto& node)
                      {
                          const IDbProperty& p = *node;
                          QString& entry = entries.emplace_back(p.GetPath());
                          for (const QString& part :
                               {p.GetText(), p.GetMinText(), p.GetMaxText(), p.GetStepText()})
                          {
                              entry += QLatin1Char(';') + part;
                          }
                          for (const QString& value : p.GetValueTexts())
                          {
                              entry += QLatin1Char('|') + value;
                          }
                          entry += QLatin1String(p.GetValidity() == eKW_VALIDITY_VALID ? "" : "-");
                      });
    return entries;
}

std::vector<std::shared_ptr<IDbGroup>> GroupsFrom(const std::shared_ptr<IDbGroup>& top)
{
    std::vector<std::shared_ptr<IDbGroup>> groups;
    Walk<IDbGroup>(top, [&groups](const auto& group) { groups.push_back(group); });
    return groups;
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

void FillContainers(const std::shared_ptr<IKWFunctionZEL>& root, INT32 count)
{
    Walk<IDbGroup>(root->GetDbObject(),
                   [count](const auto& group)
                   {
                       IDbContainer* const container = group->AsContainer();
                       while (container != nullptr && container->IsDynamic() &&
                              container->GetCount() < count)
                       {
                           ASSERT_EQ(container->InsertItem(QString()), eKW_ACC_OK)
                               << group->GetPath().toStdString();
                       }
                   });
}

QByteArray Saved(const std::shared_ptr<IKWFunctionZEL>& root, const char* suffix)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("settings.") + QLatin1String(suffix)));
    EXPECT_EQ(root->Save(file.fileName()), eKW_ACC_OK);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

KW_ACCEPTANCE RecallNaming(const std::shared_ptr<IKWFunctionZEL>& root, const CDbPropBase& property,
                           const QString& text)
{
    const QTemporaryDir folder;
    return root->Recall(Written(folder, FileNaming(property, text), "xml"));
}

KW_ACCEPTANCE RecallText(const std::shared_ptr<IKWFunctionZEL>& root, const QByteArray& text,
                         const char* suffix)
{
    const QTemporaryDir folder;
    const QString name = Written(folder, text, suffix);
    EXPECT_EQ(KW_SealSettingsFile(name), eKW_ACC_OK);
    return root->Recall(name);
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
