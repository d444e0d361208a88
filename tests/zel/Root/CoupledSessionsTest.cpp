// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
// Pairs of lines that are moved together: they keep their distance, or stop together.
const t_Session kCoupledSessions[] = {
    {"LinesComeCloserAtTheEdge",
     {{"Cursor/Coupled = ON; .X1 = 2e-7", "Cursor/X1 = 1e-07; .X2 = 5e-07; .DeltaX = 4e-07"},
      {"Cursor/X1 = 3e-7", "Cursor/X1 = 1e-07; .X2 = 5e-07; .DeltaX = 4e-07"},
      {"Cursor/X2 = -4e-7", "Cursor/X1 = -5e-07; .X2 = -1e-07; .DeltaX = 4e-07"},
      {"Cursor/X1 = -2e-7", "Cursor/X2 = 2e-07; .DeltaX = 4e-07"}}},
    {"LevelsOfTwoScreensComeCloser",
     {{"Vertical/Channel[1]/Scale = 0.5; Cursor/SecondSourceEnabled = ON; .SecondSource = C2; "
       ".Y2 = 1; .Y1 = 0; .Coupled = ON; .Y1 = 3",
       "Cursor/Y1 = 1; .Y2 = 2; .DeltaY = 1"}}},
    {"FinerScreenCostsTheDistance",
     {{"Cursor/Coupled = ON; Horizontal/Scale = 1e-8", "Cursor/DeltaX = 1e-07"},
      {"Horizontal/Scale = 1e-7", "Cursor/X1 = -2e-07; .X2 = 2e-07; .DeltaX = 4e-07"}}},
    {"LoggerLinesComeCloserAtTheStart",
     {{"Logger/LoggerCursor/Coupled = ON; .X2 = 10",
       "Logger/LoggerCursor/X1 = 0; .X2 = 40; .DeltaX = 40"},
      {"Logger/LoggerCursor/X1 = 20", "Logger/LoggerCursor/X2 = 60; .DeltaX = 40"}}},
};

/** A line, and the difference that must stay when it moves. */
struct t_Line
{
    const char* setup;
    const char* line;
    const char* difference;
};

const t_Line kLines[] = {
    {"Cursor/Coupled = ON", "Cursor/X1", "Cursor/DeltaX"},
    {"Cursor/Coupled = ON", "Cursor/X2", "Cursor/DeltaX"},
    {"Cursor/Coupled = ON", "Cursor/Y2", "Cursor/DeltaY"},
    {"Cursor/Coupled = ON", "Cursor/LevelX1", "Cursor/DeltaLevelX"},
    {"Logger/LoggerCursor/Coupled = ON", "Logger/LoggerCursor/X2", "Logger/LoggerCursor/DeltaX"},
    {"Spectrum/SpectrumCursors/Coupled = ON",
     "Spectrum/SpectrumCursors/SpectrumCursor[0]/Horizontal",
     "Spectrum/SpectrumCursors/DeltaHorizontal"},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Coupled, Sessions, testing::ValuesIn(kCoupledSessions), Sessions::Name);

TEST(CoupledLines, LoseTheirDistanceStepByStep)
{
    for (const auto& [setup, line, difference] : kLines)
    {
        SCOPED_TRACE(line);
        const CRuleTree tree;
        tree.DoAll(setup);
        const QString before = tree.Text(difference);
        for (const int direction : {1, -1})
        {
            KW_ACCEPTANCE code = eKW_ACC_OK;
            for (int steps = 1; steps < 1 << 30; steps *= 2)
            {
                code = Property(tree.root, line)->IncDec(direction * steps);
                ASSERT_EQ(tree.Text(difference), before) << steps << " steps";
            }
            EXPECT_EQ(code, eKW_ACC_WARNING);
        }
    }
}
