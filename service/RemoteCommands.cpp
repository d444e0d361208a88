// SPDX-License-Identifier: MIT
// What every instrument has beside its own settings: common commands and the subsystem SYSTem.

#include "IKWProperties.h"
#include "KWBrackets.h"
#include "KWEnumerationsOnOff.h"
#include "RemoteHeaders.h"
#include "RemoteSession.h"
#include "RemoteValues.h"

#include <QFile>
#include <QTemporaryDir>

namespace
{
constexpr char kSelectedSlot[] = "SaveRecall/SelectedSlot";

std::shared_ptr<IDbObject> NodeAt(const IDbGroup& top, const char* path)
{
    return top.Find(QString::fromLatin1(path));
}

t_RemoteError Run(const IDbGroup& top, const char* path)
{
    const auto action = std::dynamic_pointer_cast<IDbAction>(NodeAt(top, path));
    return NRemote::ErrorOf(action ? action->Execute()
                                   : static_cast<KW_ACCEPTANCE>(eKW_ACC_NOT_FOUND));
}

/** Slots count from 1. */
t_RemoteError SelectSlot(const IDbGroup& top, INT64 slot)
{
    const auto property = std::dynamic_pointer_cast<IDbProperty>(NodeAt(top, kSelectedSlot));
    const auto handle =
        property ? std::dynamic_pointer_cast<IKWEnumPropertyBase>(property->GetHandle()) : nullptr;
    if (!handle)
    {
        return NRemote::ErrorOf(eKW_ACC_NOT_FOUND);
    }
    const bool isSlot = slot >= 1 && slot <= handle->GetEnumNameInfo().GetEnumSize();
    return isSlot ? NRemote::ErrorOf(handle->SetAsInt(static_cast<INT32>(slot - 1)))
                  : t_RemoteError{eREMOTE_OUT_OF_RANGE, QStringLiteral("there is no such slot")};
}

t_RemoteError ReadMask(const t_RemoteUnit& unit, UINT8& mask)
{
    INT64 number = 0;
    if (const t_RemoteError error = NRemote::ReadWhole(unit.data[0], number))
    {
        return error;
    }
    if (number < 0 || number > 255)
    {
        return {eREMOTE_OUT_OF_RANGE, QStringLiteral("0 to 255 are wanted")};
    }
    mask = static_cast<UINT8>(number);
    return {};
}

/** Fields of *IDN? are separated by commas; one that the instrument does not say is `otherwise`. */
QByteArray Field(QString text, const char* otherwise)
{
    text.replace(QLatin1Char(','), QLatin1Char(' ')).replace(QLatin1Char(';'), QLatin1Char(' '));
    const QByteArray field = NRemote::Plain(text.simplified());
    return field.isEmpty() ? QByteArray(otherwise) : field;
}

/** Only the tree's own files hold all settings in their right order: one is made for the purpose,
    in a folder that nobody else reads. */
t_RemoteError ReadSettings(IKWFunctionRootBase& root, QByteArray& settings)
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("settings.xml"));
    if (const t_RemoteError error = NRemote::ErrorOf(root.Save(name)))
    {
        return error;
    }
    QFile file(name);
    file.open(QIODevice::ReadOnly);
    settings = file.readAll();
    return {};
}

t_RemoteError WriteSettings(IKWFunctionRootBase& root, const QByteArray& settings)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("settings.xml")));
    if (!file.open(QIODevice::WriteOnly) || file.write(settings) != settings.size() ||
        !file.flush())
    {
        return NRemote::ErrorOf(eKW_ACC_FILE_NOT_WRITABLE);
    }
    return NRemote::ErrorOf(root.Recall(file.fileName()));
}
} // namespace

std::span<const CRemoteSession::t_Command> CRemoteSession::CommonCommands()
{
    static constexpr t_Command kCommands[] = {
        {"CLS", false, 0, 0, false, &CRemoteSession::ClearStatus},
        {"ESE", false, 1, 1, false, &CRemoteSession::SetEventMask},
        {"ESE", true, 0, 0, false, &CRemoteSession::GetEventMask},
        {"ESR", true, 0, 0, false, &CRemoteSession::TakeEvents},
        {"IDN", true, 0, 0, false, &CRemoteSession::Identify},
        {"LRN", true, 0, 0, false, &CRemoteSession::Learn},
        {"OPC", false, 0, 0, false, &CRemoteSession::MarkCompletion},
        {"OPC", true, 0, 0, false, &CRemoteSession::AskCompletion},
        {"RCL", false, 1, 1, true, &CRemoteSession::Recall},
        {"RST", false, 0, 0, true, &CRemoteSession::Reset},
        {"SAV", false, 1, 1, true, &CRemoteSession::Save},
        {"SRE", false, 1, 1, false, &CRemoteSession::SetServiceMask},
        {"SRE", true, 0, 0, false, &CRemoteSession::GetServiceMask},
        {"STB", true, 0, 0, false, &CRemoteSession::GetStatusByte},
        {"TST", true, 0, 0, true, &CRemoteSession::Test},
        {"WAI", false, 0, 0, false, &CRemoteSession::Wait},
    };
    return kCommands;
}

std::span<const CRemoteSession::t_Command> CRemoteSession::SystemCommands()
{
    static constexpr t_Command kCommands[] = {
        {"SYSTem:ERRor", true, 0, 0, false, &CRemoteSession::NextError},
        {"SYSTem:ERRor:NEXT", true, 0, 0, false, &CRemoteSession::NextError},
        {"SYSTem:ERRor:ALL", true, 0, 0, false, &CRemoteSession::AllErrors},
        {"SYSTem:ERRor:COUNt", true, 0, 0, false, &CRemoteSession::CountErrors},
        {"SYSTem:HELP:HEADers", true, 0, 0, false, &CRemoteSession::ListHeaders},
        {"SYSTem:LOCal", false, 0, 0, true, &CRemoteSession::GiveControl},
        {"SYSTem:REMote", false, 0, 0, true, &CRemoteSession::TakeControl},
        {"SYSTem:RWLock", false, 0, 0, true, &CRemoteSession::LockOut},
        {"SYSTem:SET", false, 1, 1, true, &CRemoteSession::SetAll},
        {"SYSTem:VERSion", true, 0, 0, false, &CRemoteSession::GetVersion},
        {"SYSTem:WARNing", true, 0, 0, false, &CRemoteSession::TakeWarning},
    };
    return kCommands;
}

t_RemoteError CRemoteSession::ClearStatus(const t_RemoteUnit&)
{
    m_status.Clear();
    m_marksCompletion = false;
    return {};
}

t_RemoteError CRemoteSession::SetEventMask(const t_RemoteUnit& unit)
{
    return ReadMask(unit, m_status.eventMask);
}

t_RemoteError CRemoteSession::GetEventMask(const t_RemoteUnit&)
{
    Answer(QByteArray::number(m_status.eventMask));
    return {};
}

t_RemoteError CRemoteSession::TakeEvents(const t_RemoteUnit&)
{
    Answer(QByteArray::number(m_status.TakeEvents()));
    return {};
}

QString CRemoteSession::TextAt(const char* path) const
{
    const auto property = std::dynamic_pointer_cast<IDbProperty>(NodeAt(*Top(), path));
    return property ? property->GetText() : QString();
}

t_RemoteError CRemoteSession::Identify(const t_RemoteUnit&)
{
    Answer(Field(m_options.manufacturer, "KWI") + ',' +
           Field(TextAt("Setup/SystemConstants/ModelName"), "KWIFunctionZEL") + ',' +
           Field(TextAt("Setup/SystemConstants/SerialNumber"), "0") + ',' +
           Field(TextAt("Setup/SystemConstants/SoftwareVersion"), KWI_SERVICE_VERSION));
    return {};
}

t_RemoteError CRemoteSession::MarkCompletion(const t_RemoteUnit&)
{
    m_marksCompletion = !m_running.empty();
    if (m_running.empty())
    {
        m_status.Complete();
    }
    return {};
}

t_RemoteError CRemoteSession::AskCompletion(const t_RemoteUnit&)
{
    m_waitsForAll = !m_running.empty();
    m_answersCompletion = m_waitsForAll;
    if (!m_waitsForAll)
    {
        Answer("1");
    }
    return {};
}

t_RemoteError CRemoteSession::Wait(const t_RemoteUnit&)
{
    m_waitsForAll = !m_running.empty();
    m_answersCompletion = false;
    return {};
}

t_RemoteError CRemoteSession::Reset(const t_RemoteUnit&)
{
    m_marksCompletion = false;
    return Hold([root = m_root] { return NRemote::ErrorOf(root->RunPresetSequence(false)); }, {});
}

t_RemoteError CRemoteSession::SetServiceMask(const t_RemoteUnit& unit)
{
    const t_RemoteError error = ReadMask(unit, m_status.serviceMask);
    m_status.serviceMask = static_cast<UINT8>(m_status.serviceMask & ~CRemoteStatus::kMaster);
    return error;
}

t_RemoteError CRemoteSession::GetServiceMask(const t_RemoteUnit&)
{
    Answer(QByteArray::number(m_status.serviceMask));
    return {};
}

t_RemoteError CRemoteSession::GetStatusByte(const t_RemoteUnit&)
{
    if (m_status.operation.enable != 0 || m_status.questionable.enable != 0)
    {
        ObserveNow();
    }
    Answer(QByteArray::number(m_status.StatusByte(m_hasAnswer)));
    return {};
}

t_RemoteError CRemoteSession::Test(const t_RemoteUnit&)
{
    return Hold([top = Top()] { return Run(*top, "Setup/Selftest/Start"); },
                [this](const t_RemoteError& error) { Answer(error ? "1" : "0"); });
}

t_RemoteError CRemoteSession::UseSlot(const t_RemoteUnit& unit, const char* action)
{
    INT64 slot = 0;
    if (const t_RemoteError error = NRemote::ReadWhole(unit.data[0], slot))
    {
        return error;
    }
    return Hold(
        [top = Top(), slot, action]
        {
            const t_RemoteError error = SelectSlot(*top, slot);
            return error ? error : Run(*top, action);
        },
        {});
}

t_RemoteError CRemoteSession::Save(const t_RemoteUnit& unit)
{
    return UseSlot(unit, "SaveRecall/SaveToSlot");
}

t_RemoteError CRemoteSession::Recall(const t_RemoteUnit& unit)
{
    return UseSlot(unit, "SaveRecall/RecallFromSlot");
}

t_RemoteError CRemoteSession::Learn(const t_RemoteUnit&)
{
    const auto settings = std::make_shared<QByteArray>();
    return Hold([root = m_root, settings] { return ReadSettings(*root, *settings); },
                [this, settings](const t_RemoteError& error)
                {
                    if (error)
                    {
                        Report(error);
                        return;
                    }
                    // As a block it would hold line feeds, at which many clients stop to read.
                    Answer(":SYST:SET \"" + settings->toBase64() + '"');
                });
}

t_RemoteError CRemoteSession::SetAll(const t_RemoteUnit& unit)
{
    const t_RemoteData& data = unit.data[0];
    const bool isBlock = data.kind == t_RemoteData::eKIND::Block;
    if (!isBlock && data.kind != t_RemoteData::eKIND::String)
    {
        return {eREMOTE_DATA_TYPE, QStringLiteral("the answer of *LRN? is wanted")};
    }
    const QByteArray settings = isBlock ? data.text : QByteArray::fromBase64(data.text);
    return Hold([root = m_root, settings] { return WriteSettings(*root, settings); }, {});
}

t_RemoteError CRemoteSession::NextError(const t_RemoteUnit&)
{
    Answer(NRemote::Format(m_status.Errors().Take()));
    return {};
}

t_RemoteError CRemoteSession::AllErrors(const t_RemoteUnit&)
{
    QByteArray all = NRemote::Format(m_status.Errors().Take());
    while (m_status.Errors().Count() > 0)
    {
        all += ',' + NRemote::Format(m_status.Errors().Take());
    }
    Answer(all);
    return {};
}

t_RemoteError CRemoteSession::CountErrors(const t_RemoteUnit&)
{
    Answer(QByteArray::number(static_cast<int>(m_status.Errors().Count())));
    return {};
}

t_RemoteError CRemoteSession::GetVersion(const t_RemoteUnit&)
{
    Answer("1999.0");
    return {};
}

/** The tree's state follows, and so does what it shows of it. */
void CRemoteSession::SetControl(KW_CONTROL_MODE mode)
{
    const CKWClientOrigin remote(eCLIENT_REMOTE);
    m_root->SetControlMode(mode == eCONTROL_LOCAL_LOCKOUT ? eCONTROL_REMOTE : mode);
    m_lockedOut = mode == eCONTROL_LOCAL_LOCKOUT;
    const auto state = std::dynamic_pointer_cast<IDbProperty>(NodeAt(*Top(), "RemoteState"));
    if (state)
    {
        state->SetText(QLatin1String(mode == eCONTROL_LOCAL ? "OFF" : "ON"));
    }
    m_root->SetControlMode(mode);
    const auto shown =
        std::dynamic_pointer_cast<IDbProperty>(NodeAt(*Top(), "Setup/RemoteControl/LocalLockout"));
    const auto handle =
        shown ? std::dynamic_pointer_cast<IKWEnumProperty<KW_ONOFF>>(shown->GetHandle()) : nullptr;
    if (handle)
    {
        handle->SetResult(m_lockedOut ? eKW_ONOFF_ON : eKW_ONOFF_OFF);
    }
}

t_RemoteError CRemoteSession::TakeControl(const t_RemoteUnit&)
{
    SetControl(eCONTROL_REMOTE);
    return {};
}

t_RemoteError CRemoteSession::GiveControl(const t_RemoteUnit&)
{
    SetControl(eCONTROL_LOCAL);
    return {};
}

t_RemoteError CRemoteSession::LockOut(const t_RemoteUnit&)
{
    SetControl(eCONTROL_LOCAL_LOCKOUT);
    return {};
}

t_RemoteError CRemoteSession::ListHeaders(const t_RemoteUnit&)
{
    QByteArray lines;
    for (const auto& commands : {CommonCommands(), SystemCommands(), StatusCommands()})
    {
        const char* const begin = commands.data() == CommonCommands().data() ? "*" : ":";
        for (auto command = commands.begin(); command != commands.end(); ++command)
        {
            const auto next = command + 1;
            const bool isBoth =
                next != commands.end() && qstrcmp(command->header, next->header) == 0;
            lines += begin + QByteArray(command->header) +
                     (isBoth             ? "\n"
                      : command->isQuery ? "/qonly/\n"
                                         : "/nquery/\n");
            command += isBoth ? 1 : 0;
        }
    }
    Answer(NRemote::Block(lines + NRemote::ListHeaders(Top())));
    return {};
}
