// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgLabelListSettingsBase.h"
#include "LabelList/LabelList.h"
#include "LabelList/LabelReports.h"

#include <QString>

class CDbPropString;
class CPgSerialBusLabelItem;
class CPgSignalTranslation;

/**
 * Writes messages as the labels of a list, one after the other, and reports what does not fit.
 * Under the tree's lock, in a scope of the kind Recall: limits follow the values, and no rule runs
 * before all labels are there.
 */
class CLabelImport
{
public:
    CLabelImport(CPgLabelListSettingsBase& settings, CLabelReports& reports)
        : m_settings(settings), m_reports(reports)
    {
    }

    /** All of a list in place of the labels that stand. */
    void Replace(const KW_LabelList& list);

private:
    void Add(const KW_LabelEntry& entry);
    /** Whether a message is within the rules of lists; what is not is reported. */
    bool IsGood(const KW_LabelEntry& entry);
    void WriteMessage(CPgSerialBusLabelItem& label, const KW_LabelEntry& entry);
    void AddSignals(CPgSerialBusLabelItem& label, const KW_LabelEntry& entry);
    void AddSignal(CPgSerialBusLabelItem& label, const CLabelListSignal& signal,
                   const KW_LabelSignalDetails& details);
    /** What can not be left out of a signal without it meaning something else; a refusal is its
        reason. */
    QString WriteMeaning(CPgSignalTranslation& item, const CLabelListSignal& signal,
                         const KW_LabelSignalDetails& details);
    void WriteLimits(const CPgSignalTranslation& item, const CLabelListSignal& signal);
    void AddTexts(const CPgSignalTranslation& item, const CLabelListSignal& signal);

    /** As much of a text as the property takes; `what` names it in the report. */
    QString Fitting(const CDbPropString& property, const std::string& text, const char* what);
    void Write(CDbPropString& property, const std::string& text, const char* what);
    void Tell(const QString& text);
    void TellRest();

    CPgLabelListSettingsBase& m_settings;
    CLabelReports& m_reports;
    QString m_message; ///< names of what is written, for reports
    QString m_signal;
    KW_ZEL_SERIALBUS_PROTOCOL m_protocol = eKW_ZEL_SERIALBUS_PROTOCOL_CAN;
    std::size_t m_nodes = 0;       ///< that came into being
    std::size_t m_leftOut = 0;     ///< messages without room
    std::size_t m_cutComments = 0; ///< of messages
};
