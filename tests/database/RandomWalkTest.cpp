// SPDX-License-Identifier: MIT
#include "FixtureTree.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace
{
QString RandomText()
{
    return QString::fromStdString(*rc::gen::container<std::string>(rc::gen::inRange('0', 'z')));
}

/** One client action on a random node; refusals are part of the walk. */
void RandomAction(CPgFixture& group)
{
    const QString name = QStringLiteral("n%1").arg(*rc::gen::inRange(0, 6));
    const INT32 index = *rc::gen::inRange(-1, 6);
    switch (*rc::gen::inRange(0, 10))
    {
    case 0:
        group.m_pArray->Insert(index);
        break;
    case 1:
        group.m_pArray->Remove(index, *rc::gen::inRange(0, 3));
        break;
    case 2:
        group.m_pMap->Insert(name);
        break;
    case 3:
        group.m_pMap->Rename(name, QStringLiteral("n%1").arg(*rc::gen::inRange(0, 6)));
        break;
    case 4:
        index > 2 ? group.m_pMap->Remove(name) : group.m_pMap->Copy(name, QString());
        break;
    case 5:
        group.m_pMap->SetActive(name);
        group.m_pArray->SetActive(index);
        group.m_pReference->Set(QStringLiteral("%1/Map[%2]").arg(group.GetPath(), name));
        break;
    case 6:
        if (CPgFixtureItem* const item = group.m_pArray->ItemDirect(index))
        {
            item->m_pLevel->SetUserValue(*rc::gen::arbitrary<double>());
            item->m_pLabel->Set(RandomText());
        }
        break;
    case 7:
        group.m_pDouble->SetUserValue(*rc::gen::inRange(-10, 1010) / 3.0);
        group.m_pFollower->SetUserValue(*rc::gen::inRange(-3000, 3000) / 7.0);
        break;
    default:
    {
        const auto& properties = group.Properties();
        CDbPropBase& p = *properties[*rc::gen::inRange<std::size_t>(0, properties.size())];
        index < 2 ? p.SetText(RandomText())
                  : (index < 4 ? p.IncDec(*rc::gen::inRange(-9, 10)) : p.SetToDefault());
        break;
    }
    }
}
} // namespace

RC_GTEST_PROP(RandomWalk, IsNotUndoneRedoneOrSavedWhole, ())
{
    const CReports reports;
    const auto root = CPgFixtureRoot::Create();
    std::vector<QByteArray> states{root->Text()};
    const int actions = *rc::gen::inRange(1, 30);
    for (int i = 0; i < actions; ++i)
    {
        RandomAction(*rc::gen::arbitrary<bool>() ? *root->m_pFirst : *root->m_pSecond);
        if (root->Text() != states.back())
        {
            states.push_back(root->Text());
        }
    }
    const QTemporaryDir folder;
    for (const char* file : {"a.xml", "a.csv"})
    {
        const QString name = folder.filePath(QString::fromLatin1(file));
        RC_ASSERT(root->SaveToFile(name, eSAVERECALL_ALL) == eKW_ACC_OK);
        const auto other = CPgFixtureRoot::Create();
        RC_ASSERT(other->ApplyFile(name, eSAVERECALL_ALL) == eKW_ACC_OK);
        RC_ASSERT(other->Text() == states.back());
        for (std::size_t i = 0; i < root->m_pFirst->Properties().size(); ++i)
        {
            RC_ASSERT(other->m_pFirst->Properties()[i]->GetMaxText().toStdString() ==
                      root->m_pFirst->Properties()[i]->GetMaxText().toStdString());
        }
    }
    while (root->Undo() == eKW_ACC_OK)
    {
    }
    RC_ASSERT(root->Text() == states.front());
    while (root->Redo() == eKW_ACC_OK)
    {
    }
    RC_ASSERT(root->Text() == states.back());
    RC_ASSERT(root->ApplyDefaults(eSAVERECALL_ALL, QString()) == eKW_ACC_OK);
    RC_ASSERT(root->Text() == states.front());
    const bool hasStep = states.back() != states.front();
    const KW_ACCEPTANCE undone = hasStep ? root->Undo() : KW_ACCEPTANCE{eKW_ACC_OK};
    RC_ASSERT(undone == eKW_ACC_OK);
    RC_ASSERT(root->Text() == states.back());
}
