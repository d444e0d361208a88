// SPDX-License-Identifier: MIT
#pragma once

#include "Timebase/PgHorizontalBase.h"

/**
 * The timebase. Most of its rules run the recalculation chain, which derives the whole acquisition
 * from the time scale and the modes. The steps are virtual so that their order can be observed.
 *
 * Formulas: CZELDatabaseHelperHorizontal. Figures of the hardware: HorizontalHardware.h.
 */
class CPgHorizontal : public CPgHorizontalBase
{
public:
    t_Couplings Rules() const override;

protected:
    /** The chain, in its fixed order. */
    virtual void RunRecalculationChain();

    /** The mode that the acquisition time and the update mode ask for: slow and roll for long
        acquisitions that are shown block by block, normal otherwise and whenever it is forced. */
    virtual void UpdateDSPMode();
    virtual void CalculateSamplingRates();
    /** Scale × divisions. */
    virtual void CalculateAcquisitionTime();
    /** The clock of the logic inputs, which the scope's mode does not change. */
    virtual void UpdateDigitalSampleRate();
    virtual void CalculateBasicHorizontalSettings();
    virtual void CalculateHorizontalPositionLimits();
    virtual void CalculateAcquisitionSamplingRates();
    virtual void CalculateHorizontalBoundaries();

    /** The scale of the list that shows the acquisition time: the next slower one. */
    virtual void CalculateHorizontalScale();
    virtual void CalculateScaleGui();
    virtual void SetScaleFromGui();
    virtual void CalculateReferencePointGUI();
    virtual void SetReferencePointFromGui();
    virtual void UpdateHardwarePosition();
    /** The step of the user interface that shows the number of averages. */
    virtual void UpdateAveraging();
    virtual void SetAveragesFromGui();
    virtual void CalculateMaxNumberOfBusEvents();
    /** The down-converter works at one rate of the converters only; while it is on, that mode is
        required. Nothing else requires a mode. */
    virtual void UpdateZELMode();
    /** The counts of the running acquisition no longer hold. */
    virtual void UpdateClosing();

private:
    /** A path's record before interpolation. */
    struct t_Record
    {
        UINT32 decimation;
        double length;
    };

    /** What becomes of it on the screen. */
    struct t_Trace
    {
        UINT32 recordLength;
        UINT32 length; ///< points, settling samples not counted
        double interpolation;
        bool isInterpolatedInHardware;
        double resolution; ///< seconds per point
    };

    t_Trace TraceOf(const t_Record& record) const;

    void CalculateBasicHorizontalSettingsAnalog();
    void CalculateBasicHorizontalSettingsDigital();
    void CalculateBasicHorizontalSettingsAnalogAndDigitalSlowOrRollMode();
    void CalculateDependentHorizontalSettingsAnalog(const t_Record& record);
    void CalculateDependentHorizontalSettingsDigital(const t_Record& record);
    void SetSettlingSamples(UINT32 preAnalog, UINT32 postAnalog, UINT32 preDigital,
                            UINT32 postDigital);
    void ReportMismatches() const;
    void CalculateSlowModeBlockSize();
    void CalculatePreTriggerSamples(double left);
    void FollowDownConverter();
    void CountChange() { IncChangeCounter(); }
    double PositionLimit() const;
};
