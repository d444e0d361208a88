// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionRootBase.h"

#include <memory>

/**
 * A private copy of the instrument's tree, to find out what a write would move: it has all settings
 * that files hold, no results, no executor of operations, and leaves the tree itself alone. Null
 * for a tree that is not the instrument's, or that can not be saved.
 *
 * The copy belongs to the thread that made it, which uses it alone, has one at a time, and lets it
 * go: calculations of that thread look settings up in it meanwhile. It takes some milliseconds, and
 * the lock of trees, of which there is one, in parts of them. A watch of couplings is told of the
 * copy's changes, too (KWCouplings.h).
 */
KW_EXPORT std::shared_ptr<IKWFunctionRootBase> KW_CopyTree(const IKWFunctionRootBase& tree);
