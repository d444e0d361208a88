// SPDX-License-Identifier: MIT
// The generic walk of remote control and tools, through the exported interfaces alone: every node
// of the tree by name, by order, as text and as a typed handle.

#include "IKWFunctionZEL.h"
#include "KWEnumerations.h"
#include "TreeWalk.h"

#include <gtest/gtest.h>
#include <map>
#include <vector>

namespace
{
/** Whether a handle is of a kind and answers as the text does. */
template <typename THandle>
bool IsKind(const IKWPropertyBase* handle, const QString& text)
{
    const auto* const typed = dynamic_cast<const THandle*>(handle);
    if (typed == nullptr)
    {
        return false;
    }
    if constexpr (std::is_arithmetic_v<decltype(typed->Get())>)
    {
        return static_cast<double>(typed->Get()) == text.toDouble();
    }
    else
    {
        return QString(typed->Get()) == text;
    }
}

const std::map<QString, bool (*)(const IKWPropertyBase*, const QString&)> kKinds = {
    {QStringLiteral("int16"), &IsKind<IKWNumericProperty<INT16>>},
    {QStringLiteral("uint16"), &IsKind<IKWNumericProperty<UINT16>>},
    {QStringLiteral("int32"), &IsKind<IKWNumericProperty<INT32>>},
    {QStringLiteral("uint32"), &IsKind<IKWNumericProperty<UINT32>>},
    {QStringLiteral("int64"), &IsKind<IKWNumericProperty<INT64>>},
    {QStringLiteral("uint64"), &IsKind<IKWNumericProperty<UINT64>>},
    {QStringLiteral("double"), &IsKind<IKWNumericProperty<double>>},
    {QStringLiteral("string"), &IsKind<IKWStringProperty>},
    {QStringLiteral("blob"), &IsKind<IKWBlobProperty>},
    {QStringLiteral("bitpattern"), &IsKind<IKWBitPatternProperty>},
    {QStringLiteral("filepath"), &IsKind<IKWFilePathProperty>},
    {QStringLiteral("reference"), &IsKind<IKWReferenceProperty>},
};

/** Whether the typed handle is of the kind that the node names, and answers as the text does. */
bool IsHandleOfItsKind(IDbProperty& property)
{
    const QString type = property.GetTypeName();
    const auto handle = property.GetHandle();
    if (const auto kind = kKinds.find(type); kind != kKinds.end())
    {
        return kind->second(handle.get(), property.GetText());
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
    std::shared_ptr<IDbGroup> m_top = m_root->GetDbObject();

    /** Whether a path leads to this node, whichever of its interfaces is asked. */
    bool IsFound(const QString& path, const IDbObject& node) const
    {
        return dynamic_cast<const void*>(m_top->Find(path).get()) ==
               dynamic_cast<const void*>(&node);
    }
};
} // namespace

TEST_F(ClientWalk, NodeIsNotFoundByItsPathOrHasAForeignHandle)
{
    WalkNodes(m_top, [this](const auto& node)
              { EXPECT_TRUE(IsFound(node->GetPath(), *node)) << node->GetPath().toStdString(); });
    int properties = 0;
    Walk<IDbProperty>(m_top,
                      [&](const auto& property)
                      {
                          ++properties;
                          const std::string path = property->GetPath().toStdString();
                          EXPECT_TRUE(IsHandleOfItsKind(*property)) << path;
                          EXPECT_EQ(property->GetHandle(), property->GetHandle()) << path;
                      });
    EXPECT_GT(properties, 1000);
    Walk<IDbGroup>(m_top,
                   [](const auto& group)
                   {
                       const std::string path = group->GetPath().toStdString();
                       const auto handle = group->GetHandle();
                       EXPECT_EQ(handle->GetDbObject(), group) << path;
                       const bool isArray = dynamic_cast<IKWArrayBase*>(handle.get()) != nullptr;
                       const bool isMap = dynamic_cast<IKWMapBase*>(handle.get()) != nullptr;
                       EXPECT_EQ(isArray, group->GetKind() == eKW_NODE_ARRAY) << path;
                       EXPECT_EQ(isMap, group->GetKind() == eKW_NODE_MAP) << path;
                   });
}

TEST_F(ClientWalk, PathThatLeadsNowhereLeadsSomewhere)
{
    EXPECT_TRUE(IsFound(QString(), *m_top));
    for (const char* path :
         {"/", "Horizontal/", "Horizontal//Scale", "Horizontal/scale", "Horizontal/Scale/Min",
          "Horizontal[0]", "Vertical/Channel[4]", "Vertical/Channel[-1]", "Vertical/Channel[]",
          "Vertical/Channel[0", "Vertical/Channel/0", "Vertical/Channel[0]]", "[0]", "]", " "})
    {
        EXPECT_FALSE(m_top->Find(QString::fromLatin1(path))) << '"' << path << '"';
    }
    for (const INT32 index : {-1, m_top->GetGroupCount(), std::numeric_limits<INT32>::max()})
    {
        EXPECT_EQ(m_top->GetGroup(index), nullptr);
        EXPECT_EQ(m_top->GetProperty(index), nullptr);
        EXPECT_EQ(m_top->GetAction(index), nullptr);
    }
}

TEST_F(ClientWalk, NodeOfALostTreeCrashesOrTakesAWrite)
{
    std::vector<std::pair<std::shared_ptr<IDbObject>, QString>> nodes;
    WalkNodes(m_top,
              [&nodes](const auto& node)
              {
                  const auto* const property = dynamic_cast<const IDbProperty*>(node.get());
                  nodes.emplace_back(node, property != nullptr ? property->GetText() : QString());
              });
    nodes.erase(nodes.begin()); // the root itself, which keeps the tree
    const std::weak_ptr<IKWFunctionZEL> watched = m_root;
    m_top.reset();
    m_root.reset();
    ASSERT_TRUE(watched.expired());
    for (const auto& [node, text] : nodes)
    {
        if (auto* const property = dynamic_cast<IDbProperty*>(node.get()))
        {
            const bool refersToAnItem = property->GetTypeName() == QLatin1String("reference");
            EXPECT_TRUE(refersToAnItem || property->GetText() == text)
                << property->GetNodeName().toStdString();
            EXPECT_EQ(property->SetText(property->GetDefaultText()), eKW_ACC_DETACHED);
            EXPECT_EQ(property->SetToDefault(), eKW_ACC_DETACHED);
            EXPECT_GT(property->IncDec(1), eKW_ACC_WARNING);
        }
        else if (auto* const action = dynamic_cast<IDbAction*>(node.get()))
        {
            EXPECT_EQ(action->Execute(), eKW_ACC_DETACHED);
        }
        else if (auto* const items = dynamic_cast<IDbGroup&>(*node).AsContainer())
        {
            EXPECT_GT(items->InsertItem(QString()), eKW_ACC_WARNING);
            EXPECT_GT(items->RemoveItem(QStringLiteral("0")), eKW_ACC_WARNING);
            EXPECT_GT(items->SetActiveItem(QStringLiteral("0")), eKW_ACC_WARNING);
        }
    }
}
