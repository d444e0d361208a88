// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

/** Extent of a curve within one column of a drawing; NaN where it has a gap. */
struct t_Extent
{
    double least;
    double most;
};

/** Curves with their axes: what a diagram shows, whatever draws it. */
struct t_Diagram
{
    struct t_Point
    {
        double x;
        double y;
    };
    struct t_Axis
    {
        QString label;
        double least;
        double most; ///< > least
        double step; ///< between two grid lines, > 0
    };

    QString title;
    t_Axis x;
    t_Axis y;
    std::vector<t_Point> points{}; ///< x ascends; y outside the axis is drawn at its end

    /** A curve that says itself what it is in so many columns of equal width, which share the
        point between them. */
    using t_Curve = std::function<std::vector<t_Extent>(int columns)>;
    std::vector<t_Curve> curves{}; ///< in place of the points
};

/** Each curve in so many columns of equal width, such that no peak between two columns is lost.
    Columns without a point lie on the line between their neighbours. */
std::vector<std::vector<t_Extent>> GetCurves(const t_Diagram& diagram, int columns);

/** Steps of 1, 2 or 5 times a power of ten between grid lines, about so many of them. */
double GetGridStep(double length, int lines);

/** Places of the grid lines of an axis, both ends included where the step meets them. */
std::vector<double> GetGrid(const t_Diagram::t_Axis& axis);

/** How far along its axis a value is, bounded to 0 … 1. */
double GetFraction(const t_Diagram::t_Axis& axis, double value);

/** The diagram in braille characters, `width` columns wide, labels included (at least 24). */
QStringList DrawInText(const t_Diagram& diagram, int width);

/** The diagrams as an SVG document, one below the other, legible on light and on dark ground. */
QByteArray DrawAsSvg(const std::vector<t_Diagram>& diagrams);
