// SPDX-License-Identifier: MIT
#pragma once

#include "DbChangeCounter.h"
#include "DbObject.h"
#include "IKWProperties.h"
#include "LazyHandle.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <vector>

/** An action of a group that runs at once: the group's OnFunction says what it does. */
class CDbFunction : public CDbNode<IDbAction>
{
public:
    ~CDbFunction() override;

    /** Runs the action as a client: access check, OnFunction (OnFileFunction for what reads or
        writes files), and when that accepts, the count; one step for undo, which bears the action's
        path. A refused action leaves no trace: whoever carries actions out sees no order. */
    virtual KW_ACCEPTANCE Set();
    /** The same, for callers outside the owning group. */
    KW_ACCEPTANCE ExternalApply() { return Set(); }
    KW_ACCEPTANCE Execute() override { return Set(); }
    UINT64 GetRunCount() const { return static_cast<UINT64>(m_runs.Get()); }

    KW_NODE_KIND GetKind() const override { return eKW_NODE_FUNCTION; }
    std::shared_ptr<IKWAction> GetFIMPointer();
    std::shared_ptr<IDbAction> ShareAction();

protected:
    KW_ACCEPTANCE CheckAccess() const;
    /** The part of Set that runs under the tree's lock; `event` is what an operation is sent. */
    KW_ACCEPTANCE Order(KW_OP_EVENT event);

private:
    KW_ACCEPTANCE RunRules(CDbPgRoot& root);
    void CountRun();
    /** Where the group carries the action out on a file; without the lock. */
    std::optional<KW_ACCEPTANCE> RunOnFile();

    CDbChangeCounter m_runs;
    CLazyHandle<IKWAction> m_fim;
};

/**
 * An action that another layer carries out: events go to an executor, which reports the end.
 * Without an executor a started operation succeeds at once. Before an executor sees the request to
 * start, the group's OnFunction runs and may refuse it. The operation has its own lock, so
 * that an executor can complete it while the requester waits inside a bracket of the tree.
 */
class CDbOperation : public CDbFunction
{
public:
    static constexpr UINT32 kMaxTimeoutMs = 600000;

    ~CDbOperation() override;

    KW_ACCEPTANCE Set() override;
    KW_ACCEPTANCE ExternalSetEventAndWaitForCompletion(KW_OP_EVENT event, KW_OP_RESULT expected);
    KW_ACCEPTANCE SetTimeout(UINT32 milliseconds);
    void AttachExecutor(bool attached);
    KW_OP_EVENT TakeEvent();
    void Complete(KW_OP_RESULT result);
    KW_OP_RESULT GetResult() const;

    KW_NODE_KIND GetKind() const override { return eKW_NODE_OPERATION; }
    std::shared_ptr<IKWOperation> GetFIMPointer();

private:
    /** A requester that waits. Each has a result of its own, so that the request of another does
        not take it away. */
    struct t_Waiting
    {
        UINT64 request;
        KW_OP_RESULT result;
    };

    KW_ACCEPTANCE SendAndWait(KW_OP_EVENT event, KW_OP_RESULT expected);
    /** Ends all requests up to `request` that have not ended; needs the mutex. */
    void Finish(UINT64 request, KW_OP_RESULT result);

    mutable std::mutex m_mutex;
    std::condition_variable m_completed;
    std::chrono::milliseconds m_timeout{5000};
    KW_OP_EVENT m_event = eKW_OP_EVENT_NONE;
    KW_OP_RESULT m_result = eKW_OP_RESULT_NONE;
    UINT64 m_request = 0;
    UINT64 m_taken = 0; ///< request that the executor works on
    std::vector<t_Waiting*> m_waiting;
    bool m_hasExecutor = false;
    std::unique_ptr<IKWOperation> m_operationFim;
};
