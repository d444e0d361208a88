// SPDX-License-Identifier: MIT
#include "Spectrum/SpectrumScreen.h"

#include "CommonDatabase/Properties/DbPropEnum.h"
#include "KWEnumerationsReadings.h"
#include "KWEnumerationsUnits.h"
#include "Names/Spectrum.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"
#include "Spectrum/SpectrumHardware.h"

using namespace NNames;

CSpectrumScreen CSpectrumScreen::Of(const CDbPropertyGroup& group)
{
    const auto& stop = *group.At(ZEL::Spectrum / Spectrum::HorizontalStop);
    return {{group.At(ZEL::Spectrum / Spectrum::HorizontalScaling)->Get(), stop.GetMax()},
            {group.At(ZEL::Spectrum / Spectrum::HorizontalStart)->Get(), stop.Get(),
             group.At(ZEL::Spectrum / Spectrum::HorizontalSpan)->Get(),
             group.At(ZEL::Spectrum / Spectrum::HorizontalCenter)->Get()},
            {group.At(ZEL::Spectrum / Spectrum::VerticalScaling)->Get(),
             group.At(ZEL::Spectrum / Spectrum::VerticalStop)->Get(),
             group.At(ZEL::Spectrum / Spectrum::VerticalStop)->GetUnit()}};
}

void CSpectrumScreen::UpdateStep(CDbPropNumDouble& frequency) const
{
    KW_CHECKED(frequency.SetStep(m_rules.StepAt(m_axis, frequency.Get())));
}

void CSpectrumScreen::UpdateLine(CDbPropNumDouble& frequency, CDbPropNumDouble& level) const
{
    UpdateStep(frequency);
    KW_CHECKED(level.SetStep(LevelStep()));
    KW_CHECKED(level.SetUnit(LevelUnit()));
}

KW_UNIT CSpectrumScreen::DifferenceUnit() const
{
    return m_magnitude.scaling == eKW_SCALING_TYPE_LINEAR ? LevelUnit() : eKW_UNIT_LEVEL_DB;
}

double CSpectrumScreen::LevelStep() const
{
    // The linear axis begins at 0; a file may hold a top that is still to be computed.
    const double top = m_magnitude.top;
    const bool isLinear = m_magnitude.scaling == eKW_SCALING_TYPE_LINEAR && top > 0.0;
    return isLinear ? NRules::RoundStep(NRules::StepOf(top / NRules::kVerticalDivisions))
                    : NRules::StepOf(NSpectrumHardware::kMagnitudeDivision);
}
