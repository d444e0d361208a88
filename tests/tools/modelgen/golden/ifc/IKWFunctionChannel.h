// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "IKWFunctionBase.h"
#include "IKWProperties.h"
#include "KWEnumerationsBasics.h"

#include <memory>

/** One input. */
class KW_EXPORT IKWFunctionChannel : public IKWFunctionBase
{
public:
    ~IKWFunctionChannel() override;
    /** Gain. Range: ≤ 100. Default: 2, 4, 6 for the items in turn. */
    virtual std::shared_ptr<IKWNumericProperty<INT32>> GetPrGain() const = 0;
    /** Time per division. Unit: s/div. Values: 1e-9, 0.001, 100. Default: 0.001. */
    virtual std::shared_ptr<IKWNumericProperty<double>> GetPrScale() const = 0;
    /** Rate. Values: 10 k, 2.5 µ\s. Default: 10 k, 2.5 µ\s for the items in turn. */
    virtual std::shared_ptr<IKWEnumProperty<KW_RATE>> GetPrRate() const = 0;
    /** Mask. Range: -9223372036854775808 … 5. Default: -1. */
    virtual std::shared_ptr<IKWNumericProperty<INT64>> GetPrMask() const = 0;
    /** Result: Last reading. */
    virtual std::shared_ptr<IKWNumericProperty<UINT32>> GetPrReading() const = 0;
};
