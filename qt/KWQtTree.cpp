// SPDX-License-Identifier: MIT
#include "KWQtTree.h"

#include "GroupWatch.h"
#include "KWBrackets.h"

#include <set>

namespace
{
/** Keys of items hold neither slash nor brackets. */
QString GetParentPath(const QString& path)
{
    const auto end = path.endsWith(QLatin1Char(']')) ? path.lastIndexOf(QLatin1Char('['))
                                                     : path.lastIndexOf(QLatin1Char('/'));
    return end < 0 ? QString() : path.left(end);
}
} // namespace

CKWQtTree::CKWQtTree(std::shared_ptr<IKWFunctionRootBase> root, QObject* parent)
    : QObject(parent), m_root(std::move(root)), m_timer(this)
{
    if (m_root)
    {
        m_root->HasChanged(m_counter);
        m_watch = std::make_unique<CGroupWatch>(m_root->GetDbObject());
        m_history = ReadHistory();
    }
    connect(&m_timer, &QTimer::timeout, this, &CKWQtTree::poll);
    Restart();
}

CKWQtTree::~CKWQtTree()
{
    // Objects lean on watches and on this: they go first.
    qDeleteAll(m_containers);
    qDeleteAll(m_objects);
}

void CKWQtTree::SetInterval(int milliseconds)
{
    if (milliseconds != m_interval && milliseconds >= 0)
    {
        m_interval = milliseconds;
        Restart();
        Q_EMIT intervalChanged();
    }
}

void CKWQtTree::Restart()
{
    if (m_interval > 0)
    {
        m_timer.start(m_interval);
    }
    else
    {
        m_timer.stop();
    }
}

void CKWQtTree::Release()
{
    if (m_root)
    {
        m_root.reset();
        CGroupWatch::t_Found found;
        m_watch->Collect(found, true, false);
        const QPointer<CKWQtTree> alive = this;
        found.Tell();
        if (alive)
        {
            m_watch.reset(); // it holds the root's node
            Q_EMIT attachedChanged();
        }
    }
}

void CKWQtTree::DropDetached()
{
    if (!m_watch)
    {
        return;
    }
    for (auto container = m_containers.begin(); container != m_containers.end();)
    {
        if (container.value()->IsAttached())
        {
            ++container;
            continue;
        }
        container.value()->deleteLater();
        container.value()->Detach();
        container = m_containers.erase(container);
    }
    std::vector<QObject*> dropped;
    m_watch->TakeDetached(dropped);
    const std::set<QObject*> gone(dropped.begin(), dropped.end());
    for (auto object = m_objects.begin(); object != m_objects.end();)
    {
        if (gone.count(object.value()) == 0)
        {
            ++object;
            continue;
        }
        object.value()->deleteLater();
        object = m_objects.erase(object);
    }
}

CKWQtProperty* CKWQtTree::property(const QString& path)
{
    if (!m_root)
    {
        return nullptr;
    }
    const CKWReadBracket bracket(m_root); // so that paths lead to the same node for a while
    const auto node = std::dynamic_pointer_cast<IDbProperty>(m_root->GetDbObject()->Find(path));
    return node ? ObjectOf(node) : nullptr;
}

CKWQtAction* CKWQtTree::action(const QString& path)
{
    if (!m_root)
    {
        return nullptr;
    }
    const CKWReadBracket bracket(m_root);
    const auto node = std::dynamic_pointer_cast<IDbAction>(m_root->GetDbObject()->Find(path));
    return node ? ObjectOf(node) : nullptr;
}

CKWQtContainerModel* CKWQtTree::container(const QString& path)
{
    if (!m_root)
    {
        return nullptr;
    }
    const CKWReadBracket bracket(m_root);
    CGroupWatch* const watch = WatchOf(path);
    if (watch == nullptr || watch->GetGroup()->AsContainer() == nullptr)
    {
        return nullptr;
    }
    CKWQtContainerModel*& model = m_containers[watch];
    if (model == nullptr)
    {
        model = new CKWQtContainerModel(*watch, this);
    }
    return model;
}

int CKWQtTree::undo()
{
    return static_cast<int>(m_root ? m_root->Undo() : eKW_ACC_DETACHED);
}

int CKWQtTree::redo()
{
    return static_cast<int>(m_root ? m_root->Redo() : eKW_ACC_DETACHED);
}

void CKWQtTree::poll()
{
    if (m_isPolling)
    {
        return;
    }
    if (!m_running.isEmpty())
    {
        const QPointer<CKWQtTree> alive = this;
        TakeEnds();
        if (!alive)
        {
            return;
        }
    }
    if (m_root && m_root->HasChanged(m_counter))
    {
        PollTree();
    }
}

void CKWQtTree::PollTree()
{
    CGroupWatch::t_Found found;
    t_History history;
    {
        const CKWReadBracket bracket(m_root); // one moment, and one wait for the lock
        m_watch->Collect(found, false, true);
        history = ReadHistory();
    }
    const bool isOtherHistory = history != m_history;
    m_history = std::move(history);

    const QPointer<CKWQtTree> alive = this; // a receiver may destroy it
    m_isPolling = true;
    found.Tell();
    if (!alive)
    {
        return;
    }
    m_isPolling = false;
    if (isOtherHistory)
    {
        Q_EMIT historyChanged();
    }
}

void CKWQtTree::TakeEnds()
{
    const QPointer<CKWQtTree> alive = this;
    const auto running = std::exchange(m_running, {});
    for (const auto& action : running)
    {
        if (action && action->HasEnded())
        {
            action->TakeEnd(); // whose receivers may start others
        }
        else if (action && alive)
        {
            m_running.append(action);
        }
    }
}

CKWQtTree::t_History CKWQtTree::ReadHistory() const
{
    return {m_root->CanUndo(), m_root->CanRedo(), m_root->GetUndoText(), m_root->GetRedoText()};
}

/** The watch of a group, and of all above it. */
CGroupWatch* CKWQtTree::WatchOf(const QString& path)
{
    if (path.isEmpty())
    {
        return m_watch.get();
    }
    CGroupWatch* const parent = WatchOf(GetParentPath(path));
    auto group = std::dynamic_pointer_cast<IDbGroup>(m_root->GetDbObject()->Find(path));
    return parent != nullptr && group ? &parent->GetChild(group) : nullptr;
}

CKWQtProperty* CKWQtTree::ObjectOf(const std::shared_ptr<IDbProperty>& node)
{
    QObject*& object = m_objects[node.get()];
    if (object == nullptr)
    {
        auto* const property = new CKWQtProperty(node, this);
        WatchOf(GetParentPath(property->GetPath()))->Add(property);
        object = property;
    }
    return static_cast<CKWQtProperty*>(object);
}

CKWQtAction* CKWQtTree::ObjectOf(const std::shared_ptr<IDbAction>& node)
{
    QObject*& object = m_objects[node.get()];
    if (object == nullptr)
    {
        auto* const action = new CKWQtAction(node, *this);
        WatchOf(GetParentPath(action->GetPath()))->Add(action);
        object = action;
    }
    return static_cast<CKWQtAction*>(object);
}
