// SPDX-License-Identifier: MIT
#include "Calculation.h"
#include "Commands.h"

#include <QJsonArray>

namespace
{
constexpr char kCalcFooter[] =
    "The calculations need no instrument state. Arguments take prefixes and units as\n"
    "\"set\" does; enumerations are listed by \"zelctl enum TYPE\". An argument that is\n"
    "out of range is reported, answered with the library's fallback, and gives exit\n"
    "status 1.\n"
    "\n"
    "Examples:\n"
    "  zelctl calc decimation 20ms --acquisition PEAK\n"
    "  zelctl calc temperature PT100 138.5\n"
    "  zelctl calc ddc 100kHz 10.7MHz\n"
    "  zelctl calc window HANN 1024 --plot";

const std::vector<t_CalculationGroup>& GetGroups()
{
    static const std::vector<t_CalculationGroup> groups{
        GetTimebaseCalculations(),      GetVerticalCalculations(), GetSpectrumCalculations(),
        GetDownConverterCalculations(), GetProbeCalculations(),    GetMeterCalculations(),
        GetChannelCalculations(),       GetLabelCalculations()};
    return groups;
}

QString GetExample(const t_Calculation& calculation, const char* arguments)
{
    return QStringLiteral("zelctl calc %1 %2")
        .arg(QLatin1String(calculation.name), QString::fromUtf8(arguments))
        .trimmed();
}

std::string GetFooter(const t_Calculation& calculation)
{
    QString footer =
        calculation.examples.size() == 1 ? QStringLiteral("Example:") : QStringLiteral("Examples:");
    for (const char* const arguments : calculation.examples)
    {
        footer += QStringLiteral("\n  ") + GetExample(calculation, arguments);
    }
    return footer.toStdString();
}

void AddCalculation(CLI::App& calc, t_Run& run, const t_Calculation& calculation,
                    const char* heading)
{
    const auto arguments = std::make_shared<CArguments>();
    CLI::App* const command = calc.add_subcommand(calculation.name, calculation.brief);
    command->group(heading);
    command->footer(GetFooter(calculation));
    arguments->Declare(*command, calculation.arguments);
    command->preparse_callback([arguments, &calculation](std::size_t)
                               { arguments->Reset(calculation.arguments); });
    const auto runOne = [arguments, &calculation](CSession& session)
    {
        CFigures figures(session, calculation.name);
        calculation.run(*arguments, figures);
        return figures.Send();
    };
    command->callback([runOne, &run] { run.command = runOne; });
}

QJsonArray ToJson(const std::vector<QString>& texts)
{
    QJsonArray json;
    for (const QString& text : texts)
    {
        json.append(text);
    }
    return json;
}

t_Answer ListFunctions(CSession& session)
{
    CReply reply(session, QStringLiteral("calc functions"));
    CTable table;
    QJsonArray json;
    for (const t_CalculationGroup& group : GetGroups())
    {
        for (const t_Calculation& calculation : group.calculations)
        {
            QStringList functions;
            std::vector<QString> examples;
            for (const char* const function : calculation.functions)
            {
                functions.append(QLatin1String(function));
            }
            for (const char* const arguments : calculation.examples)
            {
                examples.push_back(GetExample(calculation, arguments));
            }
            table.Add({QLatin1String(calculation.name), functions.join(QLatin1String(", "))});
            json.append(
                QJsonObject{{QStringLiteral("name"), QLatin1String(calculation.name)},
                            {QStringLiteral("functions"), QJsonArray::fromStringList(functions)},
                            {QStringLiteral("examples"), ToJson(examples)}});
        }
    }
    return reply.Lines(table.GetLines(0)).Field("calculations", json).Send();
}
} // namespace

void AddCalcCommand(CLI::App& app, t_Run& run)
{
    if (!run.Declares("calc"))
    {
        return;
    }
    CLI::App* const calc = app.add_subcommand("calc", "Calculate as the instrument does");
    calc->footer(kCalcFooter);
    calc->require_subcommand(1);
    for (const t_CalculationGroup& group : GetGroups())
    {
        for (const t_Calculation& calculation : group.calculations)
        {
            AddCalculation(*calc, run, calculation, group.heading);
        }
    }
    CLI::App* const list =
        calc->add_subcommand("functions", "Which function of the library each calculation calls");
    list->callback([&run] { run.command = ListFunctions; });
}
