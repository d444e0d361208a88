// SPDX-License-Identifier: MIT
#include "fuzz/SettingsTarget.h"

#include "CommonDatabase/DbSettings.h"
#include "database/FixtureTree.h"

#include <QXmlStreamReader>
#include <cstdio>
#include <cstdlib>

namespace
{
void Require(bool holds, const char* what, const QByteArray& detail)
{
    if (!holds)
    {
        std::fprintf(stderr, "%s: %s\n", what, detail.constData());
        std::abort();
    }
}

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
} // namespace

void KW_TrySettingsFile(const QByteArray& text, bool csv)
{
    const CReports reports;
    CDbSettingsDocument document;
    const QString kind = QStringLiteral("Fixture");
    if (!(csv ? document.ReadCsvFile(text, kind) : document.ReadXmlFile(text, kind)))
    {
        Require(!document.GetError().isEmpty(), "refused without a reason", text);
        return;
    }
    const auto root = CPgFixtureRoot::Create();
    CDbRecall::Apply(*root, document.Top().FirstChild(), eSAVERECALL_ALL);
    root->GetDependencies().CalculateEverything();

    CDbSettingsDocument saved;
    Require(ReadAgain(saved, *root, csv), "own file refused", saved.GetError().toUtf8());
    const auto copy = CPgFixtureRoot::Create();
    const CDbRecall recall = CDbRecall::Apply(*copy, saved);
    copy->GetDependencies().CalculateEverything();
    Require(recall.IsClean(), "own file applied in part", reports.Messages().toUtf8());
    Require(copy->Text() == root->Text(), "own file read back differently", root->Text());
}
