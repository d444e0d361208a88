// SPDX-License-Identifier: MIT
#pragma once

#include "KWQtTree.h"
#include "KWQtTreeModel.h"

#include <QQmlExtensionPlugin>

/**
 * What pages call KWI: the tree of the process, polled while the engine lives. Each engine has one
 * of its own, in its thread.
 */
class CKWQmlTree : public CKWQtTree
{
    Q_OBJECT
    /** The whole tree, for a tree view. */
    Q_PROPERTY(QAbstractItemModel* model READ GetModel CONSTANT)

public:
    explicit CKWQmlTree(QObject* parent = nullptr);

    QAbstractItemModel* GetModel();

    // A path that leads nowhere is a mistake of the page: it is told of, and answers null.
    Q_INVOKABLE CKWQtProperty* property(const QString& path);
    Q_INVOKABLE CKWQtAction* action(const QString& path);
    Q_INVOKABLE CKWQtContainerModel* container(const QString& path);

private:
    template <typename T>
    T* Checked(T* object, const char* what, const QString& path);

    CKWQtTreeModel* m_model = nullptr;
};

/** The module KWIFunctionZEL. */
class CKWQmlPlugin : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    void registerTypes(const char* uri) override;
};
