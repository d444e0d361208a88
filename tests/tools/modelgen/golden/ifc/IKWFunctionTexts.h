// SPDX-License-Identifier: MIT
// Generated from Texts.toml: change the model, not this file.
#pragma once

#include "IKWFunctionBase.h"
#include "IKWProperties.h"

#include <memory>

/** All kinds of texts; the name | pipe is part of this. */
class KW_EXPORT IKWFunctionTexts : public IKWFunctionBase
{
public:
    ~IKWFunctionTexts() override;
    /** Title. Values: "a "b" µ", "two". Default: "a "b" µ". */
    virtual std::shared_ptr<IKWStringProperty> GetPrTitle() const = 0;
    /** Secret: Phrase. Range: 8 … 63 printable ASCII characters, or 64 hex digits. */
    virtual std::shared_ptr<IKWStringProperty> GetPrPhrase() const = 0;
    /** Pattern. Range: at most 8 bits. Default: "01X". */
    virtual std::shared_ptr<IKWBitPatternProperty> GetPrPattern() const = 0;
    /** File. Range: extensions csv, bin. */
    virtual std::shared_ptr<IKWFilePathProperty> GetPrFile() const = 0;
};
