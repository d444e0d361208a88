// SPDX-License-Identifier: MIT
#include "LineEditor.h"

#include "Completion.h"
#include "Secrets.h"

#include <QDir>
#include <iostream>
#include <string>
#include <unistd.h>

#ifdef ZELCTL_WITH_LIBEDIT
#include <histedit.h>
#endif

bool CLineEditor::IsTerminal()
{
    return isatty(STDIN_FILENO) != 0;
}

namespace
{
constexpr char kPrompt[] = "zel> ";

std::optional<QString> ReadPlainLine()
{
    if (CLineEditor::IsTerminal())
    {
        std::cout << kPrompt << std::flush;
    }
    std::string line;
    return std::getline(std::cin, line) ? std::optional(QString::fromStdString(line))
                                        : std::nullopt;
}
} // namespace

#ifdef ZELCTL_WITH_LIBEDIT

struct CLineEditor::t_State
{
    explicit t_State(CSession& owner) : session(owner) {}

    CSession& session;
    History* history = nullptr;
    EditLine* editor = nullptr;
    QByteArray historyFile;
};

namespace
{
/** Where lines are kept for the next shell, below the user's state folder; empty without one. */
QByteArray GetHistoryFile()
{
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (!folder.startsWith(QLatin1Char('/')))
    {
        folder = qEnvironmentVariable("HOME") + QStringLiteral("/.local/state");
    }
    folder += QStringLiteral("/zelctl");
    const bool usable = folder.startsWith(QLatin1Char('/')) && QDir().mkpath(folder);
    return usable ? QFile::encodeName(folder + QStringLiteral("/history")) : QByteArray();
}

char* GetPrompt(EditLine* /*editor*/)
{
    static char prompt[sizeof(kPrompt)];
    std::copy(std::begin(kPrompt), std::end(kPrompt), prompt);
    return prompt;
}

void ListCandidates(CSession& session, const QStringList& candidates)
{
    COutput& output = session.GetOutput();
    output.Line(QString());
    for (const QString& candidate : candidates)
    {
        output.Line(QStringLiteral("  ") + candidate);
    }
    output.Finish();
}

/** Replaces the word before the cursor by what its candidates share; lists them when that adds
    nothing. */
unsigned char CompleteLine(EditLine* editor, int /*key*/)
{
    CSession* session = nullptr;
    el_get(editor, EL_CLIENTDATA, &session);
    const LineInfo* const info = el_line(editor);
    const QString line =
        QString::fromUtf8(info->buffer, static_cast<int>(info->cursor - info->buffer));
    const t_Completion completion = Complete(*session, line);
    if (completion.candidates.isEmpty())
    {
        return CC_REFRESH_BEEP;
    }
    const QString word = line.mid(completion.begin);
    const QString common = GetCommonBeginning(completion.candidates);
    if (common.size() <= word.size() && completion.candidates.size() > 1)
    {
        ListCandidates(*session, completion.candidates);
        return CC_REDISPLAY;
    }
    el_deletestr(editor, static_cast<int>(word.size()));
    return el_insertstr(editor, common.toUtf8().constData()) == 0 ? CC_REFRESH : CC_ERROR;
}
} // namespace

CLineEditor::CLineEditor(CSession& session) : m_state(std::make_unique<t_State>(session))
{
    if (!IsTerminal())
    {
        return;
    }
    constexpr int kRememberedLines = 500;
    HistEvent event{};
    m_state->history = history_init();
    history(m_state->history, &event, H_SETSIZE, kRememberedLines);
    history(m_state->history, &event, H_SETUNIQUE, 1);
    m_state->historyFile = GetHistoryFile();
    if (!m_state->historyFile.isEmpty())
    {
        history(m_state->history, &event, H_LOAD, m_state->historyFile.constData());
    }
    m_state->editor = el_init("zelctl", stdin, stdout, stderr);
    el_set(m_state->editor, EL_PROMPT, &GetPrompt);
    el_set(m_state->editor, EL_EDITOR, "emacs");
    el_set(m_state->editor, EL_SIGNAL, 1);
    el_set(m_state->editor, EL_HIST, history, m_state->history);
    el_set(m_state->editor, EL_CLIENTDATA, &session);
    el_set(m_state->editor, EL_ADDFN, "zelctl-complete", "Complete the word", &CompleteLine);
    el_set(m_state->editor, EL_BIND, "^I", "zelctl-complete", nullptr);
}

CLineEditor::~CLineEditor()
{
    if (m_state->editor != nullptr)
    {
        HistEvent event{};
        if (!m_state->historyFile.isEmpty())
        {
            history(m_state->history, &event, H_SAVE, m_state->historyFile.constData());
        }
        el_end(m_state->editor);
        history_end(m_state->history);
    }
}

std::optional<QString> CLineEditor::Read()
{
    if (m_state->editor == nullptr)
    {
        return ReadPlainLine();
    }
    int length = 0;
    const char* const read = el_gets(m_state->editor, &length);
    if (read == nullptr || length <= 0)
    {
        return std::nullopt;
    }
    const QString line = QString::fromUtf8(read, length).trimmed();
    HistEvent event{};
    if (!line.isEmpty() && MayBeKept(m_state->session, line))
    {
        history(m_state->history, &event, H_ENTER, line.toUtf8().constData());
    }
    return line;
}

#else

struct CLineEditor::t_State
{
};

CLineEditor::CLineEditor(CSession& /*session*/) {}
CLineEditor::~CLineEditor() = default;

std::optional<QString> CLineEditor::Read()
{
    return ReadPlainLine();
}

#endif
