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
    /** Runs that were accepted. Without the lock. */
    UINT64 GetRunCount() const { return static_cast<UINT64>(m_runs.Get()); }

    KW_NODE_KIND GetKind() const override { return eKW_NODE_FUNCTION; }
    std::shared_ptr<IKWAction> GetFIMPointer();
    std::shared_ptr<IDbAction> ShareAction();

protected:
    /** eKW_ACC_DETACHED, NO_WRITE_ACCESS or NOT_AVAILABLE. Under the lock. */
    KW_ACCEPTANCE CheckAccess() const;
    /** The part of Set that runs under the tree's lock; `event` is what an operation is sent. */
    KW_ACCEPTANCE Order(KW_OP_EVENT event);

private:
    /** The rows and the hook of the own group, then what follows the action elsewhere. */
    KW_ACCEPTANCE RunRules(CDbPgRoot& root);
    /** Tells whoever polls; only for what was accepted. */
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
    /** An executor that leaves fails what it was asked to do, so that no requester waits for it. */
    void AttachExecutor(bool attached);
    /** For the executor: what was asked last, once. Requests in between are answered with the last.
     */
    KW_OP_EVENT TakeEvent();
    /** Ends the requests that the executor has taken, not one that came since. */
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

    /** Of what the operation waits for, all but the handle. Taken inside the tree's lock or without
        it; nothing takes that lock inside. */
    mutable std::mutex m_mutex;
    std::condition_variable m_completed;
    std::chrono::milliseconds m_timeout{5000}; ///< from the request on; 1 ms to kMaxTimeoutMs
    KW_OP_EVENT m_event = eKW_OP_EVENT_NONE;
    KW_OP_RESULT m_result = eKW_OP_RESULT_NONE;
    UINT64 m_request = 0; ///< number of the latest one
    UINT64 m_taken = 0;   ///< request that the executor works on
    std::vector<t_Waiting*> m_waiting;
    bool m_hasExecutor = false;
    /** Guarded by the tree's lock; made on the first call. */
    std::unique_ptr<IKWOperation> m_operationFim;
};
