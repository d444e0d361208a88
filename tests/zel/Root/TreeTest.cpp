// SPDX-License-Identifier: MIT
#include "CommonDatabase/Containers/DbContainerBase.h"
#include "CommonDatabase/Nodes/DbFunction.h"
#include "EnumNameInfo.h"
#include "IKWProperties.h"
#include "Root/PgZEL.h"
#include "zel/ZelTree.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <malloc.h>
#include <map>
#include <set>

namespace
{
/** Takes back what can be; answers how many steps. */
int UndoAll(const std::shared_ptr<IKWFunctionZEL>& root)
{
    int steps = 0;
    for (; root->CanUndo(); ++steps)
    {
        EXPECT_EQ(root->Undo(), eKW_ACC_OK);
    }
    return steps;
}

/** A legal text other than the present one, or a null text where the property has only one value.
 */
QString OtherText(IDbProperty& property)
{
    static const std::map<QString, QStringList> kTexts = {
        {QStringLiteral("string"), {QStringLiteral("a"), QStringLiteral("b")}},
        {QStringLiteral("blob"), {QStringLiteral("AQID")}},
        {QStringLiteral("bitpattern"), {QStringLiteral("1X"), QStringLiteral("0")}},
        {QStringLiteral("reference"), {QStringLiteral("Vertical/Channel[2]")}}};
    QStringList texts = property.GetValueTexts();
    const QString min = property.GetMinText();
    const QString max = property.GetMaxText();
    if (const auto known = kTexts.find(property.GetTypeName());
        known != kTexts.end() && texts.isEmpty())
    {
        texts = known->second;
    }
    else if (const auto* const file =
                 dynamic_cast<IKWFilePathProperty*>(property.GetHandle().get()))
    {
        const QStringList extensions = file->GetOpenExtensions() + file->GetSaveExtensions();
        texts.append(QStringLiteral("a.") + extensions.value(0, QStringLiteral("csv")));
    }
    else if (texts.isEmpty() && property.GetEnumNameInfo() == nullptr &&
             (min.isEmpty() || min != max))
    {
        texts = QStringList{max, min, QStringLiteral("1"), QStringLiteral("2")};
    }
    if (property.GetNodeName() == QLatin1String("Passphrase"))
    {
        texts = QStringList{QStringLiteral("correct horse"), QStringLiteral("battery staple")};
    }
    if (property.GetNodeName() == QLatin1String("ActiveWhen"))
    {
        texts = QStringList{QStringLiteral("a = 1"), QStringLiteral("b = 0-3, 7")};
    }
    texts.removeAll(QString());
    texts.removeAll(property.GetText());
    return texts.value(0);
}
} // namespace

TEST(Tree, RefusedActionLeavesATrace)
{
    const QTemporaryDir folder;
    const auto root = GetZELRoot();
    root->SetSettingsFolder(folder.path());
    FillContainers(root, 1);
    const CReports reports;
    int refused = 0;
    Walk<CDbFunction>(root->GetDbObject(),
                      [&](const auto& action)
                      {
                          const UINT64 runs = action->GetRunCount();
                          long long counter = 0;
                          root->HasChanged(counter);
                          if (action->Execute() > eKW_ACC_WARNING)
                          {
                              ++refused;
                              EXPECT_EQ(action->GetRunCount(), runs)
                                  << action->GetPath().toStdString();
                              EXPECT_FALSE(root->HasChanged(counter))
                                  << action->GetPath().toStdString();
                          }
                      });
    EXPECT_GT(refused, 20);
}

TEST(Tree, MarkersExceedFifteenOrOtherArraysAreLimited)
{
    const auto root = GetZELRoot();
    const auto markers = Container(root, "Spectrum/SpectrumMarkers/SpectrumMarker");
    for (int i = 0; i < 15; ++i)
    {
        ASSERT_EQ(markers->InsertItem(QString()), eKW_ACC_OK);
    }
    EXPECT_EQ(markers->InsertItem(QString()), eKW_ACC_CONTAINER_FULL);
    for (const auto& group : GroupsFrom(root->GetDbObject()))
    {
        const bool isOther = group->GetNodeName() != QLatin1String("SpectrumMarker");
        if (group->GetKind() == eKW_NODE_ARRAY && isOther)
        {
            EXPECT_EQ(group->AsContainer()->GetMaxCount(), 2147483647)
                << group->GetPath().toStdString();
        }
    }
}

TEST(Tree, FileLosesSettingsOfFilledContainers)
{
    for (const char* const suffix : {"xml", "csv"})
    {
        const CReports reports;
        auto root = GetZELRoot();
        FillContainers(root, 3);
        const QByteArray first = Saved(root, suffix);
        root.reset();
        root = GetZELRoot();
        ASSERT_EQ(RecallText(root, first, suffix), eKW_ACC_OK);
        EXPECT_TRUE(Saved(root, suffix) == first) << suffix;
        EXPECT_EQ(reports.List(), QStringList());
        EXPECT_TRUE(first.contains("SignalTranslationEnumValues"));
    }
}

TEST(Tree, FileThatNamesOneTwinLosesItOrLeavesTheOther)
{
    const auto root = GetZELRoot();
    std::set<QString> unknown;
    int tried = 0;
    KW_PeekZELRoot()->VisitChildrenFirst(
        [&](CDbPropertyGroup& group)
        {
            for (const auto& property : group.Properties())
            {
                if (property->NodeName().endsWith(QLatin1String("GUI")))
                {
                    unknown.insert(property->GetPath());
                }
            }
            for (const auto& [row, one, other] : group.GetTwins())
            {
                unknown.erase(one->GetPath());
                unknown.erase(other->GetPath());
                for (const CDbPropBase* const named : {one, other})
                {
                    const QString path = named->GetPath();
                    const auto written = Property(root, path.toLatin1().constData());
                    const QString text = OtherText(*written);
                    if (written->GetAvailability() != eAVAILABILITY_AVAILABLE)
                    {
                        continue;
                    }
                    ASSERT_TRUE(KW_IsAccepted(written->SetText(text))) << path.toStdString();
                    const QStringList wanted{one->GetText(), other->GetText()};
                    ASSERT_EQ(root->Undo(), eKW_ACC_OK);
                    ASSERT_NE(QStringList({one->GetText(), other->GetText()}), wanted);
                    ++tried;
                    EXPECT_TRUE(KW_IsAccepted(RecallNaming(root, *named, text)));
                    EXPECT_EQ(QStringList({one->GetText(), other->GetText()}), wanted)
                        << path.toStdString();
                    ASSERT_EQ(root->Undo(), eKW_ACC_OK);
                }
            }
        });
    EXPECT_GT(tried, 20);
    EXPECT_EQ(unknown, std::set<QString>()) << "twins that no group knows";
}

TEST(Tree, PropertyRefusesALegalTextOrDoesNotReadBack)
{
    const auto root = GetZELRoot();
    FillContainers(root, 1);
    root->EnableHistory(false);
    root->EnableHistory(true);
    const auto before = Snapshot(root->GetDbObject());
    int written = 0;
    QStringList refused;
    Walk<IDbProperty>(
        root->GetDbObject(),
        [&](const auto& node)
        {
            IDbProperty& property = *node;
            const bool isOpen = property.GetObjectType() != eOBJECTTYPE_RESULT &&
                                property.GetAvailability() == eAVAILABILITY_AVAILABLE;
            const QString text = isOpen ? OtherText(property) : QString();
            if (text.isNull())
            {
                return;
            }
            const KW_ACCEPTANCE code = property.SetText(text);
            const QString read = property.GetText();
            // Back at once: the next property is tried from the same state.
            const int steps = UndoAll(root);
            if (code > eKW_ACC_WARNING || (code == eKW_ACC_OK && (read != text || steps == 0)))
            {
                refused.append(QStringLiteral("%1 = %2: code %3, reads %4, %5 steps")
                                   .arg(property.GetPath(), text)
                                   .arg(code)
                                   .arg(read)
                                   .arg(steps));
            }
            ++written;
            // The whole tree is compared now and then: each time would take minutes.
            if (written % 100 == 0)
            {
                ASSERT_EQ(FirstDifference(before, Snapshot(root->GetDbObject())), QString())
                    << "at or before " << property.GetPath().toStdString();
            }
        });
    EXPECT_EQ(FirstDifference(before, Snapshot(root->GetDbObject())), QString());
    EXPECT_EQ(refused.join(QLatin1Char('\n')).toStdString(), "");
    EXPECT_GT(written, 1000);
}

namespace
{
/** Power of ten of the last digit: −3 of "0.125" and of "2.5e-02". */
int LastDigit(const QString& number)
{
    const QString mantissa = number.section(QLatin1Char('e'), 0, 0);
    const QString fraction = mantissa.section(QLatin1Char('.'), 1);
    return number.section(QLatin1Char('e'), 1).toInt() - static_cast<int>(fraction.size());
}

/** Steps a number onto its grid and from there up to ten steps away and back. Answers what is
    wrong, and the number of steps, 0 where nothing can step. */
QString WalkAway(IDbProperty& property, int& steps)
{
    const INT32 up = property.IncDec(1) == eKW_ACC_OK ? 1 : -1;
    const QString start = property.GetText();
    for (steps = 0; steps < 10; ++steps)
    {
        const QString before = property.GetText();
        if (property.IncDec(up) != eKW_ACC_OK)
        {
            property.SetText(before); // limits may lie beside the grid
            break;
        }
        const QString step = property.GetStepText();
        const QString text = property.GetText();
        const auto digits = text.section(QLatin1Char('e'), 0, 0).remove(u'.').remove(u'0').size();
        if (step.isEmpty() ? digits > 1 : LastDigit(text) < LastDigit(step))
        {
            return text + QStringLiteral(" by ") + step;
        }
    }
    for (int i = 0; i < steps; ++i)
    {
        property.IncDec(-up);
    }
    return property.GetText() == start
               ? QString()
               : start + QStringLiteral(" returns as ") + property.GetText();
}

} // namespace

TEST(Tree, StepsDoNotReturnOrLeaveTheirGrid)
{
    const auto root = GetZELRoot();
    FillContainers(root, 1);
    root->EnableHistory(false);
    root->EnableHistory(true);
    int walked = 0;
    QStringList wrong;
    Walk<IDbProperty>(root->GetDbObject(),
                      [&](const auto& node)
                      {
                          IDbProperty& property = *node;
                          int steps = 0;
                          const bool isReal = property.GetTypeName() == QLatin1String("double");
                          const QString found = isReal ? WalkAway(property, steps) : QString();
                          walked += steps > 0 ? 1 : 0;
                          wrong += found.isEmpty() ? QStringList()
                                                   : QStringList(property.GetPath() + u' ' + found);
                          UndoAll(root);
                      });
    EXPECT_EQ(wrong.join(QLatin1Char('\n')).toStdString(), "");
    EXPECT_GT(walked, 150);
}

// A sanitizer has a heap of its own.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(Tree, TakesMoreMemoryThanAnInstrumentHas)
{
    GetZELRoot(); // name tables and other statics are not part of the tree
    const std::size_t before = mallinfo2().uordblks;
    const auto root = GetZELRoot();
    const std::size_t bytes = mallinfo2().uordblks - before;
    int properties = 0;
    Walk<IDbProperty>(root->GetDbObject(), [&properties](const auto&) { ++properties; });
    const int perProperty = static_cast<int>(bytes) / properties;
    RecordProperty("bytes_per_property", perProperty);
    EXPECT_LE(perProperty, 500);
    EXPECT_GT(perProperty, 50) << "counted nothing";
}
#endif

TEST(Tree, EnumerationIsUsedByNoProperty)
{
    const auto root = GetZELRoot();
    FillContainers(root, 1);
    std::set<QString> used{QStringLiteral("KW_SIGNAL_FORMAT")};
    Walk<IDbProperty>(root->GetDbObject(),
                      [&used](const auto& property)
                      {
                          const CEnumNameInfo* const names = property->GetEnumNameInfo();
                          used.insert(names != nullptr ? names->GetType() : QString());
                      });
    QStringList unused;
    int types = 0;
    const QDir folder(QStringLiteral(KWI_GENERATED_INTERFACES));
    for (const QString& name : folder.entryList({QStringLiteral("KWEnumerations*.h")}))
    {
        QFile header(folder.filePath(name));
        ASSERT_TRUE(header.open(QIODevice::ReadOnly));
        for (const QString& line : QString::fromUtf8(header.readAll()).split(u'\n'))
        {
            const bool isType = line.startsWith(QLatin1String("enum KW_"));
            const QString type = line.section(u' ', 1, 1);
            types += isType ? 1 : 0;
            unused += isType && used.count(type) == 0 ? QStringList(type) : QStringList();
        }
    }
    EXPECT_EQ(types, 253) << "252 types and the signal format";
    EXPECT_EQ(unused, QStringList());
}
