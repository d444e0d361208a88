// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"
#include "LabelList/LabelList.h"
#include "LabelList/LabelReports.h"

class CPgLabelListSettingsBase;

/** From lists to the tree and back: LabelListTree.h of nodes. Each takes the tree's lock. */
namespace NLabelExchange
{
/** The actions: with the file that the settings name, and reports to the error handler. Neither
    keeps the lock while it reads or writes. eKW_ACC_BAD_NAME without a file name, else the codes of
    both parts. */
KW_ACCEPTANCE Load(CPgLabelListSettingsBase& settings);
KW_ACCEPTANCE Save(const CPgLabelListSettingsBase& settings);

KW_ACCEPTANCE Put(CPgLabelListSettingsBase& settings, const KW_LabelList& list,
                  CLabelReports& reports);

KW_ACCEPTANCE Get(const CPgLabelListSettingsBase& settings, KW_LabelList& list,
                  CLabelReports& reports);

/** Says in one report what of a list the tree has no nodes for. */
void TellUnheld(const KW_LabelList& list, CLabelReports& reports);
} // namespace NLabelExchange
