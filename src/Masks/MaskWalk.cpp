// SPDX-License-Identifier: MIT
#include "Masks/MaskWalk.h"

namespace NMasks
{
double LevelAt(const KW_MaskPoint& from, const KW_MaskPoint& to, double x)
{
    const double level = from.y + (to.y - from.y) * ((x - from.x) / (to.x - from.x));
    return KWMath::Bound(std::min(from.y, to.y), level, std::max(from.y, to.y));
}

CWalk::CWalk(const KW_MaskLine& line, const CGeometry& geometry, double none)
    : m_line(line), m_geometry(geometry), m_none(none)
{
    Hold(m_none, BeginOfNext());
}

void CWalk::GoTo(UINT32 point)
{
    while (m_end <= point && m_end < m_geometry.Count())
    {
        Next();
    }
}

UINT32 CWalk::BeginOfNext() const
{
    return m_next < m_line.size() ? m_geometry.FirstAt(m_line[m_next].x) : m_geometry.Count();
}

void CWalk::Hold(double level, UINT32 end)
{
    m_level = level;
    m_end = end;
    m_to = nullptr;
}

void CWalk::Leave()
{
    m_isAtPoint = false;
    Hold(m_none, BeginOfNext());
    if (m_next < m_line.size() && !m_line[m_next - 1].isEnd)
    {
        m_to = &m_line[m_next];
    }
}

void CWalk::Next()
{
    if (m_isAtPoint || m_next == m_line.size())
    {
        return Leave();
    }
    const std::size_t first = m_next;
    double level = m_line[first].y;
    while (++m_next < m_line.size() && m_line[m_next].x == m_line[first].x)
    {
        level = m_none > 0 ? std::max(level, m_line[m_next].y) : std::min(level, m_line[m_next].y);
    }
    if (m_next - first == 1 && m_next < m_line.size() && !m_line[first].isEnd)
    {
        return Leave(); // what follows begins with the level of the point
    }
    Hold(level, m_geometry.FirstBehind(m_line[first].x));
    m_isAtPoint = true;
}
} // namespace NMasks
