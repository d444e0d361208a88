// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QPointer>
#include <memory>

class CGroupWatch;
class CKWQtProperty;
class CKWQtTree;

/**
 * The tree, or what is below one of its groups, as a model for tree views: properties, child
 * groups, items, actions, in the order of files. Rows are made as they are looked at, and follow
 * with the poll of the tree. Columns: name, value, meaning. Values of settings can be edited.
 *
 * Roles beside those of Qt: `name`, `path`, `kind` (KW_NODE_KIND), `text`, `meaning`, `object` (the
 * CKWQtProperty or CKWQtAction of the row; null for groups).
 */
class KW_EXPORT CKWQtTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum eROLE
    {
        NameRole = Qt::UserRole,
        PathRole,
        KindRole,
        TextRole,
        MeaningRole,
        ObjectRole
    };
    enum eCOLUMN
    {
        NameColumn,
        ValueColumn,
        MeaningColumn,
        ColumnCount
    };

    /** `path` of the group; empty for the whole tree. There are no rows where it leads to none. The
        tree must outlive the model's use: without it the model is empty. */
    explicit CKWQtTreeModel(CKWQtTree& tree, const QString& path = {}, QObject* parent = nullptr);
    ~CKWQtTreeModel() override;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    struct t_Row;
    class CChanges;

    t_Row& RowOf(const QModelIndex& index) const;
    QModelIndex IndexOf(const t_Row& row, int column = 0) const;
    void Fill(t_Row& row) const;
    void FillItems(t_Row& row, CGroupWatch& watch) const;
    void UpdateItems(t_Row& row);
    void Forget(const t_Row& row);
    void ShowChanged(CKWQtProperty* property);
    void Clear();

    QPointer<CKWQtTree> m_tree;
    std::unique_ptr<t_Row> m_top;
    mutable QHash<const CKWQtProperty*, t_Row*> m_shown;
    bool m_isUpdating = false;
};
