// SPDX-License-Identifier: MIT
#include "LabelList/DbcOrder.h"

#include <algorithm>
#include <iterator>

namespace
{
// NS_DESC_ stands apart from NS_, which would take it for one of its words.
constexpr std::string_view kOrder[] = {
    "VERSION",
    "NS_",
    "BS_",
    "BU_",
    "NS_DESC_",
    "VAL_TABLE_",
    "BO_",
    "BO_TX_BU_",
    "EV_",
    "EV_DATA_",
    "ENVVAR_DATA_",
    "SGTYPE_",
    "SGTYPE_VAL_",
    "CM_",
    "BA_DEF_",
    "BA_DEF_REL_",
    "BA_DEF_SGTYPE_",
    "BA_DEF_DEF_",
    "BA_DEF_DEF_REL_",
    "BA_",
    "BA_REL_",
    "BA_SGTYPE_",
    "VAL_",
    "SIG_TYPE_REF_",
    "CAT_DEF_",
    "CAT_",
    "FILTER",
    "SIG_GROUP_",
    "SIG_VALTYPE_",
    "SIGTYPE_VALTYPE_",
    "SG_MUL_VAL_",
};
} // namespace

int NDbcOrder::RankOf(std::string_view keyword)
{
    const auto* const found = std::find(std::begin(kOrder), std::end(kOrder), keyword);
    return static_cast<int>(found - std::begin(kOrder));
}

std::string_view NDbcOrder::KeywordOf(std::string_view statement)
{
    return statement.substr(0, statement.find_first_of(" :\"0123456789;"));
}

void NDbcOrder::Arrange(std::vector<std::string>& statements)
{
    std::vector<int> ranks;
    for (const std::string& statement : statements)
    {
        ranks.push_back(RankOf(KeywordOf(statement)));
    }
    std::vector<std::string> arranged;
    for (int rank = 0; arranged.size() < statements.size(); ++rank)
    {
        for (std::size_t i = 0; i < ranks.size(); ++i)
        {
            if (ranks[i] == rank)
            {
                arranged.push_back(std::move(statements[i]));
            }
        }
    }
    statements = std::move(arranged);
}

bool NDbcOrder::IsRelation(const KW_AttributeDefinition& definition)
{
    return definition.object.rfind("BA_DEF_REL_", 0) == 0;
}
