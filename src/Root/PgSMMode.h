// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgSMModeBase.h"

enum KW_ONOFF : INT32;
enum KW_ZEL_OPERATION_MODE : INT32;

/**
 * Main mode: SwitchMode makes the selected mode the active one. What belongs to one mode alone is
 * on in that mode and off in all others: the XY diagram, the mask test, and spectra, whose mode is
 * scope YT. Switched on, they enter their mode; switched off, they leave for the mode before, or
 * for scope YT when the user selected theirs.
 */
class CPgSMMode : public CPgSMModeBase
{
public:
    t_Couplings Rules() const override;

private:
    KW_ACCEPTANCE SwitchMode();
    /** The modes FFT and spectrum are ways to say it: both switch the spectra on. */
    void EnterSpectrum();
    void FollowXy();
    void FollowMask();
    void FollowSpectrum();
    void Follow(KW_ONOFF state, KW_ZEL_OPERATION_MODE mode);
    /** The mode before stays the user's value, to be left for. */
    void Enter(KW_ZEL_OPERATION_MODE mode);
    void Leave();
    /** Of a file that names a function alone, or was saved when these did not agree. */
    void EnterByFunctions();
    /** By the selected mode: the active one may lag behind. Spectra come back with scope YT. */
    void SwitchFunctions();
};
