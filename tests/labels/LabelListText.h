// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelList.h"

#include <string>

/** All that a list holds, a line for each thing: lists are equal when their texts are. Of other
    statements of CAN databases only how many there are. */
std::string TextOfLabelList(const KW_LabelList& list);
