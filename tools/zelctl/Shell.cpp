// SPDX-License-Identifier: MIT
#include "LineEditor.h"
#include "Script.h"

namespace
{
t_Answer ExecuteShellLine(CSession& session, const QByteArray& line)
{
    try
    {
        return ExecuteWords(session, SplitWords(FromUtf8(line)));
    }
    catch (const CFailure& failure)
    {
        ShowFailure(session, failure);
        return {failure.GetStatus(), failure.GetCode().value_or(eKW_ACC_OK)};
    }
}

bool IsQuit(const QByteArray& line)
{
    const QByteArray word = line.trimmed();
    return word == "quit" || word == "exit";
}
} // namespace

t_Answer RunShell(CSession& session)
{
    CLineEditor editor(session);
    t_Answer answer;
    while (true)
    {
        session.GetOutput().Finish();
        const std::optional<QByteArray> line = editor.Read();
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
