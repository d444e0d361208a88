// SPDX-License-Identifier: MIT
#include "Diagram.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr double kNothing = std::numeric_limits<double>::infinity();

/** Height of the curve at a place between two points. */
double Interpolate(const std::vector<t_Diagram::t_Point>& points, double x)
{
    const auto right = std::lower_bound(points.begin(), points.end(), x,
                                        [](const auto& point, double at) { return point.x < at; });
    if (right == points.begin() || right == points.end())
    {
        return right == points.end() ? points.back().y : right->y;
    }
    const auto left = right - 1;
    return left->y + (right->y - left->y) * (x - left->x) / (right->x - left->x);
}
std::vector<t_Extent> GetExtents(const t_Diagram& diagram, int columns)
{
    std::vector<t_Extent> extents(static_cast<std::size_t>(columns), {kNothing, -kNothing});
    for (const t_Diagram::t_Point& point : diagram.points)
    {
        const double place = GetFraction(diagram.x, point.x) * columns;
        t_Extent& extent =
            extents[static_cast<std::size_t>(std::min(place, static_cast<double>(columns) - 1))];
        extent.least = std::min(extent.least, point.y);
        extent.most = std::max(extent.most, point.y);
    }
    for (std::size_t i = 0; i < extents.size(); ++i)
    {
        if (extents[i].least > extents[i].most)
        {
            const double middle = (static_cast<double>(i) + 0.5) / columns;
            const double y = Interpolate(
                diagram.points, diagram.x.least + middle * (diagram.x.most - diagram.x.least));
            extents[i] = {y, y};
        }
    }
    return extents;
}
} // namespace

double GetFraction(const t_Diagram::t_Axis& axis, double value)
{
    return std::clamp((value - axis.least) / (axis.most - axis.least), 0.0, 1.0);
}

std::vector<double> GetGrid(const t_Diagram::t_Axis& axis)
{
    constexpr double kRoundingOfSteps = 1e-9;
    std::vector<double> grid;
    for (double n = std::ceil(axis.least / axis.step - kRoundingOfSteps);
         n <= axis.most / axis.step + kRoundingOfSteps; ++n)
    {
        grid.push_back(n * axis.step);
    }
    return grid;
}

std::vector<std::vector<t_Extent>> GetCurves(const t_Diagram& diagram, int columns)
{
    if (diagram.curves.empty())
    {
        return {GetExtents(diagram, columns)};
    }
    std::vector<std::vector<t_Extent>> curves;
    for (const t_Diagram::t_Curve& curve : diagram.curves)
    {
        curves.push_back(curve(columns));
    }
    return curves;
}

double GetGridStep(double length, int lines)
{
    const double wanted = length / lines;
    const double power = std::pow(10.0, std::floor(std::log10(wanted)));
    for (const double factor : {1.0, 2.0, 5.0})
    {
        if (factor * power >= wanted)
        {
            return factor * power;
        }
    }
    return 10.0 * power;
}
