// SPDX-License-Identifier: MIT
#include "LabelCommands.h"
#include "LabelText.h"

#include <QFileInfo>

namespace
{
constexpr char kLabelsFooter[] =
    "Label lists name the messages of a bus and the signals in them. Files are CAN databases when\n"
    "their name ends in .dbc, else .xml or .csv, which hold lists of every bus.\n"
    "\n"
    "Exit status 0: nothing to report; 1: done, with reports or differences; 2: refused.\n"
    "\n"
    "Examples:\n"
    "  zelctl labels check examples/labels/vehicle.dbc\n"
    "  zelctl labels show examples/labels/vehicle.dbc EngineData\n"
    "  zelctl labels decode --list examples/labels/vehicle.dbc examples/labels/drive.log\n"
    "\"zelctl labels COMMAND --help\" explains each.";

constexpr char kLabelCheckFooter[] =
    "Reads the file and prints what is to be said of it, each as \"file:line:column: text\", and "
    "a\n"
    "line with the counts. Exit status 0: nothing; 1: the file can be used; 2: it can not.\n"
    "\n"
    "Examples:\n"
    "  zelctl labels check examples/labels/vehicle.dbc\n"
    "  zelctl labels check --skip-bad FILE     what else is wrong, beside a bad message";

constexpr char kLabelConvertFooter[] =
    "The formats are those that the names end in. What the second one does not hold is reported\n"
    "and left out (status 1). An older file of the name stands until the new one is whole.\n"
    "\n"
    "Examples:\n"
    "  zelctl labels convert examples/labels/vehicle.dbc vehicle.xml\n"
    "  zelctl labels convert examples/labels/engine-can.xml engine.dbc";

struct t_LabelCheckOptions
{
    std::string file;
    bool skipsBad = false;

    void Declare(CLI::App& command)
    {
        command.add_option("file", file, "Label list: .dbc, .xml or .csv")->required();
        DeclareSkipping(command, skipsBad);
    }

    t_Answer Run(CSession& session) const
    {
        CLabelFindings findings(session);
        KW_LabelList list;
        const KW_ACCEPTANCE code = findings.Read(file, skipsBad, list);
        const bool isRead = KW_IsAccepted(code);
        CReply reply(session, QStringLiteral("labels check"));
        findings.AddTo(reply);
        reply.Lines(findings.GetLines())
            .Line(QStringLiteral("%1: %2; %3")
                      .arg(ToText(file), isRead ? GetSizeText(list) : QStringLiteral("refused"),
                           findings.GetCounts()))
            .Field("file", ToText(file))
            .Field("refused", !isRead)
            .Field("messages", static_cast<qint64>(list.messages.size()))
            .Field("signals", static_cast<qint64>(CountSignals(list)));
        return reply.Send(code, !isRead                   ? eSTATUS_USAGE
                                : code == eKW_ACC_WARNING ? eSTATUS_REFUSED
                                                          : eSTATUS_OK);
    }
};

struct t_LabelConvertOptions
{
    std::string from;
    std::string to;
    bool skipsBad = false;

    void Declare(CLI::App& command)
    {
        command.add_option("file", from, "Label list to read")->required();
        command.add_option("file2", to, "File to write")->required();
        DeclareSkipping(command, skipsBad);
    }

    t_Answer Run(CSession& session) const
    {
        const QFileInfo first(ToText(from));
        const QFileInfo second(ToText(to));
        if (second.exists() && first == second)
        {
            throw CFailure(eSTATUS_USAGE,
                           QStringLiteral("\"%1\" and \"%2\" are one file; what the format does "
                                          "not hold would be lost")
                               .arg(ToText(from), ToText(to)));
        }
        CLabelFindings findings(session);
        const KW_LabelList list = findings.Require(from, skipsBad);
        std::vector<KW_LabelReport> reports;
        const KW_ACCEPTANCE code = KW_WriteLabelFile(ToText(to), list, reports);
        findings.Require(code, ToText(to), reports);
        CReply reply(session, QStringLiteral("labels convert"));
        reply.Line(QStringLiteral("wrote %1: %2").arg(ToText(to), GetSizeText(list)))
            .Field("file", ToText(to));
        return findings.Send(reply);
    }
};
} // namespace

void AddLabelsCommand(CLI::App& app, t_Run& run)
{
    if (!run.Declares("labels"))
    {
        return;
    }
    CLI::App& labels = *app.add_subcommand("labels", "Read, show and convert label lists of buses");
    labels.footer(kLabelsFooter);
    labels.require_subcommand(1);
    AddSubcommand<t_LabelCheckOptions>(
        labels, run, "check", "Read a file and say what is wrong with it", kLabelCheckFooter);
    AddLabelShow(labels, run);
    AddSubcommand<t_LabelConvertOptions>(labels, run, "convert", "Write a list in another format",
                                         kLabelConvertFooter);
    AddLabelDiff(labels, run);
    AddLabelTreeCommands(labels, run);
    AddLabelDecode(labels, run);
}
