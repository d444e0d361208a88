// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "KWSettingsFile.h"
#include "Snapshot.h"
#include "Trace.h"

#include <QJsonArray>

namespace
{
constexpr char kSaveFooter[] =
    "The file is CSV when its name ends in .csv, XML otherwise. An older file of the name stands\n"
    "until the new one is whole.\n"
    "\n"
    "Example:\n"
    "  zelctl --load before.xml save after.csv     turns XML into CSV";

constexpr char kRecallFooter[] =
    "Settings that the file does not name keep their values; what it names and the instrument "
    "does\n"
    "not know is reported and skipped (code 1). A file that is damaged is refused whole.\n"
    "\n"
    "Example:\n"
    "  zelctl recall my.xml --trace                what the file changes in the defaults";

constexpr char kSealFooter[] =
    "A saved file holds a digest of its contents, and one that was changed since is refused. This\n"
    "writes the digest anew, for a file that was changed on purpose. Nothing else in it changes. "
    "A\n"
    "file without a digest, written by hand, is taken as it is and need not be sealed.\n"
    "\n"
    "Example:\n"
    "  zelctl seal my.xml                          after my.xml was edited";

constexpr char kDiffFooter[] =
    "Compares the saved settings of the present state, or of the first file, with the file named\n"
    "last. The present state is left as it is. Exit status 0: no difference; 1: differences, "
    "shown\n"
    "as \"path: first → second\"; 2: a file can not be used.\n"
    "\n"
    "Examples:\n"
    "  zelctl diff my.xml                          the defaults against the file\n"
    "  zelctl diff before.xml after.xml";

struct t_SaveOptions
{
    std::string file;

    void Declare(CLI::App& command)
    {
        command.add_option("file", file, "File to write")->required();
    }

    t_Answer Run(CSession& session) const
    {
        const KW_ACCEPTANCE code = session.GetRoot().Save(ToText(file));
        Require(code, QStringLiteral("save ") + ToText(file));
        CReply reply(session, QStringLiteral("save"));
        return reply.Line(QStringLiteral("saved ") + ToText(file))
            .Field("file", ToText(file))
            .Send(code);
    }
};

struct t_RecallOptions
{
    std::string file;
    bool trace = false;

    void Declare(CLI::App& command)
    {
        command.add_option("file", file, "File to read")->required();
        command.add_flag("-t,--trace", trace, "Show everything that changed, limits included");
    }

    t_Answer Run(CSession& session) const
    {
        const CTrace tracing(session, trace);
        const KW_ACCEPTANCE code = session.GetRoot().Recall(ToText(file));
        Require(code, QStringLiteral("recall ") + ToText(file));
        CReply reply(session, QStringLiteral("recall"));
        reply.Line(QStringLiteral("recalled ") + ToText(file) + DescribeWarning(code))
            .Field("file", ToText(file));
        tracing.AddTo(reply);
        return reply.Send(code);
    }
};

struct t_SealOptions
{
    std::string file;

    void Declare(CLI::App& command)
    {
        command.add_option("file", file, "File to seal")->required();
    }

    t_Answer Run(CSession& session) const
    {
        const KW_ACCEPTANCE code = KW_SealSettingsFile(ToText(file));
        Require(code, QStringLiteral("seal ") + ToText(file));
        CReply reply(session, QStringLiteral("seal"));
        return reply.Line(QStringLiteral("sealed ") + ToText(file))
            .Field("file", ToText(file))
            .Send(code);
    }
};

struct t_DiffOptions
{
    std::string first;
    std::string second;

    void Declare(CLI::App& command)
    {
        command.add_option("file", first, "File to compare with")->required();
        command.add_option("file2", second, "Compare the first file with this one instead");
    }

    t_Answer Run(CSession& session) const;

private:
    static CSnapshot TakeSnapshot(CSession& session, const std::string& file);
};

CSnapshot t_DiffOptions::TakeSnapshot(CSession& session, const std::string& file)
{
    session.Begin(QStringLiteral("diff"));
    const KW_ACCEPTANCE code = session.GetRoot().Recall(ToText(file));
    CSnapshot snapshot(session.GetTree());
    session.End(false);
    if (!KW_IsAccepted(code))
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("can not compare with \"%1\": %2")
                                          .arg(ToText(file), KW_GetAcceptanceText(code)));
    }
    return snapshot;
}

bool IsSavedDifference(const t_Change& change)
{
    const bool isNode = change.kind == eCHANGE::Added || change.kind == eCHANGE::Removed;
    return isNode || (change.kind == eCHANGE::Value && change.after.isSaved);
}

t_Answer t_DiffOptions::Run(CSession& session) const
{
    if (session.IsInTransaction())
    {
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("\"diff\" is not possible between \"begin\" and \"commit\""));
    }
    const CSession::CTrial trial(session);
    const CSnapshot before =
        second.empty() ? CSnapshot(session.GetTree()) : TakeSnapshot(session, first);
    const CSnapshot after = TakeSnapshot(session, second.empty() ? first : second);
    CReply reply(session, QStringLiteral("diff"));
    QJsonArray json;
    for (const t_Change& change : Compare(before, after))
    {
        if (IsSavedDifference(change))
        {
            reply.Line(ShowChange(change, session.GetStyle().exact));
            json.append(ToJson(change));
        }
    }
    reply.Field("differences", json);
    if (json.isEmpty())
    {
        reply.Line(QStringLiteral("no differences"));
        return reply.Send();
    }
    return reply.Send(eKW_ACC_WARNING, eSTATUS_REFUSED);
}
} // namespace

void AddFileCommands(CLI::App& app, t_Run& run)
{
    AddCommand<t_SaveOptions>(app, run, "save", "Write the settings to a file", kSaveFooter);
    AddCommand<t_RecallOptions>(app, run, "recall", "Read settings from a file", kRecallFooter);
    AddCommand<t_SealOptions>(app, run, "seal", "Accept a settings file that was edited",
                              kSealFooter);
    AddCommand<t_DiffOptions>(app, run, "diff", "Compare settings with a file", kDiffFooter);
}
