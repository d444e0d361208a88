// SPDX-License-Identifier: MIT
#include "FixtureTree.h"

#include "FileText.h"
#include "KWEnumerationsUnits.h"

#include <QTemporaryDir>
#include <QXmlStreamWriter>

CPgFixtureItem::CPgFixtureItem()
{
    m_pLevel->DeclareMinAndMax(-10.0, 10.0);
}

CPgFixture::CPgFixture()
{
    m_pInt32->DeclareMinAndMax(-100, 100);
    m_pDouble->DeclareUnit(eKW_UNIT_LEVEL_V);
    m_pDouble->DeclareMinAndMax(0.0, 1000.0);
    m_pDouble->DeclareStep(0.5);
    m_pDouble->DbSetDefault(10.0);
    m_pListed->DeclareValueList({1.0, 2.0, 5.0, 10.0});
    m_pListed->DbSetDefault(2.0);
    m_pFollower->DeclareMinAndMax(-1000.0, 1000.0);
    m_pResult->SetObjectType(eOBJECTTYPE_RESULT);
    SetSaveRecallType(m_pResult, eSAVERECALL_NONE, true);
    m_pText->DeclareMaxLength(40);
    m_pPattern->DeclareLength(16);
    m_pPath->DeclareOpenExtensions({QStringLiteral("csv"), QStringLiteral("xml")});
    m_pPath->DeclareSaveExtensions({QStringLiteral("csv")});
    m_pPath->DeclareStem(QStringLiteral("Wave"));
    AddPropGroupToList(m_pArray, QStringLiteral("Array"));
    AddPropGroupToList(m_pFixed, QStringLiteral("Fixed"));
    m_pFixed->DbSetSize(2);
    AddPropGroupToList(m_pMap, QStringLiteral("Map"));
    m_pMap->SetNamePattern(QStringLiteral("Label%1"));
    AddObject(m_pAction, QStringLiteral("Action"));
    AddObject(m_pOperation, QStringLiteral("Operation"));
}

KW_ACCEPTANCE CPgFixture::OnPropertySet(const CDbPropBase* property)
{
    m_hooks.push_back(QStringLiteral("set ") + property->NodeName());
    if (m_settleFollower && property == m_pFollower)
    {
        m_pFollower->DbSet(m_pFollower->Get());
    }
    if (property == m_takenBack)
    {
        m_takenBack->WriteDefault();
    }
    UpdateGroup();
    return m_answer;
}

void CPgFixture::OnPropertyDbSet(const CDbPropBase* property)
{
    m_hooks.push_back(QStringLiteral("db ") + property->NodeName());
}

void CPgFixture::OnPropertyAutoSet(const CDbPropBase* property)
{
    m_hooks.push_back(QStringLiteral("auto ") + property->NodeName());
}

void CPgFixture::OnPropertyUnchanged(const CDbPropBase* property)
{
    m_hooks.push_back(QStringLiteral("unchanged ") + property->NodeName());
}

KW_ACCEPTANCE CPgFixture::OnFunction(const CDbFunction* function)
{
    if (m_refusal > eKW_ACC_WARNING)
    {
        return m_refusal;
    }
    return function == m_pAction ? m_pInt32->DbSet(0) : static_cast<KW_ACCEPTANCE>(eKW_ACC_OK);
}

void CPgFixture::OnItemInserted(CDbContainerBase* /*container*/, const QString& item)
{
    if (m_onInserted)
    {
        m_onInserted(item);
    }
}

void CPgFixture::UpdateGroup()
{
    m_pFollower->SetMinAndMax(-m_pDouble->Get(), m_pDouble->Get());
    m_pEnumCopy->DbSet(m_pEnum->Get());
}

CPgFixtureRoot::CPgFixtureRoot()
{
    SetNodeName(QStringLiteral("Fixture"));
    AddPropGroupToList(m_pFirst, QStringLiteral("First"));
    AddPropGroupToList(m_pSecond, QStringLiteral("Second"));
}

QByteArray CPgFixtureRoot::Text() const
{
    QByteArray text;
    QXmlStreamWriter writer(&text);
    SerializeXML(&writer);
    return text;
}

QByteArray CPgFixtureRoot::FileText(bool csv) const
{
    QByteArray text = SavedText(csv);
    const auto begin = text.lastIndexOf(csv ? "Digest" : " <Digest");
    return text.remove(begin, text.indexOf('\n', begin) + 1 - begin);
}

QByteArray CPgFixtureRoot::SavedText(bool csv) const
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QLatin1String(csv ? "a.csv" : "a.xml"));
    SaveToFile(name, eSAVERECALL_ALL);
    return ContentsOf(name);
}
