// SPDX-License-Identifier: MIT
#include "IKWFunctionControl.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionSMMode.h"
#include "KWBrackets.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsTrigger.h"
#include "Root/PgZEL.h"
#include "Rules/SourceDependencies.h"
#include "zel/ZelTree.h"

#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <functional>
#include <future>
#include <gtest/gtest.h>
#include <set>

TEST(Root, OutlivesItsLastClientOrKeepsOldValues)
{
    auto root = GetZELRoot();
    const std::weak_ptr<IKWFunctionZEL> watched = root;
    ASSERT_EQ(Property(root, "RemoteState")->SetText(QStringLiteral("ON")), eKW_ACC_OK);
    root.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_FALSE(KW_PeekZELRoot());
    EXPECT_EQ(Property(GetZELRoot(), "RemoteState")->GetText(), QStringLiteral("OFF"));
}

TEST(Root, FreshTreeHasUndoStepsOrReports)
{
    const CReports reports;
    const auto root = GetZELRoot();
    EXPECT_FALSE(root->CanUndo());
    EXPECT_EQ(reports.List(), QStringList());
}

TEST(Root, SecondCalculationChangesSomething)
{
    const auto root = GetZELRoot();
    root->EnableHistory(false);
    const char* const sources[] = {"Vertical/Channel[0]/Enabled",
                                   "Vertical/Channel[1]/Enabled",
                                   "Vertical/Channel[2]/Enabled",
                                   "Vertical/Channel[3]/Enabled",
                                   "Logic/Enabled",
                                   "Mathematics/Enabled",
                                   "FFT/State",
                                   "XY/State"};
    for (UINT32 on = 0; on < 1U << std::size(sources); ++on)
    {
        for (std::size_t i = 0; i < std::size(sources); ++i)
        {
            Property(root, sources[i])->SetText(QLatin1String((on >> i & 1) != 0 ? "ON" : "OFF"));
        }
        long long counter = 0;
        root->HasChanged(counter);
        KW_PeekZELRoot()->GetDependencies().CalculateEverything();
        root->UpdateAllMeasSettings();
        ASSERT_FALSE(root->HasChanged(counter)) << "sources that are on: " << on;
    }
}

TEST(Root, ActionsSaveAndRestoreElsewhereOrTooLittle)
{
    const QTemporaryDir folder;
    const auto root = GetZELRoot();
    root->SetSettingsFolder(folder.filePath(QStringLiteral("deep/settings")));
    const auto brightness = Property(root, "Setup/Display/Brightness");
    const auto scale = Property(root, "Horizontal/Scale");
    ASSERT_EQ(brightness->SetText(QStringLiteral("10_PERCENT")), eKW_ACC_OK);
    ASSERT_EQ(scale->SetText(QStringLiteral("1e-05")), eKW_ACC_OK);
    ASSERT_EQ(root->GetPrShutdownSave()->Set(), eKW_ACC_OK);
    ASSERT_EQ(root->GetPrSave()->Set(), eKW_ACC_OK);
    EXPECT_TRUE(
        QFile::exists(root->GetSettingsFolder() + QStringLiteral("/SystemRestoration.xml")));

    ASSERT_EQ(root->GetPrPresetFactory()->Set(), eKW_ACC_OK);
    EXPECT_EQ(brightness->GetText(), QStringLiteral("70_PERCENT"));
    ASSERT_EQ(root->GetPrRecall()->Set(), eKW_ACC_OK);
    EXPECT_EQ(scale->GetText(), QStringLiteral("1e-05"));
    EXPECT_EQ(brightness->GetText(), QStringLiteral("70_PERCENT")) << "state is no user setting";
    ASSERT_EQ(root->GetPrStartupRecall()->Set(), eKW_ACC_OK);
    EXPECT_EQ(brightness->GetText(), QStringLiteral("10_PERCENT"));
    ASSERT_EQ(root->GetPrPreset()->Set(), eKW_ACC_OK);
    EXPECT_EQ(scale->GetText(), QStringLiteral("1e-07"));
    EXPECT_EQ(brightness->GetText(), QStringLiteral("10_PERCENT"));
}

TEST(Root, RefusedRecallStopsTheAcquisitionOrAGoodOneDoesNot)
{
    const QTemporaryDir folder;
    const CReports reports;
    const auto root = GetZELRoot();
    const auto stop = root->GetPgControl()->GetPgSMMode()->GetPrStop();
    const auto write = [&folder](const char* name, const QByteArray& text)
    {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    };
    const QByteArray text = Saved(root);
    const QString good = write("good.xml", text);
    stop->AttachExecutor(true);
    ASSERT_EQ(stop->SetTimeout(1), eKW_ACC_OK);
    for (const QString& name :
         {folder.filePath(QStringLiteral("missing.xml")), write("damaged.xml", text.left(5000)),
          write("foreign.xml", "<Settings Kind=\"Car\" Version=\"1.0\"/>"),
          write("newer.xml", "<Settings Kind=\"ZEL\" Version=\"2.0\"/>"),
          write("changed.xml", QByteArray(text).replace("\"1e-07\"", "\"2e-07\""))})
    {
        EXPECT_GT(root->Recall(name), eKW_ACC_WARNING) << name.toStdString();
        EXPECT_EQ(stop->TakeEvent(), eKW_OP_EVENT_NONE) << name.toStdString();
    }
    root->SetControlMode(eCONTROL_LOCAL_LOCKOUT);
    EXPECT_EQ(root->Recall(good), eKW_ACC_NO_WRITE_ACCESS);
    root->SetControlMode(eCONTROL_LOCAL);
    EXPECT_EQ(stop->TakeEvent(), eKW_OP_EVENT_NONE);
    EXPECT_EQ(root->Recall(good), eKW_ACC_OK);
    EXPECT_EQ(stop->TakeEvent(), eKW_OP_EVENT_START);
}

namespace
{
class ActionOnFile : public testing::TestWithParam<const char*>
{
};
} // namespace

TEST_P(ActionOnFile, KeepsWritersWaiting)
{
    const auto root = GetZELRoot();
    root->SetSettingsFolder(QStringLiteral("/proc/nowhere"));
    for (const char* const file : {"SaveRecall/File", "SerialBus/CANBusSettings/LabelListSettings/"
                                                      "File"})
    {
        ASSERT_EQ(Property(root, file)->SetText(QStringLiteral("/proc/no.xml")), eKW_ACC_OK);
    }
    std::future<KW_ACCEPTANCE> write;
    bool wrote = false;
    // What is wrong with the file is told while the action is about it.
    const KW_ErrorHandler before = KW_SetErrorHandler(
        [&](const KW_ErrorReport&)
        {
            write = std::async(std::launch::async, [&root]
                               { return root->GetPgHorizontal()->GetPrScale()->Set(1e-6); });
            wrote = write.wait_for(std::chrono::seconds(10)) == std::future_status::ready;
        });
    const auto action = std::dynamic_pointer_cast<CDbFunction>(
        root->GetDbObject()->Find(QString::fromLatin1(GetParam())));
    EXPECT_GT(action->Execute(), eKW_ACC_WARNING);
    KW_SetErrorHandler(before);
    EXPECT_TRUE(wrote);
    EXPECT_EQ(action->GetRunCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Actions, ActionOnFile,
                         testing::Values("Save", "Recall", "StartupRecall", "ShutdownSave",
                                         "SaveRecall/SaveToSlot", "SaveRecall/SaveToFile",
                                         "SaveRecall/RecallFromFile",
                                         "SerialBus/CANBusSettings/LabelListSettings/Load",
                                         "SerialBus/CANBusSettings/LabelListSettings/Save"));

TEST(Root, StepIsNamedAfterItsFirstRecord)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.xml"));
    const auto root = GetZELRoot();
    const auto scale = Property(root, "Horizontal/Scale");
    ASSERT_EQ(scale->SetText(QStringLiteral("1e-05")), eKW_ACC_OK);
    ASSERT_EQ(root->Save(file), eKW_ACC_OK);
    const std::pair<const char*, std::function<void()>> steps[] = {
        {"Preset", [&] { root->RunPresetSequence(false); }},
        {"PresetFactory", [&] { root->RunPresetSequence(true); }},
        {"PresetFactory", [&] { root->GetPrPresetFactory()->Set(); }},
        {"Recall", [&] { KW_PeekZELRoot()->RecallFromFile(file, eSAVERECALL_SETTINGS); }},
        {"Recall", [&] { root->Recall(file); }},
    };
    for (const auto& [name, run] : steps)
    {
        ASSERT_LE(scale->SetText(QStringLiteral("0.002")), eKW_ACC_WARNING);
        run();
        EXPECT_EQ(root->GetUndoText().toStdString(), name);
    }
}

TEST(Root, TransactionLeavesTracesWhenItIsNotCommitted)
{
    const auto root = GetZELRoot();
    const auto before = Snapshot(root->GetDbObject());
    {
        const CKWTransaction transaction(root, QStringLiteral("try"));
        root->GetPgHorizontal()->GetPrScale()->Set(1e-3);
        root->GetPgHorizontal()->GetPrHistoryDepth()->SetAsInt(1);
    }
    EXPECT_EQ(FirstDifference(before, Snapshot(root->GetDbObject())), QString());
    EXPECT_FALSE(root->CanUndo());
}

namespace
{
/** A function that accepts a set of channels. */
class CAccepted final : public IApplicationOnSources
{
public:
    explicit CAccepted(std::set<INT32> channels) : m_channels(std::move(channels)) {}
    bool IsSourceApplicable(KW_ZEL_CHANNEL channel) const override
    {
        return m_channels.count(channel) == 1;
    }

private:
    std::set<INT32> m_channels;
};

struct t_SourceCase
{
    const char* name;
    std::set<INT32> accepted;
    INT32 present;
    bool adjust;
    bool result;
    INT32 value;
    KW_VALUE_STATE none;
};
} // namespace

class SourceDependencies : public testing::TestWithParam<t_SourceCase>
{
};

TEST_P(SourceDependencies, OffersOrTakesAnUnusableSource)
{
    const t_SourceCase& c = GetParam();
    CDbPropEnum<KW_ZEL_CHANNEL> selector;
    selector.DbSetDefault(c.present);
    const CAccepted application(c.accepted);
    const CSourceDependencies dependencies(application, eSOURCE_ACTIVITY_ACQUIRED);
    EXPECT_EQ(dependencies.SetAvailableSources(selector, c.adjust), c.result);
    EXPECT_EQ(selector.GetAsInt(), c.value);
    for (INT32 value = 0; value < eKW_ZEL_CHANNEL_NONE; ++value)
    {
        EXPECT_EQ(selector.IsValueEnabled(value), c.accepted.count(value) == 1) << value;
    }
    EXPECT_EQ(selector.GetValueState(eKW_ZEL_CHANNEL_NONE), c.none);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SourceDependencies,
    testing::Values(
        t_SourceCase{"PresentStays", {0, 2, 8}, 2, true, true, 2, eVALUESTATE_NOT_SELECTABLE},
        t_SourceCase{"LowestIsTaken", {2, 8}, 0, true, true, 2, eVALUESTATE_NOT_SELECTABLE},
        t_SourceCase{"WithoutAdjust", {2, 8}, 0, false, false, 0, eVALUESTATE_NOT_SELECTABLE},
        t_SourceCase{"NothingUsable", {}, 1, true, false, 1, eVALUESTATE_LAST_RESORT},
        t_SourceCase{"NothingButNone", {}, 20, false, false, 20, eVALUESTATE_LAST_RESORT}),
    [](const auto& test) { return std::string(test.param.name); });
