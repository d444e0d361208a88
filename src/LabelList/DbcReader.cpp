// SPDX-License-Identifier: MIT
#include "LabelList/DbcReader.h"

#include "LabelList/DbcNames.h"
#include "LabelList/DbcText.h"
#include "LabelList/LabelBounds.h"
#include "LabelList/LabelFiles.h"

#include <QStringList>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace
{
constexpr int kLongestShown = 40; ///< characters of a word that a report cites

/** Words of NS_ that are no statements of their own. */
constexpr std::string_view kFurtherSymbols[] = {
    "NS_DESC_",    "CAT_DEF_",       "CAT_",       "FILTER",        "EV_DATA_",
    "SGTYPE_VAL_", "BA_DEF_SGTYPE_", "BA_SGTYPE_", "SIG_TYPE_REF_", "SIGTYPE_VALTYPE_",
    "BU_SG_REL_",  "BU_EV_REL_",     "BU_BO_REL_",
};

bool IsSymbol(const t_DbcToken& token)
{
    return token.kind == e_DbcToken::Word &&
           std::find(std::begin(kFurtherSymbols), std::end(kFurtherSymbols), token.text) !=
               std::end(kFurtherSymbols);
}

/** Where the first line ends as other systems have it; none: 0. */
t_TextPlace FirstReturn(std::string_view text)
{
    const std::size_t at = text.find("\r\n");
    if (at == std::string_view::npos)
    {
        return {};
    }
    const auto* const begin = text.begin();
    const std::size_t feed = text.substr(0, at).rfind('\n');
    const std::size_t lineBegin = feed == std::string_view::npos ? 0 : feed + 1;
    const auto line = std::count(begin, begin + static_cast<std::ptrdiff_t>(at), '\n') + 1;
    return {static_cast<UINT32>(line), static_cast<UINT32>(at - lineBegin) + 1};
}

bool IsUtf16(std::string_view text)
{
    return text.substr(0, 2) == "\xff\xfe" || text.substr(0, 2) == "\xfe\xff";
}
} // namespace

// In the order in which they are frequent.
constinit const CDbcReader::t_Keyword CDbcReader::kKeywords[] = {
    {"SG_", &CDbcReader::ReadSignal},
    {"BA_", &CDbcReader::ReadAttribute},
    {"CM_", &CDbcReader::ReadComment},
    {"VAL_", &CDbcReader::ReadLabels},
    {"BO_", &CDbcReader::ReadMessage},
    {"SIG_VALTYPE_", &CDbcReader::ReadValueType},
    {"SG_MUL_VAL_", &CDbcReader::ReadPages},
    {"VAL_TABLE_", &CDbcReader::ReadValueTable},
    {"BO_TX_BU_", &CDbcReader::ReadSenders},
    {"BA_DEF_", &CDbcReader::ReadDefinition},
    {"BA_DEF_DEF_", &CDbcReader::ReadDefault},
    {"BA_DEF_REL_", &CDbcReader::ReadRelationDefinition},
    {"BA_DEF_DEF_REL_", &CDbcReader::ReadRelationDefault},
    {"SIG_GROUP_", &CDbcReader::ReadDependent},
    {"VERSION", &CDbcReader::ReadVersion},
    {"NS_", &CDbcReader::ReadSymbols},
    {"BS_", &CDbcReader::ReadBitTiming},
    {"BU_", &CDbcReader::ReadNodes},
    {"BA_REL_", &CDbcReader::ReadRelation},
    {"EV_", &CDbcReader::KeepStatement},
    {"ENVVAR_DATA_", &CDbcReader::KeepStatement},
    {"SGTYPE_", &CDbcReader::KeepStatement},
    {"SGTYPE_VAL_", &CDbcReader::KeepStatement},
    {"SIG_TYPE_REF_", &CDbcReader::ReadDependent},
    {"SIGTYPE_VALTYPE_", &CDbcReader::KeepStatement},
    {"BA_DEF_SGTYPE_", &CDbcReader::KeepStatement},
    {"BA_SGTYPE_", &CDbcReader::KeepStatement},
    {"CAT_DEF_", &CDbcReader::KeepStatement},
    {"CAT_", &CDbcReader::KeepStatement},
    {"FILTER", &CDbcReader::KeepStatement},
    {"EV_DATA_", &CDbcReader::KeepStatement},
    {"NS_DESC_", &CDbcReader::KeepStatement},
};

CDbcReader::CDbcReader(std::string_view text, bool isUtf8, KW_LabelList& list,
                       CLabelReports& reports)
    : m_lexer(text), m_list(list), m_reports(reports)
{
    m_draft.isUtf8 = isUtf8;
}

const CDbcReader::t_Keyword* CDbcReader::FindKeyword(const t_DbcToken& token)
{
    const auto* const found =
        token.kind == e_DbcToken::Word
            ? std::find_if(std::begin(kKeywords), std::end(kKeywords),
                           [&](const t_Keyword& keyword) { return keyword.text == token.text; })
            : std::end(kKeywords);
    return found != std::end(kKeywords) ? found : nullptr;
}

/** A keyword in the midst of a line may be a name. */
bool CDbcReader::StartsStatement(const t_DbcToken& token)
{
    return token.startsLine && FindKeyword(token) != nullptr;
}

bool CDbcReader::Read()
{
    if (FindKeyword(m_lexer.Peek()) == nullptr)
    {
        return Fail(
            m_lexer.Peek().place,
            QString::fromLatin1("no CAN database: it does not begin with a statement of one"));
    }
    while (!m_isBroken && m_lexer.Peek().kind != e_DbcToken::End)
    {
        if (!ReadStatement() && !m_isBroken)
        {
            m_isBroken = !Recover(m_keyword);
        }
    }
    WarnOfMissing();
    return !m_isBroken;
}

bool CDbcReader::ReadStatement()
{
    m_keyword = m_lexer.Peek();
    const t_Keyword* const keyword = FindKeyword(m_keyword);
    if (keyword == nullptr)
    {
        return ReadStray(m_keyword);
    }
    m_lexer.Take();
    m_isMessage = m_isMessage && keyword->read == &CDbcReader::ReadSignal;
    return (this->*keyword->read)();
}

/** What is no statement: one of a kind that is not known, or something behind a signal, which makes
    its message a bad one. */
bool CDbcReader::ReadStray(const t_DbcToken& token)
{
    if (m_lexer.TakeSign(';'))
    {
        Warn(token.place, QString::fromLatin1("a \";\" that ends nothing is left out"));
        return true;
    }
    if (m_isMessage && !token.BeginsLine())
    {
        m_draft.messages.back().isBad = true;
        return Fail(
            token.place,
            QString::fromLatin1("%1 does not belong to the message").arg(Shown(token.text)));
    }
    if (!IsUnknownStatement(token))
    {
        m_isBroken = true;
        return Fail(
            token.place,
            QString::fromLatin1("%1 is no statement of CAN databases").arg(Shown(token.text)));
    }
    Warn(token.place, QString::fromLatin1("statement %1 is unknown; it is kept as it stands")
                          .arg(Shown(token.text)));
    m_lexer.Take();
    return KeepStatement();
}

/** One that ends before the next that is known. A text in several lines is one whose quotes are
    those of others: what it holds may be anything. */
bool CDbcReader::IsUnknownStatement(const t_DbcToken& token) const
{
    CDbcLexer ahead = m_lexer;
    while (token.kind == e_DbcToken::Word && token.BeginsLine() && !ahead.TakeSign(';'))
    {
        const t_DbcToken next = ahead.Take();
        const bool isEnd = next.kind == e_DbcToken::End || next.kind == e_DbcToken::OpenText;
        const bool isLong = next.kind == e_DbcToken::Text &&
                            next.text.find_first_of("\r\n") != std::string_view::npos;
        if (isEnd || isLong || StartsStatement(next))
        {
            return false;
        }
    }
    return token.kind == e_DbcToken::Word && token.BeginsLine();
}

/** Goes to the statement behind the one that could not be read. Signals and messages end with their
    line, which a quote without its partner does not hide; others with the next keyword that begins
    a line outside of texts. */
bool CDbcReader::Recover(const t_DbcToken& keyword)
{
    const bool isLine = keyword.text == "SG_" || keyword.text == "BO_" || m_isMessage;
    m_lexer.GoTo(keyword);
    m_lexer.Take();
    while (m_lexer.Peek().kind != e_DbcToken::End)
    {
        const t_DbcToken token = m_lexer.Peek();
        const bool isNext = isLine && (token.IsWord("SG_") || token.IsWord("BO_"));
        if (isNext || StartsStatement(token))
        {
            return true;
        }
        const bool isText = token.kind == e_DbcToken::Text || token.kind == e_DbcToken::OpenText;
        if (isText && isLine && token.text.find('\n') != std::string_view::npos)
        {
            m_lexer.SkipLine();
            continue;
        }
        if (token.kind == e_DbcToken::OpenText)
        {
            return Fail(token.place, QString::fromLatin1("a text has no end"));
        }
        m_lexer.Take();
    }
    return true;
}

void CDbcReader::WarnOfMissing()
{
    QStringList missing;
    const std::pair<bool, QLatin1String> heads[] = {{m_hasVersion, QLatin1String("VERSION")},
                                                    {m_hasSymbols, QLatin1String("NS_")},
                                                    {m_hasBitTiming, QLatin1String("BS_")},
                                                    {m_hasNodes, QLatin1String("BU_")}};
    for (const auto& [isThere, name] : heads)
    {
        if (!isThere)
        {
            missing << name;
        }
    }
    if (!m_isBroken && !missing.isEmpty())
    {
        Warn({1, 1}, QString::fromLatin1("statements are missing: ") +
                         missing.join(QString::fromLatin1(", ")));
    }
}

bool CDbcReader::ReadVersion()
{
    m_hasVersion = true;
    return ReadText(m_list.database.version, "a version");
}

/** The words of a list that tools write for each other and none needs. One that something follows
    in its line begins a statement. */
bool CDbcReader::ReadSymbols()
{
    m_hasSymbols = true;
    m_lexer.TakeSign(':');
    for (t_DbcToken word = m_lexer.Peek(); word.kind == e_DbcToken::Word; word = m_lexer.Peek())
    {
        const bool isHead = word.text == "BS_" || word.text == "BU_" || word.text == "BO_" ||
                            word.text == "VERSION";
        CDbcLexer ahead = m_lexer;
        ahead.Take();
        const t_DbcToken& next = ahead.Peek();
        const bool isWord = next.startsLine || next.kind == e_DbcToken::End ||
                            FindKeyword(next) != nullptr || IsSymbol(next);
        if (isHead || !isWord)
        {
            break;
        }
        m_lexer.Take();
    }
    return true;
}

/** Empty in all but very old files. */
bool CDbcReader::ReadBitTiming()
{
    m_hasBitTiming = true;
    const bool isColon = m_lexer.TakeSign(':');
    const t_DbcToken first = m_lexer.Peek();
    t_DbcToken last = first;
    while (m_lexer.Peek().kind == e_DbcToken::Number || m_lexer.Peek().IsSign(':') ||
           m_lexer.Peek().IsSign(','))
    {
        last = m_lexer.Take();
    }
    if (isColon && m_lexer.Peek().begin != first.begin)
    {
        const std::string_view numbers(first.begin,
                                       static_cast<std::size_t>(last.text.end() - first.begin));
        m_list.database.otherStatements.push_back("BS_: " +
                                                  NDbcText::InOneLine(numbers, m_draft.isUtf8));
    }
    return true;
}

bool CDbcReader::ReadNodes()
{
    m_hasNodes = true;
    if (!m_lexer.TakeSign(':'))
    {
        Warn(m_lexer.Peek().place, QString::fromLatin1("the \":\" behind BU_ is missing"));
    }
    while (!StartsStatement(m_lexer.Peek()) && m_lexer.Peek().kind != e_DbcToken::End &&
           !m_lexer.Peek().BeginsLine() && !m_lexer.TakeSign(';'))
    {
        const t_TextPlace place = m_lexer.Peek().place;
        if (m_lexer.TakeSign(','))
        {
            continue;
        }
        const bool isName = CDbcLexer::StartsName(m_lexer.Peek());
        const std::string_view name = isName ? m_lexer.TakeName() : std::string_view();
        if (name.empty())
        {
            return FailExpected(QString::fromLatin1("the name of a node"));
        }
        if (name == NDbcNames::kNobody)
        {
            continue;
        }
        if (!m_draft.byNode.emplace(name, m_list.database.nodes.size()).second)
        {
            Warn(place, QString::fromLatin1("node %1 is there already").arg(Shown(name)));
            continue;
        }
        KW_LabelNode node;
        node.name = Name(name);
        m_list.database.nodes.push_back(std::move(node));
        if (!CountRecord())
        {
            return false;
        }
    }
    return true;
}

bool CDbcReader::ReadValueTable()
{
    KW_ValueTable table;
    table.name = Name(m_lexer.TakeName());
    if (table.name.empty())
    {
        return FailExpected(QString::fromLatin1("the name of a table"));
    }
    std::vector<t_DbcLabel> labels;
    if (!ReadLabelList(labels) || !CountRecord())
    {
        return false;
    }
    for (t_DbcLabel& label : labels)
    {
        table.labels.insert_or_assign(label.value, std::move(label.text));
    }
    m_list.database.valueTables.push_back(std::move(table));
    return true;
}

bool CDbcReader::ExpectSign(char sign)
{
    return m_lexer.TakeSign(sign) ||
           FailExpected(QLatin1Char('"') + QString(QLatin1Char(sign)) + QLatin1Char('"'));
}

/** The semicolon of a statement, which may be missing before the next. */
bool CDbcReader::ExpectEnd()
{
    const t_DbcToken& next = m_lexer.Peek();
    if (next.kind == e_DbcToken::End || StartsStatement(next))
    {
        Warn(next.place,
             QString::fromLatin1("the \";\" of %1 is missing").arg(Shown(m_keyword.text)));
        return true;
    }
    return ExpectSign(';');
}

/** Passes over the rest of a statement. */
bool CDbcReader::SkipToEnd()
{
    while (!m_lexer.TakeSign(';'))
    {
        const t_DbcToken& next = m_lexer.Peek();
        if (next.kind == e_DbcToken::OpenText)
        {
            return Fail(next.place, QString::fromLatin1("a text has no end"));
        }
        if (next.kind == e_DbcToken::End || StartsStatement(next))
        {
            return ExpectEnd();
        }
        m_lexer.Take();
    }
    return true;
}

bool CDbcReader::ReadInteger(UINT32& number, const char* what)
{
    const t_DbcToken token = m_lexer.Peek();
    const std::string_view digits = m_lexer.TakeDigits();
    if (digits.empty())
    {
        return FailExpected(QString::fromLatin1(what));
    }
    if (std::from_chars(digits.data(), digits.data() + digits.size(), number).ec != std::errc())
    {
        return Fail(token.place, QString::fromLatin1("%1 is out of range: %2")
                                     .arg(Shown(digits), QString::fromLatin1(what)));
    }
    return true;
}

bool CDbcReader::ReadDouble(double& number)
{
    const t_DbcToken token = m_lexer.Peek();
    const bool isWord = token.kind == e_DbcToken::Word;
    if (token.kind != e_DbcToken::Number && !isWord)
    {
        return FailExpected(QString::fromLatin1("a number"));
    }
    std::string_view digits = token.text;
    digits.remove_prefix(digits.front() == '+' ? 1 : 0);
    const char* const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, number);
    const bool isOutside = read.ec == std::errc::result_out_of_range;
    const bool isNumber = read.ptr == end && read.ec == std::errc() && std::isfinite(number);
    if (!isNumber || isWord)
    {
        return Fail(token.place, (isOutside ? QString::fromLatin1("%1 is out of range of numbers")
                                            : QString::fromLatin1("%1 is no finite number"))
                                     .arg(Shown(token.text)));
    }
    m_lexer.Take();
    return true;
}

/** A whole number of 64 bits, signed or not; others are taken when they are whole ("3.0"). */
bool CDbcReader::ReadLabelValue(t_DbcLabel& label)
{
    const t_DbcToken token = m_lexer.Peek();
    std::string_view digits = token.text;
    digits.remove_prefix(!digits.empty() && digits.front() == '+' ? 1 : 0);
    const char* const end = digits.data() + digits.size();
    UINT64 large = 0;
    const auto small = std::from_chars(digits.data(), end, label.value);
    if (token.kind == e_DbcToken::Number && small.ptr == end && small.ec == std::errc())
    {
        m_lexer.Take();
        return true;
    }
    const auto read = std::from_chars(digits.data(), end, large);
    if (token.kind == e_DbcToken::Number && read.ptr == end && read.ec == std::errc())
    {
        label.value = static_cast<INT64>(large);
        label.isLarge = true;
        m_lexer.Take();
        return true;
    }
    double number = 0.0;
    if (!ReadDouble(number))
    {
        return false;
    }
    constexpr double kMaxExact = 9007199254740992.0;
    if (std::trunc(number) != number || std::abs(number) > kMaxExact)
    {
        return Fail(token.place, QString::fromLatin1("%1 labels no raw value: it has to be a whole "
                                                     "number of 64 bits")
                                     .arg(Shown(token.text)));
    }
    label.value = static_cast<INT64>(number);
    return true;
}

bool CDbcReader::ReadLabelList(std::vector<t_DbcLabel>& labels)
{
    while (m_lexer.Peek().kind == e_DbcToken::Number)
    {
        t_DbcLabel label;
        if (!ReadLabelValue(label) || !ReadText(label.text, "a label") || !CountRecord())
        {
            return false;
        }
        labels.push_back(std::move(label));
    }
    return ExpectEnd();
}

bool CDbcReader::ReadText(std::string& text, const char* what)
{
    if (m_lexer.Peek().kind == e_DbcToken::OpenText)
    {
        return Fail(m_lexer.Peek().place, QString::fromLatin1("a text has no end"));
    }
    if (m_lexer.Peek().kind != e_DbcToken::Text)
    {
        return FailExpected(QString::fromLatin1("%1 in quotes").arg(QString::fromLatin1(what)));
    }
    text = NDbcText::Unquoted(m_lexer.Take().text, m_draft.isUtf8);
    return true;
}

bool CDbcReader::CountRecord()
{
    if (++m_recordCount <= NLabelBounds::kMaxItems)
    {
        return true;
    }
    m_isBroken = true;
    return Fail(m_lexer.Peek().place,
                QString::fromLatin1("more than %1 names, labels, attributes and "
                                    "further statements")
                    .arg(NLabelBounds::kMaxItems));
}

bool CDbcReader::Fail(t_TextPlace place, const QString& text)
{
    m_reports.Error(place, text);
    return false;
}

bool CDbcReader::FailExpected(const QString& what)
{
    const t_DbcToken& found = m_lexer.Peek();
    const QString shown = found.kind == e_DbcToken::End ? QString::fromLatin1("the end of the file")
                                                        : Shown(found.text);
    return Fail(found.place, QString::fromLatin1("%1 expected, found %2").arg(what, shown));
}

/** A word of the file for a report: in quotes, without line ends, and not too long. */
QString CDbcReader::Shown(std::string_view text) const
{
    QString shown = QString::fromStdString(Name(text.substr(0, 4 * kLongestShown))).simplified();
    if (shown.size() > kLongestShown)
    {
        shown = shown.left(kLongestShown) + QString::fromLatin1("...");
    }
    return QLatin1Char('"') + shown + QLatin1Char('"');
}

std::string CDbcReader::Name(std::string_view bytes) const
{
    if (m_draft.isUtf8)
    {
        return std::string(bytes);
    }
    std::string name;
    NDbcText::AppendWindows1252(name, bytes);
    return name;
}

bool NLabelFiles::ReadDbc(const QByteArray& text, KW_LabelList& list, CLabelReports& reports,
                          const KW_LabelReadOptions& options)
{
    std::string_view bytes(text.constData(), static_cast<std::size_t>(text.size()));
    if (IsUtf16(bytes))
    {
        reports.Error({1, 1},
                      QString::fromLatin1("encoded as UTF-16; CAN databases are Windows-1252 or "
                                          "UTF-8"));
        return false;
    }
    const bool isMarked = bytes.substr(0, 3) == "\xef\xbb\xbf";
    bytes.remove_prefix(isMarked ? 3 : 0);
    const bool isUtf8 = NDbcText::IsUtf8(bytes);
    const t_TextPlace firstReturn = FirstReturn(bytes);
    if (firstReturn.line > 0)
    {
        reports.Warning(firstReturn,
                        QString::fromLatin1("lines end with carriage return and line feed; "
                                            "they are written with a line feed"));
    }
    CDbcReader reader(bytes, isUtf8, list, reports);
    if (!reader.Read())
    {
        return false;
    }
    const bool isAscii = std::none_of(bytes.begin(), bytes.end(),
                                      [](char c) { return static_cast<UINT8>(c) > 127; });
    list.database.isUtf8 = isUtf8 && (!isAscii || isMarked);
    NDbcDraft::Assemble(reader.Draft(), list, reports);
    return reports.ErrorCount() == 0 || options.skipsBadMessages;
}
