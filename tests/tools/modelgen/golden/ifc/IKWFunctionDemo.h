// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "IKWFunctionRootBase.h"
#include "IKWProperties.h"
#include "KWEnumerationsBasics.h"

#include <memory>

class IKWFunctionChannel;
class IKWFunctionDemo;
class IKWFunctionTexts;

/** The root of the tree, built on the first call. The library holds it weakly: the tree lives as
    long as anyone holds the result, and a later call builds a fresh one with defaults. Callable
    from any thread. When memory runs out on the way, std::bad_alloc reaches the caller and no part
    of a tree is left; the next call begins anew. */
KW_EXPORT std::shared_ptr<IKWFunctionDemo> GetDemoRoot();

/** Root of the demonstration. */
class KW_EXPORT IKWFunctionDemo : public IKWFunctionRootBase
{
public:
    ~IKWFunctionDemo() override;
    /** All kinds of texts; the name | pipe is part of this. */
    virtual std::shared_ptr<IKWFunctionTexts> GetPgTexts() const = 0;
    /** Removed from the tree: answers its default and refuses writes with eKW_ACC_DETACHED. Gone.
        Range: ≥ 1. Default: 2.5. */
    [[deprecated]] virtual std::shared_ptr<IKWNumericProperty<double>> GetPrGone() const = 0;
    /** Action: Sets the defaults. */
    virtual std::shared_ptr<IKWAction> GetPrPreset() const = 0;
    /** Removed from the tree: answers its default and refuses writes with eKW_ACC_DETACHED. Array
        (2 items): One input. */
    [[deprecated]] virtual std::shared_ptr<IKWArray<IKWFunctionChannel>> GetPgOlder() const = 0;
    /** Removed from the tree: answers its default and refuses writes with eKW_ACC_DETACHED. Action:
        Began what Preset does. */
    [[deprecated]] virtual std::shared_ptr<IKWAction> GetPrBegin() const = 0;
    /** Array (4 items at first, at most 15): One input. */
    virtual std::shared_ptr<IKWArray<IKWFunctionChannel>> GetPgChannel() const = 0;
    /** A selector with the frame's default. Default: x1. */
    virtual std::shared_ptr<IKWEnumProperty<KW_PROBE>> GetPrState() const = 0;
    /** Map (at most 100 items): All kinds of texts; the name | pipe is part of this. */
    virtual std::shared_ptr<IKWMap<IKWFunctionTexts>> GetPgLabel() const = 0;
    /** Operation: Stops the acquisition. */
    virtual std::shared_ptr<IKWOperation> GetPrStop() const = 0;
};
