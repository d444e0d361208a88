// SPDX-License-Identifier: MIT
#include "DbFunction.h"

#include "LockManager.h"

#include <algorithm>

namespace
{
class CFIMAction final : public IKWAction
{
public:
    explicit CFIMAction(CDbFunction& node) : m_node(node) {}
    KW_ACCEPTANCE Set() override { return m_node.Set(); }
    KW_ACCEPTANCE ExternalApply() override { return m_node.ExternalApply(); }
    UINT64 GetRunCount() const override { return m_node.GetRunCount(); }
    std::shared_ptr<IDbAction> GetDbObject() const override { return m_node.ShareAction(); }

private:
    CDbFunction& m_node;
};

class CFIMOperation final : public IKWOperation
{
public:
    explicit CFIMOperation(CDbOperation& node) : m_node(node) {}
    KW_ACCEPTANCE Set() override { return m_node.Set(); }
    KW_ACCEPTANCE ExternalSetEventAndWaitForCompletion(KW_OP_EVENT event,
                                                       KW_OP_RESULT expected) override
    {
        return m_node.ExternalSetEventAndWaitForCompletion(event, expected);
    }
    KW_ACCEPTANCE SetTimeout(UINT32 ms) override { return m_node.SetTimeout(ms); }
    void AttachExecutor(bool attached) override { m_node.AttachExecutor(attached); }
    KW_OP_EVENT TakeEvent() override { return m_node.TakeEvent(); }
    void Complete(KW_OP_RESULT result) override { m_node.Complete(result); }
    KW_OP_RESULT GetResult() const override { return m_node.GetResult(); }
    std::shared_ptr<IDbAction> GetDbObject() const override { return m_node.ShareAction(); }

private:
    CDbOperation& m_node;
};
} // namespace

CDbFunction::~CDbFunction() = default;

KW_ACCEPTANCE CDbFunction::Set()
{
    const auto code = RunOnFile();
    return code ? *code : Order(eKW_OP_EVENT_START);
}

std::shared_ptr<IKWAction> CDbFunction::GetFIMPointer()
{
    return {shared_from_this(), m_fim.Get([this] { return std::make_unique<CFIMAction>(*this); })};
}

std::shared_ptr<IDbAction> CDbFunction::ShareAction()
{
    return {shared_from_this(), this};
}

CDbOperation::~CDbOperation() = default;

KW_ACCEPTANCE CDbOperation::Set()
{
    return ExternalSetEventAndWaitForCompletion(eKW_OP_EVENT_START, eKW_OP_RESULT_SUCCESS);
}

KW_ACCEPTANCE CDbOperation::ExternalSetEventAndWaitForCompletion(KW_OP_EVENT event,
                                                                 KW_OP_RESULT expected)
{
    const KW_ACCEPTANCE code = Order(event);
    return code > eKW_ACC_WARNING ? code : SendAndWait(event, expected);
}

KW_ACCEPTANCE CDbOperation::SendAndWait(KW_OP_EVENT event, KW_OP_RESULT expected)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    t_Waiting self{m_request + 1, eKW_OP_RESULT_NONE};
    m_waiting.push_back(&self);
    ++m_request;
    m_event = event;
    m_result = eKW_OP_RESULT_NONE;
    if (!m_hasExecutor)
    {
        m_event = eKW_OP_EVENT_NONE;
        Finish(self.request,
               event == eKW_OP_EVENT_ABORT ? eKW_OP_RESULT_ABORTED : eKW_OP_RESULT_SUCCESS);
    }
    m_completed.wait_for(lock, m_timeout, [&self] { return self.result != eKW_OP_RESULT_NONE; });
    m_waiting.erase(std::find(m_waiting.begin(), m_waiting.end(), &self));
    if (self.result == eKW_OP_RESULT_NONE)
    {
        return eKW_ACC_TIMEOUT;
    }
    return self.result == expected ? eKW_ACC_OK : eKW_ACC_OPERATION_FAILED;
}

void CDbOperation::Finish(UINT64 request, KW_OP_RESULT result)
{
    // While a later request runs, the end of an earlier one is not the operation's.
    m_result = request == m_request ? result : m_result;
    for (t_Waiting* const waiting : m_waiting)
    {
        if (waiting->request <= request && waiting->result == eKW_OP_RESULT_NONE)
        {
            waiting->result = result;
        }
    }
    m_completed.notify_all();
}

KW_ACCEPTANCE CDbOperation::SetTimeout(UINT32 milliseconds)
{
    if (milliseconds < 1)
    {
        return eKW_ACC_BELOW_MINIMUM;
    }
    if (milliseconds > kMaxTimeoutMs)
    {
        return eKW_ACC_ABOVE_MAXIMUM;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_timeout = std::chrono::milliseconds(milliseconds);
    return eKW_ACC_OK;
}

void CDbOperation::AttachExecutor(bool attached)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_hasExecutor = attached;
    if (!attached && m_request > 0 && m_result == eKW_OP_RESULT_NONE)
    {
        // Nobody will complete what was requested: its requester must not wait out the timeout,
        // and the next executor must not start what its requester knows as failed.
        m_event = eKW_OP_EVENT_NONE;
        Finish(m_request, eKW_OP_RESULT_FAILURE);
    }
}

KW_OP_EVENT CDbOperation::TakeEvent()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_taken = m_request;
    return std::exchange(m_event, eKW_OP_EVENT_NONE);
}

void CDbOperation::Complete(KW_OP_RESULT result)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    // An end that comes after the timeout must not pass for that of a later request.
    Finish(m_taken, result);
}

KW_OP_RESULT CDbOperation::GetResult() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_result;
}

std::shared_ptr<IKWOperation> CDbOperation::GetFIMPointer()
{
    const CLockGuard lock;
    if (!m_operationFim)
    {
        m_operationFim = std::make_unique<CFIMOperation>(*this);
    }
    return {shared_from_this(), m_operationFim.get()};
}
