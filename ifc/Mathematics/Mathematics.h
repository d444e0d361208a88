// SPDX-License-Identifier: MIT
#pragma once

#include "Mathematics/MathExpression.h"
#include "Streams/Record.h"

#include <memory>

/**
 * Computes the curve of the mathematics channel, trace M1, from the traces of a record. Nothing
 * here needs a tree.
 *
 * What is computed stands on the points of the first source: the one of an operation, the first
 * that an expression names; of an expression without sources those of the record's first trace that
 * is a curve. Another source is taken at the same times: its own points, when they are nearer
 * than 1/1024 of their distance throughout; else the straight line between two of them, which an
 * invalid one makes invalid, or a point itself within a millionth of that distance. Outside of its
 * time it is invalid.
 *
 * A point is invalid where a source is, and where a step has no finite result: dividing by 0, roots
 * of less than 0, logarithms of 0 and less, numbers beyond what a float holds. Results with 16 bit
 * have KW_COUNTS_PER_DIVISION from the middle of the screen (Streams/Acquisition.h), as samples of
 * the inputs have. They end at ± 32767, and the trace says that it was above or below its range, as
 * it does when a source was.
 *
 * Pairs of minimum and maximum give pairs: a result encloses whatever lies between those of its
 * sources, so that C1 - C1 of pairs is not 0; it is invalid where one of the values in between has
 * none. Derivative and filters know nothing of what lies between, and refuse them; so do sources at
 * other times. Digital lines and frames of buses are no curves.
 *
 * Steps are computed with float numbers (24 bits), one after the other; derivative, integral and
 * filters with doubles.
 */

/** How a curve lies on the screen. */
struct KW_MathScale
{
    double scale = 1.0;    ///< in the unit of the curve per division, 1e-12 to 1e12
    double position = 0.0; ///< of the zero line above the middle, divisions, -4 to 4

    bool operator==(const KW_MathScale&) const = default; ///< all fields
};

/**
 * The finest scale of the steps 1, 2, 4, 5 that keeps the curve on the eight divisions of the
 * screen, with its middle as near to that of the screen as positions of 0.02 divisions from -4 to 4
 * let it be. A curve that is a line is shown together with zero; zero itself with the scale 1.
 *
 * @param range lowest and highest value
 * @return false where there is none, as of a curve without valid points; then `found` stays
 */
KW_EXPORT bool KW_FindMathScale(const KW_MinMax& range, KW_MathScale& found);

/** What is computed. */
struct KW_MathSettings
{
    bool usesExpression = false;                                 ///< instead of the operation
    KW_ZEL_MATHEMATICS_TYPE type = eKW_ZEL_MATHEMATICS_TYPE_ADD; ///< the operation
    KW_ZEL_CHANNEL sourceA = eKW_ZEL_CHANNEL_C1;                 ///< C1 to C4 or R1
    KW_ZEL_CHANNEL sourceB = eKW_ZEL_CHANNEL_C2;                 ///< of operations on two
    double filterFrequency = 1e6;                                ///< corner, Hz; > 0
    double integralStart = 0.0;                                  ///< at the left edge
    QString expression;                                          ///< its text
    KW_SAMPLE_FORMAT format = eKW_SAMPLES_INT16;                 ///< or eKW_SAMPLES_FLOAT
    bool autoScale = true; ///< of 16 bit: KW_FindMathScale of each curve instead of `scale`
    KW_MathScale scale;    ///< of 16 bit

    bool operator==(const KW_MathSettings&) const = default; ///< all fields
};

namespace NMathematics
{
struct t_Curve;
}

/**
 * Computes. For one thread at a time.
 *
 * The first points that are shown are the left edge: the integral begins there with its start, and
 * is invalid before it. It passes over invalid points by a straight line. The derivative is that
 * between the two neighbours, at ends and beside invalid points that to the one neighbour.
 *
 * Low-pass and high-pass are those of Butterworth, second order: 3 dB at the corner frequency,
 * which the bilinear transform keeps, and 12 dB per octave beyond. A filter begins, and begins
 * again behind invalid points, as if its first value had been there for ever; what it makes of
 * another beginning is less than 1 % after 1.04 / frequency. At half of the sample rate and above a
 * low-pass passes everything, and a high-pass nothing.
 */
class KW_EXPORT CKWMathematics
{
public:
    /** @param records results that may be held at once, at least 1, at most 64 */
    explicit CKWMathematics(UINT32 records = 4);
    ~CKWMathematics();
    CKWMathematics(const CKWMathematics&) = delete;
    CKWMathematics& operator=(const CKWMathematics&) = delete;

    /**
     * What is computed from now on. A refusal leaves what stands.
     *
     * @param error says what is wrong with an expression
     * @return the codes of CKWMathExpression::Read; eKW_ACC_UNKNOWN_VALUE for another operation,
     *         source or format; eKW_ACC_NOT_A_NUMBER, eKW_ACC_BELOW_MINIMUM and
     *         eKW_ACC_ABOVE_MAXIMUM for numbers outside of their limits
     */
    KW_ACCEPTANCE Configure(const KW_MathSettings& settings, KW_MathError& error);

    /**
     * Computes a record with the trace M1 alone; number, trigger time and settings are those of
     * `record`. Takes memory only when there is none yet that is large enough: repeated computing
     * does not.
     *
     * @param reference has the reference curve, its trace R1 or else its first one, where `record`
     *                  has none
     * @param result    gets the record; a refusal leaves it
     * @return eKW_ACC_NOTHING_TO_ACT_ON without a record; eKW_ACC_NOT_FOUND when a source has no
     *         trace with points; eKW_ACC_WRONG_KIND for digital lines, and pairs where they are
     *         refused; eKW_ACC_CONTAINER_FULL when all records of this object are held;
     *         eKW_ACC_ABOVE_MAXIMUM and eKW_ACC_OPERATION_FAILED when there is no room for it
     */
    KW_ACCEPTANCE Compute(const CKWRecord& record, CKWRecord& result,
                          const CKWRecord& reference = {});

    /** How the last result of 16 bit was scaled. */
    KW_MathScale GetScale() const;

private:
    std::unique_ptr<NMathematics::t_Curve> m_curve;
};
