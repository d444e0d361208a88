// SPDX-License-Identifier: MIT
#pragma once

#include "HttpClient.h"
#include "KWHistory.h"
#include "LivingNodes.h"

#include <QJsonArray>
#include <QMap>
#include <optional>

/**
 * The tree of another process, which serves it: has the interfaces of a tree of this process, so
 * that all commands work on either. What it knows is as old as the last Forget, or as the last
 * write. A service that can not be reached ends the command (CFailure).
 *
 * Writes of a step are collected here, as no bracket of a client outlives a message: each is tried
 * on a copy of the tree, by the service, and what the copy shows counts until the step ends, which
 * carries all of them out, or none.
 */
class CLivingTree final : public IKWFunctionRootBase
{
public:
    /** Fails where no service answers. */
    explicit CLivingTree(CHttpClient client);
    ~CLivingTree() override;

    /** What is known may have changed since. */
    void Forget() { ++m_age; }
    long long GetAge() const { return m_age; }

    std::shared_ptr<IDbObject> Find(const QString& path);
    /** Reads a node and as many levels below it, all where that is negative; null for none. */
    std::shared_ptr<CLivingNode> Read(const QString& path, int depth);
    /** Reads a node anew, together with its group where a walk has come to that. */
    void Refresh(const CLivingNode& node);
    /** The node that was told, known from now on. */
    std::shared_ptr<CLivingNode> Absorb(COrderedJson&& told);

    /** One write as the service takes it. */
    KW_ACCEPTANCE Write(const QJsonObject& write);
    /** Anything that can not be part of a step. */
    KW_ACCEPTANCE Act(const char* target, const QJsonObject& body = {});

    /** A WebSocket at which something comes whenever a node, or something below it, has changed.
        Fails where the service refuses. */
    CWebSocket Follow(const QStringList& paths) const;

    std::shared_ptr<IDbObject> FindTwin(const QString& path);
    const CEnumNameInfo* FindNames(const QString& type, const QString& path);
    /** The tree of this process with the settings of the living one: for what is tried out. */
    std::shared_ptr<IKWFunctionRootBase> MakeCopy();
    /** Recalls the settings that a group of the copy has, as a step that `text` names; all others
       stay as they are. */
    KW_ACCEPTANCE TakeFromCopy(const QString& path, const QString& text);

    bool HasChanged(long long& /*counter*/) const override { return true; }
    std::shared_ptr<IDbGroup> GetDbObject() const override;
    KW_ACCEPTANCE Save(const QString& fileName) override;
    KW_ACCEPTANCE Recall(const QString& fileName) override;
    KW_ACCEPTANCE RunPresetSequence(bool factory) override;
    KW_History GetHistory() const;
    /** Steps back or forward, all or none. */
    ///@{
    KW_ACCEPTANCE UndoSteps(int steps) { return GoBy("/undo", steps); }
    KW_ACCEPTANCE RedoSteps(int steps) { return GoBy("/redo", steps); }
    ///@}
    KW_ACCEPTANCE Undo() override { return UndoSteps(1); }
    KW_ACCEPTANCE Redo() override { return RedoSteps(1); }
    bool CanUndo() const override { return !GetHistory().undo.isEmpty(); }
    bool CanRedo() const override { return !GetHistory().redo.isEmpty(); }
    QString GetUndoText() const override { return GetHistory().undo.value(0); }
    QString GetRedoText() const override { return GetHistory().redo.value(0); }
    void StartTransaction(const QString& text) override;
    KW_ACCEPTANCE EndTransaction(bool keep) override;
    /** The service's own affair. */
    ///@{
    void SetSettingsFolder(const QString& /*folder*/) override {}
    QString GetSettingsFolder() const override { return {}; }
    void UpdateAllMeasSettings() override {}
    void EnableHistory(bool /*on*/) override {}
    void StartReadAccess() override {}
    void EndReadAccess() override {}
    void StartWriteAccess(KW_CLIENT_ORIGIN /*origin*/) override {}
    void EndWriteAccess() override {}
    void SetControlMode(KW_CONTROL_MODE /*mode*/) override {}
    KW_CONTROL_MODE GetControlMode() const override { return eCONTROL_REMOTE; }
    ///@}

private:
    /** Writes that wait for the end of their step. */
    struct t_Step
    {
        QString text;
        QJsonArray writes;
        QHash<QString, COrderedJson> shown; ///< nodes as the copy has them
    };

    KW_ACCEPTANCE GoBy(const char* target, int steps)
    {
        return Act((QByteArray(target) + "?steps=" + QByteArray::number(steps)).constData());
    }
    KW_ACCEPTANCE Try(const QJsonObject& write);
    /** The settings as a file holds them. */
    QByteArray ReadSettings(bool isCsv) const;
    std::shared_ptr<CLivingNode> Make(const QString& path, const QString& kind);
    IKWFunctionRootBase& GetPrivate();

    const CHttpClient m_client;
    long long m_age = 0;
    QHash<QString, std::shared_ptr<CLivingNode>> m_nodes;
    std::optional<t_Step> m_step;
    std::shared_ptr<IKWFunctionRootBase> m_private; ///< the tree of this process
    QMap<QString, const CEnumNameInfo*> m_names;
};
