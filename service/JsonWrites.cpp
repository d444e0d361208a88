// SPDX-License-Identifier: MIT
#include "JsonWrites.h"

#include "IKWProperties.h"
#include "JsonNodes.h"
#include "KWTexts.h"

#include <QJsonObject>
#include <algorithm>
#include <utility>

namespace
{
const QString kMemberPath = QStringLiteral("path");
const QString kMemberValue = QStringLiteral("value");
const QString kMemberDefault = QStringLiteral("default");
const QString kMemberSteps = QStringLiteral("steps");

/** As CKWTransaction, and tells whether taking back succeeded. */
class CTogether
{
public:
    CTogether(IKWFunctionRootBase* root, const QString& text) : m_root(root)
    {
        if (m_root != nullptr)
        {
            m_root->StartTransaction(text);
        }
    }
    ~CTogether() { End(false); }
    CTogether(const CTogether&) = delete;
    CTogether& operator=(const CTogether&) = delete;

    KW_ACCEPTANCE End(bool keep)
    {
        auto* const root = std::exchange(m_root, nullptr);
        return root != nullptr ? root->EndTransaction(keep) : eKW_ACC_OK;
    }

private:
    IKWFunctionRootBase* m_root; ///< null where each write is one of its own
};

/** What one write says beyond its code. */
struct t_Outcome
{
    KW_ACCEPTANCE code;
    QString detail;
};

t_Outcome WriteFileName(IDbProperty& property, const QString& name, const CFilesFolder& files)
{
    const auto handle = std::dynamic_pointer_cast<IKWFilePathProperty>(property.GetHandle());
    QString problem;
    if (!name.isEmpty())
    {
        files.PathOf(name, handle->GetFolder(), problem);
    }
    return problem.isEmpty() ? t_Outcome{property.SetText(name), QString()}
                             : t_Outcome{eKW_ACC_BAD_NAME, problem};
}

t_Outcome WriteValue(IDbProperty& property, const QJsonValue& value, const CFilesFolder& files)
{
    QString text;
    const KW_ACCEPTANCE code = NJson::ReadValue(property, value, text);
    if (property.GetObjectType() == eOBJECTTYPE_RESULT || !KW_IsAccepted(code))
    {
        return {KW_IsAccepted(code) ? property.SetText(text) : code, QString()};
    }
    return property.GetTypeName() == QLatin1String("filepath")
               ? WriteFileName(property, text, files)
               : t_Outcome{property.SetText(text), QString()};
}

t_Outcome WriteOne(IDbProperty& property, const QJsonObject& write, const CFilesFolder& files)
{
    if (write.contains(kMemberValue))
    {
        return WriteValue(property, write[kMemberValue], files);
    }
    return {write.contains(kMemberDefault) ? property.SetToDefault()
                                           : property.IncDec(write[kMemberSteps].toInt()),
            QString()};
}

t_Outcome WriteAt(IDbObject* node, const QJsonObject& write, const CFilesFolder& files)
{
    auto* const property = dynamic_cast<IDbProperty*>(node);
    return property != nullptr ? WriteOne(*property, write, files)
           : node != nullptr   ? t_Outcome{eKW_ACC_WRONG_KIND, QString()}
                               : t_Outcome{eKW_ACC_NOT_FOUND, QString()};
}

/** What stands, and of what was refused the bounds. */
void Report(CJsonWriter& json, const QString& path, IDbObject* node, const t_Outcome& outcome)
{
    auto* const property = dynamic_cast<IDbProperty*>(node);
    json.BeginObject();
    json.Key("path").Text(path);
    NJson::AddCode(json, outcome.code, outcome.detail);
    if (property != nullptr)
    {
        NJson::WriteState(json.Key("now"), NJson::StateOf(*property));
    }
    if (property != nullptr && !KW_IsAccepted(outcome.code))
    {
        NJson::AddForm(json, *property);
    }
    json.EndObject();
}

bool IsWrite(const QJsonObject& write, QString& wrong)
{
    const int ways = (write.contains(kMemberValue) ? 1 : 0) +
                     (write.contains(kMemberDefault) ? 1 : 0) +
                     (write.contains(kMemberSteps) ? 1 : 0);
    if (!write[kMemberPath].isString() || ways != 1 || write.size() != 2)
    {
        wrong = QStringLiteral("a write has a path, and a value, \"default\": true or steps");
    }
    else if (write.contains(kMemberDefault) && !write[kMemberDefault].toBool())
    {
        wrong = QStringLiteral("\"default\" is true where it stands");
    }
    else if (write.contains(kMemberSteps) && write[kMemberSteps].toInt() == 0)
    {
        wrong = QStringLiteral("steps are a whole number, not 0");
    }
    return wrong.isEmpty();
}
} // namespace

bool NJson::AreWrites(const QJsonArray& writes, int most, QString& wrong)
{
    if (writes.isEmpty() || writes.size() > most)
    {
        wrong = QStringLiteral("1 to %1 writes are wanted").arg(most);
        return false;
    }
    return std::all_of(writes.begin(), writes.end(),
                       [&wrong](const QJsonValue& write)
                       { return IsWrite(write.toObject(), wrong); });
}

NJson::t_Written NJson::Write(CJsonWriter& json, const std::shared_ptr<IKWFunctionRootBase>& root,
                              const t_Writing& writing)
{
    const CFilesFolder files(root->GetSettingsFolder());
    CTogether transaction(writing.together ? root.get() : nullptr, writing.text);
    t_Written written;
    json.BeginArray();
    for (const QJsonValue& element : writing.writes)
    {
        const QJsonObject write = element.toObject();
        const QString path = write[kMemberPath].toString();
        const auto node = root->GetDbObject()->Find(path);
        const t_Outcome outcome = WriteAt(node.get(), write, files);
        Report(json, path, node.get(), outcome);
        written.code =
            KW_IsAccepted(written.code) ? std::max(written.code, outcome.code) : written.code;
        if (writing.together && !KW_IsAccepted(outcome.code))
        {
            break;
        }
    }
    json.EndArray();
    if (writing.together)
    {
        const bool keep = KW_IsAccepted(written.code);
        const bool isDone = KW_IsAccepted(transaction.End(keep));
        written.isKept = keep || !isDone;
    }
    return written;
}
