// SPDX-License-Identifier: MIT
#include "KWQmlModule.h"

#include "IKWFunctionZEL.h"

#include <QQmlEngine>
#include <QQmlInfo>

CKWQmlTree::CKWQmlTree(QObject* parent) : CKWQtTree(GetZELRoot(), parent) {}

QAbstractItemModel* CKWQmlTree::GetModel()
{
    if (m_model == nullptr)
    {
        m_model = new CKWQtTreeModel(*this, {}, this);
    }
    return m_model;
}

template <typename T>
T* CKWQmlTree::Checked(T* object, const char* what, const QString& path)
{
    if (object == nullptr && IsAttached())
    {
        qmlWarning(this) << "no " << what << " \"" << path << '"';
    }
    return object;
}

CKWQtProperty* CKWQmlTree::property(const QString& path)
{
    return Checked(CKWQtTree::property(path), "property", path);
}

CKWQtAction* CKWQmlTree::action(const QString& path)
{
    return Checked(CKWQtTree::action(path), "action", path);
}

CKWQtContainerModel* CKWQmlTree::container(const QString& path)
{
    return Checked(CKWQtTree::container(path), "container", path);
}

void CKWQmlPlugin::registerTypes(const char* uri)
{
    const QString made = QStringLiteral("KWI makes it");
    qmlRegisterSingletonType<CKWQmlTree>(
        uri, 2, 0, "KWI", [](QQmlEngine*, QJSEngine*) -> QObject* { return new CKWQmlTree; });
    qmlRegisterUncreatableType<CKWQtProperty>(uri, 2, 0, "KWIProperty", made);
    qmlRegisterUncreatableType<CKWQtAction>(uri, 2, 0, "KWIAction", made);
    qmlRegisterUncreatableType<CKWQtContainerModel>(uri, 2, 0, "KWIContainer", made);
}
