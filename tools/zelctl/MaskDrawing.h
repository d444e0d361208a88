// SPDX-License-Identifier: MIT
#pragma once

#include "Diagram.h"
#include "Masks/MaskFile.h"
#include "Masks/MaskTest.h"

/** Both lines, in divisions. */
t_Diagram DrawMask(const KW_Mask& mask);

/** The picture in which a trace fills ten divisions in time and six in level. */
KW_MaskFrame FrameAround(const CKWRecord& record, UINT32 trace);
