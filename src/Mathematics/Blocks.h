// SPDX-License-Identifier: MIT
#pragma once

#include "Mathematics/Sources.h"

/** Operations on blocks of points, by vectors. Points are counted up to whole steps. */
namespace NMathematics
{
/** One operation, ADD to LN. What has no finite result is NaN, always the same one. `target` may be
    what an operand reads. */
void ComputeBlock(KW_ZEL_MATHEMATICS_TYPE type, const t_Input& a, const t_Input& b, float* target,
                  UINT32 count);

/** Values as they are. */
void CopyBlock(const t_Input& from, float* target, UINT32 count);

/** Numbers of 16 bit with the scale and offset of a trace, halves to the even one. */
class CQuantizer
{
public:
    /** value = number × scale + offset */
    CQuantizer(double scale, double offset);

    void Convert(const float* values, INT16* target, UINT32 count);
    INT16 Convert(double value);

    /** KW_TRACE_FLAG of what had to be cut. */
    UINT32 Flags() const { return m_flags; }

private:
    void Steps(const float* values, INT16* target, UINT32 count);

    double m_factor;
    double m_summand;
    float m_most; ///< no constant: for these, GCC knows no minimum and maximum of vectors
    UINT32 m_flags = 0;
};
} // namespace NMathematics
