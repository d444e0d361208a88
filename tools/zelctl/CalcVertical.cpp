// SPDX-License-Identifier: MIT
#include "Calculation.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperVertical.h"
#include "KWEnumerationsUnits.h"

namespace
{
using VerticalHelper = CZELDatabaseHelperVertical;

void Scale(const CArguments& in, CFigures& out)
{
    if (in.Has("--divisions"))
    {
        out.Add("smallest scale",
                VerticalHelper::GetNextHighestScale(in.Number("value", eKW_UNIT_LEVEL_V),
                                                    in.Whole<UINT32>("--divisions", eKW_UNIT_DIV)),
                eKW_UNIT_LEVEL_V_DIV);
        return;
    }
    const double scale = in.Number("value", eKW_UNIT_LEVEL_V_DIV);
    out.Add("next highest", VerticalHelper::GetNextHighestScale(scale), eKW_UNIT_LEVEL_V_DIV)
        .Add("next lowest", VerticalHelper::GetNextLowestScale(scale), eKW_UNIT_LEVEL_V_DIV);
}

void Screen(const CArguments& in, CFigures& out)
{
    const double scale = in.Number("scale", eKW_UNIT_LEVEL_V_DIV);
    out.Add("height",
            VerticalHelper::GetPhysicalValueRange(scale, in.Number("--divisions", eKW_UNIT_DIV)),
            eKW_UNIT_LEVEL_V)
        .Add("middle",
             VerticalHelper::GetPhysicalValueOffset(in.Number("--offset", eKW_UNIT_LEVEL_V),
                                                    in.Number("--position", eKW_UNIT_DIV), scale),
             eKW_UNIT_LEVEL_V);
}

void TopBottom(const CArguments& in, CFigures& out)
{
    const double top = in.Number("top", eKW_UNIT_LEVEL_V);
    const double bottom = in.Number("bottom", eKW_UNIT_LEVEL_V);
    out.Add("height", VerticalHelper::GetRangeFromTopBottom(top, bottom), eKW_UNIT_LEVEL_V)
        .Add("middle", VerticalHelper::GetOffsetFromTopBottom(top, bottom), eKW_UNIT_LEVEL_V);
}
} // namespace

t_CalculationGroup GetVerticalCalculations()
{
    return {"Vertical",
            {{"scale",
              "Neighbours on the ladder of vertical scales",
              {"GetNextHighestScale", "GetNextLowestScale"},
              {{"value", "Scale in V/div, or with --divisions a range in V"},
               {"--divisions", "Divisions that must show the range", ""}},
              &Scale,
              {"300mV/div", "2.5V --divisions 8"}},
             {"screen",
              "Height of the screen, and the value in its middle",
              {"GetPhysicalValueRange", "GetPhysicalValueOffset"},
              {{"scale", "Scale in V/div"},
               {"--divisions", "Divisions of the screen", "8"},
               {"--offset", "Offset in V", "0"},
               {"--position", "Position in divisions", "0"}},
              &Screen,
              {"200mV/div --offset 1V --position 2"}},
             {"topbottom",
              "Height and middle between two values",
              {"GetRangeFromTopBottom", "GetOffsetFromTopBottom"},
              {{"top", "Upper value in V"}, {"bottom", "Lower value in V"}},
              &TopBottom,
              {"3V -1V"}}}};
}
