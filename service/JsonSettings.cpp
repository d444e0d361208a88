// SPDX-License-Identifier: MIT
// The user's settings as the text of a file, for clients that keep their files themselves.

#include "JsonNodes.h"
#include "JsonService.h"
#include "KWBrackets.h"

#include <QFile>
#include <QTemporaryDir>

namespace
{
/** A settings file that nobody else sees, and that is gone with this. */
class CPassingFile
{
public:
    explicit CPassingFile(const QString& format)
    {
        const bool isKnown = format == QLatin1String("xml") || format == QLatin1String("csv");
        m_name = isKnown && m_folder.isValid()
                     ? m_folder.filePath(QStringLiteral("settings.") + format)
                     : QString();
        m_isKnown = isKnown;
    }

    bool IsKnown() const { return m_isKnown; }
    const QString& GetName() const { return m_name; }

    bool Write(const QByteArray& text) const
    {
        QFile file(m_name);
        return !m_name.isEmpty() && file.open(QIODevice::WriteOnly) &&
               file.write(text) == text.size() && file.flush();
    }

    QByteArray Read() const
    {
        QFile file(m_name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
    QString m_name;
    bool m_isKnown = false;
};

t_JsonAnswer WrongFormat()
{
    return CJsonService::Refuse(400, eKW_ACC_BAD_TEXT, QStringLiteral("a format is xml or csv"));
}
} // namespace

t_JsonAnswer CJsonService::GetSettings(const t_Call& call) const
{
    const CPassingFile file(call.query.queryItemValue(QStringLiteral("format")));
    if (!file.IsKnown())
    {
        return WrongFormat();
    }
    const KW_ACCEPTANCE code = m_root->Save(file.GetName());
    const QByteArray text = KW_IsAccepted(code) ? file.Read() : QByteArray();
    if (text.isEmpty())
    {
        return Refuse(500, KW_IsAccepted(code) ? eKW_ACC_FILE_NOT_READABLE : code, QString());
    }
    CJsonWriter json;
    json.BeginObject();
    json.Key("settings").Text(QString::fromUtf8(text));
    json.EndObject();
    return {200, json.GetText()};
}

t_JsonAnswer CJsonService::PutSettings(const t_Call& call) const
{
    const CPassingFile file(call.body[QStringLiteral("format")].toString());
    if (!file.IsKnown())
    {
        return WrongFormat();
    }
    if (!file.Write(call.body[QStringLiteral("settings")].toString().toUtf8()))
    {
        return AnswerCode(eKW_ACC_FILE_NOT_WRITABLE);
    }
    const QString text = call.body[QStringLiteral("text")].toString();
    if (text.isEmpty())
    {
        return AnswerCode(m_root->Recall(file.GetName()));
    }
    CKWTransaction step(m_root, text);
    const KW_ACCEPTANCE code = m_root->Recall(file.GetName());
    if (!KW_IsAccepted(code))
    {
        return AnswerCode(code);
    }
    const KW_ACCEPTANCE kept = step.Commit();
    return AnswerCode(KW_IsAccepted(kept) ? code : kept);
}
