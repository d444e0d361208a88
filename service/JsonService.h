// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionRootBase.h"
#include "JsonWriter.h"
#include "ServiceLimits.h"
#include "Turns.h"

#include <QJsonObject>
#include <QUrlQuery>
#include <memory>
#include <span>

/** A request without its transport. */
struct t_JsonRequest
{
    QByteArray method;
    QByteArray target; ///< as it was sent: path and query
    QByteArray body;
};

/** What a request answers: always a JSON document. */
struct t_JsonAnswer
{
    int status = 200; ///< of HTTP
    QByteArray body;
};

/** What a server decides for all clients. */
struct t_JsonOptions
{
    t_HttpBounds bounds;
    bool readOnly = false; ///< nothing is written and no action runs
};

/**
 * The tree in JSON: takes requests, gives answers. It knows no network. Each request is complete in
 * itself: no bracket outlives it, and nobody has a state here.
 *
 * Requests stand in one table, from which the OpenAPI document is made too. Callable from any
 * thread, by several at once; writes count as remote.
 */
class CJsonService
{
public:
    CJsonService(std::shared_ptr<IKWFunctionRootBase> root, const t_JsonOptions& options)
        : m_root(std::move(root)), m_options(options)
    {
    }

    t_JsonAnswer Answer(const t_JsonRequest& request) const;
    /** Whether a request is answered in less time than it takes to hand it to another thread. */
    bool IsQuick(const t_JsonRequest& request) const;

    /** The description of all requests (OpenAPI 3.1). */
    static QByteArray Describe();
    /** The answer to what could not be understood. */
    static t_JsonAnswer Refuse(int status, KW_ACCEPTANCE code, const QString& detail);
    /** An answer that is a code alone, with the status that belongs to it. */
    static t_JsonAnswer AnswerCode(KW_ACCEPTANCE code, const QString& detail = {});

private:
    /** A request that was found in the table. */
    struct t_Call
    {
        QUrlQuery query;
        QJsonObject body;

        QString Path() const;
    };
    using t_Handler = t_JsonAnswer (CJsonService::*)(const t_Call&) const;
    /** A row of the table. Texts of OpenAPI are JSON with ' for ". */
    struct t_Route
    {
        const char* method;
        const char* path;
        bool writes;
        bool isQuick;
        t_Handler handler;
        const char* summary;
        const char* parameters; ///< of the query, as names of the document's parameters
        const char* body;       ///< name of its schema; null where there is none
        const char* answer;     ///< name of its schema
    };
    static std::span<const t_Route> Routes();
    static const t_Route* Find(const t_JsonRequest& request, bool& isPath);
    static void DescribeRoute(CJsonWriter& json, const t_Route& route);

    t_JsonAnswer GetDescription(const t_Call& call) const;
    t_JsonAnswer GetNode(const t_Call& call) const;
    t_JsonAnswer GetStanding(const t_Call& call) const;
    t_JsonAnswer GetFiles(const t_Call& call) const;
    t_JsonAnswer GetHistory(const t_Call& call) const;
    t_JsonAnswer GetCouplings(const t_Call& call) const;
    t_JsonAnswer GetReasons(const t_Call& call) const;
    t_JsonAnswer GetChanges(const t_Call& call) const;
    t_JsonAnswer Write(const t_Call& call) const;
    t_JsonAnswer Try(const t_Call& call) const;
    t_JsonAnswer Run(const t_Call& call) const;
    t_JsonAnswer ChangeItems(const t_Call& call) const;
    t_JsonAnswer Undo(const t_Call& call) const;
    t_JsonAnswer Redo(const t_Call& call) const;
    t_JsonAnswer Preset(const t_Call& call) const;
    t_JsonAnswer Save(const t_Call& call) const;
    t_JsonAnswer Recall(const t_Call& call) const;
    t_JsonAnswer GetSettings(const t_Call& call) const;
    t_JsonAnswer PutSettings(const t_Call& call) const;

    std::shared_ptr<IDbGroup> Top() const { return m_root->GetDbObject(); }
    /** The settings file that a request names; empty, and why, when it names none such. */
    QString FileOf(const t_Call& call, QString& error) const;

    const std::shared_ptr<IKWFunctionRootBase> m_root;
    const t_JsonOptions m_options;
    mutable CTurns m_trials; ///< there is one copy at a time
};
