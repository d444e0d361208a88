// SPDX-License-Identifier: MIT
#include "Analysis/MaskExchange.h"

#include "Analysis/PgMaskBase.h"
#include "Analysis/PgMaskChannelSetup.h"
#include "Analysis/PgMaskSettingsBase.h"
#include "Analysis/PgaMaskChannelSetup.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "IKWFunctionMaskChannelSetup.h"
#include "KWErrorReport.h"
#include "LockManager.h"
#include "Masks/MaskFile.h"
#include "Masks/MaskSource.h"
#include "Masks/MaskTree.h"
#include "Names/Horizontal.h"
#include "Names/Mask.h"
#include "Names/MaskSettings.h"
#include "Names/ReferenceCurve.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"
#include "Rules/FileRules.h"

using namespace NNames;

namespace
{
constexpr double kScreenDivisions = 10.0;

CPgMaskChannelSetup& SelectedOf(const CPgMaskSettingsBase& settings)
{
    const auto& mask = static_cast<const CPgMaskBase&>(*settings.GetParent());
    return *mask.GetPgMaskChannelSetup()->ItemDirect(mask.GetPrSelectedChannel()->GetAsInt());
}

/** What a mask is made by, as one moment of the settings says. */
struct t_Making
{
    KW_ZEL_CHANNEL channel;
    KW_MaskFrame frame; ///< of the channel that the trace is of
    KW_MaskFrame shown; ///< of the channel that gets the mask
    double widthX;
    double widthY;
};

t_Making ReadMaking(const CPgMaskSettingsBase& settings)
{
    const CLockGuard lock(eACCESS_READ);
    const KW_ZEL_CHANNEL channel = settings.GetPrSource()->Get();
    const INT32 selected = SelectedOf(settings).GetPrChannel()->GetAsInt();
    return {channel, NMaskExchange::FrameOf(settings, channel),
            NMaskExchange::FrameOf(settings, static_cast<KW_ZEL_CHANNEL>(selected)),
            settings.GetPrWidthX()->Get(), settings.GetPrWidthY()->Get()};
}

void Tell(const QString& fileName, const std::vector<KW_LabelReport>& reports)
{
    for (const KW_LabelReport& report : reports)
    {
        _KW_ProcessErrorString(KW_FormatLabelReport(fileName, report), __LINE__,
                               "Analysis/MaskExchange", Q_FUNC_INFO, report.type);
    }
}
} // namespace

KW_MaskFrame NMaskExchange::FrameOf(const CDbPropertyGroup& group, KW_ZEL_CHANNEL channel)
{
    const auto time = group.Find(ZEL::Horizontal);
    KW_MaskFrame frame;
    frame.left = time.At(Horizontal::Left)->Get();
    frame.timeScale = time.At(Horizontal::Scale)->Get();
    if (const auto screen = NRules::ScreenOf(group, channel))
    {
        frame.unit = screen->unit;
        frame.middle = (screen->top + screen->bottom) / 2.0;
        frame.levelScale = screen->division;
    }
    if (channel == eKW_ZEL_CHANNEL_R1) // with a time base of its own
    {
        const auto reference = group.Find(ZEL::Vertical / Vertical::ReferenceCurve);
        frame.timeScale = reference.At(ReferenceCurve::TimeScale)->Get();
        frame.left =
            reference.At(ReferenceCurve::TimePosition)->Get() -
            time.At(Horizontal::ReferencePoint)->Get() / 100.0 * kScreenDivisions * frame.timeScale;
    }
    return frame;
}

void NMaskExchange::Connect(const CDbPropertyGroup& root,
                            const std::shared_ptr<IMaskSource>& source)
{
    CDbPropertyGroup* const settings =
        root.At(ZEL::Mask / Mask::MaskSettings / MaskSettings::WidthX)->GetParent();
    dynamic_cast<IMaskMaker&>(*settings).SetSource(source);
}

std::shared_ptr<const KW_Mask> NMaskExchange::MaskOf(const CDbPropertyGroup& root, INT32 channel)
{
    const auto& mask =
        static_cast<const CPgMaskBase&>(*root.At(ZEL::Mask / Mask::State)->GetParent());
    return mask.GetPgMaskChannelSetup()->ItemDirect(channel)->GetMask();
}

KW_ACCEPTANCE NMaskExchange::Put(CPgMaskChannelSetup& setup, const KW_Mask& mask,
                                 const QString& step)
{
    const CLockGuard lock;
    CDbPgRoot* const root = setup.GetDbRoot();
    if (root == nullptr)
    {
        return eKW_ACC_DETACHED;
    }
    if (!root->MayWrite())
    {
        return eKW_ACC_NO_WRITE_ACCESS;
    }
    if (setup.GetAvailability() != eAVAILABILITY_AVAILABLE)
    {
        return eKW_ACC_NOT_AVAILABLE;
    }
    CDbTransaction transaction(*root, step);
    KW_ACCEPTANCE code = eKW_ACC_OK;
    {
        const CDbRootScope scope(root, eWRITEKIND::Recall);
        code = setup.SetMask(mask);
    }
    if (KW_IsAccepted(code))
    {
        transaction.Commit();
    }
    return code;
}

KW_ACCEPTANCE NMaskExchange::Load(const CPgMaskSettingsBase& settings)
{
    const QString fileName = NRules::PathOf(*settings.GetPrFile());
    if (fileName.isEmpty())
    {
        return eKW_ACC_BAD_NAME;
    }
    KW_Mask mask;
    std::vector<KW_LabelReport> reports;
    KW_ACCEPTANCE code = KW_ReadMaskFile(fileName, mask, reports);
    if (KW_IsAccepted(code))
    {
        code = std::max(code, Put(SelectedOf(settings), mask, QStringLiteral("Load mask")));
    }
    Tell(fileName, reports);
    return code;
}

KW_ACCEPTANCE NMaskExchange::Save(const CPgMaskSettingsBase& settings)
{
    const QString fileName = NRules::PathOf(*settings.GetPrFile());
    if (fileName.isEmpty())
    {
        return eKW_ACC_BAD_NAME;
    }
    std::shared_ptr<const KW_Mask> mask;
    {
        const CLockGuard lock(eACCESS_READ);
        mask = SelectedOf(settings).GetMask();
    }
    if (mask->IsEmpty())
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    NRules::MakeFolderOf(fileName);
    std::vector<KW_LabelReport> reports;
    const KW_ACCEPTANCE code = KW_WriteMaskFile(fileName, *mask, reports);
    Tell(fileName, reports);
    return code;
}

KW_ACCEPTANCE NMaskExchange::Create(const CPgMaskSettingsBase& settings, IMaskSource* source)
{
    const t_Making making = ReadMaking(settings);
    UINT32 trace = 0;
    const CKWRecord record =
        source != nullptr ? source->GetShown(making.channel, trace) : CKWRecord();
    if (!record)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    KW_Mask mask;
    const KW_ACCEPTANCE code =
        KW_MakeMask(record, trace, making.frame, making.widthX, making.widthY, mask);
    mask.frame = making.shown; // at the same place of the screen, whosever trace it was
    return KW_IsAccepted(code) ? Put(SelectedOf(settings), mask, QStringLiteral("Create mask"))
                               : code;
}

KW_ACCEPTANCE KW_PutMask(IKWFunctionMaskChannelSetup& setup, const KW_Mask& mask)
{
    const std::shared_ptr<IDbGroup> node = setup.GetDbObject();
    return NMaskExchange::Put(dynamic_cast<CPgMaskChannelSetup&>(*node), mask,
                              QStringLiteral("Change mask"));
}

KW_Mask KW_GetMask(const IKWFunctionMaskChannelSetup& setup)
{
    const std::shared_ptr<IDbGroup> node = setup.GetDbObject();
    const CLockGuard lock(eACCESS_READ);
    return *dynamic_cast<const CPgMaskChannelSetup&>(*node).GetMask();
}
