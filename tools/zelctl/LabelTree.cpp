// SPDX-License-Identifier: MIT
#include "EnumText.h"
#include "IKWFunctionCANBusSettings.h"
#include "IKWFunctionI2CBusSettings.h"
#include "IKWFunctionLINBusSettings.h"
#include "IKWFunctionLabelListSettings.h"
#include "IKWFunctionSENTBusSettings.h"
#include "IKWFunctionSerialBus.h"
#include "IKWFunctionZEL.h"
#include "LabelCommands.h"
#include "LabelList/LabelListTree.h"
#include "LabelText.h"

namespace
{
constexpr char kLabelLoadFooter[] =
    "Replaces the labels of the bus by those of the file, as one step for undo. What the settings\n"
    "have no room for is reported and left out (status 1). Without --bus it is the bus that the\n"
    "file is of. On a living tree it is a recall of these settings alone: results are invalid "
    "until\n"
    "they are measured again.\n"
    "\n"
    "Examples:\n"
    "  zelctl --save my.xml labels load examples/labels/vehicle.dbc --bus CAN\n"
    "  zelctl --load my.xml labels load examples/labels/pressure-sent.csv";

constexpr char kLabelSaveFooter[] =
    "Writes the labels of the bus as the format of the file's name has them; an older file of the\n"
    "name stands until the new one is whole.\n"
    "\n"
    "Example:\n"
    "  zelctl labels save labels.csv --bus CAN";

std::shared_ptr<IKWFunctionLabelListSettings> FindLabels(CSession& session,
                                                         KW_ZEL_SERIALBUS_PROTOCOL protocol)
{
    const auto buses = dynamic_cast<IKWFunctionZEL&>(session.GetRoot()).GetPgSerialBus();
    switch (protocol)
    {
    case eKW_ZEL_SERIALBUS_PROTOCOL_CAN:
        return buses->GetPgCANBusSettings()->GetPgLabelListSettings();
    case eKW_ZEL_SERIALBUS_PROTOCOL_LIN:
        return buses->GetPgLINBusSettings()->GetPgLabelListSettings();
    case eKW_ZEL_SERIALBUS_PROTOCOL_I2C:
        return buses->GetPgI2CBusSettings()->GetPgLabelListSettings();
    case eKW_ZEL_SERIALBUS_PROTOCOL_SENT:
        return buses->GetPgSENTBusSettings()->GetPgLabelListSettings();
    default:
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("the settings hold no labels of %1; CAN, LIN, I2C and SENT "
                                      "have them")
                           .arg(GetEnumText(protocol)));
    }
}

KW_ZEL_SERIALBUS_PROTOCOL ReadBus(const std::string& bus)
{
    return ReadEnum<KW_ZEL_SERIALBUS_PROTOCOL>(ToText(bus), QStringLiteral("--bus"));
}

struct t_LabelLoadOptions
{
    std::string file;
    std::string bus;
    bool skipsBad = false;

    void Declare(CLI::App& command)
    {
        command.add_option("file", file, "Label list: .dbc, .xml or .csv")->required();
        command.add_option("--bus", bus, "CAN, LIN, I2C or SENT")->type_name("BUS");
        DeclareSkipping(command, skipsBad);
    }

    t_Answer Run(CSession& session) const
    {
        CLabelFindings findings(session);
        const KW_LabelList list = findings.Require(file, skipsBad);
        const KW_ZEL_SERIALBUS_PROTOCOL wanted = bus.empty() ? list.protocol : ReadBus(bus);
        const CSession::CTrial copy(session);
        const auto labels = FindLabels(session, wanted);
        if (wanted != list.protocol)
        {
            throw CFailure(eSTATUS_USAGE, eKW_ACC_WRONG_KIND,
                           QStringLiteral("%1 is a list of %2, not of %3")
                               .arg(ToText(file), GetEnumText(list.protocol), GetEnumText(wanted)));
        }
        std::vector<KW_LabelReport> reports;
        const KW_ACCEPTANCE code = KW_PutLabels(*labels, list, reports);
        findings.Require(code, ToText(file), reports);
        const QString path = labels->GetDbObject()->GetPath();
        Require(copy.Keep(path, QStringLiteral("Load labels")), path);
        CReply reply(session, QStringLiteral("labels load"));
        reply.Line(QStringLiteral("loaded %1: %2 → %3").arg(ToText(file), GetSizeText(list), path))
            .Field("file", ToText(file))
            .Field("path", path);
        return findings.Send(reply);
    }
};

struct t_LabelSaveOptions
{
    std::string file;
    std::string bus;

    void Declare(CLI::App& command)
    {
        command.add_option("file", file, "File to write: .dbc, .xml or .csv")->required();
        command.add_option("--bus", bus, "CAN, LIN, I2C or SENT")->type_name("BUS")->required();
    }

    t_Answer Run(CSession& session) const
    {
        const CSession::CTrial copy(session);
        const auto labels = FindLabels(session, ReadBus(bus));
        CLabelFindings findings(session);
        KW_LabelList list;
        std::vector<KW_LabelReport> reports;
        findings.Require(KW_GetLabels(*labels, list, reports), ToText(file), reports);
        reports.clear();
        const KW_ACCEPTANCE code = KW_WriteLabelFile(ToText(file), list, reports);
        findings.Require(code, ToText(file), reports);
        CReply reply(session, QStringLiteral("labels save"));
        reply.Line(QStringLiteral("saved %1: %2").arg(ToText(file), GetSizeText(list)))
            .Field("file", ToText(file));
        return findings.Send(reply);
    }
};
} // namespace

void AddLabelTreeCommands(CLI::App& labels, t_Run& run)
{
    AddSubcommand<t_LabelLoadOptions>(labels, run, "load", "Put a list in the settings of its bus",
                                      kLabelLoadFooter);
    AddSubcommand<t_LabelSaveOptions>(labels, run, "save", "Write the labels of a bus to a file",
                                      kLabelSaveFooter);
}
