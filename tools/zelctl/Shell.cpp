// SPDX-License-Identifier: MIT
#include "LineEditor.h"
#include "Script.h"

namespace
{
t_Answer ExecuteShellLine(CSession& session, const QString& line)
{
    try
    {
        return ExecuteWords(session, SplitWords(line));
    }
    catch (const CFailure& failure)
    {
        ShowFailure(session, failure);
        return {failure.GetStatus(), failure.GetCode().value_or(eKW_ACC_OK)};
    }
}

bool IsQuit(const QString& line)
{
    const QString word = line.trimmed();
    return word == QLatin1String("quit") || word == QLatin1String("exit");
}
} // namespace

t_Answer RunShell(CSession& session)
{
    CLineEditor editor(session);
    t_Answer answer;
    while (true)
    {
        session.GetOutput().Finish();
        const std::optional<QString> line = editor.Read();
        if (!line || IsQuit(*line))
        {
            break;
        }
        answer = ExecuteShellLine(session, *line);
    }
    if (CLineEditor::IsTerminal())
    {
        session.GetOutput().Line(QString());
    }
    return answer;
}
