// SPDX-License-Identifier: MIT
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Properties/DbPropText.h"
#include "IKWFunctionZEL.h"
#include "KWEnumerationsOnOff.h"
#include "LockManager.h"
#include "Mathematics/MathematicsTree.h"
#include "Names/Mathematics.h"
#include "Names/ZEL.h"
#include "Samples/Results.h"

#include <optional>

IKWMathematicsCurve::~IKWMathematicsCurve() = default;

namespace
{
using namespace NNames;

/** Settings of one moment. */
struct t_Settings
{
    bool isOn = false;
    KW_MathSettings math;
    KW_MathScale shown; ///< scale and position of the tree
};

t_Settings ReadSettings(const CDbPgRoot& root)
{
    const auto group = root.Find(ZEL::Mathematics);
    const auto isOn = [&group](const auto& way) { return group.At(way)->Get() == eKW_ONOFF_ON; };
    t_Settings settings;
    settings.isOn = isOn(Mathematics::Enabled);
    settings.shown = {group.At(Mathematics::Scale)->Get(), group.At(Mathematics::Position)->Get()};
    KW_MathSettings& math = settings.math;
    math.usesExpression = isOn(Mathematics::UseExpression);
    math.type = group.At(Mathematics::Type)->Get();
    math.sourceA = group.At(Mathematics::SourceA)->Get();
    math.sourceB = group.At(Mathematics::SourceB)->Get();
    math.filterFrequency = group.At(Mathematics::FilterFrequency)->Get();
    math.integralStart = group.At(Mathematics::IntegralStart)->Get();
    math.expression = group.At(Mathematics::Expression)->Get();
    math.autoScale = isOn(Mathematics::AutoScale);
    math.scale = math.autoScale ? KW_MathScale{} : settings.shown;
    return settings;
}

/** Whether the curve lies on the screen, and would not with half of the scale. */
bool MayStay(const KW_MathScale& present, const KW_MathScale& found, const KW_MinMax& range)
{
    return range.minimum / present.scale + present.position >= -4.0 &&
           range.maximum / present.scale + present.position <= 4.0 &&
           found.scale > 0.5 * present.scale;
}

class CMathematicsCurve final : public IKWMathematicsCurve
{
public:
    CMathematicsCurve(std::shared_ptr<IDbGroup> node, CDbPgRoot& root, UINT32 records)
        : m_node(std::move(node)), m_root(root), m_mathematics(records), m_finds(FindsAsked())
    {
    }

    KW_ACCEPTANCE Compute(const CKWRecord& record, CKWRecord& curve,
                          const CKWRecord& reference) override;
    bool HasChanged() const override
    {
        long long seen = m_seen;
        return m_root.HasChanged(seen) || IsFindAsked();
    }
    void Deliver() override;

private:
    /** Runs of FindScale. */
    UINT64 FindsAsked() const
    {
        return m_root.At(ZEL::Mathematics / Mathematics::FindScale)->GetRunCount();
    }
    bool IsFindAsked() const { return FindsAsked() != m_finds; }
    void Follow();
    KW_ACCEPTANCE Configure(const KW_MathSettings& settings);

    const std::shared_ptr<IDbGroup> m_node; ///< keeps the tree
    CDbPgRoot& m_root;
    CKWMathematics m_mathematics;
    long long m_seen = -1; ///< change counter that the settings are of
    t_Settings m_settings;
    std::optional<KW_MathSettings> m_configured;      ///< that m_code is of
    KW_ACCEPTANCE m_code = eKW_ACC_NOTHING_TO_ACT_ON; ///< whether they can be computed
    UINT64 m_finds = 0;                               ///< runs of FindScale that are carried out
    std::optional<KW_MathScale> m_found;              ///< to be delivered
    bool m_isFindFound = false;                       ///< by FindScale
};

/** Never computes by settings of two moments. */
void CMathematicsCurve::Follow()
{
    long long now = m_seen;
    if (m_root.HasChanged(now))
    {
        const CLockGuard lock(eACCESS_READ);
        m_root.HasChanged(m_seen);
        m_settings = ReadSettings(m_root);
    }
}

KW_ACCEPTANCE CMathematicsCurve::Configure(const KW_MathSettings& settings)
{
    if (m_configured != settings)
    {
        KW_MathError error;
        m_code = m_mathematics.Configure(settings, error);
        m_configured = settings;
    }
    return m_code;
}

KW_ACCEPTANCE CMathematicsCurve::Compute(const CKWRecord& record, CKWRecord& curve,
                                         const CKWRecord& reference)
{
    Follow();
    if (!m_settings.isOn)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    const UINT64 finds = FindsAsked();
    KW_MathSettings settings = m_settings.math;
    settings.autoScale = settings.autoScale || finds != m_finds;
    settings.scale = settings.autoScale ? KW_MathScale{} : settings.scale;
    KW_ACCEPTANCE code = Configure(settings);
    code = KW_IsAccepted(code) ? m_mathematics.Compute(record, curve, reference) : code;
    if (!KW_IsAccepted(code) || !settings.autoScale)
    {
        return code;
    }
    const KW_TraceInfo trace = curve.GetTrace(0);
    const UINT32 hidden = std::min(trace.settlingPoints, trace.count - 1);
    KW_MinMax range;
    curve.GetColumns(0, hidden, trace.count - hidden, {&range, 1});
    const KW_MathScale found = m_mathematics.GetScale();
    // NaN of a curve without valid points is on no screen.
    if (range.minimum <= range.maximum &&
        (finds != m_finds || !MayStay(m_settings.shown, found, range)))
    {
        m_found = found;
    }
    m_isFindFound = m_isFindFound || finds != m_finds;
    m_finds = finds;
    return code;
}

void CMathematicsCurve::Deliver()
{
    if (!m_found)
    {
        m_isFindFound = false;
        return;
    }
    const CLockGuard lock;
    const auto group = m_root.Find(ZEL::Mathematics);
    if (m_isFindFound || group.At(Mathematics::AutoScale)->Get() == eKW_ONOFF_ON)
    {
        const CDbRootScope scope(&m_root, eWRITEKIND::Internal);
        NSamples::TellBounded(*group.At(Mathematics::Scale), m_found->scale);
        NSamples::TellBounded(*group.At(Mathematics::Position), m_found->position);
    }
    m_found.reset();
    m_isFindFound = false;
}
} // namespace

std::shared_ptr<IKWMathematicsCurve> KW_MakeMathematicsCurve(std::shared_ptr<IKWFunctionZEL> root,
                                                             UINT32 records)
{
    std::shared_ptr<IDbGroup> node = root != nullptr ? root->GetDbObject() : nullptr;
    auto* const top = dynamic_cast<CDbPgRoot*>(node.get());
    if (top == nullptr)
    {
        return nullptr;
    }
    return std::make_shared<CMathematicsCurve>(std::move(node), *top, records);
}
