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
    /** Whether one of the curve's actions was asked for and is not carried out yet. Never blocks.
     */
    bool IsAsked() const { return AskedFor() != m_done; }
    /** Carries them out: stores the source from the record that is shown, loads or saves. Without
        the tree's lock; failures are reported. */
    void CarryOut(const CKWRecord& shown);

private:
    /** Runs of each action. */
    struct t_Runs
    {
        UINT64 update;
        UINT64 load;
        UINT64 save;
        bool operator==(const t_Runs&) const = default;
    };
    t_Runs AskedFor() const;
    KW_ACCEPTANCE Update(const CKWRecord& shown);
    KW_ACCEPTANCE Load();
    KW_ACCEPTANCE Save() const;
    CKWRecord Computed(const CKWRecord& shown);
    void DeliverAttributes(const CKWRecord& curve, KW_ZEL_CHANNEL source);

    CDbPgRoot& m_root;
    const std::shared_ptr<IKWFunctionZEL> m_handle;
    mutable std::mutex m_mutex;
    CKWRecord m_curve;
    t_Runs m_done; ///< carried out
};
} // namespace NSamples
