// SPDX-License-Identifier: MIT
// Everything that docs/guides/use-from-cpp.md shows, as one program. Each function is one section
// of the guide.
#include "IKWFunctionCANBusSettings.h"
#include "IKWFunctionChannel.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionLabelListSettings.h"
#include "IKWFunctionSerialBus.h"
#include "IKWFunctionSerialBusLabelItem.h"
#include "IKWFunctionTrigger.h"
#include "IKWFunctionVertical.h"
#include "IKWFunctionZEL.h"
#include "KWBrackets.h"
#include "KWErrorReport.h"
#include "KWTexts.h"

#include <atomic>
#include <cstdio>
#include <thread>

namespace
{
void WriteOneSetting()
{
    // The tree lives as long as somebody holds its root.
    const std::shared_ptr<IKWFunctionZEL> root = GetZELRoot();
    const auto scale = root->GetPgHorizontal()->GetPrScale();

    const KW_ACCEPTANCE code = scale->Set(2e-3);
    if (!KW_IsAccepted(code))
    {
        std::printf("refused: %s\n", qPrintable(KW_GetAcceptanceText(code)));
    }
    std::printf("%g s/div, whole screen %g s\n", scale->Get(),
                root->GetPgHorizontal()->GetPrAcquisitionTime()->Get());
}

void MeetLimits(const std::shared_ptr<IKWFunctionZEL>& root)
{
    const auto position = root->GetPgHorizontal()->GetPrPosition();
    std::printf("position %g s … %g s\n", position->GetMin(), position->GetMax());
    // Refused: the position stays where it was.
    std::printf("Set: code %u\n", position->Set(1e6));
    // Taken as far as the limits let it.
    const KW_ACCEPTANCE code = position->SetLimited(1e6);
    std::printf("SetLimited: code %u, now %g s\n", code, position->Get());
    position->Set(0.0);
}

void ChooseFromEnumeration(const std::shared_ptr<IKWFunctionZEL>& root)
{
    const auto type = root->GetPgTrigger()->GetPrType();
    if (type->IsValueEnabled(eKW_ZEL_TRIGGER_TYPE_RUNT))
    {
        type->Set(eKW_ZEL_TRIGGER_TYPE_RUNT);
    }
    std::printf("trigger \"%s\"\n", qPrintable(type->GetEnumNameInfo().GetName(type->Get())));
}

void WalkArrayAndMap(const std::shared_ptr<IKWFunctionZEL>& root)
{
    const auto channels = root->GetPgVertical()->GetPgChannel();
    for (INT32 i = 0; i < channels->GetCount(); ++i)
    {
        const auto channel = channels->GetItem(i);
        std::printf("channel %d: %g V/div\n", i, channel->GetPrScale()->Get());
    }

    const auto labels = root->GetPgSerialBus()
                            ->GetPgCANBusSettings()
                            ->GetPgLabelListSettings()
                            ->GetPgSerialBusLabelItem();
    labels->Insert("Engine");
    labels->GetItem("Engine")->GetPrIdentifier()->Set(0x123);
    std::printf("%d label, \"%s\"\n", labels->GetCount(), qPrintable(labels->GetNames().front()));
}

/** Shows what differs from the defaults, in the order of settings files. */
void ShowChanged(IDbGroup& group)
{
    for (INT32 i = 0; i < group.GetPropertyCount(); ++i)
    {
        const auto property = group.GetProperty(i);
        if (property->GetObjectType() == eOBJECTTYPE_SETTING &&
            property->GetText() != property->GetDefaultText())
        {
            std::printf("%s = %s\n", qPrintable(property->GetPath()),
                        qPrintable(KW_FormatValue(KW_GetValueText(*property))));
        }
    }
    for (INT32 i = 0; i < group.GetGroupCount(); ++i)
    {
        ShowChanged(*group.GetGroup(i));
    }
    // Items of an array or map are not among its child groups.
    const IDbContainer* const container = group.AsContainer();
    for (INT32 i = 0; container != nullptr && i < container->GetCount(); ++i)
    {
        ShowChanged(*container->GetItemByPosition(i));
    }
}

void FindByPath(const std::shared_ptr<IKWFunctionZEL>& root)
{
    const std::shared_ptr<IDbGroup> top = root->GetDbObject();
    const auto scale =
        std::dynamic_pointer_cast<IDbProperty>(top->Find("Vertical/Channel[1]/Scale"));

    QString text;
    KW_ACCEPTANCE code = KW_ParseValue(*scale, "200 mV/div", text);
    if (KW_IsAccepted(code))
    {
        code = scale->SetText(text);
    }
    std::printf("code %u, %s\n", code, qPrintable(KW_GetMeaning(*scale)));

    // The same node as a typed handle.
    const auto number = std::dynamic_pointer_cast<IKWNumericProperty<double>>(scale->GetHandle());
    std::printf("%g, %s\n", number->Get(), qPrintable(KW_GetUnitText(number->GetUnit())));
    ShowChanged(*std::dynamic_pointer_cast<IDbGroup>(top->Find("Horizontal")));
}

void PollForChanges(const std::shared_ptr<IKWFunctionZEL>& root)
{
    const auto horizontal = root->GetPgHorizontal();
    long long seen = 0;
    horizontal->HasChanged(seen); // from here on
    horizontal->GetPrScale()->Set(1e-3);
    std::printf("changed: %s", horizontal->HasChanged(seen) ? "yes" : "no");
    std::printf(", again: %s\n", horizontal->HasChanged(seen) ? "yes" : "no");
}

void UseBrackets(const std::shared_ptr<IKWFunctionZEL>& root)
{
    const auto horizontal = root->GetPgHorizontal();
    {
        // Both values are of the same moment, whatever other threads write.
        const CKWReadBracket bracket(root);
        std::printf("%g s … %g s\n", horizontal->GetPrLeft()->Get(),
                    horizontal->GetPrRight()->Get());
    }
    root->SetControlMode(eCONTROL_LOCAL_LOCKOUT);
    const KW_ACCEPTANCE local = horizontal->GetPrScale()->Set(2e-3);
    KW_ACCEPTANCE remote = eKW_ACC_OK;
    {
        const CKWWriteBracket bracket(root, eCLIENT_REMOTE);
        remote = horizontal->GetPrScale()->Set(2e-3);
    }
    root->SetControlMode(eCONTROL_LOCAL);
    std::printf("local: %s, remote: %s\n", qPrintable(KW_GetAcceptanceText(local)),
                qPrintable(KW_GetAcceptanceText(remote)));
}

void WriteInOneStep(const std::shared_ptr<IKWFunctionZEL>& root)
{
    const auto horizontal = root->GetPgHorizontal();
    const double before = horizontal->GetPrScale()->Get();
    {
        CKWTransaction step(root, "Slow sweep");
        horizontal->GetPrScale()->Set(1.0);
        horizontal->GetPrPosition()->Set(0.5);
        step.Commit(); // without it, everything is rolled back
    }
    std::printf("\"%s\" ", qPrintable(root->GetUndoText()));
    root->Undo();
    std::printf("undone: %s\n", horizontal->GetPrScale()->Get() == before ? "yes" : "no");
}

void SaveAndRecall(const std::shared_ptr<IKWFunctionZEL>& root)
{
    const auto scale = root->GetPgHorizontal()->GetPrScale();
    root->Save("guide.xml");
    root->RunPresetSequence(false);
    std::printf("preset %g s/div, ", scale->Get());
    const KW_ACCEPTANCE code = root->Recall("guide.xml");
    std::printf("recalled with code %u: %g s/div\n", code, scale->Get());
}

void HearOfFailures(const std::shared_ptr<IKWFunctionZEL>& root)
{
    const KW_ErrorHandler before =
        KW_SetErrorHandler([](const KW_ErrorReport& report)
                           { std::printf("report: %s\n", qPrintable(report.message)); });
    root->GetPgHorizontal()->GetPrReferencePoint()->Set(51);
    KW_SetErrorHandler(before);
}

void ReadFromAnotherThread(const std::shared_ptr<IKWFunctionZEL>& root)
{
    const auto scale = root->GetPgHorizontal()->GetPrScale();
    std::atomic<bool> done = false;
    double last = 0.0;
    std::thread reader(
        [&]
        {
            // Reading a number never waits for a writer.
            while (!done)
            {
                last = scale->Get();
            }
            last = scale->Get();
        });
    for (int i = 0; i < 10; ++i)
    {
        scale->IncDec(i % 2 == 0 ? 1 : -1);
    }
    scale->Set(5e-3);
    done = true;
    reader.join();
    std::printf("reader saw %g s/div\n", last);
}
} // namespace

int main()
{
    const auto root = GetZELRoot();
    WriteOneSetting();
    MeetLimits(root);
    ChooseFromEnumeration(root);
    WalkArrayAndMap(root);
    FindByPath(root);
    PollForChanges(root);
    UseBrackets(root);
    WriteInOneStep(root);
    SaveAndRecall(root);
    HearOfFailures(root);
    ReadFromAnotherThread(root);
    return 0;
}
