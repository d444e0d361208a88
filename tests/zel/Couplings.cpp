// SPDX-License-Identifier: MIT
#include "Couplings.h"

#include "EnumNameInfo.h"
#include "IKWProperties.h"

#include <QFile>
#include <QTemporaryDir>
#include <cmath>

namespace
{
template <typename T>
bool Deliver(IKWPropertyBase* handle, T value)
{
    auto* const number = dynamic_cast<IKWNumericProperty<T>*>(handle);
    return number != nullptr && number->SetResult(value) <= eKW_ACC_WARNING;
}

KW_ACCEPTANCE DeliverText(const std::shared_ptr<IDbProperty>& property, const QString& text)
{
    const auto handle = property->GetHandle();
    if (const CEnumNameInfo* const names = property->GetEnumNameInfo())
    {
        // The typed result of an enumeration has no common base: every type that a test needs.
        for (INT32 value = 0; value < names->GetEnumSize(); ++value)
        {
            if (names->GetSerialName(value) != text)
            {
                continue;
            }
            if (auto* const onOff = dynamic_cast<IKWEnumProperty<KW_ONOFF>*>(handle.get()))
            {
                return onOff->SetResult(static_cast<KW_ONOFF>(value));
            }
            if (auto* const status =
                    dynamic_cast<IKWEnumProperty<KW_ZEL_METER_STATUS>*>(handle.get()))
            {
                return status->SetResult(static_cast<KW_ZEL_METER_STATUS>(value));
            }
        }
        return eKW_ACC_UNKNOWN_VALUE;
    }
    const double value = text.toDouble();
    const bool taken = Deliver<double>(handle.get(), value) ||
                       Deliver<UINT64>(handle.get(), static_cast<UINT64>(value)) ||
                       Deliver<INT64>(handle.get(), static_cast<INT64>(value)) ||
                       Deliver<UINT32>(handle.get(), static_cast<UINT32>(value));
    return taken ? eKW_ACC_OK : eKW_ACC_WRONG_KIND;
}

std::shared_ptr<IDbProperty> PropertyAt(const std::shared_ptr<IKWFunctionZEL>& root,
                                        const QString& path)
{
    return Property(root, path.toLatin1().constData());
}

/** What an expectation's left side reads now. */
QString Reading(const std::shared_ptr<IKWFunctionZEL>& root, const QString& left)
{
    const auto property = PropertyAt(root, left.section(QLatin1Char('.'), 0, 0));
    const QString what = left.section(QLatin1Char('.'), 1);
    return what == QLatin1String("min")      ? property->GetMinText()
           : what == QLatin1String("max")    ? property->GetMaxText()
           : what == QLatin1String("values") ? property->GetValueTexts().join(QLatin1Char('|'))
           : what == QLatin1String("unit")   ? QString::number(property->GetUnitCode())
           : what == QLatin1String("availability") ? QString::number(property->GetAvailability())
           : property->GetValidity() == eKW_VALIDITY_VALID ? property->GetText()
                                                           : QStringLiteral("invalid");
}

void Expect(const std::shared_ptr<IKWFunctionZEL>& root, const QString& expectation)
{
    if (expectation.startsWith(QLatin1Char('!')))
    {
        EXPECT_EQ(PropertyAt(root, expectation.mid(1))->GetValidity(), eKW_VALIDITY_INVALID)
            << expectation.toStdString();
        return;
    }
    const QString left = expectation.section(QLatin1Char('='), 0, 0);
    EXPECT_EQ(Reading(root, left).toStdString(),
              expectation.section(QLatin1Char('='), 1).toStdString())
        << left.toStdString();
}

QString Difference(const std::shared_ptr<IKWFunctionZEL>& root, const std::vector<QString>& state)
{
    return FirstDifference(state, Snapshot(root->GetDbObject()));
}

void ExpectSettled(const std::shared_ptr<IKWFunctionZEL>& root, const std::string& when)
{
    long long counter = 0;
    root->HasChanged(counter);
    root->UpdateAllMeasSettings();
    EXPECT_FALSE(root->HasChanged(counter)) << when;
}

std::vector<QString> SavedLines(const std::shared_ptr<IKWFunctionZEL>& root, const QString& name)
{
    EXPECT_EQ(root->Save(name), eKW_ACC_OK);
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    return {lines.begin(), lines.end()};
}

double ChanceNumber(std::mt19937& dice, double min, double max)
{
    const double share = static_cast<double>(dice()) / 4294967295.0;
    const double size = std::pow(10.0, -6.0 + 12.0 * share);
    const double candidates[] = {min, max, 0.0, size, -size, min / 2.0 + max / 2.0};
    return std::clamp(candidates[dice() % 6], min, max);
}

/** A text that is legal for a property, or likely so. */
QString ChanceText(const IDbProperty& property, std::mt19937& dice)
{
    const QStringList values = property.GetValueTexts();
    if (!values.isEmpty())
    {
        return values[static_cast<int>(dice() % static_cast<UINT32>(values.size()))];
    }
    const QString type = property.GetTypeName();
    if (type == QLatin1String("reference"))
    {
        const char* const items[] = {"", "Meter/MeterChannel[1]", "Counter/CounterChannel[0]",
                                     "Measurements/Measurement[2]", "Vertical/Channel[3]"};
        return QString::fromLatin1(items[dice() % 5]);
    }
    if (type == QLatin1String("string"))
    {
        const char* const texts[] = {"", "a", "3=2.3;5=1.14", "7=0.5", "4=-10;x"};
        return QString::fromLatin1(texts[dice() % 5]);
    }
    const double min = property.GetMinText().toDouble();
    const double max = property.GetMaxText().toDouble();
    const double number = ChanceNumber(dice, min, max);
    return type == QLatin1String("double") ? QString::number(number, 'g', 17)
                                           : QString::number(std::floor(number), 'f', 0);
}

/** Answers what was done. */
QString StepByChance(const std::vector<std::shared_ptr<IDbGroup>>& groups, std::mt19937& dice)
{
    const auto& group = groups[dice() % groups.size()];
    const auto count = static_cast<UINT32>(group->GetPropertyCount());
    const auto actions = static_cast<UINT32>(group->GetActionCount());
    if (actions != 0 && dice() % 5 == 0)
    {
        const auto action = group->GetAction(static_cast<INT32>(dice() % actions));
        action->Execute();
        return action->GetPath();
    }
    if (count == 0)
    {
        return QString();
    }
    const auto property = group->GetProperty(static_cast<INT32>(dice() % count));
    if (property->GetObjectType() != eOBJECTTYPE_SETTING)
    {
        return QString();
    }
    const QString text = ChanceText(*property, dice);
    property->SetText(text);
    return property->GetPath() + QLatin1Char('=') + text;
}

std::vector<std::shared_ptr<IDbGroup>> GroupsBelow(const std::shared_ptr<IKWFunctionZEL>& root,
                                                   const QStringList& paths)
{
    std::vector<std::shared_ptr<IDbGroup>> groups;
    for (const QString& path : paths)
    {
        VisitGroups(std::dynamic_pointer_cast<IDbGroup>(root->GetDbObject()->Find(path)),
                    [&groups](const std::shared_ptr<IDbGroup>& group)
                    {
                        if (group->AsContainer() == nullptr)
                        {
                            groups.push_back(group);
                        }
                    });
    }
    return groups;
}

void UndoAndRedoAll(const std::shared_ptr<IKWFunctionZEL>& root, const std::vector<QString>& first)
{
    const auto last = Snapshot(root->GetDbObject());
    while (root->CanUndo())
    {
        ASSERT_EQ(root->Undo(), eKW_ACC_OK);
    }
    EXPECT_EQ(Difference(root, first).toStdString(), "") << "undone";
    while (root->CanRedo())
    {
        ASSERT_EQ(root->Redo(), eKW_ACC_OK);
    }
    EXPECT_EQ(Difference(root, last).toStdString(), "") << "redone";
}
} // namespace

void PrintTo(const t_Coupling& coupling, std::ostream* out)
{
    *out << coupling.name;
}

std::string CouplingName(const testing::TestParamInfo<t_Coupling>& info)
{
    return info.param.name;
}

KW_ACCEPTANCE RunStep(const std::shared_ptr<IKWFunctionZEL>& root, const QString& step)
{
    if (step.endsWith(QLatin1String("()")))
    {
        const auto action = std::dynamic_pointer_cast<IDbAction>(
            root->GetDbObject()->Find(step.left(step.size() - 2)));
        EXPECT_TRUE(action) << step.toStdString();
        return action->Execute();
    }
    const bool isResult = step.startsWith(QLatin1Char('@'));
    const QString path = step.section(QLatin1Char('='), 0, 0).mid(isResult ? 1 : 0);
    const QString text = step.section(QLatin1Char('='), 1);
    const auto property = PropertyAt(root, path);
    return isResult ? DeliverText(property, text) : property->SetText(text);
}

void CheckCoupling(const t_Coupling& coupling)
{
    const auto root = GetZELRoot();
    for (const char* const step : coupling.before)
    {
        ASSERT_LE(RunStep(root, QString::fromLatin1(step)), eKW_ACC_WARNING) << step;
    }
    const auto before = Snapshot(root->GetDbObject());
    EXPECT_EQ(RunStep(root, QString::fromLatin1(coupling.step)), coupling.code) << coupling.step;
    for (const char* const expectation : coupling.after)
    {
        Expect(root, QString::fromLatin1(expectation));
    }
    ExpectSettled(root, coupling.step);
    const auto after = Snapshot(root->GetDbObject());
    if (before != after && coupling.step[0] != '@')
    {
        EXPECT_EQ(root->Undo(), eKW_ACC_OK);
        EXPECT_EQ(Difference(root, before).toStdString(), "") << "undo";
        EXPECT_EQ(root->Redo(), eKW_ACC_OK);
        EXPECT_EQ(Difference(root, after).toStdString(), "") << "redo";
    }
    EXPECT_EQ(RecallDifference(root).toStdString(), "");
}

QString RecallDifference(const std::shared_ptr<IKWFunctionZEL>& root)
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("first.xml"));
    const auto first = SavedLines(root, name);
    EXPECT_EQ(root->Recall(name), eKW_ACC_OK);
    return FirstDifference(first, SavedLines(root, folder.filePath(QStringLiteral("second.xml"))));
}

void WalkByChance(const std::shared_ptr<IKWFunctionZEL>& root, const QStringList& paths,
                  UINT32 seed, int steps, const std::function<QStringList()>& violations)
{
    // The history keeps 100 steps.
    constexpr int kRound = 80;
    std::mt19937 dice(seed);
    const auto groups = GroupsBelow(root, paths);
    for (int done = 0; done < steps && !testing::Test::HasFailure(); done += kRound)
    {
        root->EnableHistory(false);
        root->EnableHistory(true);
        const auto first = Snapshot(root->GetDbObject());
        for (int i = 0; i < kRound; ++i)
        {
            const std::string step = StepByChance(groups, dice).toStdString();
            ASSERT_EQ(violations().join(QLatin1Char(' ')).toStdString(), "") << step;
            ExpectSettled(root, step);
        }
        UndoAndRedoAll(root, first);
        ASSERT_EQ(RecallDifference(root).toStdString(), "") << "after step " << done + kRound;
        ASSERT_EQ(violations().join(QLatin1Char(' ')).toStdString(), "") << "recalled";
    }
}
