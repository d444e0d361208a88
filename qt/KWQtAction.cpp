// SPDX-License-Identifier: MIT
#include "KWQtAction.h"

#include "KWQtTree.h"
#include "KWTexts.h"

#include <QPointer>
#include <QThreadPool>

CKWQtAction::CKWQtAction(std::shared_ptr<IDbAction> node, CKWQtTree& tree)
    : QObject(&tree), m_node(std::move(node)), m_tree(tree), m_path(m_node->GetPath()),
      m_availability(m_node->GetAvailability())
{
}

CKWQtAction::~CKWQtAction() = default;

int CKWQtAction::GetAvailability() const
{
    return m_attached ? m_node->GetAvailability() : eAVAILABILITY_NOT_AVAILABLE;
}

QString CKWQtAction::GetRefusal() const
{
    return KW_IsAccepted(m_code) ? QString() : KW_GetAcceptanceText(m_code);
}

QString CKWQtAction::GetName() const
{
    return m_node->GetNodeName();
}

QString CKWQtAction::GetMeaning() const
{
    return KW_GetMeaning(*m_node);
}

void CKWQtAction::trigger()
{
    if (m_run)
    {
        return;
    }
    if (m_node->GetKind() != eKW_NODE_OPERATION)
    {
        m_code = m_node->Execute();
        Q_EMIT finished();
        return;
    }
    m_run = std::make_shared<t_Run>();
    m_tree.m_running.append(this);
    // The thread holds the node and the answer's place, not this object: that may go first.
    QThreadPool::globalInstance()->start(
        [run = m_run, node = m_node]
        {
            run->code = node->Execute();
            run->ended.store(true, std::memory_order_release);
        });
    Q_EMIT runningChanged();
}

bool CKWQtAction::Look(bool moved, bool attached)
{
    const KW_AVAILABILITY availability = m_node->GetAvailability();
    const bool isOther = availability != m_availability || attached != m_attached;
    m_availability = availability;
    m_attached = attached;
    if (moved && attached)
    {
        const QString path = m_node->GetPath();
        m_isOtherPath = path != m_path;
        m_path = path;
    }
    return isOther || m_isOtherPath;
}

void CKWQtAction::Tell()
{
    const QPointer<CKWQtAction> alive = this;
    if (std::exchange(m_isOtherPath, false))
    {
        Q_EMIT pathChanged();
    }
    if (alive)
    {
        Q_EMIT stateChanged();
    }
}

void CKWQtAction::TakeEnd()
{
    const QPointer<CKWQtAction> alive = this;
    m_code = std::exchange(m_run, nullptr)->code;
    Q_EMIT runningChanged();
    if (alive)
    {
        Q_EMIT finished();
    }
}
