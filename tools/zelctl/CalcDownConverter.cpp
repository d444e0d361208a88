// SPDX-License-Identifier: MIT
#include "Calculation.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"
#include "KWEnumerationsUnits.h"

namespace
{
using DDCHelper = CZELDatabaseHelperDDC;

void AddRate(const DDC::DecimationRate& rate, CFigures& out)
{
    out.Add("decimation", rate.m_R_DDC)
        .Add("fixed stage", rate.m_R_Fixed)
        .Add("CIC stage", rate.m_R_CIC1)
        .Add("FIR stage", rate.R_FIR)
        .Add("table row", rate.m_LUTRow);
}

void DownConverter(const CArguments& in, CFigures& out)
{
    const DDC::DecimationRate rate =
        DDCHelper::CalculateDecimation(in.Number("span", eKW_UNIT_FREQ_HZ));
    const DDC::NcoFrequency nco =
        DDCHelper::CalculateNcoFrequency(in.Number("center", eKW_UNIT_FREQ_HZ), rate.m_R_DDC);
    const DDC::Gain gain = DDCHelper::CalculateGain(rate, nco);
    const DDC::HWSettings registers = DDCHelper::CalculateHWSettingsDDC(rate, nco);
    AddRate(rate, out);
    out.Add("coarse frequency", nco.m_CoarseFrequency, eKW_UNIT_FREQ_HZ)
        .Add("coarse increment", nco.m_CoarseIncrement)
        .Add("fine frequency", nco.m_FineFrequency, eKW_UNIT_FREQ_HZ)
        .Add("fine increment", nco.m_FineIncrement)
        .Add("frequency shift", DDCHelper::CalculateFrequencyShift(nco), eKW_UNIT_FREQ_HZ)
        .Add("gain", gain.m_Gain_DDC)
        .Add("gain of scale", gain.m_Gain_Scale)
        .Add("gain of shift", gain.m_Gain_Shift)
        .Add("gain of CIC", gain.m_Gain_CIC1)
        .Add("gain of FIR", gain.m_Gain_FIR)
        .Add("CIC rate register", registers.m_CIC1Rate)
        .Add("CIC shift register", registers.m_CIC1Shift)
        .Add("coarse phase register", registers.m_CoarsePhase)
        .Add("fine phase register", registers.m_FinePhase);
}

void DecimationByTable(const CArguments& in, CFigures& out)
{
    const double span = in.Number("span", eKW_UNIT_FREQ_HZ);
    out.Add("row", DDCHelper::SearchRowIndexInLUT(span));
    AddRate(DDCHelper::CalculateDecimationWithLUT(span), out);
}

void DecimationByRatio(const CArguments& in, CFigures& out)
{
    AddRate(DDCHelper::CalculateDecimationManually(in.Number("span", eKW_UNIT_FREQ_HZ)), out);
}

void CombRate(const CArguments& in, CFigures& out)
{
    out.Add("CIC stage", DDCHelper::SearchDecimationRateCic1(in.Number("ratio")));
}
} // namespace

t_CalculationGroup GetDownConverterCalculations()
{
    const t_Argument span{"span", "Span in Hz"};
    return {"Down-converter",
            {{"ddc",
              "Settings of a span and center",
              {"CalculateDecimation", "CalculateNcoFrequency", "CalculateFrequencyShift",
               "CalculateGain", "CalculateHWSettingsDDC"},
              {span, {"center", "Center frequency in Hz", "0"}},
              &DownConverter,
              {"100kHz 10.7MHz"}},
             {"ddctable",
              "Decimation of a wide span, from the table",
              {"SearchRowIndexInLUT", "CalculateDecimationWithLUT"},
              {span},
              &DecimationByTable,
              {"10MHz"}},
             {"ddcratio",
              "Decimation of a narrow span, computed",
              {"CalculateDecimationManually"},
              {span},
              &DecimationByRatio,
              {"100kHz"}},
             {"cicrate",
              "Rate of the integrator-comb stage",
              {"SearchDecimationRateCic1"},
              {{"ratio", "825 MHz / span"}},
              &CombRate,
              {"8250"}}}};
}
