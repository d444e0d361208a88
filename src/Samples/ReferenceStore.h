// SPDX-License-Identifier: MIT
#pragma once

#include "Mathematics/MathematicsTree.h"

#include <mutex>

class CDbPgRoot;

namespace NSamples
{
/**
 * The reference curve: its samples, which the tree has no room for. The tree says whether there is
 * one: samples stay beside a curve that was cleared, as undo brings its attributes back.
 */
class CReferenceStore
{
public:
    CReferenceStore(CDbPgRoot& root, std::shared_ptr<IKWFunctionZEL> handle);

    /** Any thread; waits for a copy of a value at most. */
    CKWRecord Get() const;
    /** As IKWAcquisition::SetReference. Takes the tree's lock. */
    KW_ACCEPTANCE Set(const CKWRecord& record, UINT32 trace);
    /** Stores the source from the record that is shown, where Update was asked for. */
    void Update(const CKWRecord& shown);
    /** Whether it was. Never blocks. */
    bool IsAsked() const;

private:
    CKWRecord Computed(const CKWRecord& shown);
    void DeliverAttributes(const CKWRecord& curve, KW_ZEL_CHANNEL source);

    CDbPgRoot& m_root;
    const std::shared_ptr<IKWFunctionZEL> m_handle;
    mutable std::mutex m_mutex;
    CKWRecord m_curve;
    UINT64 m_updates = 0; ///< runs of Update that are carried out
};
} // namespace NSamples
