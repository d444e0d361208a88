// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <array>
#include <functional>
#include <memory>

/** What clients see of a property as numbers: equal marks are an equal property, and cost a
    hundredth of its texts. */
using t_PropertyMarks = std::array<UINT64, 7>;

/** Reads the marks of a property; empty for the kinds that only texts can tell apart. */
std::function<t_PropertyMarks()> GetMarksReader(const std::shared_ptr<IDbProperty>& property);
