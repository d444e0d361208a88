// SPDX-License-Identifier: MIT
#include "JsonChanges.h"
#include "JsonService.h"
#include "JsonWaveWish.h"
#include "ServiceTargets.h"

#include <QJsonDocument>

namespace
{
/** Requests of a line each: method, target, body. The last one is answered as every other. */
void TryRequest(const CJsonService& service, const QByteArray& line)
{
    const QByteArray method = line.left(line.indexOf(' '));
    const QByteArray rest = line.mid(method.size() + 1);
    const QByteArray target = rest.left(rest.indexOf(' '));
    const t_JsonAnswer answer = service.Answer({method, target, rest.mid(target.size() + 1)});
    KW_Require(answer.status >= 200 && answer.status < 600, "no status", line);
    KW_Require(QJsonDocument::fromJson(answer.body).isObject(), "an answer that is no object",
               line);
    KW_Require(answer.body.size() < 1000000 + 100 * line.size(), "an answer without end", line);
}
} // namespace

void KW_TryJsonRequests(const QByteArray& bytes)
{
    constexpr int kMost = 4096; // more find no more, and cost the time of other tries
    const QByteArray sent = bytes.left(kMost);
    const auto root = KW_MakeServedTree();
    const CJsonService service(root, {});
    CJsonChanges changes(root, 5000);
    t_Subscription subscription;
    changes.Look();
    for (const QByteArray& line : sent.split('\n'))
    {
        TryRequest(service, line);
        const QByteArray reply = changes.Subscribe(subscription, line, 4);
        KW_Require(QJsonDocument::fromJson(reply).isObject(), "a reply that is no object", line);
        QString wrong;
        KW_Require(NJson::ReadWaveWish(line, 4096, wrong).has_value() == wrong.isEmpty(),
                   "a wish without an answer", line);
        changes.Look();
        const auto message = changes.Take(subscription);
        KW_Require(!message || QJsonDocument::fromJson(*message).isObject(),
                   "a message that is no object", line);
        KW_Require(changes.Take(subscription) == nullptr, "a message that comes twice", line);
    }
    root->StartTransaction(QString());
    KW_Require(root->EndTransaction(true) <= eKW_ACC_WARNING, "a bracket stays open", sent);
    KW_Require(root->EndTransaction(true) == eKW_ACC_NOTHING_TO_DO, "a bracket stays open", sent);
}
