// SPDX-License-Identifier: MIT
// What remote control calls nodes: the library's rule against the generator's page of all commands.

#include "IKWFunctionZEL.h"
#include "KWRemoteNames.h"

#include <QFile>
#include <gtest/gtest.h>
#include <set>
#include <tuple>

namespace
{
std::string Line(const QString& header, const QString& path)
{
    return (header + QLatin1String(" ") + path).toStdString();
}

/** "Header path" of each row of the generated page. */
std::set<std::string> OfThePage()
{
    QFile page(QStringLiteral(KWI_REMOTE_PAGE));
    EXPECT_TRUE(page.open(QIODevice::ReadOnly));
    std::set<std::string> lines;
    // Behind the commands that every instrument has, which no node stands for.
    const QString text = QString::fromUtf8(page.readAll());
    const auto own = text.indexOf(QLatin1String("## Commands of this instrument"));
    EXPECT_GT(own, 0);
    for (const QString& line : text.mid(own).split(QLatin1Char('\n')))
    {
        const QStringList cells = line.split(QLatin1Char('`'));
        if (line.startsWith(QLatin1String("| `")) && cells.size() > 3)
        {
            lines.insert(Line(cells[1], cells[3]));
        }
    }
    return lines;
}

/** The same of the tree, of a fresh item where a container has none. */
class CTreeLines
{
public:
    void Visit(IDbGroup& group, const QString& header, const QString& path)
    {
        for (INT32 i = 0; i < group.GetPropertyCount(); ++i)
        {
            AddLeaf(*group.GetProperty(i), header, path);
        }
        for (INT32 i = 0; i < group.GetActionCount(); ++i)
        {
            AddLeaf(*group.GetAction(i), header, path);
        }
        for (INT32 i = 0; i < group.GetGroupCount(); ++i)
        {
            const auto child = group.GetGroup(i);
            const QString word = header + KW_GetRemoteNames(*child).mnemonic;
            const QString below = path + child->GetNodeName();
            if (child->AsContainer() == nullptr)
            {
                Visit(*child, word + QLatin1Char(':'), below + QLatin1Char('/'));
                continue;
            }
            lines.insert(Line(word + QLatin1String(":ITEM"), below));
            VisitItem(*child, word, below);
        }
    }

    std::set<std::string> lines;

private:
    void AddLeaf(const IDbObject& node, const QString& header, const QString& path)
    {
        lines.insert(Line(header + KW_GetRemoteNames(node).mnemonic, path + node.GetNodeName()));
    }

    void VisitItem(IDbGroup& group, const QString& word, const QString& path)
    {
        IDbContainer& container = *group.AsContainer();
        if (container.GetCount() == 0)
        {
            container.InsertItem(QString());
        }
        const auto item = container.GetItemByPosition(0);
        ASSERT_TRUE(item) << path.toStdString();
        EXPECT_EQ(KW_GetRemoteNames(*item).mnemonic, KW_GetRemoteNames(group).mnemonic);
        const bool isMap = group.GetKind() == eKW_NODE_MAP;
        Visit(*item, word + QLatin1String("<n>:"),
              path + (isMap ? QLatin1String("[name]/") : QLatin1String("[n]/")));
    }
};
} // namespace

TEST(RemoteNames, LibraryAndGeneratorNameNodesDifferently)
{
    const auto root = GetZELRoot();
    CTreeLines tree;
    tree.Visit(*root->GetDbObject(), QString(), QString());
    const std::set<std::string> page = OfThePage();
    EXPECT_GT(page.size(), 1000U);
    for (const std::string& line : tree.lines)
    {
        EXPECT_TRUE(page.count(line)) << "the page lacks " << line;
    }
    for (const std::string& line : page)
    {
        EXPECT_TRUE(tree.lines.count(line)) << "the tree lacks " << line;
    }
}

TEST(RemoteNames, FormsAreNotThoseOfTheMnemonic)
{
    const auto root = GetZELRoot();
    for (const auto& [path, longForm, shortForm] :
         std::initializer_list<std::tuple<const char*, const char*, const char*>>{
             {"", "", ""},
             {"Spectrum/HorizontalSpan", "HORIZONTALSPAN", "HORSPAN"},
             {"Vertical/Channel[1]", "CHANNEL", "CHAN"},
             {"Vertical/Channel/ActiveIndex", "ACTIVEINDEX", "ACTIND"},
             {"HistoryViewer/Playing", "PLAYING", "PLAYING"},
             {"Harmonic/HarmonicSelected", "HARMONICSELECTED", "HARMSELD"},
             {"Trigger/I2CBusTriggerSettings", "I2CBUSTRIGGERSETTINGS", "I2CBUSSETT"}})
    {
        const auto node = root->GetDbObject()->Find(QString::fromLatin1(path));
        ASSERT_TRUE(node) << path;
        const KW_RemoteNames names = KW_GetRemoteNames(*node);
        EXPECT_EQ(names.longForm.toStdString(), longForm);
        EXPECT_EQ(names.shortForm.toStdString(), shortForm);
    }
}
