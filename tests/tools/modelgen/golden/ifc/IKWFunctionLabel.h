// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "IKWFunctionBase.h"
#include "IKWProperties.h"
#include "KWEnumerationsBasics.h"

#include <memory>

/** A named item. */
class KW_EXPORT IKWFunctionLabel : public IKWFunctionBase
{
public:
    ~IKWFunctionLabel() override;
    /** Key of the item. Default: 0. */
    virtual std::shared_ptr<IKWNumericProperty<INT32>> GetPrKey() const = 0;
};
