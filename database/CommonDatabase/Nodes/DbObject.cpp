// SPDX-License-Identifier: MIT
#include "DbObject.h"

#include "LockManager.h"

#include <algorithm>
#include <atomic>

namespace
{
std::atomic<UINT32> s_nextDiagnosticId{1};

/** "/Name" in groups, "[key]" for items. */
QString PathStep(const CDbObject& node, KW_NODE_KIND ofParent)
{
    const bool isInContainer = ofParent == eKW_NODE_ARRAY || ofParent == eKW_NODE_MAP;
    if (isInContainer && node.GetKind() != eKW_NODE_PROPERTY)
    {
        return QStringLiteral("[%1]").arg(node.GetNodeName());
    }
    return QLatin1Char('/') + node.GetNodeName();
}
} // namespace

CDbObject::CDbObject() : m_diagnosticId(s_nextDiagnosticId.fetch_add(1, std::memory_order_relaxed))
{
}

CDbObject::~CDbObject() = default;

void CDbNodeDeleter::operator()(CDbObject* node) const
{
    const CLockGuard lock;
    delete node;
}

QString CDbObject::GetNodeName() const
{
    const CLockGuard lock(eACCESS_READ);
    return m_nodeName;
}

QString CDbObject::GetPath() const
{
    const CLockGuard lock(eACCESS_READ);
    QString path;
    for (const CDbObject* node = this; node->m_parent != nullptr && !node->m_topLevel;
         node = node->m_parent)
    {
        path.prepend(PathStep(*node, node->m_parent->GetKind()));
    }
    return path.startsWith(QLatin1Char('/')) ? path.mid(1) : path;
}

KW_AVAILABILITY CDbObject::GetAvailability() const
{
    const CLockGuard lock(eACCESS_READ);
    return AvailabilityUpToRoot();
}

KW_AVAILABILITY CDbObject::AvailabilityUpToRoot() const
{
    KW_AVAILABILITY strictest = eAVAILABILITY_AVAILABLE;
    for (const CDbObject* node = this; node != nullptr; node = node->m_parent)
    {
        strictest = std::max({strictest, KW_AVAILABILITY(node->m_maxAvailability),
                              KW_AVAILABILITY(node->m_availability)});
    }
    return strictest;
}

void CDbObject::SetSaveRecallType(CDbObject* object, INT32 type, bool recursive)
{
    object->OnSaveRecallTypeSet(type, recursive);
}

void CDbObject::OnSaveRecallTypeSet(INT32 type, bool /*recursive*/)
{
    m_saveRecallType = type & eSAVERECALL_ALL;
}

void CDbObject::SetMaxAvailability(KW_AVAILABILITY availability)
{
    const CLockGuard lock;
    m_maxAvailability = availability;
    m_maxAvailabilityTouched = true;
}

void CDbObject::SetAvailability(KW_AVAILABILITY availability)
{
    const CLockGuard lock;
    m_availability = availability;
}

CDbObject* CDbObject::GetTop()
{
    CDbObject* node = this;
    while (node->m_parent != nullptr)
    {
        node = node->m_parent;
    }
    return node;
}

CDbPgRoot* CDbObject::GetDbRoot() const
{
    return const_cast<CDbObject*>(this)->GetTop()->AsDbRoot();
}

QString CDbObject::GetXMLElementName() const
{
    return QStringLiteral("DbObject");
}
