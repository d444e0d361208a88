// SPDX-License-Identifier: MIT
#pragma once

#include "KWQtAction.h"
#include "KWQtProperty.h"

#include <QPointer>
#include <QStringList>
#include <memory>
#include <utility>
#include <vector>

/** A group of which something is shown, with what is shown of it. The change counters of the tree
    lead a poll to the groups where something has moved; only there is anything compared. */
class CGroupWatch : public QObject
{
    Q_OBJECT

public:
    /** What a poll has found. Told of only when all is found: receivers may do anything, such as
        asking for further properties. */
    struct t_Found
    {
        std::vector<std::pair<QPointer<CKWQtProperty>, unsigned>> properties;
        std::vector<QPointer<CKWQtAction>> actions;
        std::vector<QPointer<CGroupWatch>> containers;

        bool IsEmpty() const { return properties.empty() && actions.empty() && containers.empty(); }
        void Tell() const;
    };

    explicit CGroupWatch(std::shared_ptr<IDbGroup> group);

    const std::shared_ptr<IDbGroup>& GetGroup() const { return m_group; }
    bool IsAttached() const { return m_attached; }
    /** Of a container, as at the last poll. */
    ///@{
    const std::vector<std::shared_ptr<IDbGroup>>& GetItems() const { return m_items; }
    const QStringList& GetNames() const { return m_names; }
    const QString& GetPath() const { return m_path; }
    const QString& GetActive() const { return m_active; }
    ///@}

    /** The watch of a child group or item, made when there is none. */
    CGroupWatch& GetChild(const std::shared_ptr<IDbGroup>& group);
    void Add(CKWQtProperty* property) { m_properties.push_back(property); }
    void Add(CKWQtAction* action) { m_actions.push_back(action); }

    /** Finds what has changed here and below since the last time; `moved` where something above
        decides otherwise now, `attached` whether the parent is part of the tree. */
    void Collect(t_Found& found, bool moved, bool attached);
    /** Forgets what no tree has any more, and hands the objects over. */
    void TakeDetached(std::vector<QObject*>& objects);

Q_SIGNALS:
    /** Items, their names, which is active, or the path are others. */
    void itemsChanged();

private:
    bool UpdateItems();
    void UpdateMembers();

    std::shared_ptr<IDbGroup> m_group;
    IDbContainer* m_container;
    bool m_itemsMove; ///< no array of a fixed size
    bool m_isItem;
    bool m_isMember = true; ///< of the parent: declared child groups stay, items may leave
    bool m_hasNewChild = false;
    bool m_attached = true;
    long long m_counter = 0;
    KW_AVAILABILITY m_availability;
    QString m_path;
    std::vector<std::shared_ptr<IDbGroup>> m_items;
    QStringList m_names;
    QString m_active;
    std::vector<CKWQtProperty*> m_properties;
    std::vector<CKWQtAction*> m_actions;
    std::vector<std::unique_ptr<CGroupWatch>> m_children;
};
