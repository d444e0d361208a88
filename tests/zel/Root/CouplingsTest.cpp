// SPDX-License-Identifier: MIT
// What the rules declare against what they do: every change is watched with the rows that run.
#include "../RuleTree.h"
#include "CommonDatabase/Containers/DbContainerBase.h"
#include "CommonDatabase/Nodes/DbWays.h"
#include "KWCouplings.h"
#include "Root/PgZEL.h"

#include <algorithm>
#include <map>
#include <set>

namespace
{
/** What hardly comes about by chance: in a tree of its own whose containers have an item. */
constexpr const char* kSituations[] = {
    "Horizontal/ReferencePoint = 10",
    "Vertical/Channel[1]/Enabled = OFF; ..Channel[2]/Enabled = OFF; ..Channel[3]/Enabled = OFF; "
    "Horizontal/ZELMode = ZEL_C",
    "Vertical/Channel[0]/Position = 1; .Offset = 0.1; .ResetPosition",
    "@Vertical/ReferenceCurve/ReferenceCurveAttributes/RecordLength = 100; @.OriginalScale = 5; "
    "@.OriginalTimeScale = 1e-06; Vertical/ReferenceCurve/SetToOriginal",
    "@Vertical/ReferenceCurve/ReferenceCurveAttributes/Unit = LEVEL_A",
    "Vertical/Channel[1]/Enabled = OFF; ..Channel[3]/Enabled = OFF; Horizontal/ZELMode = ZEL_B",
    "Vertical/Channel[0]/ProbeType = CURRENT_1_V_PER_A",
    "Vertical/Channel[1]/ProbeType = CURRENT_1_V_PER_A; .Enabled = ON; Mathematics/SourceA = C2; "
    "Cursor/Source = C2; Vertical/Channel[1]/Enabled = OFF",
    "Mathematics/Enabled = ON; Cursor/Source = M1; .Y1 = 1; "
    ".CursorMeasurements/CursorMeasurement[0]/Source = M1; @.Result = 1; "
    "Measurements/Measurement[0]/Source = M1; @.Actual = 1; Mathematics/Type = SUBTRACT; .Type = "
    "MULTIPLY; .Scale = 0.001",
    "Vertical/Channel[2]/Enabled = OFF; Mathematics/Enabled = ON; .Expression = sqr(C3); "
    "Cursor/Source = M1; Mask/MaskSettings/Source = M1; Vertical/ReferenceCurve/Source = M1; "
    "Mathematics/UseExpression = ON",
    "Zoom/CoupleToCursor = ON; Cursor/X1 = -1e-7; Horizontal/Scale = 1e-8",
    "@Harmonic/FundamentalFrequency = 100; Harmonic/AutoSet; .FundamentalSource = C2",
    "@Harmonic/HarmonicUIResults/HarmonicChannelUIResult[0]/HarmonicMagnitudeUIResult[0]/Order "
    "= 5; @.Magnitude = 1; Harmonic/HarmonicSelected[0]/SelectLargest",
    "@Harmonic/HarmonicUIResults/AveragesDone = 3; Harmonic/ResetAverage",
    "@Harmonic/HarmonicSelected[2]/Magnitude = 1; Vertical/Channel[2]/Enabled = OFF",
    "Harmonic/HarmonicStandard/Standard = USER; .HarmonicLimitUser/ThdLimit = 1; .PwhdLimit = 5",
    "Harmonic/HarmonicStandard/Standard = MIL_STD_1399; .RatedPower = 500; "
    "Harmonic/Fundamental = F_400_HZ; .UserFundamental = 400; .Fundamental = USER; "
    ".UserFundamental = 60",
    "Horizontal/Scale = 1e-8; Preset", "Horizontal/Scale = 1e-8; PresetFactory",
    "Logger/HorizontalScale = 1_MIN; AutosetLogger",
    "@Logger/LoggerAttributes/LoggerChannel[0]/Minimum = 1; @.Maximum = 2; "
    "Logger/LoggerAttributes/LoggerChannel[0]/FindScale",
    "@Logger/LoggerAttributes/RecordedTime = 500; Logger/ShowAll",
    "Meter/MeterType = OHM; .MeterChannel[4]/Range = 10_MEGA",
    "Meter/MeterChannel[0]/Reference = 5; Vertical/Channel[0]/ProbeType = CURRENT_1_V_PER_A",
    "Mask/Start; Control/SMScope/Stop",
    // A point of an upper line.
    "@Mask/MaskChannelSetup[0]/MaskLines = "
    "PE1hc2sgVmVyc2lvbj0nMScgVW5pdD0nTEVWRUxfVicgTGVmdD0nMCcgVGltZVNjYWxlPS"
    "cxJyBNaWRkbGU9JzAnIExldmVsU2NhbGU9JzEnPjxVcHBlcj48UG9pbnQgWD0nMCcgWT0n"
    "MScvPjwvVXBwZXI+PC9NYXNrPg=="
    "; Mask/MaskSettings/LockToScreen = OFF; .ClearMask",
    "@Measurements/Measurement[0]/Actual = 1; "
    "@Cursor/CursorMeasurements/CursorMeasurement[0]/Result = 1; "
    "Vertical/Channel[0]/ProbeType = CURRENT_1_V_PER_A",
    "@Setup/Selftest/State = RUNNING; Setup/Selftest/Abort",
    "Setup/Selfalignment/ADConverter/ADCModeManual = ONE_CHANNEL; .ADCModeMode = MANUAL",
    "@Setup/Selfalignment/Result = RUNNING; Setup/Selfalignment/Abort",
    "RemoteState = ON; Setup/RemoteControl/ReturnToLocal",
    "@Setup/Selftest/Progress = 50; Setup/Selftest/Start",
    "@Vertical/ReferenceCurve/ReferenceCurveAttributes/RecordLength = 100; @.OriginalTimeScale = "
    "0.001; Vertical/ReferenceCurve/SetToOriginal",
    "Setup/EthernetAutomaticAddress = OFF; .EthernetFixedAddress = 10.0.0.5; "
    ".EthernetNetworkMask = 255.0.0.0; .EthernetGateway = 10.0.0.1; "
    "Setup/Wireless/WirelessClient/AutomaticAddress = OFF; .FixedAddress = 10.0.0.5; "
    ".NetworkMask = 255.0.0.0; .Gateway = 10.0.0.1",
    "SerialBus/Protocol = UART; + SerialBus/UARTBusResults/UARTBusDataWord; "
    "SerialBus/UARTBusSettings/FrameMode = TIMEOUT; + SerialBus/UARTBusResults/UARTBusFrame",
    "SerialBus/UARTBusSettings/DataLength = 9_BIT",
    "SerialBus/Protocol = I2C; + SerialBus/I2CBusResults/I2CBusFrame; "
    "SerialBus/TrackInTable/Last; .Previous",
    "SerialBus/Protocol = CAN; + SerialBus/CANBusResults/CANBusFrame",
    "SerialBus/Protocol = LIN; + SerialBus/LINBusResults/LINBusFrame",
    "SerialBus/Protocol = SENT; + SerialBus/SENTBusResults/SENTBusFrame",
    "SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/Name = a; "
    "@SerialBus/CANBusResults/CANBusFrame[0]/Data = 00000001",
    "SerialBus/LINBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/Name = a",
    "SerialBus/I2CBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/Name = a",
    "SerialBus/SENTBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/IdentifierLength = 0; "
    ".Name = a; @SerialBus/SENTBusResults/SENTBusFrame[0]/Data = 00000001",
    "+ SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem; "
    ".SerialBusLabelItem[Label2]/Identifier = 5; .Identifier = 0; .Identifier = 5",
    "Trigger/SENTBusTriggerSettings/Status = 1; .ClearPatterns",
    "Trigger/CANBusTriggerSettings/Type = IDENTIFIER", "Logic/Enabled = ON; Trigger/Type = RUNT",
    "SerialBus/UARTBusSettings/DataLength = 9_BIT",
    "Trigger/TvTriggerSettings/Polarity = POSITIVE; .Standard = NTSC",
    "FFT/AverageLength = 2; @FFT/AveragesDone = 2; Vertical/Channel[0]/ProbeType = VOLTAGE_1_TO_1",
    "Vertical/Channel[1]/Enabled = OFF; ..Channel[2]/Enabled = OFF; ..Channel[3]/Enabled = OFF; "
    "Spectrum/Mode = FFT; Horizontal/ZELMode = ZEL_C",
    "@FFT/AveragesDone = 3; Spectrum/ResetNextRun",
    "Spectrum/HorizontalScaling = LOGARITHMIC; .SpectrumMarkers/SpectrumMarker[0]/Frequency = 1e6; "
    "..SelectedMarker = Spectrum/SpectrumMarkers/SpectrumMarker[0]; "
    "@.SpectrumMarker[0]/Magnitude = -7; ..SetReference"};

/** Groups that a group commands beside those that it leads, which are below it. */
constexpr std::pair<const char*, const char*> kCommands[] = {
    {"Control/SMMode", "FFT"},            // what belongs to a mode is on in it and off in others
    {"Control/SMMode", "Mask"},           //
    {"Control/SMMode", "Spectrum"},       //
    {"Control/SMMode", "XY"},             //
    {"Control/SMScope", "Trigger"},       // counts what the trigger counts
    {"Harmonic", "Horizontal"},           // fits the timebase to the fundamental
    {"HistoryViewer", "Control/SMScope"}, // stops the acquisition that it looks back on
    {"Runs/CurrentRun", "Runs"},          // counts itself
    {"SerialBus/TrackInTable", "Horizontal"},
    {"Setup/RemoteControl", "RemoteState"},
    {"Spectrum", "Control/SMMode"},
    {"Spectrum", "DDC"},
    {"Spectrum", "FFT"},
    {"Spectrum/SpectrumMarkers/SpectrumMarker[n]", "Spectrum"}, // moves the center to itself
    {"Trigger", "SerialBus/Protocol"}};                         // one protocol for both

/** Groups that all below them tell of their changes, in a result of their own. */
constexpr const char* kToldFromBelow[] = {"LabelListSettings"};

/** Groups whose actions read and write files: what these do is no row's. */
constexpr const char* kFiles[] = {"",
                                  "SaveRecall",
                                  "SerialBus/CANBusSettings/LabelListSettings",
                                  "SerialBus/LINBusSettings/LabelListSettings",
                                  "SerialBus/I2CBusSettings/LabelListSettings",
                                  "SerialBus/SENTBusSettings/LabelListSettings"};

/** Steps that change no node, for what they are: their group, a blank and their name. */
constexpr const char* kWithoutChange[] = {
    " FollowRemoteState",                                           // the root's control mode
    "Harmonic/HarmonicStandard/HarmonicLimitUser CheckOrderLimits", // answers a code
    "Horizontal CalculateHorizontalPositionLimits", // prescribed after the reference point
    "Horizontal CountChange",                       // moves the change counter alone
    "Logger/LoggerSlot[n] CheckLoad",               // answers a code
    "Setup CheckAddress",                           // answers a code
    "Setup/Wireless/WirelessClient CheckAddress",   // answers a code
    "SerialBus/I2CBusSettings/LabelListSettings/SerialBusLabelItem[n] TakeLengthsOfBus", // declares
    "Spectrum OnSource",                                                                 // reports
    "Spectrum ReportAxisOfBasicFFT"};

/** Path with "[n]" for items. */
QString Collapsed(const CDbObject& node)
{
    QString path = node.GetPath();
    for (auto begin = path.indexOf(u'['); begin >= 0; begin = path.indexOf(u'[', begin + 1))
    {
        path.replace(begin, path.indexOf(u']', begin) + 1 - begin, QStringLiteral("[n]"));
    }
    return path;
}

/** Whether a way of names leads from a group to a node. */
bool LeadsTo(const CDbPropertyGroup& from, const NNames::t_Path& path, const CDbObject& node)
{
    bool leads = false;
    NWays::Visit(
        path.isFromRoot ? *from.GetDbRoot() : const_cast<CDbPropertyGroup&>(from), path,
        [&](const CDbObject& at) { leads = leads || &at == &node; }, [](CDbPropertyGroup&) {});
    return leads;
}

/** Keeps what starts rows and what they change. A row is that of all groups of its class, items of
    arrays too. */
class CObserver : public CRowTrace
{
public:
    CObserver() { CRowTrace::Watch(this); }
    ~CObserver() override { CRowTrace::Watch(nullptr); }

    /** What is now written from outside, which no row does: nothing, one node, or whatever. */
    void ExpectNothing() { m_expected = {nullptr, false}; }
    void Expect(const CDbObject& node) { m_expected = {&node, false}; }
    void ExpectAnything() { m_expected = {nullptr, true}; }
    /** Whether results are written at random: derivations then put right what they own. */
    void SetDisturbed(bool disturbed) { m_isDisturbed = disturbed; }

    void OnStarted(const CDbPropertyGroup& group, const t_Row& row,
                   const CDbObject* source) override
    {
        const auto [first, last] = group.Rules().SourcesOf(row);
        const auto path = source == nullptr
                              ? last
                              : std::find_if(first, last,
                                             [&](const NNames::t_Path& candidate)
                                             { return LeadsTo(group, candidate, *source); });
        m_started.insert({&row, source == nullptr ? kComputed : static_cast<int>(path - first)});
    }

    void OnChanged(const CDbObject& node, const t_RunningRow* running) override
    {
        const CDbPropertyGroup* const group = node.GetParent();
        const bool isOfContainer = dynamic_cast<const CDbContainerBase*>(&node) != nullptr ||
                                   dynamic_cast<const CDbContainerBase*>(group) != nullptr;
        bool isLed = running == nullptr
                         ? isOfContainer || m_expected.second || m_expected.first == &node
                         : false;
        for (const t_RunningRow* row = running; row != nullptr; row = row->below)
        {
            if (!m_isDisturbed || row->row->again == eAGAIN::Never)
            {
                m_effective.insert({row->row, row->step});
            }
            isLed = isLed || Leads(Collapsed(*row->group), Collapsed(node));
        }
        if (!isLed)
        {
            m_undeclared.insert(Collapsed(node) + QStringLiteral(" by ") +
                                (running == nullptr ? QStringLiteral("no row")
                                                    : Collapsed(*running->group) + u' ' +
                                                          QLatin1String(running->step->name)));
        }
    }

    /** The rows of a group's class are to be looked for. */
    void Declare(const CDbPropertyGroup& group)
    {
        const auto texts = KW_GetCouplingRows(group);
        const t_Row* row = group.Rules().begin();
        for (const KW_CouplingRow& text : texts)
        {
            const QString name = QStringLiteral("%1 %2, %3")
                                     .arg(Collapsed(group))
                                     .arg(text.number)
                                     .arg(KW_FormatCouplingWhen(text));
            m_declared.try_emplace(row++, t_Declared{Collapsed(group), name});
        }
    }

    QStringList Undeclared() const { return {m_undeclared.begin(), m_undeclared.end()}; }

    /** Rows that nothing started, sources that never did, and steps that never changed anything. */
    QStringList Dead() const
    {
        QStringList dead;
        for (const auto& [row, declared] : m_declared)
        {
            const bool isComputed = row->cause == eCAUSE::Fresh || row->cause == eCAUSE::None;
            for (int i = 0; i < std::max<int>(row->sourceCount, 1); ++i)
            {
                if (!m_started.contains({row, isComputed ? kComputed : i}))
                {
                    dead.append(declared.text + QStringLiteral(": source %1").arg(i + 1));
                }
            }
            // What only computing everything runs has nothing to do where all is settled.
            for (UINT8 i = 0; row->cause != eCAUSE::None && i < row->stepCount; ++i)
            {
                const QLatin1String name(row->steps[i].name);
                const bool isQuiet =
                    std::any_of(std::begin(kWithoutChange), std::end(kWithoutChange),
                                [&, step = QString(declared.group + u' ' + name)](const char* quiet)
                                { return step == QLatin1String(quiet); });
                if (!isQuiet && !m_effective.contains({row, row->steps + i}))
                {
                    dead.append(declared.text + QStringLiteral(": step ") + name);
                }
            }
        }
        return dead;
    }
    /** Commands that nobody gave. */
    QStringList Idle() const
    {
        QStringList idle;
        for (const auto& pair : kCommands)
        {
            if (!m_commands.contains(&pair))
            {
                idle.append(QStringLiteral("%1 commands %2")
                                .arg(QLatin1String(pair.first), QLatin1String(pair.second)));
            }
        }
        return idle;
    }
    std::size_t CountRows() const { return m_declared.size(); }

private:
    static constexpr int kComputed = -1;
    struct t_Declared
    {
        QString group;
        QString text;
    };

    static bool IsAtOrBelow(const QString& path, const QString& top)
    {
        return top.isEmpty() || path == top || path.startsWith(top + u'/') ||
               path.startsWith(top + u'[');
    }

    /** Whether a node is a member of a group that this one tells. */
    static bool Tells(const QString& group, const QString& node)
    {
        const QString told = node.left(node.lastIndexOf(u'/'));
        return IsAtOrBelow(group, told) &&
               std::any_of(std::begin(kToldFromBelow), std::end(kToldFromBelow),
                           [&](const char* name)
                           { return told.endsWith(u'/' + QString::fromLatin1(name)); });
    }

    /** A group leads what is below it and may command another. */
    bool Leads(const QString& group, const QString& node)
    {
        const auto command =
            std::find_if(std::begin(kCommands), std::end(kCommands),
                         [&](const auto& pair)
                         {
                             return group == QLatin1String(pair.first) &&
                                    IsAtOrBelow(node, QString::fromLatin1(pair.second));
                         });
        const bool isBelow = IsAtOrBelow(node, group);
        if (!isBelow && command != std::end(kCommands))
        {
            m_commands.insert(command);
        }
        return isBelow || command != std::end(kCommands) || Tells(group, node);
    }

    std::pair<const CDbObject*, bool> m_expected{nullptr, true};
    bool m_isDisturbed = false;
    std::map<const t_Row*, t_Declared> m_declared;
    std::set<std::pair<const t_Row*, int>> m_started;
    std::set<std::pair<const t_Row*, const t_Step*>> m_effective;
    std::set<const std::pair<const char*, const char*>*> m_commands;
    std::set<QString> m_undeclared;
};

/** Does what clients and the acquisition can do. */
class CObservation
{
public:
    explicit CObservation(CObserver& observer) : m_observer(observer)
    {
        m_observer.ExpectAnything();
        FillContainers(m_tree.root, 1);
    }
    ~CObservation() { m_observer.ExpectAnything(); }
    CObservation(const CObservation&) = delete;
    CObservation& operator=(const CObservation&) = delete;

    void DoAll(const char* writes) const { m_tree.DoAll(writes); }

    /** All rows of the tree, each pair of twins named by a file, and each result delivered. */
    void LookEverywhere() const
    {
        KW_PeekZELRoot()->VisitChildrenFirst(
            [this](CDbPropertyGroup& group)
            {
                m_observer.Declare(group);
                for (const auto& [row, one, other] : group.GetTwins())
                {
                    for (const CDbPropBase* const named : {one, other})
                    {
                        RecallNaming(m_tree.root, *named, named->GetText());
                    }
                }
                for (const auto& property : group.Properties())
                {
                    Deliver(*property);
                }
            });
    }

    /** Random things in one function after the other, and in one group after the other. */
    void Wander(CDice& dice, bool disturbs) const
    {
        constexpr int kPlaces = 40;
        constexpr int kThingsInFunction = 200;
        constexpr int kThingsInGroup = 40;
        m_observer.SetDisturbed(disturbs);
        const auto root = m_tree.root->GetDbObject();
        const t_Groups all = GroupsFrom(root);
        for (int i = 0; i < kPlaces; ++i)
        {
            DoThings(root->GetGroup(dice.Below(root->GetGroupCount())), kThingsInFunction, dice,
                     disturbs);
            DoThings(dice.Of(all), kThingsInGroup, dice, disturbs);
        }
        m_observer.SetDisturbed(false);
    }

private:
    using t_Groups = std::vector<std::shared_ptr<IDbGroup>>;

    void DoThings(const std::shared_ptr<IDbGroup>& top, int count, CDice& dice, bool disturbs) const
    {
        const t_Groups groups = GroupsFrom(top);
        for (int i = 0; i < count; ++i)
        {
            IDbGroup& group = *dice.Of(groups);
            if (dynamic_cast<const CDbObject&>(group).GetDbRoot() != nullptr)
            {
                DoOne(group, dice, disturbs);
            }
        }
        m_observer.ExpectAnything();
    }

    void DoOne(IDbGroup& group, CDice& dice, bool disturbs) const
    {
        const INT32 properties = group.GetPropertyCount();
        const INT32 actions = group.GetActionCount();
        const INT32 choice = dice.Below(properties + actions + 1);
        if (choice < properties)
        {
            Write(*std::dynamic_pointer_cast<CDbPropBase>(group.GetProperty(choice)), dice,
                  disturbs);
        }
        else if (choice < properties + actions)
        {
            Execute(*group.GetAction(choice - properties));
        }
        else if (IDbContainer* const items = group.AsContainer())
        {
            ChangeItems(*items);
        }
    }

    void Write(CDbPropBase& property, CDice& dice, bool disturbs) const
    {
        m_observer.Expect(property);
        const bool isResult = property.GetObjectType() == eOBJECTTYPE_RESULT;
        if (!isResult && dice.Below(3) == 0)
        {
            property.IncDec(dice.Below(7) - 3);
        }
        else if (!isResult)
        {
            property.SetText(AnyText(property, dice));
        }
        else if (disturbs)
        {
            DeliverText(property, AnyText(property, dice));
        }
    }

    void Execute(IDbAction& action) const
    {
        const QString group = dynamic_cast<const CDbObject&>(action).GetParent()->GetPath();
        const bool usesFiles =
            std::any_of(std::begin(kFiles), std::end(kFiles),
                        [&](const char* of) { return group == QLatin1String(of); });
        usesFiles ? m_observer.ExpectAnything() : m_observer.ExpectNothing();
        action.Execute();
    }

    void ChangeItems(IDbContainer& items) const
    {
        m_observer.ExpectNothing();
        if (items.GetCount() < 3)
        {
            items.InsertItem(QString());
            return;
        }
        const QString key = items.GetItemByPosition(0)->GetNodeName();
        items.RenameItem(key, QStringLiteral("Renamed"));
        items.RemoveItem(items.GetItemByPosition(0)->GetNodeName());
    }

    /** A value that the result does not have, and the one that it had. */
    void Deliver(CDbPropBase& property) const
    {
        if (property.GetObjectType() == eOBJECTTYPE_RESULT)
        {
            CDice dice(1);
            m_observer.SetDisturbed(true);
            const QString before = property.GetText();
            DeliverText(property, AnyText(property, dice));
            DeliverText(property, before);
            m_observer.SetDisturbed(false);
        }
    }
    CObserver& m_observer;
    CRuleTree m_tree;
};
} // namespace

TEST(DeclaredCouplings, ChangeHasNoRowOrRowIsDead)
{
    constexpr int kTrees = 60;
    CObserver observer;
    CObservation(observer).LookEverywhere();
    for (const char* const situation : kSituations)
    {
        CObservation(observer).DoAll(situation);
    }
    CDice dice(1);
    for (int tree = 0; tree < kTrees; ++tree)
    {
        CObservation(observer).Wander(dice, tree % 2 != 0);
    }
    EXPECT_GT(observer.CountRows(), 300U);
    EXPECT_EQ(observer.Undeclared().join(u'\n').toStdString(), "");
    EXPECT_EQ(observer.Dead().join(u'\n').toStdString(), "");
    EXPECT_EQ(observer.Idle().join(u'\n').toStdString(), "");
}
