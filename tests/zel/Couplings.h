// SPDX-License-Identifier: MIT
#pragma once

#include "ZelTree.h"

#include <gtest/gtest.h>
#include <random>

/**
 * One coupling in a fresh tree, as texts, in this order: settings that come before, the step, what
 * must hold after it.
 *
 * A step is "path=text", a client's write; "path()", an action; or "@path=text", a result that the
 * acquisition delivers. An expectation is "path=text"; "!path", invalid; or "path.min=text",
 * "path.max=text", "path.unit=number", "path.availability=number", "path.values=a|b".
 */
struct t_Coupling
{
    const char* name;
    std::vector<const char*> before;
    const char* step;
    KW_ACCEPTANCE code;
    std::vector<const char*> after;
};

void PrintTo(const t_Coupling& coupling, std::ostream* out);
std::string CouplingName(const testing::TestParamInfo<t_Coupling>& info);

/** Runs a step of the form above. */
KW_ACCEPTANCE RunStep(const std::shared_ptr<IKWFunctionZEL>& root, const QString& step);

/** Checks the coupling; then that computing everything once more changes nothing, that undo and
    redo restore both states, and that a recall of the saved state saves the same. */
void CheckCoupling(const t_Coupling& coupling);

/** Saves, recalls, saves: answers where the two files differ first. */
QString RecallDifference(const std::shared_ptr<IKWFunctionZEL>& root);

/** Writes legal texts to settings and runs actions below `paths` by chance. Checks after each step
    that `violations` names nothing and that computing everything once more changes nothing; now and
    then that undoing all leads back, and that a recall restores. */
void WalkByChance(const std::shared_ptr<IKWFunctionZEL>& root, const QStringList& paths,
                  UINT32 seed, int steps, const std::function<QStringList()>& violations);
