// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/DbcFields.h"
#include "LabelList/LabelReports.h"

#include <QString>
#include <span>
#include <unordered_map>

/** Writes a label list as a CAN database, section by section, in UTF-8. */
class CDbcWriter
{
public:
    CDbcWriter(const KW_LabelList& list, CLabelReports& reports);

    const std::string& Write();

private:
    /** Statements name a message by its number and a signal by its name: what is said so of a
        second one would be taken for the first. */
    struct t_Signal
    {
        const CLabelListSignal* signal;
        const KW_LabelSignalDetails* details;
        std::string name; ///< in the file
        bool isNamed = true;
        bool isMultiplexor = false;
        const t_Signal* multiplexor = nullptr;
    };
    struct t_Message
    {
        const KW_LabelEntry* entry;
        std::string name;
        UINT32 number = 0;
        bool isNamed = true;
        bool isExtended = false; ///< multiplexing that marks alone do not tell
        KW_LabelAttributes attributes;
        std::vector<t_Signal> all;
    };

    void Prepare();
    void PrepareNodes();
    void PrepareMessages();
    void PrepareSignals(t_Message& message);
    void PrepareMultiplexing(t_Message& message);
    void SelectSignal(t_Message& message, t_Signal& signal,
                      const std::unordered_map<std::string_view, std::size_t>& places);
    void WarnOfUnnamed(const t_Message& message);

    void WriteHead();
    void WriteSymbols();
    void WriteValueTables();
    void WriteMessages();
    void WriteSignal(const t_Signal& signal);
    void WriteSenders();
    void WriteComments();
    void WriteDefinitions();
    void WriteRelationDefinitions();
    void WriteDefaultValues();
    void WriteRelationDefaults();
    void WriteAttributes();
    void WriteLabels();
    void WriteValueTypes();
    void WritePages();
    void WriteOthersBefore(int rank);
    void WriteOther(const std::string& statement);

    void WriteDefinitionsOf(bool isRelation);
    void WriteDefaultValuesOf(bool isRelation);
    void WriteComment(const std::string& object, const std::string& comment);
    void WriteAttributesOf(const std::string& object, const KW_LabelAttributes& attributes);
    void WriteValue(const KW_LabelAttribute& value);
    void WriteNames(std::span<const std::string> names);
    void WriteNumber(double number);

    KW_LabelAttributes AttributesOf(const t_Signal& signal) const;
    static std::string ObjectOf(const t_Message& message);
    static std::string ObjectOf(const t_Message& message, const t_Signal& signal);
    std::string NodeInFile(const std::string& name);
    std::string Listed(const std::string& name);
    void Warn(const QString& text) { m_reports.Warning({}, text); }

    const KW_LabelList& m_list;
    CLabelReports& m_reports;
    std::vector<KW_AttributeDefinition> m_definitions;
    std::vector<std::string> m_nodes; ///< their names in the file
    std::unordered_map<std::string, std::string> m_nodeInFile;
    std::vector<t_Message> m_messages;
    std::vector<std::string> m_others; ///< in their order in the file
    std::size_t m_nextOther = 0;
    std::string m_text;
};
