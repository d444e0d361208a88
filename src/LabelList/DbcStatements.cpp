// SPDX-License-Identifier: MIT
#include "LabelList/DbcReader.h"
#include "LabelList/DbcText.h"

#include <charconv>

namespace
{
bool IsKindOfObject(std::string_view word)
{
    return word == "BU_" || word == "BO_" || word == "SG_" || word == "EV_";
}

std::string_view Between(const t_DbcToken& first, const t_DbcToken& behind)
{
    return {first.begin, static_cast<std::size_t>(behind.begin - first.begin)};
}
} // namespace

/** Keeps a statement that says nothing of messages and signals; it goes on behind what has been
   read of it, as an object that begins a line looks like the next statement. */
bool CDbcReader::KeepStatement()
{
    if (!SkipToEnd() || !CountRecord())
    {
        return false;
    }
    std::string statement = NDbcText::InOneLine(Between(m_keyword, m_lexer.Peek()), m_draft.isUtf8);
    if (statement.back() != ';')
    {
        statement += ';';
    }
    m_list.database.otherStatements.push_back(std::move(statement));
    return true;
}

/** The message that stands for none holds signals in store; it is no message of the bus, and its
    lines have no semicolon. */
bool CDbcReader::KeepSignalsWithoutMessage()
{
    while (m_lexer.Peek().kind != e_DbcToken::End)
    {
        const t_DbcToken& next = m_lexer.Peek();
        const bool isSignal = next.IsWord("SG_");
        const bool isOther = StartsStatement(next) || next.BeginsLine() || next.IsSign(';');
        if (next.IsWord("BO_") || (isOther && !isSignal))
        {
            break;
        }
        if (next.kind == e_DbcToken::OpenText)
        {
            m_isBroken = true;
            return Fail(next.place, QString::fromLatin1("a text has no end"));
        }
        m_lexer.Take();
    }
    m_list.database.otherStatements.push_back(
        NDbcText::InOneLine(Between(m_keyword, m_lexer.Peek()), m_draft.isUtf8));
    return CountRecord();
}

/** The rest of a statement that is about something unknown, or of none of the messages. */
bool CDbcReader::PassOver(bool isKept)
{
    return isKept ? KeepStatement() : SkipToEnd();
}

/** "SIG_GROUP_ number …;" and the like, which nobody but their readers need to understand. */
bool CDbcReader::ReadDependent()
{
    return KeepWithMessage();
}

/** 'BA_REL_ "name" kind node number value;', with SG_ before the number of a signal's message. */
bool CDbcReader::ReadRelation()
{
    std::string name;
    if (!ReadText(name, "the name of an attribute"))
    {
        return false;
    }
    if (StartsStatement(m_lexer.Peek()))
    {
        return KeepStatement();
    }
    if (m_lexer.Peek().kind == e_DbcToken::Word)
    {
        m_lexer.Take();
    }
    m_lexer.TakeName();
    m_lexer.TakeExactly("SG_");
    return m_lexer.Peek().kind == e_DbcToken::Number ? KeepWithMessage() : KeepStatement();
}

/** Keeps a statement as long as there is the message whose number comes next. */
bool CDbcReader::KeepWithMessage()
{
    t_DbcMessage* message = nullptr;
    bool isKept = false;
    if (!FindMessage(message, isKept))
    {
        return false;
    }
    if (message == nullptr)
    {
        return PassOver(isKept);
    }
    if (!KeepStatement())
    {
        return false;
    }
    auto& kept = m_list.database.otherStatements;
    m_draft.dependents.emplace_back(static_cast<std::size_t>(message - m_draft.messages.data()),
                                    std::move(kept.back()));
    kept.pop_back();
    return true;
}

bool CDbcReader::FindMessage(t_DbcMessage*& message, bool& isKept)
{
    const t_TextPlace place = m_lexer.Peek().place;
    UINT32 number = 0;
    if (!ReadInteger(number, "the number of a message"))
    {
        return false;
    }
    isKept = number == NDbcDraft::kNoMessage;
    const auto found = m_draft.byNumber.find(NDbcDraft::NumberOf(number));
    if (isKept)
    {
        return true;
    }
    if (found == m_draft.byNumber.end())
    {
        Warn(place, QString::fromLatin1("there is no message %1; what %2 says of it is left out")
                        .arg(number)
                        .arg(Shown(m_keyword.text)));
        return true;
    }
    t_DbcMessage& known = m_draft.messages[found->second];
    message = known.isBad ? nullptr : &known;
    return true;
}

/** A name as far as it goes, or one of the message's with blanks in it. */
std::string_view CDbcReader::TakeSignalName(const t_DbcMessage& message)
{
    for (const UINT32 odd : message.oddNames)
    {
        const std::string_view name = message.signalList[odd].name;
        if (m_lexer.TakeExactly(name))
        {
            return name;
        }
    }
    return m_lexer.TakeName();
}

bool CDbcReader::FindSignal(t_DbcMessage& message, t_DbcSignal*& signal)
{
    const t_TextPlace place = m_lexer.Peek().place;
    const std::string_view name = TakeSignalName(message);
    if (name.empty())
    {
        return FailExpected(QString::fromLatin1("the name of a signal"));
    }
    signal = NDbcDraft::FindSignal(message, name);
    if (signal == nullptr)
    {
        Warn(place,
             QString::fromLatin1("message %1 has no signal %2; what %3 says of it is left out")
                 .arg(Shown(message.name), Shown(name), Shown(m_keyword.text)));
    }
    return true;
}

/** What CM_ and BA_ are about: nothing named is the list. */
bool CDbcReader::ReadObject(t_Object& object, bool& isKept)
{
    const t_DbcToken next = m_lexer.Peek();
    if (next.kind != e_DbcToken::Word || !IsKindOfObject(next.text))
    {
        object = {&m_list.database.attributes, &m_list.comment};
        return true;
    }
    m_lexer.Take();
    if (next.text == "EV_")
    {
        isKept = true;
        return true;
    }
    return next.text == "BU_" ? ReadNodeObject(object)
                              : ReadMessageObject(object, isKept, next.text == "SG_");
}

bool CDbcReader::ReadNodeObject(t_Object& object)
{
    const t_TextPlace place = m_lexer.Peek().place;
    const std::string_view name = m_lexer.TakeName();
    if (name.empty())
    {
        return FailExpected(QString::fromLatin1("the name of a node"));
    }
    const auto found = m_draft.byNode.find(name);
    if (found == m_draft.byNode.end())
    {
        Warn(place, QString::fromLatin1("there is no node %1; what %2 says of it is left out")
                        .arg(Shown(name), Shown(m_keyword.text)));
        return true;
    }
    KW_LabelNode& node = m_list.database.nodes[found->second];
    object = {&node.attributes, &node.comment};
    return true;
}

bool CDbcReader::ReadMessageObject(t_Object& object, bool& isKept, bool isSignal)
{
    t_DbcMessage* message = nullptr;
    if (!FindMessage(message, isKept))
    {
        return false;
    }
    if (message == nullptr)
    {
        return true;
    }
    if (!isSignal)
    {
        object = {&message->details.attributes, &message->details.comment};
        return true;
    }
    t_DbcSignal* signal = nullptr;
    if (!FindSignal(*message, signal))
    {
        return false;
    }
    if (signal != nullptr)
    {
        object = {&signal->details.attributes, &signal->details.comment};
    }
    return true;
}

/** 'CM_ object "text";'. */
bool CDbcReader::ReadComment()
{
    t_Object object;
    bool isKept = false;
    if (!ReadObject(object, isKept))
    {
        return false;
    }
    if (object.comment == nullptr)
    {
        return PassOver(isKept);
    }
    if (!object.comment->empty())
    {
        Warn(m_keyword.place, QString::fromLatin1("a second comment of the same; this one counts"));
    }
    return ReadText(*object.comment, "a comment") && ExpectEnd();
}

/** 'BA_DEF_ kind "name" type;'. */
bool CDbcReader::ReadDefinition()
{
    const t_DbcToken next = m_lexer.Peek();
    if (next.kind != e_DbcToken::Word)
    {
        return DefineAttribute({});
    }
    if (!IsKindOfObject(next.text))
    {
        return FailExpected(QString::fromLatin1("BU_, BO_, SG_, EV_ or the name of an attribute"));
    }
    m_lexer.Take();
    return DefineAttribute(std::string(next.text));
}

bool CDbcReader::ReadRelationDefinition()
{
    const t_DbcToken next = m_lexer.Peek();
    if (next.kind != e_DbcToken::Word)
    {
        return FailExpected(QString::fromLatin1("the kind of a relation"));
    }
    m_lexer.Take();
    return DefineAttribute(std::string(NDbcText::kRelations) + Name(next.text));
}

bool CDbcReader::DefineAttribute(std::string object)
{
    KW_AttributeDefinition definition;
    definition.object = std::move(object);
    if (!ReadText(definition.name, "the name of an attribute"))
    {
        return false;
    }
    const t_DbcToken type = m_lexer.Peek();
    if (type.kind != e_DbcToken::Word || StartsStatement(type))
    {
        return FailExpected(QString::fromLatin1("the type of an attribute"));
    }
    while (!m_lexer.Peek().IsSign(';') && m_lexer.Peek().kind != e_DbcToken::End &&
           !StartsStatement(m_lexer.Peek()))
    {
        if (m_lexer.Peek().kind == e_DbcToken::OpenText)
        {
            return Fail(m_lexer.Peek().place, QString::fromLatin1("a text has no end"));
        }
        m_lexer.Take();
    }
    definition.type = NDbcText::InOneLine(Between(type, m_lexer.Peek()), m_draft.isUtf8);
    m_list.database.attributeDefinitions.push_back(std::move(definition));
    return ExpectEnd() && CountRecord();
}

bool CDbcReader::ReadDefault()
{
    return ReadDefaultOf(m_draft.defaults);
}

bool CDbcReader::ReadRelationDefault()
{
    return ReadDefaultOf(m_draft.relationDefaults);
}

bool CDbcReader::ReadDefaultOf(std::map<std::string, t_DbcDefault>& defaults)
{
    std::string name;
    t_DbcDefault value;
    value.place = m_keyword.place;
    if (!ReadText(name, "the name of an attribute") || !ReadAttributeValue(value.value) ||
        !ExpectEnd() || !CountRecord())
    {
        return false;
    }
    defaults.insert_or_assign(std::move(name), std::move(value));
    return true;
}

/** 'BA_ "name" object value;'. */
bool CDbcReader::ReadAttribute()
{
    const t_TextPlace place = m_lexer.Peek().place;
    std::string name;
    t_Object object;
    bool isKept = false;
    if (!ReadText(name, "the name of an attribute") || !ReadObject(object, isKept))
    {
        return false;
    }
    if (object.attributes == nullptr)
    {
        return PassOver(isKept);
    }
    KW_LabelAttribute value;
    if (!ReadAttributeValue(value) || !ExpectEnd() || !CountRecord())
    {
        return false;
    }
    m_draft.used.try_emplace(name, place);
    object.attributes->insert_or_assign(std::move(name), std::move(value));
    return true;
}

/** A number stays as it is written. */
bool CDbcReader::ReadAttributeValue(KW_LabelAttribute& attribute)
{
    attribute.isText = m_lexer.Peek().kind == e_DbcToken::Text;
    if (attribute.isText)
    {
        return ReadText(attribute.value, "a value");
    }
    const t_DbcToken token = m_lexer.Peek();
    double number = 0.0;
    if (token.kind != e_DbcToken::Number)
    {
        return FailExpected(QString::fromLatin1("a number or a text in quotes"));
    }
    attribute.value = Name(token.text);
    return ReadDouble(number);
}

/** 'VAL_ number signal 0 "label" 1 "label";', or of an environment variable, which has no number.
 */
bool CDbcReader::ReadLabels()
{
    if (m_lexer.Peek().kind == e_DbcToken::Word && !StartsStatement(m_lexer.Peek()))
    {
        return KeepStatement();
    }
    t_DbcMessage* message = nullptr;
    t_DbcSignal* signal = nullptr;
    bool isKept = false;
    if (!FindMessage(message, isKept) || (message != nullptr && !FindSignal(*message, signal)))
    {
        return false;
    }
    return signal == nullptr ? PassOver(isKept) : ReadLabelList(signal->labels);
}
