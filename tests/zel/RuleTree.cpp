// SPDX-License-Identifier: MIT
#include "RuleTree.h"

#include "EnumNameInfo.h"
#include "PgZEL.h"

#include <QFile>

namespace
{
QString PatternText(CDice& dice)
{
    QString pattern;
    for (INT32 bits = dice.Below(40); bits > 0; --bits)
    {
        pattern += QLatin1Char("01X"[dice.Below(3)]);
    }
    return pattern;
}

QString NumberText(const IDbProperty& property, CDice& dice)
{
    const double min = property.GetMinText().toDouble();
    const QString max = property.GetMaxText();
    const double top = max.isEmpty() ? 1e6 : max.toDouble();
    const double value = dice.Below(5) == 0 ? top : min + dice.Share() * (top - min);
    return property.GetTypeName() == QLatin1String("double") ? QString::number(value, 'g', 12)
                                                             : QString::number(value, 'f', 0);
}

QString AnyText(const IDbProperty& property, CDice& dice)
{
    const QStringList values = property.GetValueTexts();
    if (!values.isEmpty())
    {
        return values[dice.Below(static_cast<INT32>(values.size()))];
    }
    const QString type = property.GetTypeName();
    if (type == QLatin1String("string"))
    {
        return QString(dice.Below(12), QLatin1Char('a'));
    }
    if (type == QLatin1String("bitpattern"))
    {
        return PatternText(dice);
    }
    if (type == QLatin1String("filepath"))
    {
        constexpr const char* kNames[] = {"a.png", "a.jpg", "b.CSV", "b.xml", "c.bin", "c.bmp", ""};
        return QString::fromLatin1(kNames[dice.Below(7)]);
    }
    if (type == QLatin1String("reference"))
    {
        return QStringLiteral("SerialBus/SPIBusResults/SPIBusFrame[%1]").arg(dice.Below(3));
    }
    return type == QLatin1String("blob") ? QStringLiteral("AQID") : NumberText(property, dice);
}
} // namespace

CRuleTree::CRuleTree()
{
    KW_PeekZELRoot()->SetSettingsFolder(folder.path());
}

KW_ACCEPTANCE CRuleTree::Do(const QString& write) const
{
    const auto separator = write.indexOf(QStringLiteral(" = "));
    const auto node =
        root->GetDbObject()->Find(write.left(separator < 0 ? write.size() : separator));
    if (separator < 0)
    {
        const auto action = std::dynamic_pointer_cast<IDbAction>(node);
        EXPECT_TRUE(action) << write.toStdString();
        return action ? action->Execute() : static_cast<KW_ACCEPTANCE>(eKW_ACC_NOT_FOUND);
    }
    const auto property = std::dynamic_pointer_cast<IDbProperty>(node);
    EXPECT_TRUE(property) << write.toStdString();
    return property ? property->SetText(write.mid(separator + 3))
                    : static_cast<KW_ACCEPTANCE>(eKW_ACC_NOT_FOUND);
}

void CRuleTree::DoAll(const QStringList& writes) const
{
    for (const QString& write : writes)
    {
        const bool inserts = write.startsWith(QLatin1String("+ "));
        const KW_ACCEPTANCE code =
            inserts ? Container(root, write.mid(2).toLatin1().constData())->InsertItem(QString())
                    : Do(write);
        EXPECT_LE(code, eKW_ACC_WARNING) << write.toStdString();
    }
}

QString CRuleTree::Text(const QString& path) const
{
    return Property(root, path.toLatin1().constData())->GetText();
}

QString CRuleTree::State(const QString& path) const
{
    const auto property = Property(root, path.toLatin1().constData());
    const bool isSetting = property->GetObjectType() == eOBJECTTYPE_SETTING;
    const bool isClosed = isSetting && property->GetAvailability() != eAVAILABILITY_AVAILABLE;
    const bool isInvalid = property->GetValidity() != eKW_VALIDITY_VALID;
    return property->GetText() + QLatin1String(isInvalid ? "-" : "") +
           QLatin1String(isClosed ? "!" : "");
}

QByteArray CRuleTree::Saved() const
{
    const QString name = folder.filePath(QStringLiteral("saved.xml"));
    EXPECT_EQ(root->Save(name), eKW_ACC_OK);
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

QString CRuleTree::Instability() const
{
    std::vector<long long> counters;
    const auto before = State();
    VisitGroups(root->GetDbObject(), [&counters](const std::shared_ptr<IDbGroup>& group)
                { group->HasChanged(counters.emplace_back()); });
    KW_PeekZELRoot()->UpdateAllMeasSettings();
    QString changed;
    std::size_t next = 0;
    VisitGroups(root->GetDbObject(),
                [&](const std::shared_ptr<IDbGroup>& group)
                {
                    // Parents come first: the last one is the group itself.
                    changed = group->HasChanged(counters[next++]) ? group->GetPath() : changed;
                });
    if (!changed.isNull())
    {
        return QStringLiteral("computed again: %1: ").arg(changed) +
               FirstDifference(before, State());
    }
    const QByteArray first = Saved();
    EXPECT_EQ(root->GetPrPreset()->Set(), eKW_ACC_OK);
    EXPECT_EQ(root->Recall(folder.filePath(QStringLiteral("saved.xml"))), eKW_ACC_OK);
    return Saved() == first ? QString()
                            : QStringLiteral("recalled: ") + FirstDifference(before, State());
}

QString CRuleTree::DoAnything(const QStringList& groups, CDice& dice) const
{
    std::vector<std::shared_ptr<IDbGroup>> all;
    const QString top = groups[dice.Below(static_cast<INT32>(groups.size()))];
    const auto node = std::dynamic_pointer_cast<IDbGroup>(root->GetDbObject()->Find(top));
    if (!node)
    {
        return QString();
    }
    VisitGroups(node, [&all](const std::shared_ptr<IDbGroup>& group) { all.push_back(group); });
    const auto group = all[dice.Below(static_cast<INT32>(all.size()))];
    const INT32 properties = group->GetPropertyCount();
    const INT32 choice = dice.Below(properties + group->GetActionCount() + 1);
    if (choice < properties)
    {
        const auto property = group->GetProperty(choice);
        const QString text = AnyText(*property, dice);
        property->SetText(text);
        return property->GetPath() + QStringLiteral(" = ") + text;
    }
    if (choice < properties + group->GetActionCount())
    {
        group->GetAction(choice - properties)->Execute();
        return group->GetAction(choice - properties)->GetPath();
    }
    IDbContainer* const items = group->AsContainer();
    const bool grows = items != nullptr && items->IsDynamic() && items->GetCount() < 4;
    return grows && items->InsertItem(QString()) == eKW_ACC_OK
               ? QStringLiteral("+ ") + group->GetPath()
               : QString();
}

void PrintTo(const t_RuleCase& rule, std::ostream* stream)
{
    *stream << rule.name;
}

void CheckRule(const t_RuleCase& rule)
{
    const CRuleTree tree;
    tree.DoAll(rule.setup);
    const auto before = tree.State();
    EXPECT_EQ(tree.Do(rule.write), rule.code);
    for (const QString& expected : rule.expected)
    {
        const QString path = expected.section(QStringLiteral(" = "), 0, 0);
        EXPECT_EQ((path + QStringLiteral(" = ") + tree.State(path)).toStdString(),
                  expected.toStdString());
    }
    EXPECT_EQ(tree.reports.Messages().join(u'\n').toStdString(), "");
    if (FirstDifference(before, tree.State()) != QString())
    {
        ASSERT_EQ(tree.root->Undo(), eKW_ACC_OK);
        EXPECT_EQ(FirstDifference(before, tree.State()).toStdString(), "") << "undo";
        ASSERT_EQ(tree.root->Redo(), eKW_ACC_OK);
    }
    EXPECT_EQ(tree.Instability().toStdString(), "");
}

void CheckWalk(UINT32 seed, const QStringList& setup, const QStringList& groups,
               const std::function<QStringList(const CRuleTree&)>& violations)
{
    constexpr int kWrites = 90;
    const CRuleTree tree;
    CDice dice(seed);
    tree.DoAll(setup);
    tree.root->EnableHistory(false);
    tree.root->EnableHistory(true);
    const auto before = tree.State();
    for (int i = 0; i < kWrites; ++i)
    {
        const QString write = tree.DoAnything(groups, dice);
        ASSERT_EQ(violations(tree).join(u',').toStdString(), "")
            << write.toStdString() << ", seed " << seed;
    }
    ASSERT_EQ(tree.reports.Messages().join(u'\n').toStdString(), "") << "seed " << seed;
    const auto after = tree.State();
    while (tree.root->CanUndo())
    {
        ASSERT_EQ(tree.root->Undo(), eKW_ACC_OK);
    }
    EXPECT_EQ(FirstDifference(before, tree.State()).toStdString(), "") << "undo, seed " << seed;
    while (tree.root->CanRedo())
    {
        ASSERT_EQ(tree.root->Redo(), eKW_ACC_OK);
    }
    EXPECT_EQ(FirstDifference(after, tree.State()).toStdString(), "") << "redo, seed " << seed;
    EXPECT_EQ(tree.Instability().toStdString(), "") << "seed " << seed;
}
