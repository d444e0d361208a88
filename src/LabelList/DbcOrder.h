// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelList.h"

#include <string_view>

/** The order of statements in a CAN database: one that is written has them as its readers expect.
 */
namespace NDbcOrder
{
/** By the order of the grammar; keywords that it has not come last. */
int RankOf(std::string_view keyword);

/** Puts statements in that order; those of one keyword keep theirs. */
void Arrange(std::vector<std::string>& statements);

/** The keyword that a statement begins with. */
std::string_view KeywordOf(std::string_view statement);

/** Whether an attribute is of relations, which have statements of their own. */
bool IsRelation(const KW_AttributeDefinition& definition);
} // namespace NDbcOrder
