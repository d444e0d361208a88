// SPDX-License-Identifier: MIT
// Pages as they see the tree: objects that follow, whoever writes, and outlive what they show.

#include "IKWFunctionHorizontal.h"
#include "IKWFunctionZEL.h"
#include "KWQtTree.h"
#include "KWQtTreeModel.h"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QSignalSpy>
#include <gtest/gtest.h>
#include <thread>

namespace
{
constexpr char kLabels[] = "SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem";

class QtAdapter : public testing::Test
{
protected:
    QtAdapter() { m_tree.SetInterval(0); }

    CKWQtProperty& At(const char* path)
    {
        CKWQtProperty* const property = m_tree.property(QString::fromLatin1(path));
        EXPECT_NE(property, nullptr) << path;
        return *property;
    }
    CKWQtContainerModel& Labels() { return *m_tree.container(QString::fromLatin1(kLabels)); }

    QStringList Names()
    {
        QStringList names;
        for (int i = 0; i < Labels().rowCount(); ++i)
        {
            names.append(
                Labels().data(Labels().index(i), CKWQtContainerModel::NameRole).toString());
        }
        return names;
    }

    /** A write as another client does it: past the objects. */
    KW_ACCEPTANCE Write(const char* path, const char* text)
    {
        const auto node = m_root->GetDbObject()->Find(QString::fromLatin1(path));
        return std::dynamic_pointer_cast<IDbProperty>(node)->SetText(QString::fromLatin1(text));
    }

    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    CKWQtTree m_tree{m_root};
};

TEST_F(QtAdapter, WriteOfAnotherThreadIsToldOfOnceAndInThePagesThread)
{
    CKWQtProperty& scale = At("Horizontal/Scale");
    CKWQtProperty& time = At("Horizontal/AcquisitionTime");
    std::thread::id told;
    QObject::connect(&scale, &CKWQtProperty::valueChanged,
                     [&told] { told = std::this_thread::get_id(); });
    const QSignalSpy values(&time, &CKWQtProperty::valueChanged);
    const QSignalSpy choices(&scale, &CKWQtProperty::choicesChanged);

    std::thread([this] { Write("Horizontal/Scale", "0.002"); }).join();
    EXPECT_EQ(values.count(), 0);
    m_tree.poll();
    m_tree.poll();
    EXPECT_EQ(told, std::this_thread::get_id());
    EXPECT_EQ(values.count(), 1);
    EXPECT_EQ(choices.count(), 0);
    EXPECT_EQ(time.GetValue(), 0.02);
    EXPECT_EQ(scale.GetText(), QStringLiteral("2 ms/div"));
    EXPECT_EQ(scale.GetUnit(), QStringLiteral("s/div"));
}

TEST_F(QtAdapter, OwnWriteIsToldOfAtOnceAndNotAgain)
{
    CKWQtProperty& scale = At("Horizontal/Scale");
    const QSignalSpy values(&scale, &CKWQtProperty::valueChanged);
    EXPECT_TRUE(scale.setProperty("value", 1e-3));
    EXPECT_EQ(values.count(), 1);
    m_tree.poll();
    EXPECT_EQ(values.count(), 1);
    scale.SetText(QStringLiteral("5 µs"));
    EXPECT_EQ(scale.GetValue(), 5e-6);
    EXPECT_EQ(scale.stepBy(1), 0);
    EXPECT_EQ(scale.GetValue(), 1e-5);
    EXPECT_EQ(scale.reset(), 0);
    EXPECT_EQ(scale.GetValue(), 1e-7);
    EXPECT_FALSE(scale.GetChoices().isEmpty());
}

TEST_F(QtAdapter, RefusalSaysWhyWithTheLimitAndChangesNothing)
{
    CKWQtProperty& grid = At("Setup/Display/GridIntensity");
    QSignalSpy refused(&grid, &CKWQtProperty::refused);
    const QSignalSpy values(&grid, &CKWQtProperty::valueChanged);
    grid.SetValue(101);
    grid.SetValue(102);
    EXPECT_EQ(refused.count(), 2);
    EXPECT_EQ(grid.GetCode(), int{eKW_ACC_ABOVE_MAXIMUM});
    EXPECT_EQ(grid.GetRefusal(), QStringLiteral("above the maximum (100 %)"));
    grid.SetValue(QVariantList{1});
    EXPECT_EQ(grid.GetCode(), int{eKW_ACC_BAD_TEXT});
    EXPECT_EQ(values.count(), 0);
    EXPECT_EQ(grid.setLimited(1e9), 1);
    EXPECT_EQ(grid.GetValue(), 100);
    EXPECT_TRUE(grid.GetRefusal().isEmpty());
    EXPECT_FALSE(At("Horizontal/SampleRate").IsWritable());
}

TEST_F(QtAdapter, NumbersOfScriptsAreIntegersOnlyWhereTheyAreWhole)
{
    CKWQtProperty& averages = At("Horizontal/NumberOfAverages");
    averages.SetValue(16.0);
    EXPECT_EQ(averages.GetValue(), 16U);
    averages.SetValue(2.5);
    EXPECT_EQ(averages.GetCode(), int{eKW_ACC_BAD_TEXT});
    EXPECT_EQ(averages.setLimited(1e300), 1);
    EXPECT_EQ(averages.GetValue(), averages.GetMaximum());
    EXPECT_EQ(averages.setLimited(qQNaN()), int{eKW_ACC_NOT_A_NUMBER});
}

TEST_F(QtAdapter, SelectableValuesAreThoseOfTheMoment)
{
    CKWQtProperty& type = At("Trigger/Type");
    const auto edge = type.GetChoices().first().toMap();
    type.SetText(edge[QStringLiteral("text")].toString());
    EXPECT_EQ(type.GetValue(), edge[QStringLiteral("value")]);

    CKWQtProperty& source = At("Trigger/Source");
    const QSignalSpy choices(&source, &CKWQtProperty::choicesChanged);
    const auto before = source.GetChoices().size();
    ASSERT_LE(Write("Vertical/Channel[1]/Enabled", "OFF"), 1U);
    m_tree.poll();
    EXPECT_EQ(choices.count(), 1);
    EXPECT_LT(source.GetChoices().size(), before);
    At("Vertical/Channel[1]/Enabled").SetValue(true);
    EXPECT_EQ(source.GetChoices().size(), before);
}

TEST_F(QtAdapter, SecretsNeverReachAPage)
{
    CKWQtProperty& secret = At("Setup/Wireless/WirelessClient/Passphrase");
    secret.SetText(QStringLiteral("correct horse"));
    EXPECT_EQ(secret.GetCode(), 0);
    EXPECT_FALSE(secret.GetValue().toString().contains(QStringLiteral("horse")));
    EXPECT_FALSE(secret.GetText().contains(QStringLiteral("horse")));
}

TEST_F(QtAdapter, ObjectOfARemovedItemIsDetachedAndComesBackWithUndo)
{
    ASSERT_EQ(Labels().insert(QStringLiteral("Engine")), 0);
    const std::string path = std::string(kLabels) + "[Engine]/Identifier";
    CKWQtProperty& identifier = At(path.c_str()); // of an item that no poll has seen
    identifier.SetValue(0x123);
    const QSignalSpy states(&identifier, &CKWQtProperty::stateChanged);
    ASSERT_EQ(Labels().remove(QStringLiteral("Engine")), 0);
    m_tree.poll();
    EXPECT_EQ(states.count(), 1);
    EXPECT_FALSE(identifier.IsAttached());
    EXPECT_FALSE(identifier.IsValid());
    EXPECT_EQ(identifier.GetValue(), 0x123);
    identifier.SetValue(1);
    EXPECT_EQ(identifier.GetCode(), int{eKW_ACC_DETACHED});
    EXPECT_EQ(m_tree.property(QString::fromStdString(path)), nullptr);

    EXPECT_EQ(m_tree.undo(), 0);
    m_tree.poll();
    EXPECT_TRUE(identifier.IsValid());
    EXPECT_EQ(m_tree.property(QString::fromStdString(path)), &identifier);
}

TEST_F(QtAdapter, DroppedObjectsGoAndOthersStay)
{
    Labels().insert(QStringLiteral("Engine"));
    const QPointer<CKWQtProperty> dropped =
        &At((std::string(kLabels) + "[Engine]/Identifier").c_str());
    const QPointer<CKWQtProperty> kept = &At("Horizontal/Scale");
    Labels().remove(QStringLiteral("Engine"));
    m_tree.poll();
    m_tree.DropDetached();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(dropped);
    EXPECT_TRUE(kept);
    m_tree.undo();
    m_tree.poll();
    EXPECT_EQ(Names(), QStringList(QStringLiteral("Engine")));
    EXPECT_TRUE(At((std::string(kLabels) + "[Engine]/Identifier").c_str()).IsAttached());
}

TEST_F(QtAdapter, PathFollowsTheItem)
{
    Labels().insert(QStringLiteral("Engine"));
    CKWQtProperty& identifier = At((std::string(kLabels) + "[Engine]/Identifier").c_str());
    const QSignalSpy paths(&identifier, &CKWQtProperty::pathChanged);
    Labels().rename(QStringLiteral("Engine"), QStringLiteral("Motor"));
    m_tree.poll();
    EXPECT_EQ(paths.count(), 1);
    EXPECT_EQ(identifier.GetPath(), QLatin1String(kLabels) + QStringLiteral("[Motor]/Identifier"));
}

TEST_F(QtAdapter, ObjectsOutliveTheTree)
{
    CKWQtProperty& scale = At("Horizontal/Scale");
    scale.SetValue(2e-3);
    m_root.reset();
    const QSignalSpy states(&scale, &CKWQtProperty::stateChanged);
    m_tree.Release();
    EXPECT_EQ(states.count(), 1);
    EXPECT_FALSE(scale.IsValid());
    EXPECT_EQ(scale.GetValue(), 2e-3);
    scale.SetValue(1e-3);
    EXPECT_EQ(scale.GetCode(), int{eKW_ACC_DETACHED});
    EXPECT_EQ(m_tree.property(QStringLiteral("Horizontal/Scale")), nullptr);
    m_tree.poll();
    EXPECT_EQ(GetZELRoot()->GetPgHorizontal()->GetPrScale()->Get(), 1e-7) << "a tree of its own";
}

TEST_F(QtAdapter, ReceiverMayLetEverythingGo)
{
    auto* const tree = new CKWQtTree(m_root);
    CKWQtProperty* const scale = tree->property(QStringLiteral("Horizontal/Scale"));
    tree->property(QStringLiteral("Horizontal/Left"));
    QObject::connect(scale, &CKWQtProperty::valueChanged, [tree] { delete tree; });
    Write("Horizontal/Scale", "0.002");
    tree->poll();
}

TEST_F(QtAdapter, OperationRunsBesideThePage)
{
    CKWQtAction* const action = m_tree.action(QStringLiteral("Setup/Selfalignment/Start"));
    ASSERT_NE(action, nullptr);
    const QSignalSpy ended(action, &CKWQtAction::finished);
    action->trigger();
    EXPECT_TRUE(action->IsRunning());
    while (action->IsRunning())
    {
        m_tree.poll();
    }
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(action->GetCode(), 0);
}

TEST_F(QtAdapter, RowsOfAContainerFollowInsertsRemovesRenamesAndMoves)
{
    CKWQtContainerModel& labels = Labels();
    const QAbstractItemModelTester tester(&labels,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    QSignalSpy removed(&labels, &CKWQtContainerModel::rowsRemoved);
    for (const char* const name : {"A", "B", "C", "D", "E"})
    {
        labels.insert(QString::fromLatin1(name));
    }
    m_tree.poll();
    EXPECT_EQ(Names().join(QLatin1Char(' ')), QStringLiteral("A B C D E"));
    labels.remove(QStringLiteral("B"));
    labels.remove(QStringLiteral("C"));
    labels.rename(QStringLiteral("D"), QStringLiteral("X"));
    labels.insert(QStringLiteral("New")); // takes the lowest free key: a place in the middle
    m_tree.poll();
    EXPECT_EQ(Names().join(QLatin1Char(' ')), QStringLiteral("A New X E"));
    EXPECT_EQ(removed.count(), 1) << "neighbours go together";
    labels.SetActive(QStringLiteral("X"));
    EXPECT_EQ(labels.copy(QStringLiteral("X"), QStringLiteral("A")), int{eKW_ACC_NAME_IN_USE});
    m_tree.poll();
    EXPECT_EQ(labels.GetActive(), QStringLiteral("X"));
    EXPECT_TRUE(labels.data(labels.index(2), CKWQtContainerModel::ActiveRole).toBool());
}

TEST_F(QtAdapter, TreeModelFollowsWhateverIsDone)
{
    CKWQtTreeModel model(m_tree, QStringLiteral("SerialBus/CANBusSettings/LabelListSettings"));
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    Labels().insert(QStringLiteral("A"));
    Labels().insert(QStringLiteral("B"));
    m_tree.poll();
    const auto find = [&model](const QModelIndex& below, const char* name)
    {
        const auto found = model.match(model.index(0, 0, below), CKWQtTreeModel::NameRole,
                                       QString::fromLatin1(name), 1, Qt::MatchExactly);
        return found.isEmpty() ? QModelIndex() : found.first();
    };
    const QModelIndex container = find({}, "SerialBusLabelItem");
    ASSERT_TRUE(container.isValid());
    const int first = find(container, "[A]").row(); // behind what the container has of its own
    const QPersistentModelIndex item = find(container, "[B]");
    const QPersistentModelIndex identifier = find(item, "Identifier");
    ASSERT_TRUE(identifier.isValid());

    const QSignalSpy shown(&model, &QAbstractItemModel::dataChanged);
    const QModelIndex value = identifier.sibling(identifier.row(), CKWQtTreeModel::ValueColumn);
    EXPECT_TRUE(model.flags(value) & Qt::ItemIsEditable);
    EXPECT_TRUE(model.setData(value, QStringLiteral("0x10"), Qt::EditRole));
    EXPECT_EQ(value.data().toString(), QStringLiteral("16"));
    EXPECT_EQ(shown.count(), 1);

    Labels().remove(QStringLiteral("A"));
    Labels().rename(QStringLiteral("B"), QStringLiteral("Z"));
    m_tree.poll();
    EXPECT_EQ(item.row(), first);
    EXPECT_EQ(item.data().toString(), QStringLiteral("[Z]"));
    Labels().remove(QStringLiteral("Z"));
    m_tree.poll();
    EXPECT_FALSE(identifier.isValid());
    EXPECT_EQ(model.rowCount(container), first);
}

TEST_F(QtAdapter, TreeModelShowsTheWholeTree)
{
    const CKWQtTreeModel model(m_tree);
    int rows = 0;
    const auto walk = [&](auto& self, const QModelIndex& parent) -> void
    {
        for (int i = 0; i < model.rowCount(parent); ++i, ++rows)
        {
            const QModelIndex child = model.index(i, 0, parent);
            ASSERT_EQ(model.parent(child), parent);
            ASSERT_EQ(model.hasChildren(child), model.rowCount(child) > 0);
            self(self, child);
        }
    };
    walk(walk, {});
    EXPECT_GT(rows, 2000);
}
} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
