// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "IKWFunctionBase.h"
#include "IKWProperties.h"
#include "KWEnumerationsBasics.h"

#include <memory>

/** What only a removed array holds. */
class KW_EXPORT IKWFunctionOlder : public IKWFunctionBase
{
public:
    ~IKWFunctionOlder() override;
    /** Level. Default: 3. */
    virtual std::shared_ptr<IKWNumericProperty<INT32>> GetPrLevel() const = 0;
};
