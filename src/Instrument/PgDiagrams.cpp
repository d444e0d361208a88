// SPDX-License-Identifier: MIT
#include "Instrument/PgDiagrams.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Instrument/PgDiagramWindowHw.h"
#include "Instrument/PgaDiagramWindow.h"
#include "KWEnumerationsDisplay.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSpectrum.h"
#include "Names/DiagramWindow.h"
#include "Rules/NumberRules.h"

#include <algorithm>

using namespace NNames;

namespace
{
constexpr INT32 kScreenWidth = 1280;
constexpr INT32 kScreenHeight = 800;

std::size_t PlacesOf(KW_ZEL_SCREEN_LAYOUT layout)
{
    switch (layout)
    {
    case eKW_ZEL_SCREEN_LAYOUT_SINGLE:
        return 1;
    case eKW_ZEL_SCREEN_LAYOUT_QUAD:
        return 4;
    default:
        return 2;
    }
}

/** Pixels of `whole` that a share in percent takes. */
INT32 Share(INT32 whole, double percent)
{
    return KWMath::ToInteger<INT32>(KWMath::Round(whole * percent / 100.0));
}

/** Places of `count` diagrams; `percent` is the share of the first of two. */
std::vector<CPgDiagramWindow::t_Place> Places(std::size_t count, bool sideBySide, double percent)
{
    constexpr INT32 w = kScreenWidth;
    constexpr INT32 h = kScreenHeight;
    if (count == 1)
    {
        return {{0, 0, w, h}};
    }
    if (count == 2)
    {
        const INT32 x = sideBySide ? Share(w, percent) : 0;
        const INT32 y = sideBySide ? 0 : Share(h, percent);
        return {{0, 0, sideBySide ? x : w, sideBySide ? h : y}, {x, y, w - x, h - y}};
    }
    std::vector<CPgDiagramWindow::t_Place> places = {{0, 0, w / 2, h / 2},
                                                     {w / 2, 0, w / 2, h / 2}};
    if (count == 3)
    {
        places.push_back({0, h / 2, w, h / 2});
        return places;
    }
    places.push_back({0, h / 2, w / 2, h / 2});
    places.push_back({w / 2, h / 2, w / 2, h / 2});
    return places;
}
} // namespace

t_Couplings CPgDiagrams::Rules() const
{
    constexpr auto window = Names::DiagramWindow / each;
    static constexpr auto rows = Table<Names>(
        On(window / DiagramWindow::Visible) >> Do<&CPgDiagrams::KeepOneVisible>,
        OnAny() >> Derive<&CPgDiagrams::SelectVisibleWindow, &CPgDiagrams::UpdatePlaces>,
        On(window / DiagramWindow::Visible, window / DiagramWindow::Type,
           window / DiagramWindow::Size) >>
            Do<&CPgDiagrams::SelectVisibleWindow, &CPgDiagrams::UpdatePlaces>);
    return rows;
}

/** The last one can not be switched off. */
void CPgDiagrams::KeepOneVisible(const CDbPropBase* written)
{
    if (!HasVisibleWindow())
    {
        const auto* const window = static_cast<CPgDiagramWindow*>(written->GetParent());
        KW_CHECKED(window->GetPrVisible()->DbSet(eKW_ONOFF_ON));
    }
}

void CPgDiagrams::UpdatePlaces()
{
    const std::vector<CPgDiagramWindow*> shown = Shown();
    const bool sideBySide = m_pLayout->Get() == eKW_ZEL_SCREEN_LAYOUT_SIDE_BY_SIDE;
    const double percent = shown.empty() ? 100.0 : shown.front()->GetPrSize()->Get();
    const auto places = Places(shown.size(), sideBySide, percent);
    for (INT32 i = 0; i < m_pDiagramWindow->GetCount(); ++i)
    {
        CPgDiagramWindow* const window = m_pDiagramWindow->ItemDirect(i);
        const auto at = std::find(shown.begin(), shown.end(), window);
        window->SetPlace(at == shown.end() ? CPgDiagramWindow::t_Place{}
                                           : places[static_cast<std::size_t>(at - shown.begin())]);
    }
    UpdateOverlay(shown);
}

bool CPgDiagrams::HasVisibleWindow() const
{
    for (INT32 i = 0; i < m_pDiagramWindow->GetCount(); ++i)
    {
        if (m_pDiagramWindow->ItemDirect(i)->IsVisible())
        {
            return true;
        }
    }
    return false;
}

std::vector<CPgDiagramWindow*> CPgDiagrams::Shown() const
{
    const std::size_t places = PlacesOf(m_pLayout->Get());
    if (places == 1)
    {
        return {m_pDiagramWindow->ItemDirect(static_cast<INT32>(m_pActiveWindow->Get()))};
    }
    std::vector<CPgDiagramWindow*> shown;
    for (INT32 i = 0; i < m_pDiagramWindow->GetCount() && shown.size() < places; ++i)
    {
        CPgDiagramWindow* const window = m_pDiagramWindow->ItemDirect(i);
        if (window->IsVisible())
        {
            shown.push_back(window);
        }
    }
    return shown;
}

/** A file may leave no diagram visible: then the first one is. */
void CPgDiagrams::SelectVisibleWindow()
{
    if (!HasVisibleWindow())
    {
        KW_CHECKED(m_pDiagramWindow->ItemDirect(0)->GetPrVisible()->DbSet(eKW_ONOFF_ON));
    }
    auto active = static_cast<INT32>(m_pActiveWindow->Get());
    if (m_pDiagramWindow->ItemDirect(active)->IsVisible())
    {
        return;
    }
    active = 0;
    while (!m_pDiagramWindow->ItemDirect(active)->IsVisible())
    {
        ++active;
    }
    KW_CHECKED(m_pActiveWindow->DbSet(static_cast<UINT32>(active)));
}

void CPgDiagrams::UpdateOverlay(const std::vector<CPgDiagramWindow*>& shown)
{
    const auto traces =
        std::find_if(shown.begin(), shown.end(),
                     [](const CPgDiagramWindow* window)
                     { return window->GetPrType()->Get() == eKW_ZEL_DIAGRAMWINDOW_TYPE_YT; });
    const bool isShown = traces != shown.end();
    const CPgDiagramWindow* const window = isShown ? *traces : nullptr;
    CPgDiagramWindowHw& hw = *m_pDiagramWindowHw;
    KW_CHECKED(hw.GetPrEnabled()->DbSet(isShown ? eKW_ONOFF_ON : eKW_ONOFF_OFF));
    KW_CHECKED(hw.GetPrLeft()->DbSet(isShown ? window->GetPrLeft()->Get() : 0));
    KW_CHECKED(hw.GetPrTop()->DbSet(isShown ? window->GetPrTop()->Get() : 0));
    KW_CHECKED(hw.GetPrWidth()->DbSet(isShown ? window->GetPrWidth()->Get() : 0));
    KW_CHECKED(hw.GetPrHeight()->DbSet(isShown ? window->GetPrHeight()->Get() : 0));
}
