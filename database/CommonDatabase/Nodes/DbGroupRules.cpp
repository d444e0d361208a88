// SPDX-License-Identifier: MIT
#include "DbPgRoot.h"
#include "DbWays.h"

#include <algorithm>

/** Keeps the stack of running rows while somebody watches. */
class CRunningRow
{
public:
    CRunningRow(const CDbPropertyGroup& group, const t_Row& row, const t_Step& step)
        : m_running{&group, &row, &step, CRowTrace::s_running}
    {
        CRowTrace::s_running = &m_running;
    }
    ~CRunningRow() { CRowTrace::s_running = m_running.below; }
    CRunningRow(const CRunningRow&) = delete;
    CRunningRow& operator=(const CRunningRow&) = delete;

private:
    t_RunningRow m_running;
};

KW_ACCEPTANCE CDbPropertyGroup::RunStep(const t_Row& row, const t_Step& step,
                                        const CDbPropBase* written)
{
    if (CRowTrace::s_trace == nullptr)
    {
        return step.run(*this, written);
    }
    const CRunningRow running(*this, row, step);
    return step.run(*this, written);
}

KW_ACCEPTANCE CDbPropertyGroup::RunRow(const t_Row& row, const CDbPropBase* written)
{
    KW_ACCEPTANCE code = eKW_ACC_OK;
    for (UINT8 i = 0; i < row.stepCount; ++i)
    {
        code = std::max(code, RunStep(row, row.steps[i], written));
        if (row.cause == eCAUSE::On && written == nullptr && code > eKW_ACC_WARNING)
        {
            break;
        }
    }
    return code;
}

KW_ACCEPTANCE CDbPropertyGroup::RunRows(UINT8 causes, const CDbObject& source,
                                        const CDbPropBase* written)
{
    const NNames::eNODE kind = written != nullptr ? NNames::eNODE::Property : NNames::eNODE::Action;
    const t_Couplings rules = Rules();
    KW_ACCEPTANCE code = eKW_ACC_OK;
    for (const t_Row& row : rules)
    {
        if (!HasCause(causes, row.cause) ||
            !(row.cause == eCAUSE::OnAny || rules.StartsAt(row, kind, source.GetPlace())))
        {
            continue;
        }
        CRowTrace::NoteStart(*this, row, &source);
        code = std::max(code, RunRow(row, written));
        if (written == nullptr && code > eKW_ACC_WARNING)
        {
            break;
        }
    }
    return code;
}

void CDbPropertyGroup::RunItemRows(const CDbObject& container)
{
    CRowTrace::NoteChange(container);
    const t_Couplings rules = HasRows(static_cast<UINT8>(eCAUSE::Items)) ? Rules() : t_Couplings{};
    for (const t_Row& row : rules)
    {
        if (row.cause == eCAUSE::Items &&
            rules.StartsAt(row, NNames::eNODE::Group, container.GetPlace()))
        {
            CRowTrace::NoteStart(*this, row, &container);
            RunRow(row, nullptr);
        }
    }
}

void CDbPropertyGroup::RunFreshRows()
{
    for (const t_Row& row : Rules())
    {
        if (row.cause == eCAUSE::Fresh)
        {
            CRowTrace::NoteStart(*this, row, nullptr);
            RunRow(row, nullptr);
        }
    }
}

namespace
{
/** Whether a derived row before this one has the step, too. */
bool HasRun(const t_Couplings& rules, const t_Row& row, const t_Step& step)
{
    for (const t_Row* before = rules.begin(); before != &row; ++before)
    {
        for (UINT8 i = 0; before->again == eAGAIN::WithGroup && i < before->stepCount; ++i)
        {
            if (before->steps[i].run == step.run)
            {
                return true;
            }
        }
    }
    return false;
}
} // namespace

/** What several rows derive is derived once. */
void CDbPropertyGroup::UpdateGroup()
{
    const t_Couplings rules = m_causes != 0 ? Rules() : t_Couplings{};
    for (const t_Row& row : rules)
    {
        for (UINT8 i = 0; row.again == eAGAIN::WithGroup && i < row.stepCount; ++i)
        {
            if (!HasRun(rules, row, row.steps[i]))
            {
                CRowTrace::NoteStart(*this, row, nullptr);
                RunStep(row, row.steps[i], nullptr);
            }
        }
    }
}

void CDbPropertyGroup::EnterTree(CDbPgRoot& root)
{
    const t_Couplings rules = Rules();
    m_causes = rules.Causes();
    if (rules.rowCount > 0)
    {
        root.GetDependencies().Enter(*this, rules);
    }
}

void CDbPropertyGroup::LeaveTree()
{
    if (CDbPgRoot* const root = GetDbRoot())
    {
        root->GetDependencies().LeaveItem(*this);
        VisitChildrenFirst([](CDbPropertyGroup& group) { group.m_causes = 0; });
    }
}

CDbObject* CDbPropertyGroup::Resolve(const NNames::t_Path& path) const
{
    const CDbPropertyGroup* const root = GetDbRoot();
    return root != nullptr ? NWays::Resolve(*root, path) : nullptr;
}
