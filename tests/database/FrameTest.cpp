// SPDX-License-Identifier: MIT
#include "FixtureTree.h"
#include "LockManager.h"

#include <QFile>
#include <QTemporaryDir>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>

namespace
{
class Frame : public testing::Test, protected CFixture
{
};

constexpr double kInfinity = std::numeric_limits<double>::infinity();
} // namespace

TEST_F(Frame, InfinityOrNaNEntersTheTree)
{
    EXPECT_EQ(m_group.m_pFollower->Set(kInfinity), eKW_ACC_ABOVE_MAXIMUM);
    EXPECT_EQ(m_group.m_pResult->SetResult(kInfinity), eKW_ACC_ABOVE_MAXIMUM);
    EXPECT_EQ(m_group.m_pResult->SetResult(std::nan("")), eKW_ACC_NOT_A_NUMBER);
    EXPECT_EQ(m_group.m_pFollower->SetLimited(std::nan("")), eKW_ACC_NOT_A_NUMBER);
    EXPECT_EQ(m_group.m_pFollower->SetLimited(kInfinity), eKW_ACC_WARNING);
    EXPECT_EQ(m_group.m_pFollower->Get(), 10.0);
}

TEST_F(Frame, ResultBecomesAnUndoStepOrASettingTakesOne)
{
    EXPECT_EQ(m_group.m_pResult->SetResult(3.0), eKW_ACC_OK);
    EXPECT_FALSE(m_root->CanUndo());
    EXPECT_EQ(m_group.m_pDouble->SetResult(3.0), eKW_ACC_READ_ONLY);
    m_group.m_pResult->SetValidity(eKW_VALIDITY_INVALID);
    long long counter = 0;
    m_root->HasChanged(counter);
    EXPECT_EQ(m_group.m_pResult->SetResult(3.0), eKW_ACC_OK);
    EXPECT_EQ(m_group.m_pResult->GetValidity(), eKW_VALIDITY_VALID);
    EXPECT_TRUE(m_root->HasChanged(counter)) << "the same figure, valid again, is news";
}

TEST_F(Frame, LimitLeavesTheValueBehindOrForgetsTheWish)
{
    CDbPropNum<double>& follower = *m_group.m_pFollower;
    ASSERT_EQ(follower.Set(-8.0), eKW_ACC_OK);
    m_group.m_hooks.clear();
    ASSERT_EQ(m_group.m_pDouble->Set(5.0), eKW_ACC_OK);
    EXPECT_EQ(follower.Get(), -5.0);
    EXPECT_EQ(follower.GetUserValue(), -8.0);
    EXPECT_EQ(m_group.m_hooks[1], QStringLiteral("auto Follower"));
    ASSERT_EQ(m_group.m_pDouble->Set(7.0), eKW_ACC_OK);
    EXPECT_EQ(follower.Get(), -7.0);
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(follower.Get(), -5.0);
    EXPECT_EQ(follower.GetMin(), -5.0);
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(follower.Get(), -8.0);
    EXPECT_EQ(follower.GetMin(), -10.0);
    EXPECT_EQ(follower.SetUserValue(50.0), eKW_ACC_WARNING);
    EXPECT_EQ(follower.Get(), 10.0);
    ASSERT_EQ(m_group.m_pDouble->Set(100.0), eKW_ACC_OK);
    EXPECT_EQ(follower.Get(), 50.0) << "limits opened: the wish comes true";
    ASSERT_EQ(follower.Set(1.0), eKW_ACC_OK);
    EXPECT_EQ(follower.GetUserValue(), 1.0);
}

TEST_F(Frame, SelectionLosesTheWishOrKeepsAStrangers)
{
    CDbPropEnum<KW_ZEL_TRIGGER_TYPE>& selector = *m_group.m_pEnum;
    const auto restrict = [&selector](std::initializer_list<INT32> off, INT32 otherwise)
    {
        selector.EnableAllValues();
        for (const INT32 value : off)
        {
            selector.EnableValue(value, false);
        }
        EXPECT_EQ(selector.FollowWish(otherwise), eKW_ACC_OK);
        return selector.GetAsInt();
    };
    ASSERT_EQ(selector.SetAsInt(3), eKW_ACC_OK);
    m_group.m_hooks.clear();
    EXPECT_EQ(restrict({3}, 5), 5);
    EXPECT_EQ(m_group.m_hooks, std::vector<QString>{QStringLiteral("auto Enum")});
    EXPECT_EQ(selector.GetUserValueAsInt(), 3);
    EXPECT_EQ(restrict({3}, 6), 5) << "what can be selected stays";
    EXPECT_EQ(restrict({}, 6), 3);
    EXPECT_EQ(restrict({3}, 5), 5);
    ASSERT_EQ(selector.SetAsInt(5), eKW_ACC_OK) << "confirmed by the user";
    EXPECT_EQ(selector.GetUserValueAsInt(), 5);
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(selector.GetUserValueAsInt(), 3);
    ASSERT_EQ(m_root->Redo(), eKW_ACC_OK);
    EXPECT_EQ(restrict({}, 6), 5);
}

TEST_F(Frame, NegativeZeroIsSavedAsAnotherValue)
{
    CDbPropNum<double>& follower = *m_group.m_pFollower;
    ASSERT_EQ(follower.Set(-0.0), eKW_ACC_OK);
    EXPECT_FALSE(std::signbit(follower.Get()));
    ASSERT_EQ(follower.Set(7.0), eKW_ACC_OK);
    ASSERT_EQ(follower.SetMinAndMax(-5.0, -0.0), eKW_ACC_OK);
    EXPECT_EQ(follower.GetText(), QStringLiteral("0"));
    EXPECT_FALSE(std::signbit(follower.Get()));
    EXPECT_FALSE(std::signbit(follower.GetMax()));
}

TEST_F(Frame, RuleThatSettlesForLessLeavesTheWishPending)
{
    CDbPropNum<double>& follower = *m_group.m_pFollower;
    m_group.m_settleFollower = true;
    EXPECT_EQ(follower.SetUserValue(50.0), eKW_ACC_WARNING);
    EXPECT_EQ(follower.Get(), 10.0);
    EXPECT_EQ(follower.GetUserValue(), 10.0) << "the hook wrote the value it settled for";
}

TEST_F(Frame, WishLeavesTheResolutionWhenLimitsMove)
{
    CDbPropNum<double>& follower = *m_group.m_pFollower;
    follower.DeclareResolution(0.25);
    EXPECT_EQ(follower.SetUserValue(20.1), eKW_ACC_WARNING);
    for (const auto& [limit, value] : {std::pair{15.0, 15.0}, {40.0, 20.0}, {15.1, 15.1}})
    {
        ASSERT_EQ(m_group.m_pDouble->Set(limit), eKW_ACC_OK);
        EXPECT_EQ(follower.Get(), value);
    }
}

TEST_F(Frame, AvailabilityOfAGroupIsNotUndoneOrAStepThoughItCameBack)
{
    CPgmFixtureItem& map = *m_group.m_pMap;
    long long counter = 0;
    m_root->HasChanged(counter);
    for (const KW_AVAILABILITY last : {eAVAILABILITY_AVAILABLE, eAVAILABILITY_NOT_AVAILABLE})
    {
        CDbTransaction transaction(*m_root, QStringLiteral("change"));
        map.SetAvailability(eAVAILABILITY_READ_ONLY);
        map.SetAvailability(last);
        ASSERT_EQ(transaction.Commit(), eKW_ACC_OK);
        EXPECT_EQ(m_root->CanUndo(), last != eAVAILABILITY_AVAILABLE);
    }
    EXPECT_TRUE(m_root->HasChanged(counter));
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(map.GetAvailability(), eAVAILABILITY_AVAILABLE);
    EXPECT_TRUE(m_root->HasChanged(counter));
    ASSERT_EQ(m_root->Redo(), eKW_ACC_OK);
    EXPECT_EQ(map.GetAvailability(), eAVAILABILITY_NOT_AVAILABLE);
}

TEST_F(Frame, PatternTakesAnotherFormatOrTakesAResultBack)
{
    CDbPropBitPattern& pattern = *m_group.m_pPattern;
    pattern.SetObjectType(eOBJECTTYPE_RESULT);
    for (INT32 format = -1; format <= eNUMBERFORMAT_BINARY + 1; ++format)
    {
        const bool isKnown = format == eNUMBERFORMAT_HEX || format == eNUMBERFORMAT_BINARY;
        const E_NUMBERFORMAT present = pattern.GetFormat();
        EXPECT_EQ(pattern.SetFormat(static_cast<E_NUMBERFORMAT>(format)),
                  isKnown ? eKW_ACC_OK : eKW_ACC_UNKNOWN_VALUE);
        EXPECT_EQ(pattern.GetFormat(), isKnown ? format : present);
    }
    EXPECT_FALSE(m_root->CanUndo()) << "results are shown, too";
}

TEST_F(Frame, LimitsEncloseNoEntryOfTheList)
{
    EXPECT_EQ(m_group.m_pListed->SetMinAndMax(2.5, 4.0), eKW_ACC_NOT_IN_VALUE_LIST);
    EXPECT_EQ(m_group.m_pListed->SetMinAndMax(4.0, 20.0), eKW_ACC_OK);
    EXPECT_EQ(m_group.m_pListed->Get(), 5.0) << "the nearest entry inside";
}

TEST_F(Frame, ResolutionRoundsSilentlyOrPastTheLimit)
{
    CDbPropNum<double>& p = *m_group.m_pDouble;
    ASSERT_EQ(p.SetResolution(0.3), eKW_ACC_WARNING) << "10 is no multiple of 0.3";
    EXPECT_EQ(p.Set(1.0), eKW_ACC_WARNING);
    EXPECT_DOUBLE_EQ(p.Get(), 0.9);
    EXPECT_EQ(p.Set(1000.0), eKW_ACC_WARNING);
    EXPECT_LE(p.Get(), 1000.0);
    CDbPropNum<INT16>& i = *m_group.m_pInt16;
    i.DeclareResolution(10);
    EXPECT_EQ(i.Set(-15), eKW_ACC_WARNING);
    EXPECT_EQ(i.Get(), -20);
    EXPECT_EQ(i.Set(32767), eKW_ACC_OK);
    EXPECT_EQ(i.Get(), 32767) << "the next multiple lies beyond the type";
}

TEST_F(Frame, ValueBesideALimitByRoundingIsRefused)
{
    CDbPropNum<double>& p = *m_group.m_pFixed->ItemDirect(0)->m_pLevel;
    for (const double limit : {-7.0, 0.0, 1e-9, 9.0})
    {
        // Zero has no neighbours by a share of its own.
        const double beside = limit == 0.0 ? 5e-16 : std::fabs(limit) * 5e-16;
        const double beyond = limit == 0.0 ? 1e-14 : std::fabs(limit) * 1e-14;
        ASSERT_EQ(p.SetMinAndMax(limit, 10.0), eKW_ACC_OK);
        ASSERT_EQ(p.Set(10.0), eKW_ACC_OK);
        EXPECT_EQ(p.Set(limit - beside), eKW_ACC_OK) << limit;
        EXPECT_EQ(p.Get(), limit);
        EXPECT_EQ(p.Set(limit - beyond), eKW_ACC_BELOW_MINIMUM) << limit;
        ASSERT_EQ(p.SetMinAndMax(-10.0, limit), eKW_ACC_OK);
        ASSERT_EQ(p.Set(-10.0), eKW_ACC_OK);
        EXPECT_EQ(p.Set(limit + beside), eKW_ACC_OK) << limit;
        EXPECT_EQ(p.Get(), limit);
        EXPECT_EQ(p.Set(limit + beyond), eKW_ACC_ABOVE_MAXIMUM) << limit;
    }
}

TEST_F(Frame, EnumerationOffersWhatIsDisabled)
{
    CDbPropEnum<KW_ZEL_TRIGGER_TYPE>& e = *m_group.m_pEnum;
    ASSERT_EQ(e.EnableValue(eKW_ZEL_TRIGGER_TYPE_GLITCH, false), eKW_ACC_OK);
    EXPECT_EQ(e.Set(eKW_ZEL_TRIGGER_TYPE_GLITCH), eKW_ACC_NOT_ENABLED);
    EXPECT_EQ(e.DbSet(eKW_ZEL_TRIGGER_TYPE_GLITCH), eKW_ACC_OK) << "rules may";
    EXPECT_EQ(e.SetAsInt(15), eKW_ACC_UNKNOWN_VALUE);
    EXPECT_EQ(e.SetAsInt(-1), eKW_ACC_UNKNOWN_VALUE);
    EXPECT_EQ(e.EnableValue(15, true), eKW_ACC_UNKNOWN_VALUE);
    EXPECT_EQ(e.SetText(QStringLiteral("glit")), eKW_ACC_NOT_ENABLED) << "remote name";
    EXPECT_EQ(e.EnableAllValues(), eKW_ACC_OK);
    EXPECT_EQ(e.SetText(QStringLiteral("glit")), eKW_ACC_OK);
}

TEST_F(Frame, TextHoldsWhatNoFileCan)
{
    for (const char16_t bad : {u'\x01', u'\x1f', u'\xd800', u'\xdc00', u'\xffff'})
    {
        EXPECT_EQ(m_group.m_pText->Set(QStringLiteral("a") + QChar(bad)), eKW_ACC_BAD_TEXT);
        EXPECT_EQ(m_group.m_pPath->Set(QChar(bad) + QStringLiteral(".csv")), eKW_ACC_BAD_NAME);
    }
    EXPECT_EQ(m_group.m_pText->Set(QString::fromUtf8("\U0001F600\t\r\n")), eKW_ACC_OK);
}

TEST_F(Frame, TransactionIsSeveralStepsOrSurvivesItsRollback)
{
    const QByteArray before = m_root->Text();
    m_root->StartTransaction(QStringLiteral("both"));
    m_group.m_pDouble->Set(4.0);
    m_group.m_pMap->Insert(QStringLiteral("a"));
    EXPECT_EQ(m_root->Undo(), eKW_ACC_IN_TRANSACTION);
    EXPECT_EQ(m_root->EndTransaction(true), eKW_ACC_OK);
    EXPECT_EQ(m_root->GetUndoText(), QStringLiteral("both"));
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(m_root->Text(), before);
    m_root->StartTransaction(QStringLiteral("none"));
    m_group.m_pArray->Insert(0);
    m_group.m_pArray->ItemDirect(0)->m_pLevel->Set(1.0);
    m_group.m_pDouble->Set(4.0);
    EXPECT_EQ(m_root->EndTransaction(false), eKW_ACC_OK);
    EXPECT_EQ(m_root->Text(), before);
    EXPECT_TRUE(m_root->CanRedo()) << "a step that never was takes no redo away";
    m_root->DisableHistoryObjects();
    EXPECT_FALSE(m_root->CanRedo()) << "what changes now could not be undone rightly";
    m_root->StartTransaction(QStringLiteral("off"));
    m_group.m_pDouble->Set(4.0);
    EXPECT_EQ(m_root->EndTransaction(false), eKW_ACC_NOTHING_TO_DO);
    EXPECT_FALSE(m_root->CanUndo());
}

TEST_F(Frame, HistoryKeepsOtherThanTheLastHundredSteps)
{
    for (INT64 value = 1; value <= 150; ++value)
    {
        ASSERT_EQ(m_group.m_pInt64->Set(value), eKW_ACC_OK);
    }
    INT64 steps = 0;
    for (; m_root->Undo() == eKW_ACC_OK; ++steps)
    {
        EXPECT_EQ(m_group.m_pInt64->Get(), 149 - steps);
    }
    EXPECT_EQ(steps, 100);
}

TEST_F(Frame, SeveralStepsAreOthersOrNotAllOrNone)
{
    for (const char* const text : {"first", "second", "third"})
    {
        m_root->StartTransaction(QString::fromLatin1(text));
        m_group.m_pInt64->Set(m_group.m_pInt64->Get() + 1);
        m_root->EndTransaction(true);
    }
    const QString texts[] = {QStringLiteral("first"), QStringLiteral("second"),
                             QStringLiteral("third")};
    EXPECT_EQ(m_root->GetHistory().undo, QStringList({texts[2], texts[1], texts[0]}));
    const INT64 last = m_group.m_pInt64->Get();
    for (const int tooMany : {4, 0, -1, std::numeric_limits<int>::max()})
    {
        EXPECT_EQ(m_root->Undo(tooMany), eKW_ACC_NOTHING_TO_DO);
        EXPECT_EQ(m_root->Redo(tooMany), eKW_ACC_NOTHING_TO_DO);
    }
    EXPECT_EQ(m_group.m_pInt64->Get(), last);
    EXPECT_EQ(m_root->Undo(2), eKW_ACC_OK);
    EXPECT_EQ(m_group.m_pInt64->Get(), last - 2);
    EXPECT_EQ(m_root->GetHistory().undo, QStringList(texts[0]));
    EXPECT_EQ(m_root->GetHistory().redo, QStringList({texts[1], texts[2]}));
    EXPECT_EQ(m_root->Redo(2), eKW_ACC_OK);
    EXPECT_EQ(m_group.m_pInt64->Get(), last);
}

TEST_F(Frame, LockedOutClientChangesSomething)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.xml"));
    const QString a = QStringLiteral("a");
    CPgmFixtureItem& map = *m_group.m_pMap;
    ASSERT_EQ(map.Insert(a), eKW_ACC_OK);
    ASSERT_EQ(m_group.m_pArray->Insert(0), eKW_ACC_OK);
    ASSERT_EQ(m_group.m_pDouble->Set(3.0), eKW_ACC_OK);
    ASSERT_EQ(m_root->Save(file), eKW_ACC_OK);
    ASSERT_EQ(m_group.m_pDouble->Set(4.0), eKW_ACC_OK);
    ASSERT_EQ(m_group.m_pDouble->Set(5.0), eKW_ACC_OK);
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    const std::pair<const char*, std::function<KW_ACCEPTANCE()>> calls[] = {
        {"undo", [&] { return m_root->Undo(); }},
        {"redo", [&] { return m_root->Redo(); }},
        {"recall", [&] { return m_root->Recall(file); }},
        {"preset", [&] { return m_root->RunPresetSequence(true); }},
        {"limited", [&] { return m_group.m_pDouble->SetLimited(9.0); }},
        {"wish", [&] { return m_group.m_pFollower->SetUserValue(1.0); }},
        {"step", [&] { return m_group.m_pDouble->Inc(); }},
        {"default", [&] { return m_group.m_pDouble->SetToDefault(); }},
        {"format", [&] { return m_group.m_pPattern->SetFormat(eNUMBERFORMAT_HEX); }},
        {"map insert", [&] { return map.Insert(QStringLiteral("b")); }},
        {"map remove", [&] { return map.Remove(a); }},
        {"map rename", [&] { return map.Rename(a, QStringLiteral("b")); }},
        {"map copy", [&] { return map.Copy(a, QStringLiteral("b")); }},
        {"map active", [&] { return map.SetActive(a); }},
        {"array insert", [&] { return m_group.m_pArray->Insert(0); }},
        {"array remove", [&] { return m_group.m_pArray->Remove(0, 1); }},
        {"array copy", [&] { return m_group.m_pArray->Copy(0, 1); }},
        {"array active", [&] { return m_group.m_pArray->SetActive(0); }}};
    m_root->SetControlMode(eCONTROL_LOCAL_LOCKOUT);
    const QByteArray before = m_root->Text();
    for (const auto& [what, call] : calls)
    {
        EXPECT_EQ(call(), eKW_ACC_NO_WRITE_ACCESS) << what;
        EXPECT_EQ(m_root->Text(), before) << what;
    }
    // What the earlier calls left makes some impossible.
    m_root->StartWriteAccess(eCLIENT_REMOTE);
    for (const auto& [what, call] : calls)
    {
        EXPECT_NE(call(), eKW_ACC_NO_WRITE_ACCESS) << what;
    }
    m_root->EndWriteAccess();
}

TEST_F(Frame, OriginOfAnotherBracketCounts)
{
    constexpr UINT32 kDepth = 4;
    m_root->SetControlMode(eCONTROL_LOCAL_LOCKOUT);
    for (UINT32 origins = 0; origins < 1U << kDepth; ++origins)
    {
        const auto isRemote = [origins](UINT32 level) { return (origins >> level & 1U) != 0; };
        for (UINT32 level = 0; level < kDepth; ++level)
        {
            m_root->StartWriteAccess(isRemote(level) ? eCLIENT_REMOTE : eCLIENT_LOCAL);
        }
        for (UINT32 level = kDepth; level-- > 0; m_root->EndWriteAccess())
        {
            EXPECT_EQ(m_root->MayWrite(), isRemote(level)) << origins << " at " << level;
        }
        EXPECT_FALSE(m_root->MayWrite());
    }
}

TEST_F(Frame, NewFileTakesANumberThatIsUsedOrSkipsOne)
{
    const QTemporaryDir folder;
    CDbPropFilePath& path = *m_group.m_pPath;
    path.DeclareFolder(folder.path());
    for (int number = 1; number <= 999; ++number)
    {
        const QString name = QStringLiteral("Wave%1.csv").arg(number, 3, 10, QChar(u'0'));
        ASSERT_EQ(path.CreateNewFileName(), name);
        ASSERT_TRUE(QFile(folder.filePath(name)).open(QIODevice::WriteOnly));
    }
    EXPECT_EQ(path.CreateNewFileName(), QString()) << "none is free";
    const QString freed = QStringLiteral("Wave007.csv");
    ASSERT_TRUE(QFile::remove(folder.filePath(freed)));
    EXPECT_EQ(path.CreateNewFileName(), freed);
}

TEST_F(Frame, InnerRollbackOrEndWithoutItsStartIsForgottenOrHitsALaterTransaction)
{
    EXPECT_EQ(m_root->EndTransaction(true), eKW_ACC_NOTHING_TO_DO);
    m_root->EndWriteAccess();
    const QByteArray before = m_root->Text();
    m_root->StartTransaction(QStringLiteral("outer"));
    m_group.m_pDouble->Set(4.0);
    m_root->StartTransaction(QStringLiteral("inner"));
    m_group.m_pInt32->Set(5);
    EXPECT_EQ(m_root->EndTransaction(false), eKW_ACC_OK);
    EXPECT_EQ(m_root->EndTransaction(true), eKW_ACC_OPERATION_FAILED) << "it wanted to keep it";
    EXPECT_EQ(m_root->Text(), before);
    EXPECT_FALSE(m_root->CanUndo());
    {
        // As an action does it: the end of the action is the end of the step.
        const CLockGuard lock;
        const CDbRootScope action(m_root.get(), eWRITEKIND::Client);
        m_root->StartTransaction(QStringLiteral("inside"));
        m_group.m_pInt32->Set(6);
        EXPECT_EQ(m_root->EndTransaction(false), eKW_ACC_OK);
    }
    EXPECT_EQ(m_root->Text(), before);
    m_root->StartTransaction(QStringLiteral("later"));
    m_group.m_pDouble->Set(7.0);
    EXPECT_EQ(m_root->EndTransaction(true), eKW_ACC_OK);
    EXPECT_EQ(m_group.m_pDouble->Get(), 7.0);
    EXPECT_EQ(m_root->GetUndoText(), QStringLiteral("later"));
}

TEST_F(Frame, RootPretendsToUpdateMeasurements)
{
    m_root->UpdateAllMeasSettings();
    ASSERT_EQ(m_reports.Count(), 1);
    const KW_ErrorReport report = m_reports.All()[0];
    EXPECT_EQ(report.message, QStringLiteral("Attention: This function should never be called!!"));
    EXPECT_EQ(report.line, 162);
    EXPECT_EQ(report.file, QStringLiteral("CommonDatabase/Src/DbPgRoot"));
}
