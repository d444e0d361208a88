// SPDX-License-Identifier: MIT
#include "CommonDatabase/Values/DbBounds.h"
#include "DbPgMap.h"

CDbPgMapHist::CDbPgMapHist(CDbPgMapBase& map, eOPERATIONTYPE operation, const QString& name,
                           CDbPgMapBase::t_Item item)
    : CDbHistRecord(operation),
      m_map(std::static_pointer_cast<CDbPgMapBase>(map.shared_from_this())), m_name(name),
      m_item(std::move(item))
{
}

CDbPgMapHist::CDbPgMapHist(CDbPgMapBase& map, const QString& oldName,
                           const CDbPgMapBase::t_Item& oldItem, const QString& newName,
                           const CDbPgMapBase::t_Item& newItem)
    : CDbHistRecord(eOPERATIONTYPE::Rename),
      m_map(std::static_pointer_cast<CDbPgMapBase>(map.shared_from_this())), m_name(oldName),
      m_newName(newName), m_item(oldItem), m_newItem(newItem)
{
}

QString CDbPgMapHist::GetText() const
{
    switch (GetOperationType())
    {
    case eOPERATIONTYPE::Insert:
        return m_name + QStringLiteral(" inserted");
    case eOPERATIONTYPE::Remove:
        return m_name + QStringLiteral(" removed");
    default:
        return m_name + QStringLiteral(" renamed");
    }
}

std::size_t CDbPgMapHist::GetHeldBytes() const
{
    // An item that came in is the tree's.
    const bool keeps = GetOperationType() == eOPERATIONTYPE::Remove;
    return sizeof(*this) + (keeps ? m_item.group->CountNodes() : 0) * NDbBounds::kBytesPerNode;
}
