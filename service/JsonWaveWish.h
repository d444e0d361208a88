// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

/** A part of a picture that somebody wants to draw. */
struct t_WaveWindow
{
    int columns = 0;    ///< of the picture; 0: it is not wanted
    bool isOwn = false; ///< the stretch is the viewer's, else that of the instrument's screen
    double from = 0.0;  ///< its left edge: s against the trigger, of spectra Hz
    double to = 0.0;    ///< its right edge; > from

    bool operator==(const t_WaveWindow&) const = default;
};

/** What a viewer wants to draw. */
struct t_WaveWish
{
    t_WaveWindow traces;
    t_WaveWindow spectrum;

    bool IsEmpty() const { return traces.columns == 0 && spectrum.columns == 0; }
    bool operator==(const t_WaveWish&) const = default;
};

namespace NJson
{
/** Reads what a viewer sends; nothing, and what is wrong, where it can not be drawn. */
std::optional<t_WaveWish> ReadWaveWish(const QByteArray& message, int mostColumns, QString& wrong);
} // namespace NJson
