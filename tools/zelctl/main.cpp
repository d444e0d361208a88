// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "Script.h"

#include <QCoreApplication>
#include <clocale>

namespace
{
/** Options of the whole process: which tree it works on, what that starts from and what it leaves.
 */
struct t_Files
{
    std::string place;
    std::string token;
    std::string load;
    std::string save;

    void Declare(CLI::App& app)
    {
        app.add_option(
               "--connect", place,
               "Work on the living tree that another process serves; port 5026 unless given")
            ->type_name("HOST[:PORT]");
        app.add_option("--token-file", token, "File with the token that the service wants")
            ->type_name("FILE");
        app.add_option("--load", load, "Recall this settings file first")->type_name("FILE");
        app.add_option("--save", save,
                       "Save the settings to this file at the end, unless the "
                       "command fails")
            ->type_name("FILE");
    }
};

t_Answer RunProcess(CSession& session, CCommandLine& line, const t_Files& files)
{
    session.SetStyle(line.GetStyle());
    if (!files.place.empty())
    {
        session.Connect(ToText(files.place), ToText(files.token));
    }
    if (!files.load.empty())
    {
        Require(session.GetRoot().Recall(ToText(files.load)),
                QStringLiteral("load ") + ToText(files.load));
    }
    const t_Answer answer = line.Run();
    if (!files.save.empty() && (answer.status == eSTATUS_OK || answer.isDone))
    {
        Require(session.GetRoot().Save(ToText(files.save)),
                QStringLiteral("save ") + ToText(files.save));
    }
    return answer;
}

void RequireUtf8(const std::vector<std::string>& words)
{
    for (const std::string& word : words)
    {
        FromUtf8(QByteArray::fromStdString(word));
    }
}

eSTATUS Run(CSession& session, const std::vector<std::string>& words)
{
    CCommandLine line(session, CCommandLine::ePLACE::Process);
    t_Files files;
    files.Declare(line.GetApp());
    line.GetApp().set_version_flag("--version", "zelctl " ZELCTL_VERSION, "Show the version");
    try
    {
        RequireUtf8(words);
        return line.Parse(words) ? RunProcess(session, line, files).status : eSTATUS_OK;
    }
    catch (const CFailure& failure)
    {
        session.SetStyle(line.GetStyle());
        ShowFailure(session, failure);
        return failure.GetStatus();
    }
}
} // namespace

int main(int argc, char** argv)
{
    // Characters only: numbers are written the same everywhere.
    std::setlocale(LC_CTYPE, "");
    // Names the folder of the instrument's own Save and Recall actions.
    QCoreApplication::setApplicationName(QStringLiteral("zelctl"));
    COutput output;
    eSTATUS status = eSTATUS_OK;
    {
        CSession session(output);
        status = Run(session, {argv + (argc > 0 ? 1 : 0), argv + argc});
    }
    return output.Finish() ? status : eSTATUS_REFUSED;
}
