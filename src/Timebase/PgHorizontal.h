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
    /** Clock of the analog converters, which the scope's mode decides. */
    virtual void CalculateSamplingRates();
    /** Scale × divisions. */
    virtual void CalculateAcquisitionTime();
    /** The clock of the logic inputs, which the scope's mode does not change. */
    virtual void UpdateDigitalSampleRate();
    /** Decimation, record, interpolation and settling samples of both paths; a block size in the
        slow modes alone. */
    virtual void CalculateBasicHorizontalSettings();
    /** By the position register; a position that it can not hold is reported, and moves. */
    virtual void CalculateHorizontalPositionLimits();
    /** After decimation, of both paths. */
    virtual void CalculateAcquisitionSamplingRates();
    virtual void CalculateHorizontalBoundaries();

    /** The scale of the list that shows the acquisition time: the next slower one. */
    virtual void CalculateHorizontalScale();
    /** The entry of the list at the scale or, between two, the slower one. */
    virtual void CalculateScaleGui();
    /** An entry that the list does not have is reported and changes nothing. */
    virtual void SetScaleFromGui();
    /** A point that is none of the predefined ones is reported; the selector keeps what it had. */
    virtual void CalculateReferencePointGUI();
    /** As for the scale. */
    virtual void SetReferencePointFromGui();
    virtual void UpdateHardwarePosition();
    /** The step of the user interface that shows the number of averages. */
    virtual void UpdateAveraging();
    /** Two, for a step that is none. */
    virtual void SetAveragesFromGui();
    /** The decoder's memory, shared by the traces of the history. */
    virtual void CalculateMaxNumberOfBusEvents();
    /** The fastest mode that serves what is on, up to the one that the user selected: all channels
        that are on are acquired, and the down-converter works at the lowest rate only. */
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

    /** In the forced fast mode the hardware interpolates, whatever the record's length. */
    t_Trace TraceOf(const t_Record& record) const;

    void CalculateBasicHorizontalSettingsAnalog();
    /** A logic sample is one bit in every acquisition mode. */
    void CalculateBasicHorizontalSettingsDigital();
    /** Both paths together, as their blocks are shown as one. */
    void CalculateBasicHorizontalSettingsAnalogAndDigitalSlowOrRollMode();
    /** What becomes of a record, written where clients and hardware read it; likewise for the logic
        path. */
    void CalculateDependentHorizontalSettingsAnalog(const t_Record& record);
    void CalculateDependentHorizontalSettingsDigital(const t_Record& record);
    /** Before and after the points that are shown, which are counted already. */
    void SetSettlingSamples(UINT32 preAnalog, UINT32 postAnalog, UINT32 preDigital,
                            UINT32 postDigital);
    /** In the slow modes both paths have to agree. */
    void ReportMismatches() const;
    /** Points; at least one. */
    void CalculateSlowModeBlockSize();
    void CalculatePreTriggerSamples(double left);
    /** Runs the chain where channels or the converter need another mode than the present one. */
    void FollowUse();
    void CountChange() { IncChangeCounter(); }
    /** Seconds to either side. */
    double PositionLimit() const;
};
