// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusResultRules.h"
#include "Buses/LabelRules.h"
#include "Buses/PgLabelListSettings.h"
#include "Names/LabelListSettings.h"
#include "Names/SerialBus.h"
#include "Names/ZEL.h"

namespace NRules
{
/**
 * Base of the decoded frames of a protocol with a label list, `labels` by its name. `sources` are
 * the results that say which frame it is and what is in it: whenever one is delivered, the frame
 * has its label and signals. That is work for one frame; the list is looked up as it was compiled
 * (CPgLabelListSettings::Find).
 */
template <typename TBase, const auto& labels, const auto&... sources>
class CLabelledFrame : public TBase
{
public:
    t_Couplings Rules() const override
    {
        static constexpr auto rows = NNames::Table<typename TBase::Names>(
            NNames::Fresh<&CLabelledFrame::NameFrame>,
            NNames::Delivered(sources...) >> NNames::Do<&CLabelledFrame::NameFrame>);
        return rows;
    }
    void NameFrame()
    {
        NRules::NameFrame(*this->At(labels), Key(), *this->m_pData,
                          {*this->m_pLabel, *this->m_pSignals});
    }

protected:
    /** None where the frame has nothing that a label could belong to. */
    virtual std::optional<t_FrameKey> Key() const = 0;
};

/** Base of the results of such a protocol: beside what all results do, a list that changed names
    the frames anew, all once. */
template <typename TBase, typename TFrame, const auto& labels, const auto& frames>
class CLabelledResults : public TBase
{
public:
    t_Couplings Rules() const override
    {
        static constexpr auto rows = NNames::Table<typename TBase::Names>(
            NNames::Items(frames) >> NNames::Do<&CLabelledResults::FollowFrames>,
            NNames::Changed(labels / NNames::LabelListSettings::Revision) >>
                NNames::Settle<&CLabelledResults::NameFrames>);
        return rows;
    }

private:
    void FollowFrames() { NRules::FollowFrames(*this); }
    void NameFrames()
    {
        this->Groups()[frames.path.steps[0]]->VisitItems(
            [](CDbPropertyGroup& frame) { static_cast<TFrame&>(frame).NameFrame(); });
    }
};
} // namespace NRules
