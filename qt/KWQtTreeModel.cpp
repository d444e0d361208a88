// SPDX-License-Identifier: MIT
#include "KWQtTreeModel.h"

#include "GroupWatch.h"
#include "KWBrackets.h"
#include "KWQtTree.h"
#include "KWTexts.h"
#include "RowChanges.h"

#include <utility>
#include <vector>

struct CKWQtTreeModel::t_Row
{
    std::shared_ptr<IDbObject> node;
    QString name;
    t_Row* parent = nullptr;
    std::size_t place = 0;       ///< among the parent's rows
    QPointer<QObject> object;    ///< of properties and actions
    QPointer<CGroupWatch> watch; ///< of a filled group
    bool isFilled = false;
    std::size_t firstItem = 0; ///< rows of a container's items stand together
    std::size_t items = 0;
    std::vector<std::unique_ptr<t_Row>> rows;
    QMetaObject::Connection connection;

    IDbGroup* AsGroup() const { return dynamic_cast<IDbGroup*>(node.get()); }
    CKWQtProperty* AsProperty() const { return qobject_cast<CKWQtProperty*>(object); }
    bool IsItem() const { return parent != nullptr && place - parent->firstItem < parent->items; }

    t_Row& Insert(std::size_t at, std::shared_ptr<IDbObject> child)
    {
        auto row = std::make_unique<t_Row>();
        row->name = child->GetNodeName();
        row->node = std::move(child);
        row->parent = this;
        t_Row& inserted =
            **rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(at), std::move(row));
        return inserted;
    }
    t_Row& Append(std::shared_ptr<IDbObject> child)
    {
        t_Row& row = Insert(rows.size(), std::move(child));
        row.place = rows.size() - 1;
        return row;
    }
    void Renumber()
    {
        for (std::size_t i = 0; i < rows.size(); ++i)
        {
            rows[i]->place = i;
        }
    }
    ~t_Row() { QObject::disconnect(connection); }
};

class CKWQtTreeModel::CChanges : public IRowChanges
{
public:
    CChanges(CKWQtTreeModel& model, t_Row& row) : m_model(model), m_row(row) {}

    void RemoveRows(std::size_t first, std::size_t last) override
    {
        m_model.beginRemoveRows(m_model.IndexOf(m_row), Place(first), Place(last));
        const auto begin = m_row.rows.begin() + Place(first);
        const auto end = m_row.rows.begin() + Place(last) + 1;
        // Indexes of views lead to them until the removal is through.
        std::vector<std::unique_ptr<t_Row>> gone(std::make_move_iterator(begin),
                                                 std::make_move_iterator(end));
        m_row.rows.erase(begin, end);
        Count(-static_cast<std::ptrdiff_t>(gone.size()));
        for (const auto& row : gone)
        {
            m_model.Forget(*row);
        }
        m_model.endRemoveRows();
    }

    void MoveRow(std::size_t from, std::size_t to) override
    {
        const QModelIndex parent = m_model.IndexOf(m_row);
        m_model.beginMoveRows(parent, Place(from), Place(from), parent, Place(to));
        const auto begin = m_row.rows.begin();
        std::rotate(begin + Place(to), begin + Place(from), begin + Place(from) + 1);
        Count(0);
        m_model.endMoveRows();
    }

    void InsertRows(std::size_t first, std::size_t last) override
    {
        m_model.beginInsertRows(m_model.IndexOf(m_row), Place(first), Place(last));
        for (std::size_t i = first; i <= last; ++i)
        {
            m_row.Insert(m_row.firstItem + i, m_row.watch->GetItems()[i]);
        }
        Count(static_cast<std::ptrdiff_t>(last + 1 - first));
        m_model.endInsertRows();
    }

private:
    int Place(std::size_t item) const { return static_cast<int>(m_row.firstItem + item); }

    void Count(std::ptrdiff_t more)
    {
        m_row.items = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(m_row.items) + more);
        m_row.Renumber();
    }

    CKWQtTreeModel& m_model;
    t_Row& m_row;
};

CKWQtTreeModel::CKWQtTreeModel(CKWQtTree& tree, const QString& path, QObject* parent)
    : QAbstractItemModel(parent), m_tree(&tree), m_top(std::make_unique<t_Row>())
{
    if (const auto root = tree.GetRoot())
    {
        m_top->node = std::dynamic_pointer_cast<IDbGroup>(root->GetDbObject()->Find(path));
    }
    connect(&tree, &CKWQtTree::attachedChanged, this, &CKWQtTreeModel::Clear);
    connect(&tree, &QObject::destroyed, this, &CKWQtTreeModel::Clear);
}

CKWQtTreeModel::~CKWQtTreeModel() = default;

/** Without the tree there is nothing to poll; the row of the root's node would keep it. */
void CKWQtTreeModel::Clear()
{
    beginResetModel();
    m_shown.clear();
    m_top = std::make_unique<t_Row>();
    endResetModel();
}

CKWQtTreeModel::t_Row& CKWQtTreeModel::RowOf(const QModelIndex& index) const
{
    return index.isValid() ? *static_cast<t_Row*>(index.internalPointer()) : *m_top;
}

QModelIndex CKWQtTreeModel::IndexOf(const t_Row& row, int column) const
{
    return row.parent != nullptr
               ? createIndex(static_cast<int>(row.place), column, const_cast<t_Row*>(&row))
               : QModelIndex();
}

QModelIndex CKWQtTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    return hasIndex(row, column, parent)
               ? IndexOf(*RowOf(parent).rows[static_cast<std::size_t>(row)], column)
               : QModelIndex();
}

QModelIndex CKWQtTreeModel::parent(const QModelIndex& child) const
{
    return child.isValid() ? IndexOf(*RowOf(child).parent) : QModelIndex();
}

int CKWQtTreeModel::rowCount(const QModelIndex& parent) const
{
    if (parent.column() > 0)
    {
        return 0;
    }
    t_Row& row = RowOf(parent);
    if (!row.isFilled)
    {
        Fill(row);
    }
    return static_cast<int>(row.rows.size());
}

int CKWQtTreeModel::columnCount(const QModelIndex& /*parent*/) const
{
    return ColumnCount;
}

/** Groups of which nothing has been shown are not filled for the question. */
bool CKWQtTreeModel::hasChildren(const QModelIndex& parent) const
{
    const t_Row& row = RowOf(parent);
    const IDbGroup* const group = row.AsGroup();
    if (parent.column() > 0 || group == nullptr)
    {
        return false;
    }
    const bool isDeclared =
        !row.isFilled && (group->GetPropertyCount() > 0 || group->GetGroupCount() > 0 ||
                          group->GetActionCount() > 0);
    return isDeclared || rowCount(parent) > 0;
}

void CKWQtTreeModel::Fill(t_Row& row) const
{
    const auto group = std::dynamic_pointer_cast<IDbGroup>(row.node);
    const auto root = m_tree ? m_tree->GetRoot() : nullptr;
    row.isFilled = true;
    if (!group || !root)
    {
        return;
    }
    const CKWReadBracket bracket(root);
    for (INT32 i = 0; i < group->GetPropertyCount(); ++i)
    {
        auto property = group->GetProperty(i);
        CKWQtProperty* const object = m_tree->ObjectOf(property);
        t_Row& shown = row.Append(std::move(property));
        shown.object = object;
        m_shown[object] = &shown;
        auto* const self = const_cast<CKWQtTreeModel*>(this);
        shown.connection = connect(object, &CKWQtProperty::changed, self,
                                   [self, object] { self->ShowChanged(object); });
    }
    for (INT32 i = 0; i < group->GetGroupCount(); ++i)
    {
        row.Append(group->GetGroup(i));
    }
    FillItems(row, *m_tree->WatchOf(group->GetPath()));
    for (INT32 i = 0; i < group->GetActionCount(); ++i)
    {
        auto action = group->GetAction(i);
        QObject* const object = m_tree->ObjectOf(action);
        row.Append(std::move(action)).object = object;
    }
}

void CKWQtTreeModel::FillItems(t_Row& row, CGroupWatch& watch) const
{
    row.firstItem = row.rows.size();
    row.watch = &watch;
    if (row.AsGroup()->AsContainer() == nullptr)
    {
        return;
    }
    for (const auto& item : watch.GetItems())
    {
        row.Append(item);
    }
    row.items = watch.GetItems().size();
    auto* const self = const_cast<CKWQtTreeModel*>(this);
    row.connection =
        connect(&watch, &CGroupWatch::itemsChanged, self, [self, &row] { self->UpdateItems(row); });
}

void CKWQtTreeModel::Forget(const t_Row& row)
{
    m_shown.remove(row.AsProperty());
    for (const auto& below : row.rows)
    {
        Forget(*below);
    }
}

void CKWQtTreeModel::UpdateItems(t_Row& row)
{
    if (std::exchange(m_isUpdating, true))
    {
        return;
    }
    std::vector<std::shared_ptr<IDbObject>> items;
    for (std::size_t i = 0; i < row.items; ++i)
    {
        items.push_back(row.rows[row.firstItem + i]->node);
    }
    const auto& wanted = row.watch->GetItems();
    CChanges changes(*this, row);
    ChangeRows(std::move(items), {wanted.begin(), wanted.end()}, changes);
    for (std::size_t i = 0; i < row.items; ++i)
    {
        row.rows[row.firstItem + i]->name = row.watch->GetNames()[static_cast<int>(i)];
    }
    m_isUpdating = false;
    if (row.items > 0)
    {
        Q_EMIT dataChanged(IndexOf(*row.rows[row.firstItem]),
                           IndexOf(*row.rows[row.firstItem + row.items - 1], ColumnCount - 1));
    }
}

void CKWQtTreeModel::ShowChanged(CKWQtProperty* property)
{
    if (const t_Row* const row = m_shown.value(property))
    {
        Q_EMIT dataChanged(IndexOf(*row), IndexOf(*row, ColumnCount - 1));
    }
}

QVariant CKWQtTreeModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
    {
        return {};
    }
    const t_Row& row = RowOf(index);
    const CKWQtProperty* const property = row.AsProperty();
    switch (role)
    {
    case Qt::DisplayRole:
        return data(index, index.column() == NameColumn    ? NameRole
                           : index.column() == ValueColumn ? TextRole
                                                           : MeaningRole);
    case Qt::EditRole:
        return index.column() == ValueColumn && property != nullptr ? property->GetText()
                                                                    : data(index, Qt::DisplayRole);
    case NameRole:
        return row.IsItem() ? QStringLiteral("[%1]").arg(row.name) : row.name;
    case PathRole:
        return row.node->GetPath();
    case KindRole:
        return static_cast<int>(row.node->GetKind());
    case TextRole:
        return property != nullptr ? property->GetText() : QVariant();
    case MeaningRole:
    case Qt::ToolTipRole:
        return KW_GetMeaning(*row.node);
    case ObjectRole:
        return QVariant::fromValue(row.object.data());
    default:
        return {};
    }
}

bool CKWQtTreeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const bool isValue = index.column() == ValueColumn && role == Qt::EditRole;
    CKWQtProperty* const property = isValue ? RowOf(index).AsProperty() : nullptr;
    if (property == nullptr)
    {
        return false;
    }
    property->SetText(value.toString());
    return KW_IsAccepted(static_cast<KW_ACCEPTANCE>(property->GetCode()));
}

QVariant CKWQtTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
    {
        return {};
    }
    switch (section)
    {
    case NameColumn:
        return tr("Name");
    case ValueColumn:
        return tr("Value");
    case MeaningColumn:
        return tr("Meaning");
    default:
        return {};
    }
}

Qt::ItemFlags CKWQtTreeModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    const CKWQtProperty* const property = index.isValid() ? RowOf(index).AsProperty() : nullptr;
    if (index.column() == ValueColumn && property != nullptr && property->IsWritable())
    {
        flags |= Qt::ItemIsEditable;
    }
    return flags;
}

QHash<int, QByteArray> CKWQtTreeModel::roleNames() const
{
    auto names = QAbstractItemModel::roleNames();
    names.insert({{NameRole, "name"},
                  {PathRole, "path"},
                  {KindRole, "kind"},
                  {TextRole, "text"},
                  {MeaningRole, "meaning"},
                  {ObjectRole, "object"}});
    return names;
}
