// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/Channel.h"
#include "Names/FFT.h"
#include "Names/Logic.h"
#include "Names/LogicChannel.h"
#include "Names/Mathematics.h"
#include "Names/ReferenceCurve.h"
#include "Names/ReferenceCurveAttributes.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"

#include <vector>

enum KW_UNIT : INT32;
enum KW_ZEL_ANALOG_CHANNEL : INT32;
enum KW_ZEL_CHANNEL : INT32;
enum KW_ZEL_MODE : INT32;
enum KW_ZEL_TRACE_TYPE : INT32;

/** What the rules of several groups share about channels: which a function can use, and the screen
    of one. Everything here runs under the tree's lock. */
namespace NRules
{
/** Kinds of channels, as bits, that a function can use as its source. */
enum eSOURCES : UINT32
{
    eSOURCES_ANALOG = 1,
    eSOURCES_DIGITAL = 2,
    eSOURCES_MATHEMATICS = 4,
    eSOURCES_REFERENCE = 8,
    eSOURCES_FFT = 16,
    eSOURCES_INPUTS = eSOURCES_ANALOG | eSOURCES_DIGITAL,
    eSOURCES_LEVELS = eSOURCES_ANALOG | eSOURCES_MATHEMATICS | eSOURCES_REFERENCE,
    eSOURCES_TRACES = eSOURCES_LEVELS | eSOURCES_DIGITAL
};

/** Lets a selector offer the channels of these kinds that are switched on, without `except`; a
    value that is not among them gives way to the lowest that is, and returns when it can. */
///@{
void OfferSources(CDbPropEnum<KW_ZEL_CHANNEL>& selector, UINT32 kinds);
void OfferSources(CDbPropEnum<KW_ZEL_CHANNEL>& selector, UINT32 kinds, KW_ZEL_CHANNEL except);
///@}

/** The same, but the value stays: another rule says what it becomes. */
void RestrictSources(CDbPropEnum<KW_ZEL_CHANNEL>& selector, UINT32 kinds);

/** OfferSources for a selector whose values are the analog inputs in their order; not available
    while none is on. */
void OfferInputs(CDbPropEnumIntAccess& selector);

/** Converters that sample one channel in turn, in a sample-rate mode: 1, 2 or 4 neighbours. */
INT32 ConvertersPerChannel(KW_ZEL_MODE mode);

/** The channels that are on and that a sample-rate mode would not acquire: of those that share
    converters all but the lowest. */
std::vector<KW_ZEL_ANALOG_CHANNEL> ChannelsDroppedBy(const CDbPropertyGroup& group,
                                                     KW_ZEL_MODE mode);

/** A channel was switched on or off. */
inline constexpr auto kSwitched = NNames::Changed(
    NNames::ZEL::Vertical / NNames::Vertical::Channel / NNames::each / NNames::Channel::Enabled,
    NNames::ZEL::Logic / NNames::Logic::Enabled,
    NNames::ZEL::Logic / NNames::Logic::LogicChannel / NNames::each / NNames::LogicChannel::Enabled,
    NNames::ZEL::Mathematics / NNames::Mathematics::Enabled,
    NNames::ZEL::Vertical / NNames::Vertical::ReferenceCurve / NNames::ReferenceCurve::Enabled,
    NNames::ZEL::FFT / NNames::FFT::State);

/** The screen of an input or reference channel moved, or its unit changed. */
inline constexpr auto kScreens = NNames::Changed(
    NNames::ZEL::Vertical / NNames::Vertical::Channel / NNames::each / NNames::Channel::Top,
    NNames::ZEL::Vertical / NNames::Vertical::Channel / NNames::each / NNames::Channel::Bottom,
    NNames::ZEL::Vertical / NNames::Vertical::Channel / NNames::each / NNames::Channel::ProbeUnit,
    NNames::ZEL::Vertical / NNames::Vertical::ReferenceCurve / NNames::ReferenceCurve::Scale,
    NNames::ZEL::Vertical / NNames::Vertical::ReferenceCurve / NNames::ReferenceCurve::Position,
    NNames::ZEL::Vertical / NNames::Vertical::ReferenceCurve /
        NNames::ReferenceCurve::ReferenceCurveAttributes / NNames::ReferenceCurveAttributes::Unit);

/** The same of the mathematics channel, and whether it can be computed: its unit is invalid while a
    source of it is off. It follows the others: a row of its own runs after they have. */
inline constexpr auto kMathematicsScreen =
    NNames::Changed(NNames::ZEL::Mathematics / NNames::Mathematics::Scale,
                    NNames::ZEL::Mathematics / NNames::Mathematics::Position,
                    NNames::ZEL::Mathematics / NNames::Mathematics::Unit);

/** The probe of an input came to measure otherwise: what was read before was read with the former
    one. The step gets the written setting, for RestsOn. */
inline constexpr auto kProbes = NNames::Delivered(
    NNames::ZEL::Vertical / NNames::Vertical::Channel / NNames::each / NNames::Channel::ProbeFactor,
    NNames::ZEL::Vertical / NNames::Vertical::Channel / NNames::each / NNames::Channel::ProbeUnit);

/** Whether levels of a channel rest on a probe, named by one of its settings: that of the input
    itself; the mathematics channel may be computed from each. */
bool RestsOn(KW_ZEL_CHANNEL channel, const CDbPropBase& probe);

/** The mathematics channel is computed from something else. */
inline constexpr auto kMathematicsCurve =
    NNames::Changed(NNames::ZEL::Mathematics / NNames::Mathematics::Type,
                    NNames::ZEL::Mathematics / NNames::Mathematics::SourceA,
                    NNames::ZEL::Mathematics / NNames::Mathematics::SourceB,
                    NNames::ZEL::Mathematics / NNames::Mathematics::UseExpression,
                    NNames::ZEL::Mathematics / NNames::Mathematics::Expression);

/** Kind of a channel's trace; digital for "none". */
KW_ZEL_TRACE_TYPE TraceTypeOf(KW_ZEL_CHANNEL channel);

/** Levels at the lower and upper edge of the screen, by the scale of one channel. */
struct t_Screen
{
    double bottom;
    double top;
    double division; ///< V, A or what the unit is, per division
    KW_UNIT unit;
};

/** Gives a level the unit, the limits and the step of a screen; the value follows. */
void PutOnScreen(CDbPropNumDouble& level, const t_Screen& screen);

/** Of a channel in the tree that `group` is part of. Nothing for channels that have no levels. */
std::optional<t_Screen> ScreenOf(const CDbPropertyGroup& group, KW_ZEL_CHANNEL channel);

/** Unit of a channel's levels; none (65) where it has no levels. */
KW_UNIT UnitOf(const CDbPropertyGroup& group, KW_ZEL_CHANNEL channel);
} // namespace NRules
