// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/SharedStream.h"

namespace NStreams
{
class CStreamWriter final : public IKWStreamWriter
{
public:
    explicit CStreamWriter(t_SharedPtr shared);
    ~CStreamWriter() override;

    KW_ACCEPTANCE Configure(std::span<const KW_TraceLayout> traces, UINT32 depth,
                            UINT64 bytes) override;
    std::span<std::byte> Reserve(UINT32 trace) override;
    KW_ACCEPTANCE Advance(UINT32 trace, UINT32 points) override;
    KW_ACCEPTANCE Publish(const KW_RecordInfo& info, std::span<const KW_TraceInfo> traces,
                          bool keep) override;
    CKWRecord GetDraft(const KW_RecordInfo& info, std::span<const KW_TraceInfo> traces) override;
    void Discard() override;
    void Clear() override;
    void Wake() override;
    UINT64 GetDropped() const override;
    UINT64 GetLost() const override;

private:
    bool Begin();
    void Drop();
    KW_ACCEPTANCE Describe(const KW_RecordInfo& info, std::span<const KW_TraceInfo> traces);
    void AddFlags(std::span<const KW_TraceInfo> traces);

    const t_SharedPtr m_shared;
    CPool& m_pool;
    t_Slot* m_slot = nullptr; ///< of the record that is being filled
    bool m_isShown = false;   ///< it is published and grows
    bool m_isDropped = false; ///< a record began and found no room
    UINT32 m_refused = 0;     ///< its traces that were reserved since, a bit each
};
} // namespace NStreams
