// SPDX-License-Identifier: MIT
// Limits and steps of every numeric type, checked against arithmetic that can not overflow.

#include "FixtureTree.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"

#include <algorithm>
#include <boost/multiprecision/cpp_int.hpp>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace
{
template <typename T>
CDbPropNum<T>& NumberOf(const CPgFixture& group)
{
    return *std::get<CDbPropNum<T>*>(std::tuple(group.m_pInt16, group.m_pUInt16, group.m_pInt32,
                                                group.m_pUInt32, group.m_pInt64, group.m_pUInt64,
                                                group.m_pDouble));
}

class Numeric : public testing::Test, protected CFixture
{
};

template <typename T>
class Numbers : public testing::Test, protected CFixture
{
protected:
    static constexpr T kLowest = std::numeric_limits<T>::lowest();
    static constexpr T kHighest = std::numeric_limits<T>::max();

    void SetUp() override { m_number.DeclareMinAndMax(kLowest, kHighest); }

    void ExpectLimits(T min, T max, T value)
    {
        EXPECT_EQ(m_number.GetMin(), min);
        EXPECT_EQ(m_number.GetMax(), max);
        EXPECT_EQ(m_number.Get(), value);
    }

    CDbPropNum<T>& m_number = NumberOf<T>(m_group);
};

template <typename T>
class Integers : public Numbers<T>
{
};

using t_Integers = testing::Types<INT16, UINT16, INT32, UINT32, INT64, UINT64>;
using t_Numbers = testing::Types<INT16, UINT16, INT32, UINT32, INT64, UINT64, double>;
TYPED_TEST_SUITE(Numbers, t_Numbers);
TYPED_TEST_SUITE(Integers, t_Integers);

using t_Common = CZELDatabaseHelperCommon;
} // namespace

TYPED_TEST(Numbers, LimitsCrossOnTheirWayOrLoseTheWishOrValidity)
{
    auto& number = this->m_number;
    ASSERT_EQ(number.Set(55), eKW_ACC_OK);
    KW_VALIDITY validity = eKW_VALIDITY_VALID;
    const struct
    {
        int min, max, value;
    } rows[] = {{50, 60, 55}, {100, 110, 100}, {10, 20, 20}, {20, 30, 30}, {30, 31, 31},
                {29, 30, 30}, {15, 17, 17},    {0, 120, 55}, {55, 55, 55}, {120, 120, 120},
                {0, 0, 0},    {56, 90, 56},    {54, 56, 55}};
    for (const auto& [min, max, value] : rows)
    {
        SCOPED_TRACE(testing::Message() << min << " … " << max);
        EXPECT_EQ(
            t_Common::SetMinMax(&number, static_cast<TypeParam>(min), static_cast<TypeParam>(max)),
            eKW_ACC_OK);
        this->ExpectLimits(static_cast<TypeParam>(min), static_cast<TypeParam>(max),
                           static_cast<TypeParam>(value));
        EXPECT_EQ(number.GetValidity(), validity);
        validity = validity == eKW_VALIDITY_VALID ? eKW_VALIDITY_INVALID : eKW_VALIDITY_VALID;
        number.SetValidity(validity);
    }
    const TypeParam low = this->kLowest;
    const TypeParam high = this->kHighest;
    for (const auto& [min, max] : {std::pair{high, high}, {low, low}, {high, high}, {low, high}})
    {
        EXPECT_EQ(t_Common::SetMinMax(&number, min, max), eKW_ACC_OK);
        this->ExpectLimits(min, max, std::clamp(TypeParam{55}, min, max));
    }
    EXPECT_EQ(this->m_reports.Count(), 0);
}

TYPED_TEST(Numbers, RefusedLimitMovesTheOtherOrTheValue)
{
    auto& number = this->m_number;
    number.DeclareMinAndMax(10, 100);
    ASSERT_EQ(number.Set(50), eKW_ACC_OK);
    ASSERT_EQ(number.SetMinAndMax(20, 60), eKW_ACC_OK);
    long long counter = 0;
    this->m_root->HasChanged(counter);
    EXPECT_EQ(number.SetMinAndMax(31, 30), eKW_ACC_LIMITS_CROSSED);
    EXPECT_EQ(number.SetMin(61), eKW_ACC_LIMITS_CROSSED);
    EXPECT_EQ(number.SetMax(19), eKW_ACC_LIMITS_CROSSED);
    EXPECT_EQ(number.SetMin(9), eKW_ACC_OUTSIDE_DECLARED);
    EXPECT_EQ(number.SetMax(101), eKW_ACC_OUTSIDE_DECLARED);
    EXPECT_EQ(number.SetMinAndMax(this->kLowest, this->kHighest), eKW_ACC_OUTSIDE_DECLARED);
    this->ExpectLimits(20, 60, 50);
    EXPECT_FALSE(this->m_root->HasChanged(counter)) << "a refusal is no change";
    EXPECT_EQ(this->m_reports.Count(), 0);
}

TYPED_TEST(Numbers, PresentLimitsHoldBackADefaultOrAFile)
{
    auto& number = this->m_number;
    number.DeclareMinAndMax(10, 100);
    const struct
    {
        int value, min, max;
        KW_ACCEPTANCE code;
    } rows[] = {{10, 10, 60, eKW_ACC_OK},
                {100, 40, 100, eKW_ACC_OK},
                {50, 40, 60, eKW_ACC_OK},
                {9, 40, 60, eKW_ACC_BELOW_MINIMUM},
                {101, 40, 60, eKW_ACC_ABOVE_MAXIMUM}};
    for (const auto& [value, min, max, code] : rows)
    {
        for (const eWRITEKIND kind : {eWRITEKIND::Default, eWRITEKIND::Recall})
        {
            SCOPED_TRACE(value);
            ASSERT_EQ(number.SetMinAndMax(40, 60), eKW_ACC_OK);
            ASSERT_EQ(number.Set(45), eKW_ACC_OK);
            CDbValue carried;
            ASSERT_EQ(number.ParseText(QString::number(value), carried), eKW_ACC_OK);
            EXPECT_EQ(number.WriteValue(carried, kind), code);
            this->ExpectLimits(static_cast<TypeParam>(min), static_cast<TypeParam>(max),
                               static_cast<TypeParam>(code == eKW_ACC_OK ? value : 45));
        }
    }
}

TYPED_TEST(Numbers, TextOf64CharactersIsRefusedOrALongerOneCut)
{
    for (int length = 1; length <= 80; ++length)
    {
        ASSERT_EQ(this->m_number.Set(3), eKW_ACC_OK);
        // Whole numbers are read digit by digit.
        const bool isRead = length <= 64 || std::is_integral_v<TypeParam>;
        const KW_ACCEPTANCE code = this->m_number.SetText(QString(length - 1, u'0') + u'7');
        EXPECT_EQ(code, isRead ? eKW_ACC_OK : eKW_ACC_BAD_TEXT) << length;
        EXPECT_EQ(this->m_number.Get(), static_cast<TypeParam>(isRead ? 7 : 3)) << length;
    }
}

TEST_F(Numeric, NaNOrInfinityBecomesALimit)
{
    CDbPropNum<double>& number = *m_group.m_pDouble;
    const double nan = std::nan("");
    const double infinity = std::numeric_limits<double>::infinity();
    for (const auto& [min, max, code] : {std::tuple{nan, 5.0, eKW_ACC_NOT_A_NUMBER},
                                         {5.0, nan, eKW_ACC_NOT_A_NUMBER},
                                         {nan, nan, eKW_ACC_NOT_A_NUMBER},
                                         {-infinity, 5.0, eKW_ACC_OUTSIDE_DECLARED},
                                         {5.0, infinity, eKW_ACC_OUTSIDE_DECLARED}})
    {
        EXPECT_EQ(number.SetMinAndMax(min, max), code);
        EXPECT_EQ(number.GetMin(), 0.0);
        EXPECT_EQ(number.GetMax(), 1000.0);
    }
    EXPECT_EQ(number.SetStep(nan), eKW_ACC_NOT_A_NUMBER);
    EXPECT_EQ(number.SetStep(0.0), eKW_ACC_NOT_A_NUMBER);
    EXPECT_EQ(number.SetStep(infinity), eKW_ACC_NOT_A_NUMBER);
    EXPECT_EQ(number.SetResolution(-1.0), eKW_ACC_NOT_A_NUMBER);
    EXPECT_EQ(number.GetStep(), 0.5);
    EXPECT_EQ(number.SetStep(2.0), eKW_ACC_OK);
    EXPECT_EQ(number.SetStepDefault(), eKW_ACC_OK);
    EXPECT_EQ(number.GetStep(), 0.5);
}

namespace
{
/** Holds every sum and product of a step, on 32-bit processors too. */
using t_Wide = boost::multiprecision::int128_t;

/** The multiple of `step` nearest to `target`, the upper one of two. */
t_Wide NearestMultiple(const t_Wide& target, const t_Wide& step)
{
    const t_Wide doubled = 2 * target + step;
    const t_Wide rest = doubled % (2 * step);
    return (doubled - rest - (rest < 0 ? 2 * step : t_Wide(0))) / 2;
}

} // namespace

TYPED_TEST(Integers, StepEndsElsewhereThanExactArithmetic)
{
    using T = TypeParam;
    auto& number = this->m_number;
    constexpr T kEnds[] = {TestFixture::kLowest, TestFixture::kHighest, 0};
    constexpr INT32 kCounts[] = {1, -1, 2, -3, 100, -32769, 2147483647, -2147483647 - 1};
    constexpr E_STEP_BEHAVIOUR kBehaviours[] = {eSTEP_BEHAVIOUR_LIMIT, eSTEP_BEHAVIOUR_WRAP,
                                                eSTEP_BEHAVIOUR_REFUSE};
    this->m_root->DisableHistoryObjects();
    std::mt19937_64 random{20240229};
    // Half of them near the ends of the type and near zero.
    const auto any = [&]
    {
        const auto near = static_cast<T>(random() % 4);
        const T end = kEnds[random() % 3];
        const bool fits = end <= TestFixture::kHighest - near;
        return random() % 2 == 0 ? static_cast<T>(random())
                                 : static_cast<T>(fits ? end + near : end - near);
    };
    for (int i = 0; i < 3000; ++i)
    {
        const auto [min, max] = std::minmax({any(), any()});
        const T value = std::clamp(any(), min, max);
        const T step = std::max<T>(1, any());
        const INT32 count = kCounts[random() % std::size(kCounts)];
        const E_STEP_BEHAVIOUR behaviour = kBehaviours[random() % 3];
        ASSERT_EQ(number.SetMinAndMax(min, max), eKW_ACC_OK);
        ASSERT_EQ(number.Set(value), eKW_ACC_OK);
        ASSERT_EQ(number.SetStep(step), eKW_ACC_OK);
        number.DeclareStepBehaviour(behaviour);

        const t_Wide next = NearestMultiple(t_Wide(value) + t_Wide(step) * count, step);
        const bool below = next < min;
        const bool inside = !below && next <= max;
        const T end = below == (behaviour == eSTEP_BEHAVIOUR_LIMIT) ? min : max;
        const bool stays = behaviour == eSTEP_BEHAVIOUR_REFUSE;
        const KW_ACCEPTANCE refusal = below ? eKW_ACC_BELOW_MINIMUM : eKW_ACC_ABOVE_MAXIMUM;
        const KW_ACCEPTANCE pastEnd = stays                               ? refusal
                                      : behaviour == eSTEP_BEHAVIOUR_WRAP ? eKW_ACC_OK
                                                                          : eKW_ACC_WARNING;
        const KW_ACCEPTANCE code = number.IncDec(count);
        ASSERT_EQ(code, inside ? static_cast<KW_ACCEPTANCE>(eKW_ACC_OK) : pastEnd)
            << +value << " + " << count << " × " << +step << " in " << +min << " … " << +max;
        ASSERT_EQ(number.Get(), inside ? static_cast<T>(next) : (stays ? value : end))
            << +value << " + " << count << " × " << +step << " in " << +min << " … " << +max;
    }
}

TYPED_TEST(Integers, TextBeyondTheTypeCanNotBeReadOrIsCutToFit)
{
    auto& number = this->m_number;
    const QString long0(100, QLatin1Char('0'));
    const auto next = [](const t_Wide& value) { return QString::fromStdString(value.str()); };
    const struct
    {
        QString text;
        KW_ACCEPTANCE code;
    } rows[] = {{next(t_Wide(this->kHighest) + 1), eKW_ACC_ABOVE_MAXIMUM},
                {next(t_Wide(this->kLowest) - 1), eKW_ACC_BELOW_MINIMUM},
                {QLatin1Char('1') + long0, eKW_ACC_ABOVE_MAXIMUM},
                {QLatin1String("-1") + long0, eKW_ACC_BELOW_MINIMUM},
                {QLatin1Char('1') + long0 + QLatin1Char('x'), eKW_ACC_BAD_TEXT},
                {QStringLiteral("1e3"), eKW_ACC_BAD_TEXT},
                {QStringLiteral("+-1"), eKW_ACC_BAD_TEXT},
                {QStringLiteral("-"), eKW_ACC_BAD_TEXT},
                {next(this->kHighest), eKW_ACC_OK},
                {next(this->kLowest), eKW_ACC_OK},
                {QLatin1Char('+') + long0 + QLatin1Char('7'), eKW_ACC_OK}};
    for (const auto& [text, code] : rows)
    {
        EXPECT_EQ(number.SetText(text), code) << text.toStdString();
    }
    EXPECT_EQ(number.Get(), 7);
}

TEST_F(Numeric, TextBeyondDoubleIsRead)
{
    CDbPropNum<double>& number = *m_group.m_pFollower;
    ASSERT_EQ(number.Set(1.0), eKW_ACC_OK);
    EXPECT_EQ(number.SetText(QStringLiteral("1e309")), eKW_ACC_ABOVE_MAXIMUM);
    EXPECT_EQ(number.SetText(QStringLiteral("-0.01e400")), eKW_ACC_BELOW_MINIMUM);
    EXPECT_EQ(number.SetText(QStringLiteral("1e400 V")), eKW_ACC_BAD_TEXT);
    EXPECT_EQ(number.Get(), 1.0);
    EXPECT_EQ(number.SetText(QStringLiteral("-1e-400")), eKW_ACC_OK);
    EXPECT_EQ(number.GetText(), QStringLiteral("0"));
}

TYPED_TEST(Integers, FactorOrLadderLeavesTheType)
{
    using T = TypeParam;
    auto& number = this->m_number;
    for (const E_STEPMODES mode : {eSTEPMODE_FACTOR, eSTEPMODE_LADDER125, eSTEPMODE_LADDER1245})
    {
        number.DeclareStepMode(mode);
        for (const INT32 count : {1, 2147483647})
        {
            ASSERT_EQ(number.Set(this->kHighest), eKW_ACC_OK);
            EXPECT_EQ(number.IncDec(count), eKW_ACC_WARNING);
            EXPECT_EQ(number.Get(), this->kHighest);
        }
        // Down to the smallest that the mode reaches, in steps of at least one and never past it.
        T before = this->kHighest;
        ASSERT_EQ(number.Dec(), eKW_ACC_OK);
        for (; number.Get() > T{1}; number.Dec())
        {
            ASSERT_LT(number.Get(), before);
            before = number.Get();
        }
        EXPECT_EQ(number.Get(), T{1});
        for (int i = 0; i < 5; ++i)
        {
            const T last = number.Get();
            ASSERT_EQ(number.Inc(), eKW_ACC_OK);
            ASSERT_GT(number.Get(), last);
        }
    }
}

TYPED_TEST(Integers, NumbersThatDifferCountAsOne)
{
    using T = TypeParam;
    auto& number = this->m_number;
    // So large that neighbours are the same double, where the type has such numbers.
    const T large = static_cast<T>(this->kHighest / 16 * 8);
    number.DeclareResolution(8);
    EXPECT_EQ(number.Set(static_cast<T>(large - 8)), eKW_ACC_OK);
    EXPECT_EQ(number.Set(static_cast<T>(large - 5)), eKW_ACC_WARNING) << "rounded";
    EXPECT_EQ(number.Get(), static_cast<T>(large - 8));
    number.DeclareResolution(0);
    const auto entry = [](T value)
    {
        return std::is_signed_v<T> ? QVariant(static_cast<qlonglong>(value))
                                   : QVariant(static_cast<qulonglong>(value));
    };
    number.DeclareValueList({entry(static_cast<T>(large - 4)), entry(large), entry(T{3})});
    EXPECT_EQ(number.Set(static_cast<T>(large - 1)), eKW_ACC_NOT_IN_VALUE_LIST);
    EXPECT_EQ(number.SetLimited(static_cast<T>(large - 1)), eKW_ACC_WARNING);
    EXPECT_EQ(number.Get(), large);
    EXPECT_EQ(number.SetLimited(static_cast<T>(large - 3)), eKW_ACC_WARNING);
    EXPECT_EQ(number.Get(), static_cast<T>(large - 4));
    EXPECT_EQ(number.SetLimited(this->kHighest), eKW_ACC_WARNING);
    EXPECT_EQ(number.Get(), large);
    EXPECT_EQ(number.SetLimited(this->kLowest), eKW_ACC_WARNING);
    EXPECT_EQ(number.Get(), T{3});
}

TEST_F(Numeric, EntryBeyondTheTypeIsCutToFitOrAFarWishEndsAtTheWrongEntry)
{
    CDbPropNum<INT16>& number = *m_group.m_pInt16;
    number.DeclareValueList({1, 70000, -70000, 5, QStringLiteral("x")});
    EXPECT_EQ(number.Set(70000 % 65536), eKW_ACC_NOT_IN_VALUE_LIST);
    ASSERT_EQ(number.Set(1), eKW_ACC_OK);
    EXPECT_EQ(number.Inc(), eKW_ACC_OK);
    EXPECT_EQ(number.Get(), 5);
    EXPECT_EQ(number.Inc(), eKW_ACC_WARNING);
    CDbPropNum<UINT16>& count = *m_group.m_pUInt16;
    count.DeclareValueList({-1, 0, 7});
    EXPECT_EQ(count.Set(65535), eKW_ACC_NOT_IN_VALUE_LIST);
    CDbPropNum<double>& listed = *m_group.m_pListed;
    for (const auto& [wish, entry] : {std::pair{1e300, 10.0},
                                      {std::numeric_limits<double>::infinity(), 10.0},
                                      {-std::numeric_limits<double>::infinity(), 1.0},
                                      {3.4, 2.0},
                                      {3.6, 5.0}})
    {
        EXPECT_EQ(listed.SetLimited(wish), eKW_ACC_WARNING) << wish;
        EXPECT_EQ(listed.Get(), entry) << wish;
    }
}

TEST_F(Numeric, EntryThatRulesTakeAwayStaysOrTheChoiceIsLost)
{
    CDbPropNum<double>& listed = *m_group.m_pListed; // 1, 2, 5, 10
    ASSERT_EQ(listed.Set(5.0), eKW_ACC_OK);
    EXPECT_EQ(listed.OfferEntries(0), eKW_ACC_NOT_IN_VALUE_LIST);
    EXPECT_EQ(listed.OfferEntries(0b1011), eKW_ACC_OK);
    EXPECT_EQ(listed.Get(), 2.0);
    EXPECT_EQ(listed.GetValueTexts().join(u' '), QStringLiteral("1 2 10"));
    EXPECT_EQ(listed.OfferEntries(0b0001), eKW_ACC_OK);
    EXPECT_EQ(listed.OfferEntries(0b1111), eKW_ACC_OK);
    EXPECT_EQ(listed.Get(), 5.0);
    ASSERT_EQ(listed.OfferEntries(0b1011), eKW_ACC_OK);
    EXPECT_EQ(listed.Set(5.0), eKW_ACC_NOT_IN_VALUE_LIST);
    EXPECT_EQ(listed.Inc(), eKW_ACC_OK);
    EXPECT_EQ(listed.Get(), 10.0);
    EXPECT_EQ(listed.SetMinAndMax(3.0, 7.0), eKW_ACC_NOT_IN_VALUE_LIST);
}

namespace
{
constexpr auto kLinear = eSTEPMODE_LINEAR;
constexpr auto kFactor = eSTEPMODE_FACTOR;
constexpr auto kLadder = eSTEPMODE_LADDER125;
constexpr auto kLadder4 = eSTEPMODE_LADDER1245;
constexpr auto kList = eSTEPMODE_LIST;
constexpr auto kLimit = eSTEP_BEHAVIOUR_LIMIT;
constexpr auto kWrap = eSTEP_BEHAVIOUR_WRAP;
constexpr auto kRefuse = eSTEP_BEHAVIOUR_REFUSE;
constexpr INT32 kMany = 2147483647;

struct t_Step
{
    E_STEPMODES mode;
    E_STEP_BEHAVIOUR behaviour;
    double start;
    INT32 steps;
    double end;
    KW_ACCEPTANCE code;
};

// Limits are ±1000, the step 0.5, the factor 2, the list 1, 2, 5, 10.
constexpr t_Step kRealSteps[] = {
    {kLinear, kLimit, 1, -1, 0.5, 0},   {kLinear, kLimit, 1.3, -2, 0.5, 0},
    {kLinear, kLimit, 1.25, 1, 2.0, 0}, {kLinear, kLimit, 999, 5, 1000, 1},
    {kLinear, kWrap, 999, 5, -1000, 0}, {kLinear, kRefuse, -1000, -1, -1000, eKW_ACC_BELOW_MINIMUM},
    {kList, kLimit, 2, 2, 10, 0},       {kList, kLimit, 5, 2, 10, 1},
    {kList, kWrap, 1, -1, 10, 0},       {kList, kRefuse, 10, 1, 10, eKW_ACC_ABOVE_MAXIMUM},
    {kFactor, kLimit, 0, kMany, 0, 0},  {kLadder, kWrap, 1000, 1, -1000, 0},
    {kLadder, kLimit, 2, -2, 0.5, 0},   {kLadder, kWrap, 1, -1, 0.5, 0},
    {kLadder, kRefuse, 1, -1, 0.5, 0},  {kLadder, kLimit, 0, 2, 0, 0},
    {kLadder, kLimit, 0, -1, 0, 0},     {kLadder, kLimit, -5, kMany, -5, 0},
};

// Whole numbers move by one where the factor would leave them; their ladder begins at 1.
constexpr t_Step kWholeSteps[] = {
    {kFactor, kLimit, 0, 1, 1, 0},         {kFactor, kLimit, 0, -1, -1, 0},
    {kFactor, kLimit, 0, kMany, 1, 0},     {kLadder, kWrap, 1000, 1, 1, 0},
    {kLadder, kLimit, 2, -2, 1, 1},        {kLadder4, kLimit, 4, -3, 1, 1},
    {kLadder, kWrap, 1, -1, 1000, 0},      {kLadder, kRefuse, 1, -1, 1, eKW_ACC_BELOW_MINIMUM},
    {kLadder, kLimit, 0, 2, 2, 0},         {kLadder, kLimit, 0, -1, 0, 1},
    {kLadder, kLimit, -5, kMany, 1000, 1},
};

constexpr t_Step kStepsOfBoth[] = {
    {kFactor, kLimit, 6, 1, 12, 0},
    {kFactor, kLimit, 6, -1, 3, 0},
    {kFactor, kLimit, -6, 1, -3, 0},
    {kFactor, kLimit, -6, -1, -12, 0},
    {kFactor, kLimit, -600, -1, -1000, 1},
    {kFactor, kWrap, -600, -1, 1000, 0},
    {kFactor, kRefuse, -600, -1, -600, eKW_ACC_BELOW_MINIMUM},
    {kFactor, kLimit, -6, -kMany, -1000, 1},
    {kFactor, kLimit, 6, kMany, 1000, 1},
    {kLadder, kLimit, 200, 1, 500, 0},
    {kLadder4, kLimit, 200, 2, 500, 0},
    {kLadder4, kLimit, 500, -1, 400, 0},
    {kLadder4, kLimit, 300, 1, 400, 0},
    {kLadder4, kLimit, 30, -2, 10, 0},
    {kLadder, kLimit, 600, 1, 1000, 0},
    {kLadder, kLimit, 600, 2, 1000, 1},
    {kLadder, kRefuse, 1000, 1, 1000, eKW_ACC_ABOVE_MAXIMUM},
};

template <typename T, std::size_t n>
void ExpectSteps(const t_Step (&steps)[n])
{
    for (const t_Step& step : steps)
    {
        SCOPED_TRACE(testing::Message() << "row " << &step - steps);
        const auto root = CPgFixtureRoot::Create();
        CDbPropNum<T>& number = NumberOf<T>(*root->m_pFirst);
        number.DeclareMinAndMax(-1000, 1000);
        number.DeclareStepMode(step.mode);
        number.DeclareStepBehaviour(step.behaviour);
        if (step.mode == kList)
        {
            number.DeclareValueList({1, 2, 5, 10});
        }
        ASSERT_EQ(number.Set(static_cast<T>(step.start)), eKW_ACC_OK);
        EXPECT_EQ(number.IncDec(step.steps), step.code);
        EXPECT_EQ(number.Get(), static_cast<T>(step.end));
    }
}
} // namespace

TEST_F(Numeric, StepGoesTheWrongWayOrToTheOtherEnd)
{
    ExpectSteps<double>(kRealSteps);
    ExpectSteps<double>(kStepsOfBoth);
    ExpectSteps<INT64>(kWholeSteps);
    ExpectSteps<INT64>(kStepsOfBoth);
    CDbPropNum<double>& number = *m_group.m_pDouble;
    number.DeclareStepMode(kFactor);
    number.DeclareStepFactor(1.1);
    EXPECT_EQ(number.IncDec(2), eKW_ACC_OK);
    EXPECT_DOUBLE_EQ(number.Get(), 12.1);
}

TEST_F(Numeric, EnumerationStepsLeaveTheTypeOrReachWhatIsDisabled)
{
    CDbPropEnum<KW_ZEL_TRIGGER_TYPE>& selector = *m_group.m_pEnum;
    for (INT32 value = 0; value < selector.GetEnumSize(); ++value)
    {
        ASSERT_EQ(selector.EnableValue(value, value % 5 == 2), eKW_ACC_OK);
    }
    const struct
    {
        INT32 start, steps, end;
        KW_ACCEPTANCE code;
    } rows[] = {{2, 1, 7, 0},   {2, 2, 12, 0},     {12, -1, 7, 0},
                {12, 1, 12, 1}, {2, -1, 2, 1},     {2, 3, 12, 1},
                {7, 0, 7, 0},   {7, kMany, 12, 1}, {7, -kMany - 1, 2, 1}};
    for (const auto& [start, steps, end, code] : rows)
    {
        ASSERT_EQ(selector.SetAsInt(start), eKW_ACC_OK);
        EXPECT_EQ(selector.IncDec(steps), code) << start << " by " << steps;
        EXPECT_EQ(selector.GetAsInt(), end) << start << " by " << steps;
    }
    // A rule may leave a value that can not be selected; stepping leads out of it.
    for (const auto& [steps, end] : {std::pair{1, 7}, {-1, 2}})
    {
        ASSERT_EQ(selector.DbSetAsInt(5), eKW_ACC_OK);
        EXPECT_EQ(selector.IncDec(steps), eKW_ACC_OK);
        EXPECT_EQ(selector.GetAsInt(), end);
    }
}
