// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <QAbstractListModel>
#include <QPointer>
#include <memory>
#include <vector>

class CGroupWatch;
class CKWQtTree;

/**
 * The items of an array or map as rows, in its order. CKWQtTree makes it and owns it. Rows follow
 * with the poll; an item keeps its row's delegate when its name or place changes.
 *
 * Roles: `name` (index of an array's item, name of a map's), `path`, `active`.
 */
class KW_EXPORT CKWQtContainerModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ GetCount NOTIFY countChanged)
    /** Index or name of the active item, empty for none. A write makes another the active one. */
    Q_PROPERTY(QString active READ GetActive WRITE SetActive NOTIFY activeChanged)
    /** Whether items come and go. */
    Q_PROPERTY(bool dynamic READ IsDynamic CONSTANT)
    /** Whether the container is part of a tree. */
    Q_PROPERTY(bool attached READ IsAttached NOTIFY attachedChanged)
    Q_PROPERTY(QString path READ GetPath NOTIFY pathChanged)
    /** KW_ACCEPTANCE of the last call below, and why it was refused; empty when it was not. */
    ///@{
    Q_PROPERTY(int code READ GetCode NOTIFY refusalChanged)
    Q_PROPERTY(QString refusal READ GetRefusal NOTIFY refusalChanged)
    ///@}

public:
    enum eROLE
    {
        NameRole = Qt::UserRole,
        PathRole,
        ActiveRole
    };

    ~CKWQtContainerModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int GetCount() const { return static_cast<int>(m_rows.size()); }
    QString GetActive() const { return m_active; }
    void SetActive(const QString& key);
    bool IsDynamic() const;
    QString GetPath() const { return m_path; }
    int GetCode() const { return static_cast<int>(m_code); }
    QString GetRefusal() const;
    bool IsAttached() const;

    // As those of IDbContainer; rows follow with the next poll. Answer KW_ACCEPTANCE.
    Q_INVOKABLE int insert(const QString& key = {});
    Q_INVOKABLE int remove(const QString& key);
    Q_INVOKABLE int rename(const QString& key, const QString& newKey);
    Q_INVOKABLE int copy(const QString& key, const QString& newKey);

Q_SIGNALS:
    void countChanged();
    void activeChanged();
    void pathChanged();
    void attachedChanged();
    void refusalChanged();

private:
    friend class CKWQtTree;
    class CChanges;

    struct t_Row
    {
        std::shared_ptr<IDbGroup> item;
        QString name;
    };

    CKWQtContainerModel(CGroupWatch& watch, QObject* parent);
    void Detach();
    void Update();
    int Wrote(KW_ACCEPTANCE code);

    std::shared_ptr<IDbGroup> m_group;
    QPointer<CGroupWatch> m_watch;
    std::vector<t_Row> m_rows;
    QString m_path;
    QString m_active;
    KW_ACCEPTANCE m_code = 0;
    bool m_isUpdating = false;
};
