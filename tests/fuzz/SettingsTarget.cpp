// SPDX-License-Identifier: MIT
#include "fuzz/Targets.h"

#include "CommonDatabase/Files/DbSettings.h"
#include "database/FixtureTree.h"

#include <QXmlStreamReader>

namespace
{
QList<QString> Fields(const CPgFixtureRoot& root)
{
    QList<QString> fields;
    root.SerializeCSV(fields);
    return fields;
}

bool ReadAgain(CDbSettingsDocument& document, const CPgFixtureRoot& root, bool csv)
{
    if (csv)
    {
        const QList<QString> fields = Fields(root);
        QListIterator<QString> position(fields);
        return document.ReadCsvElement(position);
    }
    QXmlStreamReader reader(root.Text());
    return document.ReadXmlElement(reader);
}

void TrySettingsFile(const QByteArray& text, bool csv)
{
    const CReports reports;
    CDbSettingsDocument document;
    const QString kind = QStringLiteral("Fixture");
    if (!(csv ? document.ReadCsvFile(text, kind) : document.ReadXmlFile(text, kind)))
    {
        KW_FuzzRequire(!document.GetError().isEmpty(), "refused without a reason", text);
        return;
    }
    const auto root = CPgFixtureRoot::Create();
    CDbRecall::Apply(*root, document.Top().FirstChild(), eSAVERECALL_ALL);
    root->GetDependencies().CalculateEverything();

    CDbSettingsDocument saved;
    KW_FuzzRequire(ReadAgain(saved, *root, csv), "own file refused", saved.GetError().toUtf8());
    const auto copy = CPgFixtureRoot::Create();
    const CDbRecall recall = CDbRecall::Apply(*copy, saved);
    copy->GetDependencies().CalculateEverything();
    KW_FuzzRequire(recall.IsClean(), "own file applied in part", reports.Messages().toUtf8());
    KW_FuzzRequire(copy->Text() == root->Text(), "own file read back differently", root->Text());
}
} // namespace

void KW_TrySettingsXml(const QByteArray& text)
{
    TrySettingsFile(text, false);
}

void KW_TrySettingsCsv(const QByteArray& text)
{
    TrySettingsFile(text, true);
}
