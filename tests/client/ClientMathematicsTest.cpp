// SPDX-License-Identifier: MIT
// The mathematics channel of the tree over records: settings are followed, scale and position come
// back.
#include "IKWFunctionMathematics.h"
#include "IKWFunctionZEL.h"
#include "Mathematics/MathematicsTree.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace
{
/** C1 in volts of so many words each, C2 twice as high. */
CKWRecord RecordOf(INT16 lowest, INT16 highest)
{
    const INT16 points[2][4] = {{lowest, highest, lowest, highest},
                                {INT16(2 * lowest), INT16(2 * highest), 0, 0}};
    std::array<KW_TraceInfo, 2> infos{};
    for (int i = 0; i < 2; ++i)
    {
        infos[i].channel = KW_ZEL_CHANNEL(i);
        infos[i].unit = eKW_UNIT_LEVEL_V;
        infos[i].count = 4;
        infos[i].scale = 1e-3;
    }
    const std::span<const std::byte> samples[] = {std::as_bytes(std::span(points[0])),
                                                  std::as_bytes(std::span(points[1]))};
    return KW_MakeRecord({}, infos, samples);
}

class ClientMathematics : public testing::Test
{
protected:
    ClientMathematics() { m_root->RunPresetSequence(true); }

    /** The first point, in volts. */
    double First(const CKWRecord& record)
    {
        CKWRecord curve;
        m_code = m_curve->Compute(record, curve);
        INT16 word = INT16_MIN;
        if (curve)
        {
            std::memcpy(&word, curve.GetSamples(0).data(), sizeof word);
        }
        return word * curve.GetTrace(0).scale + curve.GetTrace(0).offset;
    }

    const std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    const std::shared_ptr<IKWFunctionMathematics> m_group = m_root->GetPgMathematics();
    const std::shared_ptr<IKWMathematicsCurve> m_curve = KW_MakeMathematicsCurve(m_root);
    KW_ACCEPTANCE m_code = eKW_ACC_OK;
};
} // namespace

TEST_F(ClientMathematics, FollowsTheSettings)
{
    const CKWRecord record = RecordOf(-1000, 3000);
    First(record);
    EXPECT_EQ(m_code, eKW_ACC_NOTHING_TO_ACT_ON);
    m_group->GetPrEnabled()->Set(eKW_ONOFF_ON);
    EXPECT_TRUE(m_curve->HasChanged());
    EXPECT_NEAR(First(record), -3.0, 1e-3); // C1 + C2
    EXPECT_FALSE(m_curve->HasChanged());
    m_group->GetPrType()->Set(eKW_ZEL_MATHEMATICS_TYPE_SUBTRACT);
    EXPECT_NEAR(First(record), 1.0, 1e-3);
    m_group->GetPrExpression()->Set(QStringLiteral("sqr(C1)*3"));
    m_group->GetPrUseExpression()->Set(eKW_ONOFF_ON);
    EXPECT_NEAR(First(record), 3.0, 1e-2);
    m_group->GetPrExpression()->Set(QStringLiteral("sqr(C1)*"));
    First(record);
    EXPECT_EQ(m_code, eKW_ACC_BAD_TEXT);
}

TEST_F(ClientMathematics, ScaleFollowsTheCurveOnlyWhenItMust)
{
    m_group->GetPrEnabled()->Set(eKW_ONOFF_ON);
    First(RecordOf(-1000, 3000)); // -3 V to 9 V
    m_curve->Deliver();
    EXPECT_EQ(m_group->GetPrScale()->Get(), 2.0);
    EXPECT_EQ(m_group->GetPrPosition()->Get(), -1.5);
    EXPECT_EQ(m_group->GetPrAutoScale()->Get(), eKW_ONOFF_ON);
    First(RecordOf(-950, 2900));
    m_curve->Deliver();
    EXPECT_EQ(m_group->GetPrPosition()->Get(), -1.5); // it trembles
    First(RecordOf(-400, 400));
    m_curve->Deliver();
    EXPECT_EQ(m_group->GetPrScale()->Get(), 0.4);
    EXPECT_EQ(m_group->GetPrPosition()->Get(), 0.0);
    First(RecordOf(1000, 1000)); // the last two points are other ones
    m_curve->Deliver();
    EXPECT_EQ(m_group->GetPrPosition()->Get(), -4.0);
}

TEST_F(ClientMathematics, ScaleIsFoundWhenItIsAskedFor)
{
    m_group->GetPrEnabled()->Set(eKW_ONOFF_ON);
    m_group->GetPrScale()->Set(10.0); // the user's own: it stays
    EXPECT_EQ(m_group->GetPrAutoScale()->Get(), eKW_ONOFF_OFF);
    const CKWRecord record = RecordOf(-1000, 3000);
    EXPECT_NEAR(First(record), -3.0, 2e-3);
    m_curve->Deliver();
    EXPECT_EQ(m_group->GetPrScale()->Get(), 10.0);
    m_group->GetPrFindScale()->Set();
    EXPECT_TRUE(m_curve->HasChanged());
    First(record);
    m_curve->Deliver();
    EXPECT_EQ(m_group->GetPrScale()->Get(), 2.0);
    EXPECT_EQ(m_group->GetPrPosition()->Get(), -1.5);
    EXPECT_EQ(m_group->GetPrAutoScale()->Get(), eKW_ONOFF_OFF);
    First(RecordOf(-10, 10));
    m_curve->Deliver();
    EXPECT_EQ(m_group->GetPrScale()->Get(), 2.0);
    // What was found is no step: one undo takes back the user's scale and what followed it.
    EXPECT_EQ(m_root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(m_group->GetPrAutoScale()->Get(), eKW_ONOFF_ON);
}
