// SPDX-License-Identifier: MIT
#include "FixtureTree.h"
#include "KWEnumerationsUnits.h"

#include <gmock/gmock.h>

namespace
{
/** A property kind: a legal text other than the default, and one that is refused. */
struct t_Kind
{
    const char* name;
    const char* legal;
    const char* illegal;
    KW_ACCEPTANCE code;
};

constexpr t_Kind kKinds[] = {
    {"Int16", "-32768", "32768", eKW_ACC_ABOVE_MAXIMUM},
    {"UInt16", "65535", "-1", eKW_ACC_BELOW_MINIMUM},
    {"Int32", "-100", "101", eKW_ACC_ABOVE_MAXIMUM},
    {"UInt32", "4294967295", "1.5", eKW_ACC_BAD_TEXT},
    {"Int64", "-9223372036854775808", "x", eKW_ACC_BAD_TEXT},
    {"UInt64", "18446744073709551615", "", eKW_ACC_BAD_TEXT},
    {"Double", "0.1", "-0.5", eKW_ACC_BELOW_MINIMUM},
    {"Listed", "5", "3", eKW_ACC_NOT_IN_VALUE_LIST},
    {"Follower", "-2.5", "nan", eKW_ACC_NOT_A_NUMBER},
    {"Enum", "RUNT", "NOTHING", eKW_ACC_UNKNOWN_VALUE},
    {"Text", "a \"b\" <c> & ä\n", "12345678901234567890123456789012345678901", eKW_ACC_TOO_LONG},
    {"Blob", "AAEC/w==", "?", eKW_ACC_BAD_TEXT},
    {"Pattern", "01X1", "012", eKW_ACC_BAD_TEXT},
    {"Path", "sub/a.csv", "../a.csv", eKW_ACC_BAD_NAME},
    {"Reference", "First/Fixed[1]", "First/Fixed[2]", eKW_ACC_NOT_FOUND},
};

/** All counters from a property's group up to the root. */
std::vector<long long> Counters(CDbPropBase& property)
{
    std::vector<long long> counters;
    for (CDbPropertyGroup* group = property.GetParent(); group != nullptr;
         group = group->GetParent())
    {
        counters.push_back(0);
        group->HasChanged(counters.back());
    }
    return counters;
}

class WritePipeline : public testing::TestWithParam<t_Kind>, protected CFixture
{
protected:
    CDbPropBase& m_property = *m_group.FindProperty(QString::fromUtf8(GetParam().name));
    const QString m_legal = QString::fromUtf8(GetParam().legal);
    const QString m_illegal = QString::fromUtf8(GetParam().illegal);

    void SetUp() override { m_group.m_hooks.clear(); }
    QStringList State()
    {
        const auto* const number = dynamic_cast<CDbPropNum<double>*>(&m_property);
        const auto* const pattern = dynamic_cast<CDbPropBitPattern*>(&m_property);
        return QStringList{m_property.GetText(),
                           m_property.GetMinText(),
                           m_property.GetMaxText(),
                           m_property.GetStepText(),
                           QString::number(m_property.GetUnitCode()),
                           QString::number(m_property.GetValidity()),
                           QString::number(m_property.GetAvailability()),
                           QString::number(number != nullptr ? number->GetResolution() : 0.0),
                           QString::number(pattern != nullptr ? pattern->GetFormat() : 0)} +
               m_property.GetValueTexts();
    }
    /** Everything beside the value that rules move. */
    std::vector<std::function<void()>> ChangesBesideTheValue()
    {
        std::vector<std::function<void()>> changes{
            [this] { m_property.SetValidity(eKW_VALIDITY_INVALID); }};
        if (auto* const number = dynamic_cast<CDbPropNumBase*>(&m_property))
        {
            changes.emplace_back([number] { number->SetUnit(eKW_UNIT_LEVEL_A); });
        }
        if (auto* const number = dynamic_cast<CDbPropNum<double>*>(&m_property))
        {
            changes.emplace_back([number] { number->SetStep(0.125); });
            changes.emplace_back([number] { number->SetResolution(0.25); });
            changes.emplace_back([number] { number->SetMinAndMax(1.0, 5.0); });
        }
        if (auto* const pattern = dynamic_cast<CDbPropBitPattern*>(&m_property))
        {
            changes.emplace_back([pattern] { pattern->SetFormat(eNUMBERFORMAT_HEX); });
        }
        if (&m_property == m_group.m_pEnum)
        {
            changes.emplace_back([this] { m_group.m_pEnum->EnableValue(5, false); });
        }
        changes.emplace_back([this] { m_property.SetAvailability(eAVAILABILITY_READ_ONLY); });
        return changes;
    }
};
} // namespace

TEST_P(WritePipeline, RefusedWriteLeavesATrace)
{
    const QStringList state = State();
    const auto counters = Counters(m_property);
    EXPECT_EQ(m_property.SetText(m_illegal), GetParam().code);
    EXPECT_EQ(State(), state);
    EXPECT_EQ(Counters(m_property), counters);
    EXPECT_FALSE(m_root->CanUndo());
    EXPECT_TRUE(m_group.m_hooks.empty());
}

TEST_P(WritePipeline, TakenWriteIsNotReadBackCountedOrUndone)
{
    const QString before = m_property.GetText();
    const auto counters = Counters(m_property);
    long long elsewhere = 0;
    m_root->m_pSecond->HasChanged(elsewhere);
    ASSERT_EQ(m_property.SetText(m_legal), eKW_ACC_OK);
    EXPECT_FALSE(m_root->m_pSecond->HasChanged(elsewhere));
    EXPECT_EQ(m_property.GetText(), m_legal);
    const auto after = Counters(m_property);
    EXPECT_THAT(after, testing::Pointwise(testing::Gt(), counters));
    EXPECT_EQ(m_group.m_hooks.front(), QStringLiteral("set ") + m_property.GetNodeName());
    EXPECT_EQ(m_root->GetUndoText(), m_property.GetPath());
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(m_property.GetText(), before);
    EXPECT_GT(Counters(m_property).back(), after.back()) << "an undo is a change";
    ASSERT_EQ(m_root->Redo(), eKW_ACC_OK);
    EXPECT_EQ(m_property.GetText(), m_legal);
    EXPECT_EQ(m_root->Redo(), eKW_ACC_NOTHING_TO_DO);
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    ASSERT_EQ(m_property.SetText(m_legal), eKW_ACC_OK);
    EXPECT_FALSE(m_root->CanRedo()) << "a new step ends what could be redone";
}

TEST_P(WritePipeline, SameValueCountsOrMakesAStep)
{
    ASSERT_EQ(m_property.SetText(m_legal), eKW_ACC_OK);
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    ASSERT_EQ(m_root->Redo(), eKW_ACC_OK);
    const auto counters = Counters(m_property);
    m_group.m_hooks.clear();
    EXPECT_EQ(m_property.SetText(m_legal), eKW_ACC_OK);
    EXPECT_EQ(Counters(m_property), counters);
    ASSERT_EQ(m_group.m_hooks.size(), 1U);
    EXPECT_EQ(m_group.m_hooks[0], QStringLiteral("unchanged ") + m_property.GetNodeName());
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_FALSE(m_root->CanUndo());
}

TEST_P(WritePipeline, ValueThatARuleTookBackIsCalledTaken)
{
    m_group.m_takenBack = &m_property;
    EXPECT_EQ(m_property.SetText(m_legal), eKW_ACC_WARNING);
    EXPECT_EQ(m_property.GetText(), m_property.GetDefaultText());
    EXPECT_FALSE(m_root->CanUndo()) << "nothing changed";
}

TEST_P(WritePipeline, ConfirmedValueRunsNoRuleOrCounts)
{
    ASSERT_EQ(m_property.SetText(m_legal), eKW_ACC_OK);
    const auto counters = Counters(m_property);
    m_property.DeclareConfirm();
    m_group.m_hooks.clear();
    EXPECT_EQ(m_property.SetText(m_legal), eKW_ACC_OK);
    ASSERT_GE(m_group.m_hooks.size(), 2U);
    EXPECT_EQ(m_group.m_hooks[1], QStringLiteral("set ") + m_property.GetNodeName());
    m_group.m_hooks.clear();
    EXPECT_EQ(m_property.RestoreValue(m_property), eKW_ACC_OK);
    EXPECT_EQ(m_group.m_hooks.size(), 1U) << "no choice of a client: unchanged, and no more";
    EXPECT_EQ(Counters(m_property), counters);
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_FALSE(m_root->CanUndo());
}

TEST_P(WritePipeline, AccessIsNotChecked)
{
    m_property.SetAvailability(eAVAILABILITY_READ_ONLY);
    EXPECT_EQ(m_property.SetText(m_legal), eKW_ACC_READ_ONLY);
    m_property.SetAvailability(eAVAILABILITY_NOT_AVAILABLE);
    EXPECT_EQ(m_property.SetText(m_legal), eKW_ACC_NOT_AVAILABLE);
    m_property.SetAvailability(eAVAILABILITY_AVAILABLE);
    m_root->m_pFirst->SetMaxAvailability(eAVAILABILITY_NOT_AVAILABLE);
    EXPECT_EQ(m_property.SetText(m_legal), eKW_ACC_NOT_AVAILABLE) << "the parent counts";
    m_root->m_pFirst->SetMaxAvailability(eAVAILABILITY_AVAILABLE);
    m_property.SetObjectType(eOBJECTTYPE_RESULT);
    EXPECT_EQ(m_property.SetText(m_legal), eKW_ACC_READ_ONLY);
    m_property.SetObjectType(eOBJECTTYPE_SETTING);
    m_root->SetControlMode(eCONTROL_LOCAL_LOCKOUT);
    EXPECT_EQ(m_property.SetText(m_legal), eKW_ACC_NO_WRITE_ACCESS);
    m_root->SetControlMode(eCONTROL_LOCAL);
    const auto handle = m_property.GetHandle();
    const auto node = m_property.ShareProperty();
    m_root.reset();
    EXPECT_EQ(node->SetText(m_legal), eKW_ACC_DETACHED);
    EXPECT_EQ(node->GetText(), node->GetDefaultText());
}

TEST_P(WritePipeline, RefusalOfARuleReachesTheClientOrTakesTheValueBack)
{
    for (KW_ACCEPTANCE answer = eKW_ACC_OK; answer < eKW_ACC_COUNT; ++answer)
    {
        m_group.m_answer = answer;
        EXPECT_EQ(m_property.SetText(m_legal), std::min<KW_ACCEPTANCE>(answer, eKW_ACC_WARNING));
        EXPECT_EQ(m_property.GetText(), m_legal);
        ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    }
}

TEST_P(WritePipeline, StateBesideTheValueIsNotCountedOrUndone)
{
    const QStringList before = State();
    m_root->StartTransaction(QStringLiteral("all"));
    for (const auto& change : ChangesBesideTheValue())
    {
        const auto counters = Counters(m_property);
        change();
        const auto after = Counters(m_property);
        EXPECT_THAT(after, testing::Pointwise(testing::Gt(), counters));
        change();
        EXPECT_EQ(Counters(m_property), after) << "nothing new";
    }
    ASSERT_EQ(m_root->EndTransaction(true), eKW_ACC_OK);
    const QStringList changed = State();
    ASSERT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(State(), before);
    ASSERT_EQ(m_root->Redo(), eKW_ACC_OK);
    EXPECT_EQ(State(), changed);
}

TEST_P(WritePipeline, ValueOfAnotherKindIsTakenOver)
{
    CDbPropBase& twin = *m_root->m_pSecond->FindProperty(m_property.GetNodeName());
    ASSERT_EQ(twin.SetText(m_legal), eKW_ACC_OK);
    EXPECT_EQ(m_property.RestoreValue(twin), eKW_ACC_OK);
    EXPECT_EQ(m_property.GetText(), m_legal);
    for (const auto& other : m_root->m_pSecond->Properties())
    {
        if (other->GetTypeName() != m_property.GetTypeName())
        {
            EXPECT_EQ(m_property.RestoreValue(*other), eKW_ACC_WRONG_KIND);
        }
    }
    EXPECT_EQ(m_property.GetText(), m_legal);
}

INSTANTIATE_TEST_SUITE_P(Kinds, WritePipeline, testing::ValuesIn(kKinds),
                         [](const auto& test) { return std::string(test.param.name); });
