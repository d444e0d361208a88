// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionRootBase.h"
#include "KWQtAction.h"
#include "KWQtContainerModel.h"
#include "KWQtProperty.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>
#include <memory>

class CGroupWatch;

/**
 * The tree for pages: makes an object for each property, action and container that a page asks for
 * by its path, and looks for all of them together what has changed, `interval` milliseconds apart.
 * A poll that finds the tree unchanged costs a few nanoseconds; otherwise only groups are looked at
 * in which something has moved.
 *
 * It and its objects belong to the thread that made it. All other threads may write to the tree
 * meanwhile: pages see it with the next poll. Reading a number never waits; texts, and polls that
 * find something, wait as long as another thread is in the midst of a write or holds a bracket.
 *
 * It holds the root: the tree lives until it is let go or destroyed. Objects live as long as this
 * one, those of removed items until DropDetached.
 */
class KW_EXPORT CKWQtTree : public QObject
{
    Q_OBJECT
    /** Milliseconds between two polls, 16 at first; 0 for none: the page's own clock calls poll().
     */
    Q_PROPERTY(int interval READ GetInterval WRITE SetInterval NOTIFY intervalChanged)
    /** Whether the tree is still held. */
    Q_PROPERTY(bool attached READ IsAttached NOTIFY attachedChanged)
    /** Whether there is a step to undo or redo, and its text; as at the last poll. */
    ///@{
    Q_PROPERTY(QString undoText READ GetUndoText NOTIFY historyChanged)
    Q_PROPERTY(QString redoText READ GetRedoText NOTIFY historyChanged)
    Q_PROPERTY(bool canUndo READ CanUndo NOTIFY historyChanged)
    Q_PROPERTY(bool canRedo READ CanRedo NOTIFY historyChanged)
    ///@}

public:
    /** A null root is one that was let go. */
    explicit CKWQtTree(std::shared_ptr<IKWFunctionRootBase> root, QObject* parent = nullptr);
    ~CKWQtTree() override;

    int GetInterval() const { return m_interval; }
    void SetInterval(int milliseconds);
    bool IsAttached() const { return m_root != nullptr; }
    std::shared_ptr<IKWFunctionRootBase> GetRoot() const { return m_root; }
    /** Lets the tree go: everything is detached. */
    void Release();
    /** Deletes the objects of removed items, which undo could bring back; for applications that run
        for months. Pages must not show them any more. */
    void DropDetached();

    bool CanUndo() const { return m_history.canUndo; }
    bool CanRedo() const { return m_history.canRedo; }
    QString GetUndoText() const { return m_history.undoText; }
    QString GetRedoText() const { return m_history.redoText; }

    // What pages call, by the names that they use.
    /** The object of a node, the same for each request; null when there is no such node. */
    ///@{
    Q_INVOKABLE CKWQtProperty* property(const QString& path);
    Q_INVOKABLE CKWQtAction* action(const QString& path);
    Q_INVOKABLE CKWQtContainerModel* container(const QString& path);
    ///@}
    /** One step back or forward; answers KW_ACCEPTANCE. */
    ///@{
    Q_INVOKABLE int undo();
    Q_INVOKABLE int redo();
    ///@}
    /** Looks for changes now. From inside a signal of a poll it does nothing. */
    Q_INVOKABLE void poll();

Q_SIGNALS:
    void intervalChanged();
    void attachedChanged();
    void historyChanged();

private:
    friend class CKWQtAction;
    friend class CKWQtTreeModel;

    struct t_History
    {
        bool canUndo = false;
        bool canRedo = false;
        QString undoText;
        QString redoText;

        bool operator==(const t_History&) const = default;
    };

    CGroupWatch* WatchOf(const QString& path);
    CKWQtProperty* ObjectOf(const std::shared_ptr<IDbProperty>& node);
    CKWQtAction* ObjectOf(const std::shared_ptr<IDbAction>& node);
    void Restart();
    void PollTree();
    void TakeEnds();
    t_History ReadHistory() const;

    std::shared_ptr<IKWFunctionRootBase> m_root;
    std::unique_ptr<CGroupWatch> m_watch; ///< of the root; null when there never was one
    long long m_counter = 0;
    int m_interval = 16;
    bool m_isPolling = false;
    QTimer m_timer;
    t_History m_history;
    QHash<const IDbObject*, QObject*> m_objects; ///< by node, which they keep alive
    QHash<const CGroupWatch*, CKWQtContainerModel*> m_containers;
    QList<QPointer<CKWQtAction>> m_running;
};
