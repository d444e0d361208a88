// SPDX-License-Identifier: MIT
#include "Instrument/PgDiagrams.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Instrument/PgDiagramWindowHw.h"
#include "Instrument/PgaDiagramWindow.h"
#include "KWEnumerationsDisplay.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSpectrum.h"
#include "Names/DiagramWindow.h"
#include "Names/FFT.h"
#include "Names/HistoryViewer.h"
#include "Names/Logic.h"
#include "Names/SerialBus.h"
#include "Names/Spectrum.h"
#include "Names/XY.h"
#include "Names/ZEL.h"
#include "Names/Zoom.h"
#include "Rules/NumberRules.h"

#include <algorithm>

using namespace NNames;

namespace
{
constexpr auto kXy = ZEL::XY / XY::State;
constexpr auto kSpectrum = ZEL::FFT / FFT::State;
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
    using D = CPgDiagrams;
    static constexpr auto rows = Table<Names>(
        On(window / DiagramWindow::Visible) >> Do<&D::KeepOneVisible>,
        On(Names::Layout) >> Do<&D::FillPlaces>, On(Names::ActiveWindow) >> Do<&D::TakeBackActive>,
        OnAny() >> Do<&D::SelectWindow, &D::UpdatePlaces>,
        On(window / DiagramWindow::Visible, window / DiagramWindow::Type,
           window / DiagramWindow::Size) >>
            Do<&D::LendWindows, &D::SelectWindow, &D::UpdatePlaces>,
        Changed(kXy, ZEL::XY / XY::ShowYT, kSpectrum, ZEL::Zoom / Zoom::Enabled,
                ZEL::Logic / Logic::Enabled, ZEL::SerialBus / SerialBus::Enabled,
                ZEL::HistoryViewer / HistoryViewer::Enabled) >>
            Derive<&D::LendWindows, &D::SelectWindow, &D::UpdatePlaces>);
    return rows;
}

bool CPgDiagrams::HasContents(const CPgDiagramWindow& window) const
{
    const auto isOn = [this](const auto& way) { return At(way)->Get() == eKW_ONOFF_ON; };
    switch (window.GetPrType()->Get())
    {
    case eKW_ZEL_DIAGRAMWINDOW_TYPE_YT:
        return !isOn(kXy) || isOn(ZEL::XY / XY::ShowYT);
    case eKW_ZEL_DIAGRAMWINDOW_TYPE_ZOOM:
        return isOn(ZEL::Zoom / Zoom::Enabled);
    case eKW_ZEL_DIAGRAMWINDOW_TYPE_XY:
        return isOn(kXy);
    case eKW_ZEL_DIAGRAMWINDOW_TYPE_FFT:
    case eKW_ZEL_DIAGRAMWINDOW_TYPE_SPECTRUM:
        return isOn(kSpectrum);
    case eKW_ZEL_DIAGRAMWINDOW_TYPE_LOGIC:
        return isOn(ZEL::Logic / Logic::Enabled);
    case eKW_ZEL_DIAGRAMWINDOW_TYPE_PROTOCOL:
        return isOn(ZEL::SerialBus / SerialBus::Enabled);
    case eKW_ZEL_DIAGRAMWINDOW_TYPE_HISTORY:
        return isOn(ZEL::HistoryViewer / HistoryViewer::Enabled);
    default:
        return true;
    }
}

bool CPgDiagrams::CanBeShown(const CPgDiagramWindow& window) const
{
    return window.IsVisible() && HasContents(window);
}

void CPgDiagrams::FillPlaces()
{
    const auto windows = Windows();
    for (const CPgDiagramWindow* const window : windows)
    {
        if (!IsLent(*window) && window != windows[m_pActiveWindow->Get()])
        {
            KW_CHECKED(window->GetPrVisible()->FollowWish(eKW_ONOFF_OFF));
        }
    }
    auto missing = static_cast<std::ptrdiff_t>(PlacesOf(m_pLayout->Get())) -
                   std::count_if(windows.begin(), windows.end(),
                                 [this](const auto* window) { return CanBeShown(*window); });
    for (const CPgDiagramWindow* const window : windows)
    {
        if (missing > 0 && !window->IsVisible() && HasContents(*window))
        {
            KW_CHECKED(window->GetPrVisible()->SetForNow(eKW_ONOFF_ON));
            --missing;
        }
    }
}

bool CPgDiagrams::IsLent(const CPgDiagramWindow& window)
{
    return window.GetPrType()->GetAsInt() != window.GetPrType()->GetUserValueAsInt();
}

void CPgDiagrams::LendWindows()
{
    constexpr auto kBasic = eKW_ZEL_DIAGRAMWINDOW_TYPE_FFT;
    constexpr auto kAnalysis = eKW_ZEL_DIAGRAMWINDOW_TYPE_SPECTRUM;
    constexpr auto kXyType = eKW_ZEL_DIAGRAMWINDOW_TYPE_XY;
    TakeBackWindows();
    if (At(kXy)->Get() == eKW_ONOFF_ON)
    {
        Lend(kXyType, kXyType);
    }
    if (At(kSpectrum)->Get() == eKW_ONOFF_ON)
    {
        const bool isBasic = At(ZEL::Spectrum / Spectrum::Mode)->Get() == eKW_SPECTRUM_MODE_FFT;
        Lend(isBasic ? kBasic : kAnalysis, isBasic ? kAnalysis : kBasic);
    }
}

void CPgDiagrams::TakeBackWindows()
{
    for (const CPgDiagramWindow* const window : Windows())
    {
        if (IsLent(*window) && !HasContents(*window))
        {
            KW_CHECKED(window->GetPrType()->FollowWish(eKW_ZEL_DIAGRAMWINDOW_TYPE_NONE));
            KW_CHECKED(window->GetPrVisible()->FollowWish(eKW_ONOFF_OFF));
        }
    }
}

void CPgDiagrams::Lend(KW_ZEL_DIAGRAMWINDOW_TYPE type, KW_ZEL_DIAGRAMWINDOW_TYPE orAlso)
{
    const auto windows = Windows();
    const auto has = [](KW_ZEL_DIAGRAMWINDOW_TYPE wanted)
    {
        return [wanted](const CPgDiagramWindow* window)
        { return window->GetPrType()->Get() == wanted; };
    };
    const auto free =
        std::find_if(windows.begin(), windows.end(), has(eKW_ZEL_DIAGRAMWINDOW_TYPE_NONE));
    if (free == windows.end() || std::any_of(windows.begin(), windows.end(), has(type)) ||
        std::any_of(windows.begin(), windows.end(), has(orAlso)))
    {
        return;
    }
    KW_CHECKED((*free)->GetPrType()->SetForNow(type));
    KW_CHECKED((*free)->GetPrVisible()->SetForNow(eKW_ONOFF_ON));
    Activate(static_cast<UINT32>(free - windows.begin()));
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

std::vector<CPgDiagramWindow*> CPgDiagrams::Windows() const
{
    std::vector<CPgDiagramWindow*> windows;
    for (INT32 i = 0; i < m_pDiagramWindow->GetCount(); ++i)
    {
        windows.push_back(m_pDiagramWindow->ItemDirect(i));
    }
    return windows;
}

bool CPgDiagrams::HasVisibleWindow() const
{
    const auto windows = Windows();
    return std::any_of(windows.begin(), windows.end(),
                       [](const auto* window) { return window->IsVisible(); });
}

std::vector<CPgDiagramWindow*> CPgDiagrams::Shown() const
{
    const std::size_t places = PlacesOf(m_pLayout->Get());
    std::vector<CPgDiagramWindow*> shown =
        places == 1
            ? std::vector{m_pDiagramWindow->ItemDirect(static_cast<INT32>(m_pActiveWindow->Get()))}
            : Windows();
    std::erase_if(shown, [this](const auto* window) { return !CanBeShown(*window); });
    shown.resize(std::min(shown.size(), places));
    return shown;
}

UINT32 CPgDiagrams::FirstUsable() const
{
    const auto windows = Windows();
    auto at = std::find_if(windows.begin(), windows.end(),
                           [this](const auto* window) { return CanBeShown(*window); });
    at = at != windows.end() ? at
                             : std::find_if(windows.begin(), windows.end(),
                                            [](const auto* window) { return window->IsVisible(); });
    return static_cast<UINT32>(at - windows.begin());
}

void CPgDiagrams::TakeBackActive()
{
    if (!CanBeShown(*m_pDiagramWindow->ItemDirect(static_cast<INT32>(m_pActiveWindow->Get()))))
    {
        KW_CHECKED(m_pActiveWindow->DbSet(FirstUsable()));
    }
}

/** A file may leave no diagram visible: then the first one is. */
void CPgDiagrams::SelectWindow()
{
    if (!HasVisibleWindow())
    {
        KW_CHECKED(m_pDiagramWindow->ItemDirect(0)->GetPrVisible()->DbSet(eKW_ONOFF_ON));
    }
    const auto windows = Windows();
    const UINT32 wish = m_pActiveWindow->GetUserValue();
    const UINT32 present = m_pActiveWindow->Get();
    const bool canStay = CanBeShown(*windows[present]);
    if (canStay && IsLent(*windows[present]))
    {
        return;
    }
    Activate(CanBeShown(*windows[wish]) ? wish : canStay ? present : FirstUsable());
}

void CPgDiagrams::Activate(UINT32 window)
{
    if (window != m_pActiveWindow->Get())
    {
        KW_CHECKED(m_pActiveWindow->WriteValue(UINT64{window}, eWRITEKIND::Auto));
    }
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
