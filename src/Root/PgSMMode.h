// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgSMModeBase.h"

enum KW_ONOFF : INT32;
enum KW_ZEL_OPERATION_MODE : INT32;

/**
 * Main mode: SwitchMode makes the selected mode the active one. What belongs to one mode alone is
 * on in that mode and off in all others: the XY diagram, the mask test, and spectra, whose mode is
 * scope YT. Switched on, they enter their mode; switched off, they leave for scope YT.
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
    void Follow(KW_ONOFF state, KW_ZEL_OPERATION_MODE mode);
    void Enter(KW_ZEL_OPERATION_MODE mode);
    /** Of a file that names a function alone, or was saved when these did not agree. */
    void EnterByFunctions();
    /** By the selected mode: the active one may lag behind. Spectra come back with scope YT. */
    void SwitchFunctions();
};
