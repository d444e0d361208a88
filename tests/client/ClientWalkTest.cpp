// SPDX-License-Identifier: MIT
// The generic walk of remote control and tools, through the exported interfaces alone: every node
// of the tree by name, by order, as text and as a typed handle.

#include "IKWFunctionZEL.h"
#include "KWEnumerations.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <vector>

namespace
{
using t_Group = std::shared_ptr<IDbGroup>;

void Walk(const t_Group& group, const std::function<void(const t_Group&)>& visit)
{
    visit(group);
    for (INT32 i = 0; i < group->GetGroupCount(); ++i)
    {
        Walk(group->GetGroup(i), visit);
    }
    const IDbContainer* const container = group->AsContainer();
    for (INT32 i = 0; container != nullptr && i < container->GetCount(); ++i)
    {
        Walk(container->GetItemByPosition(i), visit);
    }
}

/** The number behind a handle, or NaN where the handle is none of this kind. */
template <typename T>
double ReadNumber(const IKWPropertyBase* handle)
{
    const auto* const number = dynamic_cast<const IKWNumericProperty<T>*>(handle);
    return number != nullptr ? static_cast<double>(number->Get())
                             : std::numeric_limits<double>::quiet_NaN();
}

const std::map<QString, double (*)(const IKWPropertyBase*)> kNumbers = {
    {QStringLiteral("int16"), &ReadNumber<INT16>},
    {QStringLiteral("uint16"), &ReadNumber<UINT16>},
    {QStringLiteral("int32"), &ReadNumber<INT32>},
    {QStringLiteral("uint32"), &ReadNumber<UINT32>},
    {QStringLiteral("int64"), &ReadNumber<INT64>},
    {QStringLiteral("uint64"), &ReadNumber<UINT64>},
    {QStringLiteral("double"), &ReadNumber<double>},
};

template <typename THandle>
QString ReadText(const IKWPropertyBase* handle)
{
    const auto* const text = dynamic_cast<const THandle*>(handle);
    return text != nullptr ? QString(text->Get()) : QString();
}

const std::map<QString, QString (*)(const IKWPropertyBase*)> kTexts = {
    {QStringLiteral("string"), &ReadText<IKWStringProperty>},
    {QStringLiteral("bitpattern"), &ReadText<IKWBitPatternProperty>},
    {QStringLiteral("filepath"), &ReadText<IKWFilePathProperty>},
    {QStringLiteral("reference"), &ReadText<IKWReferenceProperty>},
};

/** Whether the typed handle is of the kind that the node names, and answers as the text does. */
bool IsHandleOfItsKind(IDbProperty& property)
{
    const QString type = property.GetTypeName();
    const auto handle = property.GetHandle();
    if (const auto number = kNumbers.find(type); number != kNumbers.end())
    {
        return number->second(handle.get()) == property.GetText().toDouble();
    }
    if (const auto text = kTexts.find(type); text != kTexts.end())
    {
        const QString value = text->second(handle.get());
        return !value.isNull() && value == property.GetText();
    }
    if (type == QLatin1String("blob"))
    {
        return dynamic_cast<IKWBlobProperty*>(handle.get()) != nullptr;
    }
    const auto* const selector = dynamic_cast<IKWEnumPropertyBase*>(handle.get());
    return selector != nullptr && selector->GetEnumNameInfo().GetType() == type &&
           (selector->GetEnumNameInfo().GetSerialName(selector->GetAsInt()) == property.GetText() ||
            QString::number(selector->GetAsInt()) == property.GetText());
}

class ClientWalk : public testing::Test
{
protected:
    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();

    void Properties(const std::function<void(const std::shared_ptr<IDbProperty>&)>& visit)
    {
        Walk(m_root->GetDbObject(),
             [&visit](const t_Group& group)
             {
                 for (INT32 i = 0; i < group->GetPropertyCount(); ++i)
                 {
                     visit(group->GetProperty(i));
                 }
             });
    }
};
} // namespace

TEST_F(ClientWalk, NodeIsNotFoundByItsPathOrHasAForeignHandle)
{
    const t_Group top = m_root->GetDbObject();
    int properties = 0;
    Properties(
        [&](const std::shared_ptr<IDbProperty>& property)
        {
            ++properties;
            const std::string path = property->GetPath().toStdString();
            EXPECT_EQ(std::dynamic_pointer_cast<IDbProperty>(top->Find(property->GetPath())),
                      property)
                << path;
            EXPECT_TRUE(IsHandleOfItsKind(*property)) << path;
            EXPECT_EQ(property->GetHandle(), property->GetHandle()) << path;
        });
    EXPECT_GT(properties, 1000);
    Walk(top,
         [&top](const t_Group& group)
         {
             const std::string path = group->GetPath().toStdString();
             EXPECT_EQ(std::dynamic_pointer_cast<IDbGroup>(top->Find(group->GetPath())), group)
                 << path;
             EXPECT_EQ(group->GetHandle()->GetDbObject(), group) << path;
             const bool isArray = dynamic_cast<IKWArrayBase*>(group->GetHandle().get()) != nullptr;
             const bool isMap = dynamic_cast<IKWMapBase*>(group->GetHandle().get()) != nullptr;
             EXPECT_EQ(isArray, group->GetKind() == eKW_NODE_ARRAY) << path;
             EXPECT_EQ(isMap, group->GetKind() == eKW_NODE_MAP) << path;
             for (INT32 i = 0; i < group->GetActionCount(); ++i)
             {
                 const auto action = group->GetAction(i);
                 EXPECT_EQ(std::dynamic_pointer_cast<IDbAction>(top->Find(action->GetPath())),
                           action)
                     << path;
             }
         });
}

TEST_F(ClientWalk, PathThatLeadsNowhereLeadsSomewhere)
{
    const t_Group top = m_root->GetDbObject();
    EXPECT_EQ(std::dynamic_pointer_cast<IDbGroup>(top->Find(QStringLiteral(""))), top);
    for (const char* path :
         {"/", "Horizontal/", "Horizontal//Scale", "Horizontal/scale", "Horizontal/Scale/Min",
          "Horizontal[0]", "Vertical/Channel[4]", "Vertical/Channel[-1]", "Vertical/Channel[]",
          "Vertical/Channel[0", "Vertical/Channel/0", "Vertical/Channel[0]]", "[0]", "]", " "})
    {
        EXPECT_FALSE(top->Find(QString::fromLatin1(path))) << '"' << path << '"';
    }
    for (const INT32 index : {-1, top->GetGroupCount(), std::numeric_limits<INT32>::max()})
    {
        EXPECT_EQ(top->GetGroup(index), nullptr);
        EXPECT_EQ(top->GetProperty(index), nullptr);
        EXPECT_EQ(top->GetAction(index), nullptr);
    }
}

TEST_F(ClientWalk, NodeOfALostTreeCrashesOrTakesAWrite)
{
    std::vector<std::shared_ptr<IDbProperty>> properties;
    std::vector<t_Group> containers;
    std::vector<std::shared_ptr<IDbAction>> actions;
    Properties([&](const auto& property) { properties.push_back(property); });
    Walk(m_root->GetDbObject(),
         [&](const t_Group& group)
         {
             if (group->AsContainer() != nullptr)
             {
                 containers.push_back(group);
             }
             for (INT32 i = 0; i < group->GetActionCount(); ++i)
             {
                 actions.push_back(group->GetAction(i));
             }
         });
    std::vector<QString> texts;
    for (const auto& property : properties)
    {
        texts.push_back(property->GetText());
    }
    const std::weak_ptr<IKWFunctionZEL> watched = m_root;
    m_root.reset();
    ASSERT_TRUE(watched.expired());
    for (std::size_t i = 0; i < properties.size(); ++i)
    {
        IDbProperty& property = *properties[i];
        const bool refersToAnItem = property.GetTypeName() == QLatin1String("reference");
        EXPECT_TRUE(refersToAnItem || property.GetText() == texts[i])
            << property.GetNodeName().toStdString();
        EXPECT_EQ(property.SetText(property.GetDefaultText()), eKW_ACC_DETACHED);
        EXPECT_EQ(property.SetToDefault(), eKW_ACC_DETACHED);
        EXPECT_GT(property.IncDec(1), eKW_ACC_WARNING);
    }
    for (const t_Group& container : containers)
    {
        IDbContainer& items = *container->AsContainer();
        EXPECT_GT(items.InsertItem(QString()), eKW_ACC_WARNING);
        EXPECT_GT(items.RemoveItem(QStringLiteral("0")), eKW_ACC_WARNING);
        EXPECT_GT(items.SetActiveItem(QStringLiteral("0")), eKW_ACC_WARNING);
    }
    for (const auto& action : actions)
    {
        EXPECT_EQ(action->Execute(), eKW_ACC_DETACHED);
    }
}
