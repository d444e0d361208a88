// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

class CDbPgRoot;

/** The instrument's tree that stands now, for calculations that look a setting up and for whoever
    builds the tree. Callable from any thread. */
namespace NPresentTree
{
/** The root, or null: never builds a tree, nor keeps one alive beyond the answer. For calculations:
    in a thread that works on a copy, the copy's. */
std::shared_ptr<CDbPgRoot> Peek();
/** The same, whatever the thread works on. */
std::shared_ptr<CDbPgRoot> PeekInstrument();
/** The root; where there is none, `build` makes one, and others wait for it. */
std::shared_ptr<CDbPgRoot> PeekOrBuild(const std::function<std::shared_ptr<CDbPgRoot>()>& build);
/** For `build`: from now on this is the root, as long as somebody holds it. */
void Enter(const std::shared_ptr<CDbPgRoot>& root);
/** For a copy: from now on the calculations of this thread are about it, as long as somebody holds
    it. */
void EnterCopy(const std::shared_ptr<CDbPgRoot>& root);
} // namespace NPresentTree
