// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/DbcDraft.h"
#include "LabelList/DbcLexer.h"

#include <QString>

/**
 * Reads the statements of a CAN database one after the other. Each function of a statement begins
 * behind its keyword; one that answers false has reported an error, and reading goes on with the
 * next statement.
 */
class CDbcReader
{
public:
    CDbcReader(std::string_view text, bool isUtf8, KW_LabelList& list, CLabelReports& reports);

    /** Reads all of it into the draft and the list's database; false where statements can not be
        told apart any more, or are more than a label list holds. */
    bool Read();

    t_DbcDraft& Draft() { return m_draft; }

private:
    using t_Statement = bool (CDbcReader::*)();
    struct t_Keyword
    {
        std::string_view text;
        t_Statement read;
    };
    static const t_Keyword kKeywords[];

    /** What a statement is about: an object of the list. */
    struct t_Object
    {
        KW_LabelAttributes* attributes = nullptr; ///< null: there is no such object
        std::string* comment = nullptr;
    };

    static const t_Keyword* FindKeyword(const t_DbcToken& token);
    static bool StartsStatement(const t_DbcToken& token);

    bool ReadStatement();
    bool ReadStray(const t_DbcToken& token);
    bool IsUnknownStatement(const t_DbcToken& token) const;
    bool Recover(const t_DbcToken& keyword);
    void WarnOfMissing();

    /** Head of the file. */
    ///@{
    bool ReadVersion();
    bool ReadSymbols();
    bool ReadBitTiming();
    bool ReadNodes();
    bool ReadValueTable();
    ///@}

    /** Messages. */
    ///@{
    bool ReadMessage();
    bool ReadMessageHead(t_DbcMessage& message);
    bool ReadNumber(t_DbcMessage& message);
    bool ReadSignal();
    bool ReadSignalName(t_DbcSignal& signal);
    bool ReadMark(std::string_view mark, t_TextPlace place, t_DbcSignal& signal);
    bool ReadBits(t_DbcSignal& signal);
    bool ReadScaling(t_DbcSignal& signal);
    bool ReadUnit(t_DbcSignal& signal);
    bool ReadReceivers(t_DbcSignal& signal);
    bool AddSignal(t_DbcMessage& message, t_DbcSignal&& signal);
    bool ReadNames(std::vector<std::string>& names);
    bool AddName(std::vector<std::string>& names, std::string_view name);
    bool KeepSignalsWithoutMessage();
    ///@}

    /** What is said of messages and signals. */
    ///@{
    bool ReadSenders();
    bool ReadComment();
    bool ReadDefinition();
    bool ReadRelationDefinition();
    bool ReadDefault();
    bool ReadRelationDefault();
    bool ReadAttribute();
    bool ReadLabels();
    bool ReadValueType();
    bool ReadPages();
    bool ReadPage(std::vector<KW_RawRange>& ranges);
    bool TakePages(t_DbcSignal& signal, t_DbcSignal& multiplexor,
                   std::vector<KW_RawRange>&& ranges);
    bool ReadDependent();
    bool ReadRelation();
    bool KeepWithMessage();
    bool KeepStatement();
    ///@}

    bool DefineAttribute(std::string object);
    bool ReadDefaultOf(std::map<std::string, t_DbcDefault>& defaults);
    bool ReadAttributeValue(KW_LabelAttribute& attribute);
    bool ReadObject(t_Object& object, bool& isKept);
    bool ReadNodeObject(t_Object& object);
    bool ReadMessageObject(t_Object& object, bool& isKept, bool isSignal);
    bool PassOver(bool isKept);

    /** A message by its number, a signal by its name. Null for those that are unknown, which a
        warning says, or bad; `isKept` for signals without a message, whose statements are kept as
        they stand. */
    bool FindMessage(t_DbcMessage*& message, bool& isKept);
    bool FindSignal(t_DbcMessage& message, t_DbcSignal*& signal);
    std::string_view TakeSignalName(const t_DbcMessage& message);

    bool ExpectSign(char sign);
    bool ExpectEnd();
    bool SkipToEnd();
    bool ReadInteger(UINT32& number, const char* what);
    bool ReadDouble(double& number);
    bool ReadLabelValue(t_DbcLabel& label);
    bool ReadLabelList(std::vector<t_DbcLabel>& labels);
    bool ReadText(std::string& text, const char* what);

    bool CountRecord();
    bool Fail(t_TextPlace place, const QString& text);
    bool FailExpected(const QString& what);
    void Warn(t_TextPlace place, const QString& text) { m_reports.Warning(place, text); }
    QString Shown(std::string_view text) const;
    std::string Name(std::string_view bytes) const;

    CDbcLexer m_lexer;
    KW_LabelList& m_list;
    CLabelReports& m_reports;
    t_DbcDraft m_draft;
    t_DbcToken m_keyword;     ///< of the statement that is read
    bool m_isBroken = false;  ///< reading can not go on
    bool m_isMessage = false; ///< what was read last belongs to the last message
    std::size_t m_signalCount = 0;
    std::size_t m_recordCount = 0;
    bool m_hasVersion = false;
    bool m_hasSymbols = false;
    bool m_hasBitTiming = false;
    bool m_hasNodes = false;
};
