// SPDX-License-Identifier: MIT
// Expressions as clients read them: what is wrong and where, units, values.
#include "mathematics/TestTraces.h"

#include "Mathematics/MathExpression.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace
{
struct t_Refusal
{
    const char* text;
    UINT32 column;
    const char* says; ///< part of the report
};

constexpr t_Refusal kRefusals[] = {
    {"", 1, "enter an expression"},
    {"  ", 3, "enter an expression"},
    {"C1 + x", 6, "no element begins with \"x\""},
    {"c1", 1, "use C1 to C4"},
    {"2 V", 3, "directly behind"},
    {"C1+", 4, "operand is missing"},
    {"C1 + * C2", 6, "operand is missing"},
    {"(C1", 4, "of column 1 is not closed"},
    {"((C1)+2", 8, "of column 1 is not closed"},
    {"(C1 C2)", 5, "operator is missing"},
    {"C1)", 3, "no bracket is open"},
    {"C1 C2", 4, "operator is missing"},
    {"abs C1", 5, "write abs(C1)"},
    {"2*sqr", 6, "write sqr(C1)"},
    {"()", 2, "operand is missing"},
    {"1e999*C1", 1, "too large"},
};

struct t_Result
{
    const char* text;
    double value; ///< C1 = 3 V, C2 = 4 A, C3 = 0 V, R1 = -5 V
    KW_UNIT unit;
};

const t_Result kResults[] = {
    {"C1*C2", 12, eKW_UNIT_LEVEL_W},
    {"C1-C2*2", -5, eKW_UNIT_NOT_DEFINED},
    {"(C1-R1)*2", 16, eKW_UNIT_LEVEL_V},
    {"C1/C2/C2", 0.1875, eKW_UNIT_NOT_DEFINED},
    {"- C1", -3, eKW_UNIT_LEVEL_V},
    {"--C1*-2", -6, eKW_UNIT_LEVEL_V},
    {"- C1 + C2*2", 5, eKW_UNIT_NOT_DEFINED},
    {"sqr(R1)/50Ohm", 0.5, eKW_UNIT_LEVEL_W},
    {"abs(R1)+1V", 6, eKW_UNIT_LEVEL_V},
    {"C1/C3", kNaN, eKW_UNIT_NONE},
    {"2/(1/C3)", kNaN, eKW_UNIT_NOT_DEFINED},
    {"1e300*1e300", kNaN, eKW_UNIT_NONE},
    {"C1*(C1+(C1-(C1*C2)))", -18, eKW_UNIT_NOT_DEFINED},
    {"2+3*4", 14, eKW_UNIT_NONE},
};
} // namespace

TEST(Expressions, RefusalsSayWhereAndWhatToDo)
{
    for (const t_Refusal& row : kRefusals)
    {
        CKWMathExpression expression;
        KW_MathError error;
        EXPECT_EQ(expression.Read(QLatin1String(row.text), error), eKW_ACC_BAD_TEXT) << row.text;
        EXPECT_EQ(error.column, row.column) << row.text;
        EXPECT_TRUE(error.text.contains(QLatin1String(row.says)))
            << row.text << ": " << error.text.toStdString();
        EXPECT_FALSE(expression) << row.text;
    }
}

TEST(Expressions, AreComputedWithTheirUnits)
{
    std::array<double, eKW_MATH_CHANNELS> values{3, 4, 0, 0, 0, -5};
    std::array<KW_UNIT, eKW_MATH_CHANNELS> units{};
    units.fill(eKW_UNIT_LEVEL_V);
    units[eKW_ZEL_CHANNEL_C2] = eKW_UNIT_LEVEL_A;
    for (const t_Result& row : kResults)
    {
        CKWMathExpression expression;
        KW_MathError error;
        ASSERT_EQ(expression.Read(QLatin1String(row.text), error), eKW_ACC_OK)
            << row.text << ": " << error.text.toStdString();
        const double value = expression.Evaluate(values);
        EXPECT_TRUE(value == row.value || (std::isnan(value) && std::isnan(row.value)))
            << row.text << " = " << value;
        EXPECT_EQ(expression.GetUnit(units), row.unit) << row.text;
    }
}

TEST(Expressions, OneThatIsRefusedLeavesTheFormer)
{
    CKWMathExpression expression;
    KW_MathError error;
    EXPECT_EQ(expression.Read(QStringLiteral("C2-R1*C2"), error), eKW_ACC_OK);
    EXPECT_EQ(expression.Read(QStringLiteral("C1").repeated(65), error), eKW_ACC_TOO_LONG);
    EXPECT_EQ(error.column, 129U);
    EXPECT_EQ(expression.GetElements().size(), 5U);
    EXPECT_EQ(expression.GetSources(),
              (std::vector<KW_ZEL_CHANNEL>{eKW_ZEL_CHANNEL_C2, eKW_ZEL_CHANNEL_R1}));
}
