// SPDX-License-Identifier: MIT
#include "Buses/LabelExchange.h"

#include "Buses/LabelImport.h"
#include "Buses/PgmSerialBusLabelItem.h"
#include "Buses/PgmSignalTranslation.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "IKWFunctionLabelListSettings.h"
#include "KWErrorReport.h"
#include "LabelList/LabelListTree.h"
#include "LockManager.h"
#include "Rules/FileRules.h"

#include <QStringList>
#include <algorithm>
#include <set>

namespace
{
const NRules::ILabelledBus& BusOf(const CPgLabelListSettingsBase& settings)
{
    return dynamic_cast<const NRules::ILabelList&>(settings).Bus();
}

/** Why the list can not be replaced by one of a bus now. */
KW_ACCEPTANCE CheckAccess(const CPgLabelListSettingsBase& settings,
                          KW_ZEL_SERIALBUS_PROTOCOL protocol, CLabelReports& reports)
{
    const CLockGuard lock(eACCESS_READ);
    const CDbPgRoot* const root = settings.GetDbRoot();
    if (root == nullptr)
    {
        return eKW_ACC_DETACHED;
    }
    if (!root->MayWrite())
    {
        return eKW_ACC_NO_WRITE_ACCESS;
    }
    if (settings.GetAvailability() != eAVAILABILITY_AVAILABLE)
    {
        return eKW_ACC_NOT_AVAILABLE;
    }
    if (BusOf(settings).Protocol() != protocol)
    {
        reports.Error({}, QStringLiteral("the list is one of another bus"));
        return eKW_ACC_WRONG_KIND;
    }
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CodeOf(const CLabelReports& reports)
{
    return reports.IsEmpty() ? eKW_ACC_OK : eKW_ACC_WARNING;
}

/** What a list can have and the tree has no nodes for. */
enum eUNHELD
{
    eUNHELD_COMMENTS,
    eUNHELD_SENDERS,
    eUNHELD_RECEIVERS,
    eUNHELD_CYCLE_TIMES,
    eUNHELD_FD,
    eUNHELD_MULTIPLEXORS,
    eUNHELD_LABELS,
    eUNHELD_SHORT_NAMES,
    eUNHELD_ATTRIBUTES,
    eUNHELD_NODES,
    eUNHELD_TABLES,
    eUNHELD_STATEMENTS,
    eUNHELD_COUNT
};

constexpr const char* kUnheldNames[eUNHELD_COUNT] = {
    "comments of signals and lists",
    "senders",
    "receivers",
    "cycle times",
    "marks of CAN FD frames",
    "multiplexors of no signal",
    "labels of values that the signal can not have or above 32 bits",
    "short names",
    "attributes",
    "nodes of the network",
    "named tables of values",
    "further statements of a CAN database",
};

using t_Counts = std::size_t[eUNHELD_COUNT];

void CountSignals(const KW_LabelEntry& entry, t_Counts& counts)
{
    std::set<std::string> multiplexors;
    for (const auto& [key, details] : entry.details.signalDetails)
    {
        multiplexors.insert(details.multiplexor);
    }
    for (const auto& [key, details] : entry.details.signalDetails)
    {
        const auto signal = entry.message.getSignals().find(key);
        const bool isIdle =
            details.isMultiplexor && (signal == entry.message.getSignals().end() ||
                                      multiplexors.count(signal->second.getName()) == 0);
        counts[eUNHELD_COMMENTS] += details.comment.empty() ? 0 : 1;
        counts[eUNHELD_RECEIVERS] += details.receivers.size();
        counts[eUNHELD_MULTIPLEXORS] += isIdle ? 1 : 0;
        counts[eUNHELD_LABELS] += details.furtherLabels.size();
        counts[eUNHELD_SHORT_NAMES] += details.shortName.empty() ? 0 : 1;
        counts[eUNHELD_ATTRIBUTES] += details.attributes.size();
    }
}

void CountMessage(const KW_LabelEntry& entry, bool isCan, t_Counts& counts)
{
    const KW_LabelMessageDetails& details = entry.details;
    const bool isShort = !CPgSerialBusLabelItem::IsFd(entry.message.getLength());
    const bool isMarked = isCan && (details.hasBitRateSwitch || (details.isFd && isShort));
    counts[eUNHELD_SENDERS] += details.senders.size();
    counts[eUNHELD_CYCLE_TIMES] += details.cycleTime ? 1 : 0;
    counts[eUNHELD_FD] += isMarked ? 1 : 0;
    counts[eUNHELD_SHORT_NAMES] += details.shortName.empty() ? 0 : 1;
    counts[eUNHELD_ATTRIBUTES] += details.attributes.size();
    CountSignals(entry, counts);
}

/** Signals of a type that the payload is too short for are in no list. */
void TellUnplaced(const CPgSerialBusLabelItem& label, const KW_LabelEntry& entry,
                  CLabelReports& reports)
{
    const auto all = static_cast<std::size_t>(label.GetPgSignalTranslation()->GetCount());
    if (const auto left = all - entry.details.signalsInOrder.size(); left > 0)
    {
        reports.Warning({}, QStringLiteral("message \"%1\": %2 signals left out that lie in no "
                                           "payload of %3 bytes")
                                .arg(QString::fromStdString(entry.message.getName()))
                                .arg(left)
                                .arg(entry.message.getLength()));
    }
}

void Tell(const QString& fileName, const std::vector<KW_LabelReport>& reports)
{
    for (const KW_LabelReport& report : reports)
    {
        _KW_ProcessErrorString(KW_FormatLabelReport(fileName, report), __LINE__,
                               "Buses/LabelExchange", Q_FUNC_INFO, report.type);
    }
}
} // namespace

void NLabelExchange::TellUnheld(const KW_LabelList& list, CLabelReports& reports)
{
    t_Counts counts{};
    const bool isCan = list.protocol == eKW_ZEL_SERIALBUS_PROTOCOL_CAN;
    for (const KW_LabelEntry& entry : list.messages)
    {
        CountMessage(entry, isCan, counts);
    }
    const KW_CanDatabase& database = list.database;
    counts[eUNHELD_COMMENTS] += list.comment.empty() ? 0 : 1;
    counts[eUNHELD_ATTRIBUTES] += database.attributes.size();
    counts[eUNHELD_NODES] = database.nodes.size();
    counts[eUNHELD_TABLES] = database.valueTables.size();
    counts[eUNHELD_STATEMENTS] = database.otherStatements.size();
    QStringList texts;
    for (int i = 0; i < eUNHELD_COUNT; ++i)
    {
        if (counts[i] > 0)
        {
            texts << QStringLiteral("%1 (%2)").arg(QLatin1String(kUnheldNames[i])).arg(counts[i]);
        }
    }
    if (!texts.isEmpty())
    {
        reports.Warning({}, QStringLiteral("the tree does not hold ") +
                                texts.join(QStringLiteral(", ")));
    }
}

KW_ACCEPTANCE NLabelExchange::Put(CPgLabelListSettingsBase& settings, const KW_LabelList& list,
                                  CLabelReports& reports)
{
    const CLockGuard lock;
    if (const KW_ACCEPTANCE access = CheckAccess(settings, list.protocol, reports);
        access > eKW_ACC_WARNING)
    {
        return access;
    }
    CDbPgRoot& root = *settings.GetDbRoot();
    CDbTransaction transaction(root, QStringLiteral("Load labels"));
    {
        const CDbRootScope scope(&root, eWRITEKIND::Recall);
        CLabelImport(settings, reports).Replace(list);
        dynamic_cast<NRules::ILabelList&>(settings).FitToBus();
    }
    TellUnheld(list, reports);
    transaction.Commit();
    return CodeOf(reports);
}

KW_ACCEPTANCE NLabelExchange::Get(const CPgLabelListSettingsBase& settings, KW_LabelList& list,
                                  CLabelReports& reports)
{
    const CLockGuard lock(eACCESS_READ);
    if (settings.GetDbRoot() == nullptr)
    {
        return eKW_ACC_DETACHED;
    }
    KW_LabelList got;
    got.protocol = BusOf(settings).Protocol();
    got.name = settings.GetPrName()->Get().toStdString();
    int off = 0;
    settings.GetPgSerialBusLabelItem()->VisitItems(
        [&got, &off, &reports](CDbPropertyGroup& item)
        {
            const auto& label = static_cast<const CPgSerialBusLabelItem&>(item);
            got.messages.push_back(label.GivenMessage());
            TellUnplaced(label, got.messages.back(), reports);
            off += label.IsWanted() ? 0 : 1;
        });
    if (off > 0)
    {
        reports.Warning({},
                        QStringLiteral("%1 labels that are off: a list does not say so").arg(off));
    }
    list = std::move(got);
    return CodeOf(reports);
}

KW_ACCEPTANCE NLabelExchange::Load(CPgLabelListSettingsBase& settings)
{
    const QString fileName = NRules::PathOf(*settings.GetPrFile());
    if (fileName.isEmpty())
    {
        return eKW_ACC_BAD_NAME;
    }
    KW_LabelList list;
    std::vector<KW_LabelReport> reports;
    KW_ACCEPTANCE code = KW_ReadLabelFile(fileName, list, reports);
    if (code <= eKW_ACC_WARNING)
    {
        CLabelReports collected;
        code = std::max(code, Put(settings, list, collected));
        collected.MoveTo(reports);
    }
    Tell(fileName, reports);
    return code;
}

KW_ACCEPTANCE NLabelExchange::Save(const CPgLabelListSettingsBase& settings)
{
    const QString fileName = NRules::PathOf(*settings.GetPrFile());
    if (fileName.isEmpty())
    {
        return eKW_ACC_BAD_NAME;
    }
    KW_LabelList list;
    CLabelReports collected;
    std::vector<KW_LabelReport> reports;
    KW_ACCEPTANCE code = Get(settings, list, collected);
    collected.MoveTo(reports);
    if (code <= eKW_ACC_WARNING)
    {
        NRules::MakeFolderOf(fileName);
        code = std::max(code, KW_WriteLabelFile(fileName, list, reports));
    }
    Tell(fileName, reports);
    return code;
}

KW_ACCEPTANCE KW_PutLabels(IKWFunctionLabelListSettings& settings, const KW_LabelList& list,
                           std::vector<KW_LabelReport>& reports)
{
    const std::shared_ptr<IDbGroup> node = settings.GetDbObject();
    CLabelReports collected;
    const KW_ACCEPTANCE code =
        NLabelExchange::Put(dynamic_cast<CPgLabelListSettingsBase&>(*node), list, collected);
    collected.MoveTo(reports);
    return code;
}

KW_ACCEPTANCE KW_GetLabels(const IKWFunctionLabelListSettings& settings, KW_LabelList& list,
                           std::vector<KW_LabelReport>& reports)
{
    const std::shared_ptr<IDbGroup> node = settings.GetDbObject();
    CLabelReports collected;
    const KW_ACCEPTANCE code =
        NLabelExchange::Get(dynamic_cast<const CPgLabelListSettingsBase&>(*node), list, collected);
    collected.MoveTo(reports);
    return code;
}
