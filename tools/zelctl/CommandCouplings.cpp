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
    "or in the shell. With --connect it is tried on a copy, whose results are those of a tree "
    "that\n"
    "has measured nothing.\n"
    "\n"
    "\"by Horizontal 3: CalculateHorizontalScale\" is the rule that did it: the third row of the\n"
    "group's table, and its step. With --json the answer holds the whole tables, too.\n"
    "\n"
    "Examples:\n"
    "  zelctl couplings Horizontal            what the settings of the timebase move\n"
    "  zelctl couplings --json > map.json     the whole instrument\n"
    "  zelctl couplings Zoom --dot | dot -Tsvg > zoom.svg";

constexpr char kWhyFooter[] =
    "Shows a property with its limits, what it moves, and what moves it, each with one example\n"
    "that was observed as \"zelctl couplings\" does, and with the rule that did it: the group, "
    "the\n"
    "row of its table with the condition on which it runs, and the step. Last the rows that the\n"
    "property starts as they are declared, whether the present state shows an effect or not. With\n"
    "--connect it is tried on a copy, whose results are those of a tree that has measured "
    "nothing.\n"
    "\n"
    "Example:\n"
    "  zelctl why Horizontal/AcquisitionTime";

QString ShowTransition(const t_Coupling& coupling, bool exact)
{
    return ShowValue(coupling.from, exact) + QStringLiteral(" → ") + ShowValue(coupling.to, exact);
}

QJsonObject ToJson(const t_Coupling& coupling, CDeclaredRows& rows)
{
    return {{QStringLiteral("source"), coupling.source},
            {QStringLiteral("target"), coupling.target},
            {QStringLiteral("moved"), QJsonArray::fromStringList(coupling.moved)},
            {QStringLiteral("while"), QJsonArray::fromStringList(coupling.conditions)},
            {QStringLiteral("old"), ToJsonValue(coupling.from)},
            {QStringLiteral("new"), ToJsonValue(coupling.to)},
            {QStringLiteral("example"), ToJson(coupling.example)},
            {QStringLiteral("rows"), rows.ToJson(coupling.steps)},
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

QJsonArray ToJson(const std::vector<KW_CouplingRow>& rows)
{
    QJsonArray json;
    for (const KW_CouplingRow& row : rows)
    {
        json.append(ToJson(row));
    }
    return json;
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
        const CSession::CTrial trial(session);
        const CCouplings all(session);
        CDeclaredRows rows(session);
        std::vector<t_Coupling> chosen;
        QJsonArray json;
        for (const t_Coupling& coupling : all.Get())
        {
            if (IsAtOrBelow(coupling.source, start))
            {
                chosen.push_back(coupling);
                json.append(ToJson(coupling, rows));
            }
        }
        CReply reply(session, QStringLiteral("couplings"));
        dot ? AddGraph(chosen, reply) : AddLines(chosen, rows, session.GetStyle().exact, reply);
        if (start.isEmpty() && !dot)
        {
            reply.Line(QStringLiteral("%1 couplings; %2 of %3 settings took another value")
                           .arg(chosen.size())
                           .arg(all.GetMovable())
                           .arg(all.GetTried()));
        }
        return reply.Field("couplings", json)
            .Field("rows", ToJson(rows.GetAtAndBelow(start)))
            .Send();
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

    static void AddLines(const std::vector<t_Coupling>& couplings, CDeclaredRows& rows, bool exact,
                         CReply& reply)
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
            const QStringList by = rows.Describe(coupling.steps, true);
            reply.Line(
                QStringLiteral("  ") + ShowChange(coupling.example, exact) +
                DescribeMoved(coupling) +
                (by.isEmpty() ? QString() : QStringLiteral("  ") + by.join(QLatin1String(", "))));
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

private:
    /** One direction: lines below a title, and the same as data. */
    struct t_Direction
    {
        QStringList lines;
        QJsonArray json;

        void Add(const QString& line, const t_Coupling& coupling, CDeclaredRows& rows)
        {
            lines.append(QStringLiteral("    ") + line);
            for (const QString& by : rows.Describe(coupling.steps, false))
            {
                lines.append(QStringLiteral("      ") + by);
            }
            json.append(ToJson(coupling, rows));
        }
        QStringList Titled(const QString& title) const
        {
            return lines.isEmpty()
                       ? QStringList(title +
                                     QStringLiteral(" nothing, as far as the present state shows"))
                       : QStringList(title) + lines;
        }
    };
    static QStringList DescribeStarted(const std::vector<KW_CouplingRow>& rows);
};

QStringList t_WhyOptions::DescribeStarted(const std::vector<KW_CouplingRow>& rows)
{
    QStringList lines(rows.empty() ? QStringLiteral("  starts no row")
                                   : QStringLiteral("  starts"));
    for (const KW_CouplingRow& row : rows)
    {
        lines.append(QStringLiteral("    ") + DescribeRow(row));
    }
    return lines;
}

t_Answer t_WhyOptions::Run(CSession& session) const
{
    const bool exact = session.GetStyle().exact;
    const auto present = session.FindProperty(ToText(path));
    const CSession::CTrial trial(session);
    const auto property = session.FindProperty(present->GetPath());
    const CCouplings couplings(session);
    CDeclaredRows rows(session);
    t_Direction moves;
    t_Direction movedBy;
    for (const t_Coupling& coupling : couplings.Get())
    {
        const QString shown = ShowChange(coupling.example, exact);
        const QString written = ShowTransition(coupling, exact);
        if (coupling.source == property->GetPath())
        {
            moves.Add(
                QStringLiteral("%1  at %2")
                    .arg(shown + DescribeMoved(coupling), written + DescribeConditions(coupling)),
                coupling, rows);
        }
        if (coupling.target == property->GetPath())
        {
            movedBy.Add(QStringLiteral("%1: %2  gives %3")
                            .arg(coupling.source, written, DescribeEffect(coupling, shown)),
                        coupling, rows);
        }
    }
    const auto started = rows.GetStartedBy(*property);
    return CReply(session, QStringLiteral("why"))
        .Lines(GetInfoLines(*present, exact))
        .Lines(moves.Titled(QStringLiteral("  moves")))
        .Lines(movedBy.Titled(QStringLiteral("  moved by")))
        .Lines(DescribeStarted(started))
        .Field("property", ToJson(*present, true))
        .Field("moves", moves.json)
        .Field("movedBy", movedBy.json)
        .Field("starts", ToJson(started))
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
