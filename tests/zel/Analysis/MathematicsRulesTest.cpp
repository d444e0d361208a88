// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

// Rules of what is made of the inputs: mathematics channel and XY diagram.

namespace
{
const t_Rule kMathematicsRules[] = {
    {"SumOfDifferentQuantities", "Vertical/Channel[1]/ProbeType = CURRENT_1_V_PER_A",
     "Mathematics/Type = SUBTRACT", ".Unit = NOT_DEFINED"},
    {"PowerIsNoPower", "Vertical/Channel[1]/ProbeType = CURRENT_1_V_PER_A",
     "Mathematics/Type = MULTIPLY", ".Unit = LEVEL_W"},
    {"ResistanceIsNoResistance", "Vertical/Channel[1]/ProbeType = CURRENT_1_V_PER_A",
     "Mathematics/Type = DIVIDE", ".Unit = IMPEDANCE_OHM"},
    {"RatioHasAUnit", "Vertical/Channel[1]/ProbeType = VOLTAGE_1_TO_1", "Mathematics/Type = DIVIDE",
     ".Unit = NONE"},
    {"SquareHasTheUnitOfItsRoot", "Vertical/Channel[1]/ProbeType = VOLTAGE_1_TO_1",
     "Mathematics/Type = SQUARE", ".Unit = LEVEL_V_SQUARE"},
    {"RootOfVolts", "Vertical/Channel[1]/ProbeType = VOLTAGE_1_TO_1", "Mathematics/Type = SQRT",
     ".Unit = NOT_DEFINED"},
    {"LogarithmHasAUnit", "Vertical/Channel[1]/ProbeType = VOLTAGE_1_TO_1", "Mathematics/Type = LN",
     ".Unit = NONE"},
    {"IntegralForgetsTheTime", "Vertical/Channel[1]/ProbeType = VOLTAGE_1_TO_1",
     "Mathematics/Type = INTEGRAL", ".Unit = V_S"},
    {"DerivativeForgetsTheTime", "Vertical/Channel[1]/ProbeType = VOLTAGE_1_TO_1",
     "Mathematics/Type = DERIVATIVE", ".Unit = LEVEL_V_PER_S"},
    {"UnitIgnoresTheProbe", "Mathematics/Type = MULTIPLY",
     "Vertical/Channel[0]/ProbeType = CURRENT_1_V_PER_A", "Mathematics/Unit = LEVEL_W"},
    {"SourceIsOff", "", "Vertical/Channel[0]/Enabled = OFF", "Mathematics/SourceA = C2"},
    {"AutomaticOverridesTheUser", "", "Mathematics/Scale = 1", ".AutoScale = OFF"},
    {"ExpressionHasNoUnit",
     "Mathematics/UseExpression = ON; Vertical/Channel[0]/ProbeType = CURRENT_1_V_PER_A",
     "Mathematics/Expression = -abs( C1 ) * (C2 - 2.5V) / 3",
     ".Unit = LEVEL_W; .ExpressionValid = ON; .ElementCount = 13"},
    {"SquareInAnExpression", "Mathematics/UseExpression = ON", ".Expression = sqr(C1) / 50Ohm",
     ".Unit = LEVEL_W; .ElementCount = 6"},
    {"MinusOfAConstantIsLost", "", "Mathematics/Expression = C1*-2",
     ".ExpressionValid = ON; .ElementCount = 3"},
    {"UnfinishedExpressionIsComputed", "Mathematics/UseExpression = ON", ".Expression = (C1+",
     ".ExpressionValid = OFF; .ElementCount = 3; .Unit = NOT_DEFINED"},
    {"AnythingIsAnExpression", "Mathematics/SelectedElement = 2", ".Expression = C1+C5",
     ".ExpressionValid = OFF; .ElementCount = 0; .SelectedElement = 0"},
    {"SelectionShowsAnotherElement", "Mathematics/Expression = C1*-2.5e3V", ".SelectedElement = 2",
     ".ElementType = CONSTANT; .ElementConstant = 2500; .ElementSign = NEGATIVE; .ElementUnit = "
     "LEVEL_V"},
    {"SelectionLeavesTheExpression", "Mathematics/SelectedElement = 3", ".Expression = C1",
     ".SelectedElement = 1; .ElementType = NONE"},
    {"ElementIsInsertedElsewhere",
     "Mathematics/SelectedElement = 2; .ElementType = FUNCTION; .ElementFunction = sqr",
     ".InsertElement",
     ".Expression = C1+sqrC2; .SelectedElement = 3; .ElementType = SOURCE; .ElementSource = C2; "
     ".ExpressionValid = OFF"},
    {"InsertedConstantLosesItsSign",
     "Mathematics/Expression = C1*; .SelectedElement = 2; .ElementType = CONSTANT; "
     ".ElementConstant = 2.5; .ElementSign = NEGATIVE",
     ".InsertElement", ".Expression = C1*-2.5; .ExpressionValid = ON"},
    {"ConstantsMerge", "Mathematics/Expression = 2; .ElementConstant = 3", ".InsertElement",
     ".Expression = 3 2; .ElementCount = 2"},
    {"AnotherElementIsRemoved", "Mathematics/SelectedElement = 1", ".RemoveElement",
     ".Expression = C1C2; .SelectedElement = 1; .ElementSource = C2"},
    {"NothingIsRemoved", "Mathematics/SelectedElement = 3", ".RemoveElement", "",
     eKW_ACC_NOTHING_TO_ACT_ON},
    {"TextIsEditedAsElements", "Mathematics/Expression = C1+x", ".InsertElement", "",
     eKW_ACC_BAD_TEXT},
    {"ElementsStay", "Mathematics/SelectedElement = 1", ".ClearExpression",
     ".Expression = ; .ElementCount = 0; .SelectedElement = 0; .ElementType = NONE"},
    {"AxesAreTheSame", "", "XY/SourceX = C2", ".SourceY1 = C1"},
    {"SecondCurveIsTheFirst", "XY/SourceY2 = C3", ".SourceY1 = C3", ".SourceY2 = NONE"},
    {"SecondCurveIsOff", "XY/SourceY2 = C4", "Vertical/Channel[3]/Enabled = OFF",
     "XY/SourceY2 = NONE; .SourceX = C1"},
    {"AxisIsOff", "XY/SourceX = C3", "Vertical/Channel[2]/Enabled = OFF",
     "XY/SourceX = C1; .SourceY1 = C2"},
};

bool IsOn(const CRuleTree& tree, int channel)
{
    return tree.Text("Vertical/Channel[" + QByteArray::number(channel) + "]/Enabled") ==
           QLatin1String("ON");
}

/** Axes and sources are channels that are on, and different, as far as there are enough. */
void CheckMathematics(const CRuleTree& tree, CFindings& findings)
{
    int enabled = 0;
    for (int i = 0; i < 4; ++i)
    {
        enabled += IsOn(tree, i) ? 1 : 0;
    }
    const QString x = tree.Text("XY/SourceX");
    const QString y1 = tree.Text("XY/SourceY1");
    const QString y2 = tree.Text("XY/SourceY2");
    const auto isOn = [&tree](const QString& source)
    { return !source.startsWith(u'C') || IsOn(tree, source.mid(1).toInt() - 1); };
    const bool areUsable = isOn(y2) && (enabled < 1 || isOn(x)) && (enabled < 2 || isOn(y1));
    const bool isOneCurve = y2 == QLatin1String("NONE");
    const bool differ = (enabled < 2 || x != y1) && (isOneCurve || (y2 != x && y2 != y1));
    findings.Check(areUsable && differ, "axes " + (x + y1 + y2).toLatin1());
    findings.Check(enabled < 1 || (isOn(tree.Text("Mathematics/SourceA")) &&
                                   isOn(tree.Text("Mathematics/SourceB"))),
                   "sources of the mathematics");
    findings.Check(tree.Number("Mathematics/SelectedElement") <=
                       tree.Number("Mathematics/ElementCount"),
                   "selected element");
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Mathematics, Rules, testing::ValuesIn(kMathematicsRules), Rules::Name);
INSTANTIATE_TEST_SUITE_P(Mathematics, Walks,
                         testing::Values(t_Walk{
                             "", "Mathematics XY Vertical Vertical/Channel[0] Cursor Measurements",
                             CheckMathematics, 6}));

TEST(MathematicsRules, ExpressionGrowsBeyondItsLengthOrIsHalfRead)
{
    const CRuleTree tree;
    tree.DoAll("Mathematics/Expression = C1" + QByteArray("+C1").repeated(31) +
               "; .SelectedElement = 1");
    EXPECT_EQ(tree.Text("Mathematics/ElementCount"), QStringLiteral("63"));
    EXPECT_EQ(tree.Do("Mathematics/InsertElement"), eKW_ACC_OK);
    EXPECT_EQ(tree.Do("Mathematics/ElementType = OPEN_BRACKET"), eKW_ACC_OK);
    EXPECT_EQ(tree.Do("Mathematics/InsertElement"), eKW_ACC_CONTAINER_FULL);
    EXPECT_EQ(tree.Text("Mathematics/ElementCount"), QStringLiteral("64"));
    // Blanks count as text until an edit writes the expression afresh.
    tree.DoAll("Mathematics/Expression = C1" + QByteArray(253, ' ') +
               "+; .SelectedElement = 2; .ElementType = SOURCE; .ElementSource = R1; "
               ".InsertElement");
    EXPECT_EQ(tree.Text("Mathematics/Expression"), QStringLiteral("C1+R1"));
    for (const char* wrong : {"12sq(C1)", "C1+.5", "1e999", "c1", "C1;C2", "2 V", "C1+C12"})
    {
        EXPECT_EQ(tree.Do(QByteArray("Mathematics/Expression = ") + wrong), eKW_ACC_OK);
        EXPECT_EQ(tree.Text("Mathematics/ExpressionValid"), QStringLiteral("OFF")) << wrong;
    }
    for (const char* right : {"12*sqr(C1)", "2s*abs(C1)", "2e3V + 1e-3", "--C1", "((R1))"})
    {
        EXPECT_EQ(tree.Do(QByteArray("Mathematics/Expression = ") + right), eKW_ACC_OK);
        EXPECT_EQ(tree.Text("Mathematics/ExpressionValid"), QStringLiteral("ON")) << right;
    }
    EXPECT_EQ(tree.reports.List(), QStringList());
}
