// SPDX-License-Identifier: MIT
#include "TreeWalk.h"
#include "database/FixtureTree.h"
#include "fuzz/Targets.h"

namespace
{
/** `state` is the tree's, before and afterwards. */
void TryText(CPgFixtureRoot& root, QByteArray& state, CDbPropBase& property, const QString& text)
{
    const KW_ACCEPTANCE code = property.SetText(text);
    if (code > eKW_ACC_WARNING)
    {
        KW_FuzzRequire(root.Text() == state, "a refused text changed the tree", text.toUtf8());
        return;
    }
    state = root.Text();
    const QString own = property.GetText();
    for (const auto& any : root.m_pFirst->Properties())
    {
        KW_FuzzRequire(IsWithinLimits(*any), "a value beyond its limits", text.toUtf8());
    }
    KW_FuzzRequire(property.SetText(own) == eKW_ACC_OK, "own text refused", own.toUtf8());
    KW_FuzzRequire(property.GetText() == own, "own text reads differently", own.toUtf8());
    KW_FuzzRequire(root.Text() == state, "own text changed the tree", own.toUtf8());
}

/** A tree whose containers have items with names that a path could take for something else. */
std::shared_ptr<CPgFixtureRoot> FilledTree()
{
    auto root = CPgFixtureRoot::Create();
    for (const char* name : {"a", "a b", "0", "-1", "Map", "Ω & \"x\"", "%41", ".."})
    {
        root->m_pFirst->m_pMap->Insert(QString::fromUtf8(name));
    }
    root->m_pFirst->m_pArray->DbSetSize(12);
    return root;
}

void TryPath(const CPgFixtureRoot& root, const QString& path)
{
    const auto node = root.Find(path);
    if (!node)
    {
        return;
    }
    // Within a tree a path may begin at its root.
    const QString own = node->GetPath();
    const bool isOwn = path == own || path == QLatin1Char('/') + own;
    KW_FuzzRequire(isOwn, "found by another path", path.toUtf8());
    KW_FuzzRequire(root.Find(own) == node, "own path leads elsewhere", own.toUtf8());
}
} // namespace

void KW_TryTexts(const QByteArray& lines)
{
    constexpr int kMostLines = 16; // more find no more, and cost the time of other tries
    const CReports reports;
    const auto root = CPgFixtureRoot::Create();
    QByteArray state = root->Text();
    for (const QByteArray& line : lines.split('\n').mid(0, kMostLines))
    {
        const auto equals = line.indexOf('=');
        CDbPropBase* const property =
            root->m_pFirst->FindProperty(QString::fromUtf8(line.left(equals)));
        if (property != nullptr && equals >= 0)
        {
            TryText(*root, state, *property, QString::fromUtf8(line.mid(equals + 1)));
        }
    }
}

void KW_TryPaths(const QByteArray& lines)
{
    static const auto root = FilledTree();
    for (const QByteArray& line : lines.split('\n'))
    {
        TryPath(*root, QString::fromUtf8(line));
    }
}
