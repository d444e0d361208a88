// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/SharedStream.h"

namespace NStreams
{
class CStreamReader final : public IKWStreamReader
{
public:
    CStreamReader(t_SharedPtr shared, t_Waiter& waiter);
    ~CStreamReader() override;

    bool HasNew() override;
    CKWRecord GetLatest() override;
    CKWRecord GetNext() override;
    CKWRecord GetHistory(INT32 trace) override;
    UINT32 GetAvailable() const override;
    UINT64 GetMissed() const override;
    bool Wait(INT32 limit) override;
    int Arm() override;

private:
    CKWRecord Fetched(t_Slot& slot, UINT64 sequence);
    void PassOver(UINT64 next);
    bool HasGrown(UINT64 last) const;

    const t_SharedPtr m_shared;
    CPool& m_pool;
    t_Waiter& m_waiter;
    UINT64 m_next;           ///< the publication to fetch next
    UINT64 m_last = 0;       ///< the publication that was fetched last; 0: none
    UINT32 m_progress = 0;   ///< that it had then
    UINT64 m_passedOver = 0; ///< publications
    const UINT64 m_droppedBefore;
};
} // namespace NStreams
