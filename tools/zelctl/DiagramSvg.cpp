// SPDX-License-Identifier: MIT
#include "Diagram.h"

#include <QByteArray>
#include <cmath>

namespace
{
constexpr int kWidth = 720;
constexpr int kHeight = 300;
constexpr int kLeft = 64; ///< room for labels around a panel
constexpr int kTop = 34;
constexpr int kRight = 20;
constexpr int kBottom = 46;
constexpr int kPlotWidth = kWidth - kLeft - kRight;
constexpr int kPlotHeight = kHeight - kTop - kBottom;

// Colours that stand out on white and on black; the ground goes with the reader's choice.
constexpr char kStyle[] =
    "<style>\n"
    "svg { background: #fff; color: #222; font: 12px sans-serif }\n"
    "text { fill: currentColor; stroke: none }\n"
    ".grid { stroke: currentColor; stroke-opacity: 0.18 }\n"
    ".frame { stroke: currentColor; fill: none }\n"
    ".curve { stroke: #1769c2; stroke-width: 1.5; fill: none; stroke-linejoin: round }\n"
    "@media (prefers-color-scheme: dark) {\n"
    "svg { background: #16181c; color: #e6e6e6 }\n"
    ".curve { stroke: #6db3ff }\n"
    "}\n"
    "</style>\n";

QString Number(double value)
{
    return QString::number(value, 'f', 2);
}

double GetX(const t_Diagram& diagram, double x)
{
    return kLeft + GetFraction(diagram.x, x) * kPlotWidth;
}

double GetY(const t_Diagram& diagram, double y)
{
    return kTop + (1.0 - GetFraction(diagram.y, y)) * kPlotHeight;
}

QString Text(double x, double y, const char* anchor, const QString& text)
{
    return QStringLiteral("<text x=\"%1\" y=\"%2\" text-anchor=\"%3\">%4</text>\n")
        .arg(Number(x), Number(y), QLatin1String(anchor), text.toHtmlEscaped());
}

QString Line(double x1, double y1, double x2, double y2)
{
    return QStringLiteral("<line class=\"grid\" x1=\"%1\" y1=\"%2\" x2=\"%3\" y2=\"%4\"/>\n")
        .arg(Number(x1), Number(y1), Number(x2), Number(y2));
}

QString DrawGrid(const t_Diagram& diagram)
{
    constexpr int kBelow = 16;
    QString svg;
    for (const double value : GetGrid(diagram.x))
    {
        const double x = GetX(diagram, value);
        svg += Line(x, kTop, x, kTop + kPlotHeight);
        svg += Text(x, kTop + kPlotHeight + kBelow, "middle", QString::number(value, 'g', 6));
    }
    for (const double value : GetGrid(diagram.y))
    {
        const double y = GetY(diagram, value);
        svg += Line(kLeft, y, kLeft + kPlotWidth, y);
        svg += Text(kLeft - 6, y + 4, "end", QString::number(value, 'g', 6));
    }
    return svg;
}

QString Polyline(const QStringList& places)
{
    return places.isEmpty() ? QString()
                            : QStringLiteral("<polyline class=\"curve\" points=\"%1\"/>\n")
                                  .arg(places.join(QLatin1Char(' ')));
}

QString Place(double x, const t_Diagram& diagram, double y)
{
    return Number(x) + QLatin1Char(',') + Number(GetY(diagram, y));
}

QString DrawPoints(const t_Diagram& diagram)
{
    QStringList places;
    for (const t_Diagram::t_Point& point : diagram.points)
    {
        places.append(Place(GetX(diagram, point.x), diagram, point.y));
    }
    return Polyline(places);
}

QString DrawExtents(const t_Diagram& diagram, const std::vector<t_Extent>& extents)
{
    QString svg;
    QStringList places;
    double x = kLeft + 0.5;
    for (const t_Extent& extent : extents)
    {
        if (std::isnan(extent.least))
        {
            svg += Polyline(places);
            places.clear();
        }
        else
        {
            places.append(Place(x, diagram, extent.least));
            places.append(Place(x, diagram, extent.most));
        }
        ++x;
    }
    return svg + Polyline(places);
}

QString DrawCurves(const t_Diagram& diagram)
{
    if (diagram.curves.empty() && diagram.points.size() <= kPlotWidth)
    {
        return DrawPoints(diagram);
    }
    QString svg;
    for (const auto& extents : GetCurves(diagram, kPlotWidth))
    {
        svg += DrawExtents(diagram, extents);
    }
    return svg;
}

QString DrawPanel(const t_Diagram& diagram, int top)
{
    const QString frame =
        QStringLiteral("<rect class=\"frame\" x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\"/>\n")
            .arg(kLeft)
            .arg(kTop)
            .arg(kPlotWidth)
            .arg(kPlotHeight);
    return QStringLiteral("<g transform=\"translate(0 %1)\">\n").arg(top) + DrawGrid(diagram) +
           frame + DrawCurves(diagram) + Text(kLeft, kTop - 12, "start", diagram.title) +
           Text(kLeft + kPlotWidth, kTop - 12, "end", diagram.y.label) +
           Text(kLeft + kPlotWidth / 2.0, kHeight - 10, "middle", diagram.x.label) +
           QStringLiteral("</g>\n");
}
} // namespace

QByteArray DrawAsSvg(const std::vector<t_Diagram>& diagrams)
{
    QString svg =
        QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %1 %2\">\n")
            .arg(kWidth)
            .arg(kHeight * static_cast<int>(diagrams.size())) +
        QLatin1String(kStyle);
    int top = 0;
    for (const t_Diagram& diagram : diagrams)
    {
        svg += DrawPanel(diagram, top);
        top += kHeight;
    }
    return (svg + QStringLiteral("</svg>\n")).toUtf8();
}
