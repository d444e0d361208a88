// SPDX-License-Identifier: MIT
#include "LineEditor.h"

#include "Completion.h"
#include "Interrupt.h"
#include "Secrets.h"

#include <QDir>
#include <cerrno>
#include <cstdio>
#include <cwchar>
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

std::optional<QByteArray> ReadPlainLine()
{
    if (!CLineEditor::IsTerminal())
    {
        std::string line;
        return std::getline(std::cin, line) ? std::optional(QByteArray::fromStdString(line))
                                            : std::nullopt;
    }
    std::cout << kPrompt << std::flush;
    const CInterruptGuard guard;
    std::string line;
    if (std::getline(std::cin, line))
    {
        return QByteArray::fromStdString(line);
    }
    if (!CInterruptGuard::IsInterrupted())
    {
        return std::nullopt;
    }
    std::clearerr(stdin);
    std::cin.clear();
    std::cout << std::endl;
    return QByteArray();
}
} // namespace

#ifdef ZELCTL_WITH_LIBEDIT

struct CLineEditor::t_State
{
    explicit t_State(CSession& owner) : session(owner), keepable(owner) {}

    CSession& session;
    History* history = nullptr;
    EditLine* editor = nullptr;
    QByteArray historyFile;
    CKeepable keepable;

    void LoadHistory();
    void Remember(const QByteArray& line);
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

constexpr int kRememberedLines = 500;

int CountLines(const QByteArray& file)
{
    QFile text(QFile::decodeName(file));
    return text.open(QIODevice::ReadOnly) ? static_cast<int>(text.readAll().count('\n')) : 0;
}

char* GetPrompt(EditLine* /*editor*/)
{
    static char prompt[sizeof(kPrompt)];
    std::copy(std::begin(kPrompt), std::end(kPrompt), prompt);
    return prompt;
}

/** As the editor would read, but an interrupt always ends it. */
int ReadCharacter(EditLine* /*editor*/, wchar_t* character)
{
    constexpr auto kIncomplete = static_cast<std::size_t>(-2);
    constexpr auto kInvalid = static_cast<std::size_t>(-1);
    std::mbstate_t state{};
    while (CInterruptGuard::WaitFor(STDIN_FILENO))
    {
        char byte = 0;
        const auto count = read(STDIN_FILENO, &byte, 1);
        if (count < 0 && errno == EINTR)
        {
            continue;
        }
        if (count <= 0)
        {
            return static_cast<int>(count);
        }
        const std::size_t used = std::mbrtowc(character, &byte, 1, &state);
        if (used == kInvalid)
        {
            state = {}; // bytes that are no character are left out
        }
        else if (used != kIncomplete)
        {
            return 1;
        }
    }
    return 0;
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

/** Lines are appended; a file that has grown to twice the lines that are of use is written anew
    beside, so that it is never half a file. */
void CLineEditor::t_State::LoadHistory()
{
    historyFile = GetHistoryFile();
    HistEvent event{};
    if (historyFile.isEmpty() || ::history(history, &event, H_LOAD, historyFile.constData()) < 0 ||
        CountLines(historyFile) <= 2 * kRememberedLines)
    {
        return;
    }
    const QByteArray shorter = historyFile + '.' + QByteArray::number(getpid());
    if (::history(history, &event, H_SAVE, shorter.constData()) >= 0)
    {
        std::rename(shorter.constData(), historyFile.constData());
    }
}

void CLineEditor::t_State::Remember(const QByteArray& line)
{
    HistEvent event{};
    if (::history(history, &event, H_ENTER, line.constData()) <= 0 || historyFile.isEmpty())
    {
        return;
    }
    std::FILE* const file = std::fopen(historyFile.constData(), "a");
    if (file != nullptr)
    {
        // The heading of the file stands where writing begins at its start.
        std::fseek(file, 0, SEEK_END);
        ::history(history, &event, H_NSAVE_FP, std::size_t{1}, file);
        std::fclose(file);
    }
}

CLineEditor::CLineEditor(CSession& session) : m_state(std::make_unique<t_State>(session))
{
    if (!IsTerminal())
    {
        return;
    }
    HistEvent event{};
    m_state->history = history_init();
    history(m_state->history, &event, H_SETSIZE, kRememberedLines);
    history(m_state->history, &event, H_SETUNIQUE, 1);
    m_state->LoadHistory();
    m_state->editor = el_init("zelctl", stdin, stdout, stderr);
    el_set(m_state->editor, EL_PROMPT, &GetPrompt);
    el_set(m_state->editor, EL_EDITOR, "emacs");
    el_set(m_state->editor, EL_SIGNAL, 1);
    el_set(m_state->editor, EL_GETCFN, &ReadCharacter);
    el_set(m_state->editor, EL_HIST, history, m_state->history);
    el_set(m_state->editor, EL_CLIENTDATA, &session);
    el_set(m_state->editor, EL_ADDFN, "zelctl-complete", "Complete the word", &CompleteLine);
    el_set(m_state->editor, EL_BIND, "^I", "zelctl-complete", nullptr);
}

CLineEditor::~CLineEditor()
{
    if (m_state->editor != nullptr)
    {
        el_end(m_state->editor);
        history_end(m_state->history);
    }
}

std::optional<QByteArray> CLineEditor::Read()
{
    if (m_state->editor == nullptr)
    {
        return ReadPlainLine();
    }
    const CInterruptGuard guard;
    int length = 0;
    const char* const read = el_gets(m_state->editor, &length);
    if (CInterruptGuard::IsInterrupted())
    {
        m_state->session.GetOutput().Line({});
        return QByteArray();
    }
    if (read == nullptr || length <= 0)
    {
        return std::nullopt;
    }
    const QByteArray line = QByteArray(read, length).trimmed();
    if (!line.isEmpty() && m_state->keepable.MayBeKept(QString::fromUtf8(line)))
    {
        m_state->Remember(line);
    }
    return line;
}

#else

struct CLineEditor::t_State
{
};

CLineEditor::CLineEditor(CSession& /*session*/) {}
CLineEditor::~CLineEditor() = default;

std::optional<QByteArray> CLineEditor::Read()
{
    return ReadPlainLine();
}

#endif
