// SPDX-License-Identifier: MIT
#include "FixtureTree.h"

#include "KWEnumerationsTrigger.h"
#include "KWEnumerationsUnits.h"

#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamWriter>

namespace
{
template <typename T>
T* Declare(CDbPropertyGroup& group, T* property, const char* name)
{
    group.AddPropertyToList(property, QString::fromLatin1(name));
    return property;
}

using CFixtureHandle = CDbGroupHandle<IKWFunctionBase, CDbPropertyGroup>;
} // namespace

CPgFixtureItem::CPgFixtureItem()
{
    m_pLevel = Declare(*this, new CDbPropNum<double>, "Level");
    m_pLevel->DeclareMinAndMax(-10.0, 10.0);
    m_pLabel = Declare(*this, new CDbPropString, "Label");
}

std::unique_ptr<IKWFunctionBase> CPgFixtureItem::CreateFIM()
{
    return std::make_unique<CFixtureHandle>(*this);
}

CPgFixture::CPgFixture()
{
    SetPropertyListSize(17);
    m_pInt16 = Declare(*this, new CDbPropNum<INT16>, "Int16");
    m_pUInt16 = Declare(*this, new CDbPropNum<UINT16>, "UInt16");
    m_pInt32 = Declare(*this, new CDbPropNum<INT32>, "Int32");
    m_pInt32->DeclareMinAndMax(-100, 100);
    m_pUInt32 = Declare(*this, new CDbPropNum<UINT32>, "UInt32");
    m_pInt64 = Declare(*this, new CDbPropNum<INT64>, "Int64");
    m_pUInt64 = Declare(*this, new CDbPropNum<UINT64>, "UInt64");
    m_pDouble = Declare(*this, new CDbPropNum<double>, "Double");
    m_pDouble->DeclareUnit(eKW_UNIT_LEVEL_V);
    m_pDouble->DeclareMinAndMax(0.0, 1000.0);
    m_pDouble->DeclareStep(0.5);
    m_pDouble->DbSetDefault(10.0);
    m_pListed = Declare(*this, new CDbPropNum<double>, "Listed");
    m_pListed->DeclareValueList({1.0, 2.0, 5.0, 10.0});
    m_pListed->DbSetDefault(2.0);
    m_pFollower = Declare(*this, new CDbPropNum<double>, "Follower");
    m_pFollower->DeclareMinAndMax(-1000.0, 1000.0);
    m_pResult = Declare(*this, new CDbPropNum<double>, "Result");
    m_pResult->SetObjectType(eOBJECTTYPE_RESULT);
    SetSaveRecallType(m_pResult, eSAVERECALL_NONE, true);
    m_pEnum = Declare(*this, new CDbPropEnum<KW_ZEL_TRIGGER_TYPE>, "Enum");
    m_pEnumCopy = Declare(*this, new CDbPropEnum<KW_ZEL_TRIGGER_TYPE>, "EnumCopy");
    m_pText = Declare(*this, new CDbPropString, "Text");
    m_pText->DeclareMaxLength(40);
    m_pBlob = Declare(*this, new CDbPropBlob, "Blob");
    m_pPattern = Declare(*this, new CDbPropBitPattern, "Pattern");
    m_pPattern->DeclareLength(16);
    m_pPath = Declare(*this, new CDbPropFilePath, "Path");
    m_pPath->DeclareOpenExtensions({QStringLiteral("csv"), QStringLiteral("xml")});
    m_pPath->DeclareSaveExtensions({QStringLiteral("csv")});
    m_pPath->DeclareStem(QStringLiteral("Wave"));
    m_pReference = Declare(*this, new CDbPropReference, "Reference");
    SetPropGroupListSize(3);
    AddPropGroupToList(m_pArray = new CPgaFixtureItem(1, 20), QStringLiteral("Array"));
    AddPropGroupToList(m_pFixed = new CPgaFixtureItem(0, CDbContainerBase::kUnlimited),
                       QStringLiteral("Fixed"));
    m_pFixed->DbSetSize(2);
    AddPropGroupToList(m_pMap = new CPgmFixtureItem(20), QStringLiteral("Map"));
    m_pMap->SetNamePattern(QStringLiteral("Label%1"));
    AddObject(m_pAction = new CDbFunction, QStringLiteral("Action"));
    AddObject(m_pOperation = new CDbOperation, QStringLiteral("Operation"));
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

std::unique_ptr<IKWFunctionBase> CPgFixture::CreateFIM()
{
    return std::make_unique<CFixtureHandle>(*this);
}

CPgFixtureRoot::CPgFixtureRoot()
{
    SetNodeName(QStringLiteral("Fixture"));
    AddPropGroupToList(m_pFirst = new CPgFixture, QStringLiteral("First"));
    AddPropGroupToList(m_pSecond = new CPgFixture, QStringLiteral("Second"));
}

std::unique_ptr<IKWFunctionBase> CPgFixtureRoot::CreateFIM()
{
    return std::make_unique<CFixtureHandle>(*this);
}

std::shared_ptr<CPgFixtureRoot> CPgFixtureRoot::Create()
{
    std::shared_ptr<CPgFixtureRoot> root(new CPgFixtureRoot, CDbNodeDeleter{});
    root->OnTreeCreated();
    root->GetDependencies().CalculateEverything();
    root->SetAutoUpdateDependencies(true);
    root->OnFIMCreated();
    root->EnableHistoryObjects();
    return root;
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
    QFile file(folder.filePath(csv ? QStringLiteral("a.csv") : QStringLiteral("a.xml")));
    SaveToFile(file.fileName(), eSAVERECALL_ALL);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}
