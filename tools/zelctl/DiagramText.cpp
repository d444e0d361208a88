// SPDX-License-Identifier: MIT
#include "Diagram.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr int kRows = 12;
constexpr int kDotsAcross = 2; ///< dots of a braille character
constexpr int kDotsDown = 4;
constexpr int kLabelWidth = 7;

/** Dots of one row of characters below the other; the lowest row of dots is 0. */
class CDots
{
public:
    explicit CDots(int columns)
        : m_columns(columns), m_cells(static_cast<std::size_t>(columns) * kRows)
    {
    }

    void Set(int x, int y)
    {
        // Unicode numbers the dots 1 2 3 7 down the left and 4 5 6 8 down the right column.
        static constexpr std::array<std::array<int, kDotsDown>, kDotsAcross> kBits{
            {{0x01, 0x02, 0x04, 0x40}, {0x08, 0x10, 0x20, 0x80}}};
        const int down = kRows * kDotsDown - 1 - y;
        const auto cell = static_cast<std::size_t>(down / kDotsDown * m_columns + x / kDotsAcross);
        m_cells[cell] |= kBits[static_cast<std::size_t>(x % kDotsAcross)]
                              [static_cast<std::size_t>(down % kDotsDown)];
    }

    QString GetRow(int row) const
    {
        constexpr int kBlankPattern = 0x2800;
        QString text;
        for (int column = 0; column < m_columns; ++column)
        {
            const int bits = m_cells[static_cast<std::size_t>(row * m_columns + column)];
            text += bits == 0 ? QChar(QLatin1Char(' '))
                              : QChar(static_cast<char16_t>(kBlankPattern + bits));
        }
        return text;
    }

private:
    int m_columns;
    std::vector<int> m_cells;
};

int GetHeight(const t_Diagram::t_Axis& axis, double value)
{
    return static_cast<int>(std::lround(GetFraction(axis, value) * (kRows * kDotsDown - 1)));
}

void DrawCurve(const t_Diagram& diagram, const std::vector<t_Extent>& extents, CDots& dots)
{
    // Up or down to the neighbour, so that steep slopes have no gaps.
    const t_Extent* before = nullptr;
    for (std::size_t x = 0; x < extents.size(); ++x)
    {
        const t_Extent& extent = extents[x];
        if (std::isnan(extent.least))
        {
            before = nullptr;
            continue;
        }
        int bottom = GetHeight(diagram.y, extent.least);
        int top = GetHeight(diagram.y, extent.most);
        if (before != nullptr)
        {
            bottom = std::min(bottom, GetHeight(diagram.y, before->most) + 1);
            top = std::max(top, GetHeight(diagram.y, before->least) - 1);
        }
        for (int y = bottom; y <= top; ++y)
        {
            dots.Set(static_cast<int>(x), y);
        }
        before = &extent;
    }
}

QString GetLabel(double value)
{
    return QString::number(value, 'g', 4);
}

/** The label of the grid line that meets a row of characters; blank between grid lines. */
QString GetRowLabel(const t_Diagram::t_Axis& axis, int row)
{
    for (const double value : GetGrid(axis))
    {
        if ((kRows * kDotsDown - 1 - GetHeight(axis, value)) / kDotsDown == row)
        {
            return GetLabel(value);
        }
    }
    return {};
}

/** The labels below the diagram, each in the middle below its place where there is room. */
QString GetFootLabels(const t_Diagram::t_Axis& axis, int columns)
{
    QString line;
    for (const double value : GetGrid(axis))
    {
        const QString label = GetLabel(value);
        const int place = static_cast<int>(GetFraction(axis, value) * (columns - 1)) + 1;
        const int begin = std::min(place - static_cast<int>(label.size()) / 2,
                                   columns + 1 - static_cast<int>(label.size()));
        if (begin > line.size() || line.isEmpty())
        {
            line = line.leftJustified(std::max(begin, 0)) + label;
        }
    }
    return line;
}
} // namespace

QStringList DrawInText(const t_Diagram& diagram, int width)
{
    const int columns = std::max(width, 24) - kLabelWidth - 2;
    CDots dots(columns);
    for (const auto& extents : GetCurves(diagram, columns * kDotsAcross))
    {
        DrawCurve(diagram, extents, dots);
    }
    QStringList lines{QString(kLabelWidth + 1, QLatin1Char(' ')) + diagram.y.label};
    for (int row = 0; row < kRows; ++row)
    {
        const QString label = GetRowLabel(diagram.y, row);
        lines.append(label.rightJustified(kLabelWidth) + QChar(label.isEmpty() ? u'│' : u'┤') +
                     dots.GetRow(row));
    }
    const QString margin(kLabelWidth, QLatin1Char(' '));
    lines.append(margin + QChar(u'└') + QString(columns, QChar(u'─')));
    lines.append(margin + GetFootLabels(diagram.x, columns));
    lines.append(margin + QLatin1Char(' ') +
                 diagram.x.label.rightJustified(columns, QLatin1Char(' ')));
    for (QString& line : lines)
    {
        while (line.endsWith(QLatin1Char(' ')))
        {
            line.chop(1);
        }
    }
    return lines;
}
