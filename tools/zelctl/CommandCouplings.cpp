// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "Couplings.h"

#include <QJsonArray>

namespace
{
constexpr char kCouplingsFooter[] =
    "Writes each setting to other values that are legal in the present state - one step up, one\n"
    "step down, the limits, every selectable value -, notes what else moves, and takes the write\n"
    "back. A setting that only such a write makes available is tried while it stands. Couplings\n"
    "that need another state still are seen when the command starts from that state: with --load,\n"
    "or in the shell.\n"
    "\n"
    "Examples:\n"
    "  zelctl couplings Horizontal            what the settings of the timebase move\n"
    "  zelctl couplings --json > map.json     the whole instrument\n"
    "  zelctl couplings Zoom --dot | dot -Tsvg > zoom.svg";

constexpr char kWhyFooter[] =
    "Shows a property with its limits, what it moves, and what moves it, each with one example\n"
    "that was observed as \"zelctl couplings\" does.\n"
    "\n"
    "Example:\n"
    "  zelctl why Horizontal/AcquisitionTime";

QString ShowTransition(const t_Coupling& coupling, bool exact)
{
    return ShowValue(coupling.from, exact) + QStringLiteral(" → ") + ShowValue(coupling.to, exact);
}

QJsonObject ToJson(const t_Coupling& coupling)
{
    return {{QStringLiteral("source"), coupling.source},
            {QStringLiteral("target"), coupling.target},
            {QStringLiteral("moved"), QJsonArray::fromStringList(coupling.moved)},
            {QStringLiteral("while"), QJsonArray::fromStringList(coupling.conditions)},
            {QStringLiteral("old"), ToJsonValue(coupling.from)},
            {QStringLiteral("new"), ToJsonValue(coupling.to)},
            {QStringLiteral("example"), ToJson(coupling.example)},
            {QStringLiteral("text"),
             QStringLiteral("%1; %2").arg(ShowTransition(coupling, false),
                                          ShowChange(coupling.example, false))}};
}

QString DescribeMoved(const t_Coupling& coupling)
{
    return coupling.moved.size() == 1
               ? QString()
               : QStringLiteral("  (%1)").arg(coupling.moved.join(QLatin1String(", ")));
}

QString DescribeConditions(const t_Coupling& coupling)
{
    return coupling.conditions.isEmpty()
               ? QString()
               : QStringLiteral("  while ") + coupling.conditions.join(QLatin1String(", "));
}

/** What became of the target, without its path. */
QString DescribeEffect(const t_Coupling& coupling, const QString& shown)
{
    QString effect = shown.mid(coupling.target.size());
    effect.remove(0, effect.startsWith(QLatin1Char(':')) ? 1 : 0);
    return effect.trimmed() + DescribeMoved(coupling) + DescribeConditions(coupling);
}

bool IsAtOrBelow(const QString& path, const QString& start)
{
    return start.isEmpty() || path == start || path.startsWith(start + QLatin1Char('/')) ||
           path.startsWith(start + QLatin1Char('['));
}

struct t_CouplingOptions
{
    std::string path;
    bool dot = false;

    void Declare(CLI::App& command)
    {
        command.add_option("path", path, "Setting or group; everything when left out");
        command.add_flag("--dot", dot, "Answer with a graph in the language of Graphviz");
    }

    t_Answer Run(CSession& session) const
    {
        const QString start = session.Find(ToText(path))->GetPath();
        const CCouplings all(session);
        std::vector<t_Coupling> chosen;
        QJsonArray json;
        for (const t_Coupling& coupling : all.Get())
        {
            if (IsAtOrBelow(coupling.source, start))
            {
                chosen.push_back(coupling);
                json.append(ToJson(coupling));
            }
        }
        CReply reply(session, QStringLiteral("couplings"));
        dot ? AddGraph(chosen, reply) : AddLines(chosen, session.GetStyle().exact, reply);
        if (start.isEmpty() && !dot)
        {
            reply.Line(QStringLiteral("%1 couplings; %2 of %3 settings took another value")
                           .arg(chosen.size())
                           .arg(all.GetMovable())
                           .arg(all.GetTried()));
        }
        return reply.Field("couplings", json).Send();
    }

private:
    static void AddGraph(const std::vector<t_Coupling>& couplings, CReply& reply)
    {
        reply.Line(QStringLiteral("digraph couplings {"))
            .Line(QStringLiteral("  rankdir=LR;"))
            .Line(QStringLiteral("  node [shape=box];"));
        for (const t_Coupling& coupling : couplings)
        {
            reply.Line(QStringLiteral("  \"%1\" -> \"%2\";").arg(coupling.source, coupling.target));
        }
        reply.Line(QStringLiteral("}"));
    }

    static void AddLines(const std::vector<t_Coupling>& couplings, bool exact, CReply& reply)
    {
        QString source;
        for (const t_Coupling& coupling : couplings)
        {
            if (coupling.source != source)
            {
                source = coupling.source;
                reply.Line(source + QStringLiteral(": ") + ShowTransition(coupling, exact) +
                           DescribeConditions(coupling));
            }
            reply.Line(QStringLiteral("  ") + ShowChange(coupling.example, exact) +
                       DescribeMoved(coupling));
        }
        if (couplings.empty())
        {
            reply.Line(QStringLiteral("no coupling, as far as the present state shows"));
        }
    }
};

struct t_WhyOptions
{
    std::string path;

    void Declare(CLI::App& command)
    {
        command.add_option("path", path, "Property to explain")->required();
    }

    t_Answer Run(CSession& session) const;
};

t_Answer t_WhyOptions::Run(CSession& session) const
{
    const bool exact = session.GetStyle().exact;
    const auto property = session.FindProperty(ToText(path));
    const CCouplings couplings(session);
    QStringList moves{QStringLiteral("  moves")};
    QStringList movedBy{QStringLiteral("  moved by")};
    QJsonArray moving;
    QJsonArray moved;
    for (const t_Coupling& coupling : couplings.Get())
    {
        const QString shown = ShowChange(coupling.example, exact);
        if (coupling.source == property->GetPath())
        {
            moves.append(QStringLiteral("    %1  at %2")
                             .arg(shown + DescribeMoved(coupling),
                                  ShowTransition(coupling, exact) + DescribeConditions(coupling)));
            moving.append(ToJson(coupling));
        }
        if (coupling.target == property->GetPath())
        {
            movedBy.append(QStringLiteral("    %1: %2  gives %3")
                               .arg(coupling.source, ShowTransition(coupling, exact),
                                    DescribeEffect(coupling, shown)));
            moved.append(ToJson(coupling));
        }
    }
    for (QStringList* const list : {&moves, &movedBy})
    {
        if (list->size() == 1)
        {
            list->front() += QStringLiteral(" nothing, as far as the present state shows");
        }
    }
    return CReply(session, QStringLiteral("why"))
        .Lines(GetInfoLines(*property, exact))
        .Lines(moves)
        .Lines(movedBy)
        .Field("property", ToJson(*property, true))
        .Field("moves", moving)
        .Field("movedBy", moved)
        .Send();
}
} // namespace

void AddCouplingCommands(CLI::App& app, t_Run& run)
{
    AddCommand<t_CouplingOptions>(app, run, "couplings", "Show which setting moves what",
                                  kCouplingsFooter);
    AddCommand<t_WhyOptions>(app, run, "why", "Explain a property: what it moves, what moves it",
                             kWhyFooter);
}
