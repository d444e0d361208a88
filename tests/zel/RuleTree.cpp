// SPDX-License-Identifier: MIT
#include "RuleTree.h"

#include "CommonDatabase/Properties/DbPropEnum.h"
#include "KWEnumerationsUnits.h"
#include "Root/PgZEL.h"

#include <QRegularExpression>
#include <cmath>

namespace
{
/** What stands before a mark, or all of it. */
QByteArray Before(const QByteArray& text, const char* mark)
{
    const auto at = text.indexOf(mark);
    return at < 0 ? text : text.left(at);
}

/** The parts of a row, every path whole; `group` is that of the path before. */
QList<QByteArray> Parts(const QByteArray& row, QByteArray& group)
{
    static const QRegularExpression kPart(QStringLiteral("^(@|\\+(\\d*) )?(\\.*)(.*)$"));
    QList<QByteArray> parts;
    for (const QString& text :
         QString::fromLatin1(row).split(QStringLiteral("; "), Qt::SkipEmptyParts))
    {
        const auto part = kPart.match(text);
        const auto dots = part.capturedLength(3);
        group = dots == 0 ? QByteArray() : group;
        for (auto up = dots; up > 1; --up)
        {
            group = group.left(group.lastIndexOf('/', -2) + 1);
        }
        const QByteArray write = group + part.captured(4).toLatin1();
        const QByteArray path = Before(write, " = ");
        group = path.left(path.lastIndexOf('/') + 1);
        const QByteArray mark(text.startsWith(u'@') ? "@" : text.startsWith(u'+') ? "+ " : "");
        for (int i = std::max(part.captured(2).toInt(), 1); i > 0; --i)
        {
            parts.append(mark + write);
        }
    }
    return parts;
}

QString NumberText(const IDbProperty& property, CDice& dice)
{
    const double min = property.GetMinText().toDouble();
    const QString declared = property.GetMaxText();
    const double max = declared.isEmpty() ? 1e6 : declared.toDouble();
    const double size = dice.Logarithmic(1e-9, 1e9);
    const double candidates[] = {min, max, 0.0, size, -size, min + dice.Share() * (max - min)};
    const double any = candidates[dice.Below(6)];
    const double value = dice.Below(9) == 0 ? any : std::clamp(any, min, max);
    return property.GetTypeName() == QLatin1String("double")
               ? QString::number(value, 'g', dice.Below(2) == 0 ? 12 : 17)
               : QString::number(std::floor(value), 'f', 0);
}

QString PatternText(CDice& dice)
{
    QString pattern;
    for (INT32 bits = dice.Below(40); bits > 0; --bits)
    {
        pattern += QLatin1Char("01X"[dice.Below(3)]);
    }
    return pattern;
}
} // namespace

QString AnyText(const IDbProperty& property, CDice& dice)
{
    static const std::map<QString, QStringList> kTexts = {
        {QStringLiteral("string"),
         {QString(), QStringLiteral("a"), QString(11, u'b'), QStringLiteral("3=2.3;5=1.14"),
          QStringLiteral("4=-10;x"), QStringLiteral("C1*-2.5e3V")}},
        {QStringLiteral("filepath"),
         {QString(), QStringLiteral("a.png"), QStringLiteral("a.jpg"), QStringLiteral("b.CSV"),
          QStringLiteral("b.xml"), QStringLiteral("c.bin"), QStringLiteral("c.bmp")}},
        {QStringLiteral("reference"),
         {QString(), QStringLiteral("SerialBus/SPIBusResults/SPIBusFrame[1]"),
          QStringLiteral("Meter/MeterChannel[1]"), QStringLiteral("Counter/CounterChannel[0]"),
          QStringLiteral("Measurements/Measurement[2]")}},
        {QStringLiteral("blob"), {QStringLiteral("AQID")}}};
    const QStringList values = property.GetValueTexts();
    const auto texts = kTexts.find(property.GetTypeName());
    if (values.isEmpty() && texts == kTexts.end())
    {
        return property.GetTypeName() == QLatin1String("bitpattern") ? PatternText(dice)
                                                                     : NumberText(property, dice);
    }
    return dice.Of(values.isEmpty() ? texts->second : values);
}

KW_ACCEPTANCE DeliverText(IDbProperty& property, const QString& text)
{
    EXPECT_EQ(property.GetObjectType(), eOBJECTTYPE_RESULT) << property.GetPath().toStdString();
    auto& node = dynamic_cast<CDbPropBase&>(property);
    CDbValue value;
    const KW_ACCEPTANCE code = node.ParseText(text, value);
    return KW_IsAccepted(code) ? node.WriteValue(std::move(value), eWRITEKIND::Internal) : code;
}

namespace
{
/** Whether a text is a number between the limits that are shown. */
bool IsWithin(const IDbProperty& property, const QString& text)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber && value >= property.GetMinText().toDouble(&isNumber) && isNumber &&
           value <= property.GetMaxText().toDouble(&isNumber) && isNumber;
}

} // namespace

QString DoAnything(const CRuleTree& tree, const QList<QByteArray>& tops, CDice& dice)
{
    const auto top = std::dynamic_pointer_cast<IDbGroup>(
        tree.root->GetDbObject()->Find(QString::fromLatin1(dice.Of(tops))));
    if (!top)
    {
        return QString();
    }
    const auto group = dice.Of(GroupsFrom(top));
    const INT32 properties = group->GetPropertyCount();
    const INT32 choice = dice.Below(properties + group->GetActionCount() + 1);
    if (choice < properties)
    {
        const auto property = group->GetProperty(choice);
        if (dice.Below(9) == 0)
        {
            property->IncDec(dice.Below(7) - 3);
            return property->GetPath() + QStringLiteral(" by steps");
        }
        const QString text = AnyText(*property, dice);
        const bool isTaken = property->GetObjectType() == eOBJECTTYPE_SETTING &&
                             property->GetAvailability() == eAVAILABILITY_AVAILABLE &&
                             property->GetValueTexts().isEmpty() && IsWithin(*property, text);
        EXPECT_TRUE(KW_IsAccepted(property->SetText(text)) || !isTaken)
            << property->GetPath().toStdString() << " has room for " << text.toStdString();
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

namespace
{
std::vector<QString> Lines(const QByteArray& text)
{
    const QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'));
    return {lines.begin(), lines.end()};
}

void ExpectStates(const CRuleTree& tree, const QList<QByteArray>& expected)
{
    for (const QByteArray& part : expected)
    {
        const QByteArray path = Before(part, " = ");
        EXPECT_EQ(path.toStdString() + " = " + tree.State(path).toStdString(), part.toStdString());
    }
}

void ExpectUndoAndRedo(const CRuleTree& tree, const std::vector<QString>& before, int mostSteps)
{
    const auto after = tree.State();
    for (int steps = 0; tree.root->CanUndo(); ++steps)
    {
        ASSERT_EQ(tree.root->Undo(), eKW_ACC_OK);
        ASSERT_LT(steps, mostSteps);
    }
    EXPECT_EQ(FirstDifference(before, tree.State()).toStdString(), "") << "undone";
    while (tree.root->CanRedo())
    {
        ASSERT_EQ(tree.root->Redo(), eKW_ACC_OK);
    }
    EXPECT_EQ(FirstDifference(after, tree.State()).toStdString(), "") << "redone";
}

/** Forgets the steps so far. */
void StartHistory(const CRuleTree& tree)
{
    tree.root->EnableHistory(false);
    tree.root->EnableHistory(true);
}

void ExpectNothingWrong(const t_Walk& walk, const CRuleTree& tree)
{
    CFindings findings;
    walk.check(tree, findings);
    EXPECT_EQ(findings.Text(), "");
}

void WalkOnce(const t_Walk& walk, UINT32 seed)
{
    // The history keeps 100 steps.
    constexpr int kWrites = 90;
    const QList<QByteArray> groups = QByteArray(walk.groups).split(' ');
    const QRegularExpression expected(QString::fromLatin1(walk.reports));
    const CRuleTree tree;
    CDice dice(seed);
    tree.DoAll(walk.setup);
    StartHistory(tree);
    const auto before = tree.State();
    for (int i = 0; i < kWrites && !testing::Test::HasFailure(); ++i)
    {
        SCOPED_TRACE(DoAnything(tree, groups, dice).toStdString());
        ExpectNothingWrong(walk, tree);
        // Now and then: it takes longer than all the rest.
        EXPECT_EQ(i % 9 == 8 ? tree.Unsettled().toStdString() : "", "");
    }
    for (const QString& report : tree.reports.List())
    {
        EXPECT_TRUE(expected.match(report).hasMatch()) << report.toStdString();
    }
    ExpectUndoAndRedo(tree, before, kWrites);
    EXPECT_EQ(tree.Forgotten().toStdString(), "");
    ExpectNothingWrong(walk, tree);
}
} // namespace

CRuleTree::CRuleTree()
{
    KW_PeekZELRoot()->SetSettingsFolder(folder.path());
}

KW_ACCEPTANCE CRuleTree::Do(const QByteArray& write) const
{
    const auto separator = write.indexOf(" = ");
    if (write.startsWith("+ "))
    {
        return Container(root, write.mid(2))->InsertItem(QString());
    }
    if (separator < 0)
    {
        const auto action = std::dynamic_pointer_cast<IDbAction>(
            root->GetDbObject()->Find(QString::fromLatin1(write)));
        EXPECT_TRUE(action) << write.toStdString();
        return action ? action->Execute() : static_cast<KW_ACCEPTANCE>(eKW_ACC_NOT_FOUND);
    }
    const bool isResult = write.startsWith('@');
    const QString text = QString::fromLatin1(write.mid(separator + 3));
    const auto property = Property(root, write.left(separator).mid(isResult ? 1 : 0));
    return isResult ? DeliverText(*property, text) : property->SetText(text);
}

void CRuleTree::DoAll(const QByteArray& writes) const
{
    QByteArray group;
    for (const QByteArray& write : Parts(writes, group))
    {
        EXPECT_LE(Do(write), eKW_ACC_WARNING) << write.toStdString();
    }
}

QString CRuleTree::Text(const QByteArray& path) const
{
    return Property(root, path)->GetText();
}

QString CRuleTree::State(const QByteArray& path) const
{
    const auto dot = path.indexOf('.');
    if (path.endsWith(".count"))
    {
        return QString::number(Items(path.left(dot))->GetCount());
    }
    const auto property = Property(root, Before(path, "."));
    const QByteArray what = path.mid(dot + 1);
    if (dot >= 0)
    {
        return what == "min"    ? property->GetMinText()
               : what == "max"  ? property->GetMaxText()
               : what == "step" ? property->GetStepText()
               : what == "unit"
                   ? GetStaticEnumNameInfo<KW_UNIT>().GetSerialName(property->GetUnitCode())
               : what == "6" ? QString::number(property->GetText().toDouble(), 'g', 6)
                             : property->GetValueTexts().join(QLatin1Char('|'));
    }
    const bool isSetting = property->GetObjectType() == eOBJECTTYPE_SETTING;
    const bool isClosed = isSetting && property->GetAvailability() != eAVAILABILITY_AVAILABLE;
    const bool isInvalid = property->GetValidity() != eKW_VALIDITY_VALID;
    return property->GetText() + QLatin1String(isInvalid ? "-" : "") +
           QLatin1String(isClosed ? "!" : "");
}

QString CRuleTree::Unsettled() const
{
    std::vector<std::pair<std::shared_ptr<IDbGroup>, long long>> groups;
    for (const auto& group : GroupsFrom(root->GetDbObject()))
    {
        group->HasChanged(groups.emplace_back(group, 0).second);
    }
    KW_PeekZELRoot()->UpdateAllMeasSettings();
    // Parents come first: the last one is the group itself.
    const auto last =
        std::find_if(groups.rbegin(), groups.rend(),
                     [](auto& entry) { return entry.first->HasChanged(entry.second); });
    return last == groups.rend() ? QString() : last->first->GetPath();
}

QString CRuleTree::Forgotten() const
{
    const QByteArray saved = Saved(root);
    EXPECT_EQ(root->GetPrPreset()->Set(), eKW_ACC_OK);
    EXPECT_EQ(RecallText(root, saved), eKW_ACC_OK);
    return FirstDifference(Lines(saved), Lines(Saved(root)));
}

void PrintTo(const t_Rule& rule, std::ostream* stream)
{
    *stream << rule.name;
}

TEST_P(Rules, IsBrokenOrDoesNotComeBack)
{
    const t_Rule& rule = GetParam();
    const CRuleTree tree;
    QByteArray group;
    tree.DoAll(rule.setup);
    Parts(rule.setup, group);
    StartHistory(tree);
    const auto before = tree.State();
    EXPECT_EQ(tree.Do(Parts(rule.write, group).first()), rule.code);
    ExpectStates(tree, Parts(rule.expected, group));
    EXPECT_EQ(tree.reports.Messages().toStdString(), rule.report);
    if (rule.write[0] != '@')
    {
        ExpectUndoAndRedo(tree, before, 1);
    }
    EXPECT_EQ(tree.Unsettled().toStdString(), "");
    EXPECT_EQ(tree.Forgotten().toStdString(), "");
}

void PrintTo(const t_Session& session, std::ostream* stream)
{
    *stream << session.name;
}

TEST_P(Sessions, EndInAStateThatMisleads)
{
    const CRuleTree tree;
    const auto before = tree.State();
    bool delivers = false;
    QByteArray group;
    for (const auto& [done, stands] : GetParam().parts)
    {
        SCOPED_TRACE(done);
        for (const QByteArray& write : Parts(done, group))
        {
            EXPECT_LE(tree.Do(write), eKW_ACC_WARNING) << write.toStdString();
        }
        const QList<QByteArray> states = Parts(stands, group);
        ExpectStates(tree, states);
        EXPECT_EQ(tree.Unsettled().toStdString(), "");
        ExpectStates(tree, states);
        delivers |= QByteArray(done).contains('@');
    }
    EXPECT_EQ(tree.reports.Messages().toStdString(), "");
    if (!delivers)
    {
        ExpectUndoAndRedo(tree, before, 99);
    }
    EXPECT_EQ(tree.Forgotten().toStdString(), "");
}

TEST_P(Walks, BreakARuleOrDoNotComeBack)
{
    for (int seed = 1; seed <= GetParam().trees && !HasFailure(); ++seed)
    {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        WalkOnce(GetParam(), static_cast<UINT32>(seed));
    }
}
