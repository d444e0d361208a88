// SPDX-License-Identifier: MIT
#include "RuleTree.h"

// Rules of what is made of the inputs: mathematics channel and XY diagram.

namespace
{
QString C(const char* rest)
{
    return QStringLiteral("Vertical/Channel[0]/") + QString::fromLatin1(rest);
}

QString V(const char* rest)
{
    return QStringLiteral("Vertical/") + QString::fromLatin1(rest);
}

QString M(const char* rest)
{
    return QStringLiteral("Mathematics/") + QString::fromLatin1(rest);
}

QString XY(const char* rest)
{
    return QStringLiteral("XY/") + QString::fromLatin1(rest);
}

/** A row of the table of units: both sources, by probes, and the operation. */
t_RuleCase Unit(const char* name, const char* probeB, const char* operation, const char* unit)
{
    return {name,
            {V("Channel[1]/ProbeType = ") + QString::fromLatin1(probeB)},
            M("Type = ") + QString::fromLatin1(operation),
            {M("Unit = ") + QString::fromLatin1(unit)}};
}

constexpr const char* kVoltage = "VOLTAGE_1_TO_1";
constexpr const char* kCurrent = "CURRENT_1_V_PER_A";

std::vector<t_RuleCase> MathematicsCases()
{
    return {
        Unit("SumOfDifferentQuantities", kCurrent, "SUBTRACT", "NOT_DEFINED"),
        Unit("PowerIsNoPower", kCurrent, "MULTIPLY", "LEVEL_W"),
        Unit("ResistanceIsNoResistance", kCurrent, "DIVIDE", "IMPEDANCE_OHM"),
        Unit("RatioHasAUnit", kVoltage, "DIVIDE", "NONE"),
        Unit("SquareHasTheUnitOfItsRoot", kVoltage, "SQUARE", "LEVEL_V_SQUARE"),
        Unit("RootOfVolts", kVoltage, "SQRT", "NOT_DEFINED"),
        Unit("LogarithmHasAUnit", kVoltage, "LN", "NONE"),
        Unit("IntegralForgetsTheTime", kVoltage, "INTEGRAL", "V_S"),
        Unit("DerivativeForgetsTheTime", kVoltage, "DERIVATIVE", "LEVEL_V_PER_S"),
        {"UnitIgnoresTheProbe",
         {M("Type = MULTIPLY")},
         C("ProbeType = CURRENT_1_V_PER_A"),
         {M("Unit = LEVEL_W")}},
        {"SourceIsOff", {}, C("Enabled = OFF"), {M("SourceA = C2")}},
        {"AutomaticOverridesTheUser", {}, M("Scale = 1"), {M("AutoScale = OFF")}},
        {"ExpressionHasNoUnit",
         {M("UseExpression = ON"), C("ProbeType = CURRENT_1_V_PER_A")},
         M("Expression = -abs( C1 ) * (C2 - 2.5V) / 3"),
         {M("Unit = LEVEL_W"), M("ExpressionValid = ON"), M("ElementCount = 13")}},
        {"SquareInAnExpression",
         {M("UseExpression = ON")},
         M("Expression = sqr(C1) / 50Ohm"),
         {M("Unit = LEVEL_W"), M("ElementCount = 6")}},
        {"MinusOfAConstantIsLost",
         {},
         M("Expression = C1*-2"),
         {M("ExpressionValid = ON"), M("ElementCount = 3")}},
        {"UnfinishedExpressionIsComputed",
         {M("UseExpression = ON")},
         M("Expression = (C1+"),
         {M("ExpressionValid = OFF"), M("ElementCount = 3"), M("Unit = NOT_DEFINED")}},
        {"AnythingIsAnExpression",
         {M("SelectedElement = 2")},
         M("Expression = C1+C5"),
         {M("ExpressionValid = OFF"), M("ElementCount = 0"), M("SelectedElement = 0")}},
        {"SelectionShowsAnotherElement",
         {M("Expression = C1*-2.5e3V")},
         M("SelectedElement = 2"),
         {M("ElementType = CONSTANT"), M("ElementConstant = 2500"), M("ElementSign = NEGATIVE"),
          M("ElementUnit = LEVEL_V")}},
        {"SelectionLeavesTheExpression",
         {M("SelectedElement = 3")},
         M("Expression = C1"),
         {M("SelectedElement = 1"), M("ElementType = NONE")}},
        {"ElementIsInsertedElsewhere",
         {M("SelectedElement = 2"), M("ElementType = FUNCTION"), M("ElementFunction = sqr")},
         M("InsertElement"),
         {M("Expression = C1+sqrC2"), M("SelectedElement = 3"), M("ElementType = SOURCE"),
          M("ElementSource = C2"), M("ExpressionValid = OFF")}},
        {"ConstantsMerge",
         {M("Expression = 2"), M("ElementConstant = 3")},
         M("InsertElement"),
         {M("Expression = 3 2"), M("ElementCount = 2")}},
        {"AnotherElementIsRemoved",
         {M("SelectedElement = 1")},
         M("RemoveElement"),
         {M("Expression = C1C2"), M("SelectedElement = 1"), M("ElementSource = C2")}},
        {"NothingIsRemoved",
         {M("SelectedElement = 3")},
         M("RemoveElement"),
         {},
         eKW_ACC_NOTHING_TO_DO},
        {"TextIsEditedAsElements",
         {M("Expression = C1+x")},
         M("InsertElement"),
         {},
         eKW_ACC_BAD_TEXT},
        {"ElementsStay",
         {M("SelectedElement = 1")},
         M("ClearExpression"),
         {M("Expression = "), M("ElementCount = 0"), M("SelectedElement = 0"),
          M("ElementType = NONE")}},
    };
}

std::vector<t_RuleCase> XYCases()
{
    return {
        {"AxesAreTheSame", {}, XY("SourceX = C2"), {XY("SourceY1 = C1")}},
        {"SecondCurveIsTheFirst",
         {XY("SourceY2 = C3")},
         XY("SourceY1 = C3"),
         {XY("SourceY2 = NONE")}},
        {"SecondCurveIsOff",
         {XY("SourceY2 = C4")},
         V("Channel[3]/Enabled = OFF"),
         {XY("SourceY2 = NONE"), XY("SourceX = C1")}},
        {"AxisIsOff",
         {XY("SourceX = C3")},
         V("Channel[2]/Enabled = OFF"),
         {XY("SourceX = C1"), XY("SourceY1 = C2")}},
    };
}
} // namespace

class DerivedTraceRules : public testing::TestWithParam<t_RuleCase>
{
};

TEST_P(DerivedTraceRules, Coupling)
{
    CheckRule(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Mathematics, DerivedTraceRules, testing::ValuesIn(MathematicsCases()),
                         [](const auto& test) { return std::string(test.param.name); });
INSTANTIATE_TEST_SUITE_P(XY, DerivedTraceRules, testing::ValuesIn(XYCases()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(MathematicsRules, ExpressionGrowsBeyondItsLengthOrIsHalfRead)
{
    const CRuleTree tree;
    QString sum = QStringLiteral("C1");
    for (int i = 0; i < 31; ++i)
    {
        sum += QStringLiteral("+C1");
    }
    tree.DoAll({M("Expression = ") + sum, M("SelectedElement = 1")});
    EXPECT_EQ(tree.Text(M("ElementCount")), QStringLiteral("63"));
    EXPECT_EQ(tree.Do(M("InsertElement")), eKW_ACC_OK);
    EXPECT_EQ(tree.Do(M("ElementType = OPEN_BRACKET")), eKW_ACC_OK);
    EXPECT_EQ(tree.Do(M("InsertElement")), eKW_ACC_CONTAINER_FULL);
    EXPECT_EQ(tree.Text(M("ElementCount")), QStringLiteral("64"));
    // Blanks count as text until an edit writes the expression afresh.
    const QString longest = QStringLiteral("C1") + QString(253, QLatin1Char(' ')) + u'+';
    tree.DoAll({M("Expression = ") + longest, M("SelectedElement = 2"), M("ElementType = SOURCE"),
                M("ElementSource = R1"), M("InsertElement")});
    EXPECT_EQ(tree.Text(M("Expression")), QStringLiteral("C1+R1"));
    for (const char* wrong : {"12sq(C1)", "C1+.5", "1e999", "c1", "C1;C2", "2 V", "C1+C12"})
    {
        tree.DoAll({M("Expression = ") + QString::fromLatin1(wrong)});
        EXPECT_EQ(tree.Text(M("ExpressionValid")), QStringLiteral("OFF")) << wrong;
    }
    for (const char* right : {"12*sqr(C1)", "2s*abs(C1)", "2e3V + 1e-3", "--C1", "((R1))"})
    {
        tree.DoAll({M("Expression = ") + QString::fromLatin1(right)});
        EXPECT_EQ(tree.Text(M("ExpressionValid")), QStringLiteral("ON")) << right;
    }
    EXPECT_EQ(tree.reports.Messages(), QStringList());
}

namespace
{
bool IsOn(const CRuleTree& tree, int channel)
{
    return tree.Text(V("Channel[%1]/Enabled").arg(channel)) == QLatin1String("ON");
}

/** Axes and sources are channels that are on, and different, as far as there are enough. */
void CheckSources(const CRuleTree& tree, QStringList& wrong)
{
    int enabled = 0;
    for (int i = 0; i < 4; ++i)
    {
        enabled += IsOn(tree, i) ? 1 : 0;
    }
    const QString x = tree.Text(XY("SourceX"));
    const QString y1 = tree.Text(XY("SourceY1"));
    const QString y2 = tree.Text(XY("SourceY2"));
    const auto isOn = [&tree](const QString& source)
    { return !source.startsWith(u'C') || IsOn(tree, source.mid(1).toInt() - 1); };
    const bool areUsable = isOn(y2) && (enabled < 1 || isOn(x)) && (enabled < 2 || isOn(y1));
    const bool isOneCurve = y2 == QLatin1String("NONE");
    const bool differ = (enabled < 2 || x != y1) && (isOneCurve || (y2 != x && y2 != y1));
    if (!areUsable || !differ)
    {
        wrong.append(QStringLiteral("axes %1 %2 %3").arg(x, y1, y2));
    }
    if (enabled > 0 && !(isOn(tree.Text(M("SourceA"))) && isOn(tree.Text(M("SourceB")))))
    {
        wrong.append(QStringLiteral("sources of the mathematics"));
    }
}
} // namespace

TEST(DerivedTraceWalk, SomeOrderOfWritesBreaksACouplingOrIsNotUndone)
{
    const auto violations = [](const CRuleTree& tree)
    {
        QStringList wrong;
        CheckSources(tree, wrong);
        if (tree.Number(M("SelectedElement")) > tree.Number(M("ElementCount")))
        {
            wrong.append(QStringLiteral("selected element"));
        }
        return wrong;
    };
    for (const UINT32 seed : {1U, 2U, 3U, 4U, 5U, 6U})
    {
        CheckWalk(seed, {},
                  {QStringLiteral("Mathematics"), QStringLiteral("XY"), QStringLiteral("Vertical"),
                   QStringLiteral("Vertical/Channel[0]"), QStringLiteral("Cursor"),
                   QStringLiteral("Measurements")},
                  violations);
    }
}
