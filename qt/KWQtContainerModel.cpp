// SPDX-License-Identifier: MIT
#include "KWQtContainerModel.h"

#include "GroupWatch.h"
#include "RowChanges.h"

#include <utility>

class CKWQtContainerModel::CChanges : public IRowChanges
{
public:
    explicit CChanges(CKWQtContainerModel& model) : m_model(model) {}

    void RemoveRows(std::size_t first, std::size_t last) override
    {
        m_model.beginRemoveRows({}, static_cast<int>(first), static_cast<int>(last));
        m_model.m_rows.erase(At(first), At(last + 1));
        m_model.endRemoveRows();
    }

    void MoveRow(std::size_t from, std::size_t to) override
    {
        m_model.beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {},
                              static_cast<int>(to));
        std::rotate(At(to), At(from), At(from + 1));
        m_model.endMoveRows();
    }

    void InsertRows(std::size_t first, std::size_t last) override
    {
        std::vector<t_Row> rows;
        for (std::size_t i = first; i <= last; ++i)
        {
            rows.push_back(
                {m_model.m_watch->GetItems()[i], m_model.m_watch->GetNames()[static_cast<int>(i)]});
        }
        m_model.beginInsertRows({}, static_cast<int>(first), static_cast<int>(last));
        m_model.m_rows.insert(At(first), rows.begin(), rows.end());
        m_model.endInsertRows();
    }

private:
    std::vector<t_Row>::iterator At(std::size_t row)
    {
        return m_model.m_rows.begin() + static_cast<std::ptrdiff_t>(row);
    }

    CKWQtContainerModel& m_model;
};

CKWQtContainerModel::CKWQtContainerModel(CGroupWatch& watch, QObject* parent)
    : QAbstractListModel(parent), m_group(watch.GetGroup()), m_watch(&watch),
      m_path(watch.GetPath()), m_active(watch.GetActive())
{
    if (!watch.GetItems().empty())
    {
        CChanges(*this).InsertRows(0, watch.GetItems().size() - 1);
    }
    connect(&watch, &CGroupWatch::itemsChanged, this, &CKWQtContainerModel::Update);
}

CKWQtContainerModel::~CKWQtContainerModel() = default;

void CKWQtContainerModel::Detach()
{
    disconnect(m_watch, nullptr, this, nullptr);
    m_watch = nullptr;
}

bool CKWQtContainerModel::IsAttached() const
{
    return m_watch && m_watch->IsAttached();
}

int CKWQtContainerModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : GetCount();
}

QVariant CKWQtContainerModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
    {
        return {};
    }
    const QString& name = m_rows[static_cast<std::size_t>(index.row())].name;
    switch (role)
    {
    case Qt::DisplayRole:
    case NameRole:
        return name;
    case PathRole:
        return QStringLiteral("%1[%2]").arg(m_path, name);
    case ActiveRole:
        return name == m_active;
    default:
        return {};
    }
}

QHash<int, QByteArray> CKWQtContainerModel::roleNames() const
{
    return {{NameRole, "name"}, {PathRole, "path"}, {ActiveRole, "active"}};
}

void CKWQtContainerModel::SetActive(const QString& key)
{
    Wrote(m_group->AsContainer()->SetActiveItem(key));
}

bool CKWQtContainerModel::IsDynamic() const
{
    return m_group->AsContainer()->IsDynamic();
}

QString CKWQtContainerModel::GetRefusal() const
{
    return KW_IsAccepted(m_code) ? QString() : KW_GetAcceptanceText(m_code);
}

int CKWQtContainerModel::insert(const QString& key)
{
    return Wrote(m_group->AsContainer()->InsertItem(key));
}

int CKWQtContainerModel::remove(const QString& key)
{
    return Wrote(m_group->AsContainer()->RemoveItem(key));
}

int CKWQtContainerModel::rename(const QString& key, const QString& newKey)
{
    return Wrote(m_group->AsContainer()->RenameItem(key, newKey));
}

int CKWQtContainerModel::copy(const QString& key, const QString& newKey)
{
    return Wrote(m_group->AsContainer()->CopyItem(key, newKey));
}

int CKWQtContainerModel::Wrote(KW_ACCEPTANCE code)
{
    if (std::exchange(m_code, code) != code)
    {
        Q_EMIT refusalChanged();
    }
    return static_cast<int>(code);
}

void CKWQtContainerModel::Update()
{
    if (std::exchange(m_isUpdating, true))
    {
        return; // asked for by a receiver of the update that runs, which comes to the same rows
    }
    std::vector<std::shared_ptr<IDbGroup>> items;
    for (const t_Row& row : m_rows)
    {
        items.push_back(row.item);
    }
    const std::size_t count = m_rows.size();
    CChanges changes(*this);
    ChangeRows(std::move(items), m_watch->GetItems(), changes);

    for (std::size_t i = 0; i < m_rows.size(); ++i)
    {
        m_rows[i].name = m_watch->GetNames()[static_cast<int>(i)];
    }
    m_isUpdating = false;
    const bool isElsewhere = std::exchange(m_path, m_watch->GetPath()) != m_path;
    const bool isOtherActive = std::exchange(m_active, m_watch->GetActive()) != m_active;
    if (!m_rows.empty())
    {
        Q_EMIT dataChanged(index(0), index(GetCount() - 1));
    }
    if (count != m_rows.size())
    {
        Q_EMIT countChanged();
    }
    if (isElsewhere)
    {
        Q_EMIT pathChanged();
    }
    if (isOtherActive)
    {
        Q_EMIT activeChanged();
    }
    Q_EMIT attachedChanged();
}
