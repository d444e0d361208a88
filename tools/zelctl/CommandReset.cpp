// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "NodeText.h"
#include "PropertyWrite.h"
#include "Trace.h"
#include "TreeWalk.h"

#include <QJsonArray>
#include <vector>

namespace
{
constexpr char kResetFooter[] =
    "A property gets its declared default. Of a group, everything at and below it does that can\n"
    "be set now; items of arrays and maps stay. All of it is one step for undo. What has another\n"
    "value afterwards, because it can not be set or because a rule moved it, is listed.\n"
    "\n"
    "Examples:\n"
    "  zelctl --load my.xml --save my.xml reset Spectrum\n"
    "  zelctl --load my.xml reset Horizontal/Scale --trace";

constexpr char kStepFooter[] =
    "Steps as the knob of the instrument does; a negative number of steps goes down.\n"
    "\n"
    "Examples:\n"
    "  zelctl step Horizontal/Scale\n"
    "  zelctl step Vertical/Channel[0]/Scale -3 --trace";

using t_Properties = std::vector<std::shared_ptr<IDbProperty>>;

/** Settings at and below a group that have another value than their default. */
t_Properties GetMoved(IDbGroup& group)
{
    t_Properties moved;
    WalkTree(group, 0,
             [&moved](const std::shared_ptr<IDbObject>& node, int)
             {
                 const auto property = std::dynamic_pointer_cast<IDbProperty>(node);
                 if (property && property->GetObjectType() != eOBJECTTYPE_RESULT &&
                     !IsAtDefault(*property))
                 {
                     moved.push_back(property);
                 }
             });
    return moved;
}

/** What one pass over a group's settings has done. */
struct t_Pass
{
    int taken = 0;
    KW_ACCEPTANCE refusal = eKW_ACC_OK; ///< the first one
};

t_Pass ResetOnce(const t_Properties& properties)
{
    t_Pass pass;
    for (const auto& property : properties)
    {
        const KW_ACCEPTANCE code = property->SetToDefault();
        // What only rules write, as what functions remember, is shown as it stands.
        const bool isNoRefusal = KW_IsAccepted(code) || code == eKW_ACC_READ_ONLY;
        pass.taken += KW_IsAccepted(code) ? 1 : 0;
        pass.refusal = isNoRefusal || pass.refusal != eKW_ACC_OK ? pass.refusal : code;
    }
    return pass;
}

/** Defaults allow each other: a limit that still holds one back may be gone in the next pass. */
KW_ACCEPTANCE ResetAll(IDbGroup& group)
{
    constexpr int kMostPasses = 4;
    t_Properties moved = GetMoved(group);
    t_Pass first;
    for (int i = 0; i < kMostPasses && !moved.empty(); ++i)
    {
        const t_Pass pass = ResetOnce(moved);
        first = i == 0 ? pass : first;
        const t_Properties left = GetMoved(group);
        if (left == moved)
        {
            break;
        }
        moved = left;
    }
    if (first.taken == 0 && first.refusal != eKW_ACC_OK)
    {
        return first.refusal;
    }
    return moved.empty() ? eKW_ACC_OK : eKW_ACC_WARNING;
}

/** One step for undo, unless one is open already. */
KW_ACCEPTANCE ResetInOneStep(CSession& session, IDbGroup& group, const QString& request)
{
    if (session.IsInTransaction())
    {
        return ResetAll(group);
    }
    session.Begin(request);
    try
    {
        const KW_ACCEPTANCE code = ResetAll(group);
        const KW_ACCEPTANCE ended = session.End(KW_IsAccepted(code));
        return KW_IsAccepted(ended) ? code : ended;
    }
    catch (const CFailure&)
    {
        if (session.IsInTransaction()) // a living tree was lost
        {
            session.End(false);
        }
        throw;
    }
}

t_Answer ResetGroup(CSession& session, IDbGroup& group, bool trace)
{
    const QString request = QStringLiteral("reset ") +
                            (group.GetPath().isEmpty() ? QStringLiteral(".") : group.GetPath());
    const std::size_t count = GetMoved(group).size();
    const CTrace tracing(session, trace);
    const KW_ACCEPTANCE code = ResetInOneStep(session, group, request);
    Require(code, request);
    CReply reply(session, QStringLiteral("reset"));
    const QString what =
        count == 1 ? QStringLiteral("1 setting") : QStringLiteral("%1 settings").arg(count);
    reply.Line(request + QStringLiteral(": ") + what + DescribeWarning(code));
    QJsonArray left;
    for (const auto& property : GetMoved(group))
    {
        left.append(property->GetPath());
        reply.Line(QStringLiteral("  still %1 = %2")
                       .arg(property->GetPath(),
                            ShowValue(GetShownValue(*property), session.GetStyle().exact)));
    }
    reply.Field("path", group.GetPath()).Field("left", left);
    tracing.AddTo(reply);
    return reply.Send(code);
}

struct t_ResetOptions
{
    std::string path;
    bool trace = false;

    void Declare(CLI::App& command)
    {
        command.add_option("path", path, "Property or group")->required();
        command.add_flag("-t,--trace", trace, "Show everything that changed, limits included");
    }

    t_Answer Run(CSession& session) const
    {
        const auto node = session.Find(ToText(path));
        if (auto* const group = dynamic_cast<IDbGroup*>(node.get()))
        {
            return ResetGroup(session, *group, trace);
        }
        const auto property = session.FindProperty(ToText(path));
        t_ShownValue asked = GetShownValue(*property);
        asked.text = property->GetDefaultText();
        return WriteProperty(session, "reset", *property, {asked, {}, trace},
                             [&property] { return property->SetToDefault(); });
    }
};

struct t_StepOptions
{
    std::string path;
    INT32 steps = 1;
    bool trace = false;

    void Declare(CLI::App& command)
    {
        command.add_option("path", path, "Property to step")->required();
        command.add_option("steps", steps, "Steps up, or down when negative; 1 when left out");
        command.add_flag("-t,--trace", trace, "Show everything else that changed, limits included");
    }

    t_Answer Run(CSession& session) const
    {
        const auto property = session.FindProperty(ToText(path));
        const QString request = QStringLiteral("step %1 %2").arg(property->GetPath()).arg(steps);
        return WriteProperty(session, "step", *property, {{}, request, trace},
                             [&] { return property->IncDec(steps); });
    }
};
} // namespace

void AddResetCommands(CLI::App& app, t_Run& run)
{
    AddCommand<t_ResetOptions>(app, run, "reset", "Set a property or group to its defaults",
                               kResetFooter);
    AddCommand<t_StepOptions>(app, run, "step", "Step a setting up or down", kStepFooter);
}
