// SPDX-License-Identifier: MIT
// What would move: carried out on a private copy of the tree.

#include "JsonNodes.h"
#include "JsonService.h"
#include "JsonWrites.h"
#include "KWCouplings.h"
#include "KWTreeCopy.h"
#include "TreeDiffer.h"

#include <QJsonArray>
#include <map>

namespace
{
/** Calls `visit` with each pair of properties of two trees that have the same place. */
template <typename TVisit>
void VisitPairs(IDbGroup& one, IDbGroup& other, const TVisit& visit)
{
    for (INT32 i = 0; i < one.GetPropertyCount() && i < other.GetPropertyCount(); ++i)
    {
        visit(*one.GetProperty(i), *other.GetProperty(i));
    }
    for (INT32 i = 0; i < one.GetGroupCount() && i < other.GetGroupCount(); ++i)
    {
        VisitPairs(*one.GetGroup(i), *other.GetGroup(i), visit);
    }
    const IDbContainer* const items = one.AsContainer();
    const IDbContainer* const others = other.AsContainer();
    for (INT32 i = 0; items != nullptr && others != nullptr; ++i)
    {
        const auto item = items->GetItemByPosition(i);
        const auto mate = others->GetItemByPosition(i);
        if (!item || !mate)
        {
            return;
        }
        VisitPairs(*item, *mate, visit);
    }
}

/** Settings that no file holds are written to the copy; answers the paths of those in which it
    differs all the same. */
QStringList MakeAlike(IDbGroup& tree, IDbGroup& copy)
{
    QStringList unlike;
    VisitPairs(tree, copy,
               [&unlike](const IDbProperty& property, IDbProperty& mate)
               {
                   const QString text = property.GetText();
                   const bool isSetting = property.GetObjectType() == eOBJECTTYPE_SETTING;
                   if (isSetting && mate.GetText() != text && !KW_IsAccepted(mate.SetText(text)))
                   {
                       unlike.append(property.GetPath());
                   }
               });
    return unlike;
}

/** Which rows wrote what in a tree while it lives, the innermost step of each. */
class CRowWatch
{
public:
    explicit CRowWatch(IDbGroup& top) : m_top(top)
    {
        KW_WatchCouplings(m_top,
                          [this](const QString& path, const std::vector<KW_CouplingStep>& running)
                          {
                              if (!running.empty())
                              {
                                  m_steps[path].push_back(running.back());
                              }
                          });
    }
    ~CRowWatch() { KW_WatchCouplings(m_top, {}); }
    CRowWatch(const CRowWatch&) = delete;
    CRowWatch& operator=(const CRowWatch&) = delete;

    /** The rows behind the change of a node, each once, in the order in which they ran. */
    void WriteRows(CJsonWriter& json, const QString& path) const
    {
        std::vector<const KW_CouplingStep*> written;
        const auto found = m_steps.find(path);
        json.BeginArray();
        for (std::size_t i = 0; found != m_steps.end() && i < found->second.size(); ++i)
        {
            const KW_CouplingStep& step = found->second[i];
            const auto isSame = [&step](const KW_CouplingStep* other) {
                return other->group == step.group && other->row == step.row &&
                       other->step == step.step;
            };
            if (std::none_of(written.begin(), written.end(), isSame))
            {
                written.push_back(&step);
                json.BeginObject();
                json.Key("group").Text(step.group);
                json.Key("row").Whole(step.row);
                json.Key("step").Text(step.step);
                json.EndObject();
            }
        }
        json.EndArray();
    }

private:
    IDbGroup& m_top;
    std::map<QString, std::vector<KW_CouplingStep>> m_steps;
};

void WriteChange(CJsonWriter& json, const t_TreeChange& change, const CRowWatch& rows)
{
    json.BeginObject();
    json.Key("path").Text(change.path);
    rows.WriteRows(json.Key("by"), change.path);
    if (!change.before.isEmpty())
    {
        json.Key("before").Raw(change.before);
    }
    if (change.now.isEmpty())
    {
        json.Key("removed").Bool(true);
    }
    else
    {
        json.Key("now").Raw(change.now);
    }
    json.EndObject();
}
} // namespace

t_JsonAnswer CJsonService::Try(const t_Call& call) const
{
    const QJsonArray writes = call.body[QStringLiteral("writes")].toArray();
    QString wrong;
    if (!NJson::AreWrites(writes, m_options.bounds.writes, wrong))
    {
        return Refuse(400, eKW_ACC_BAD_TEXT, wrong);
    }
    const CTurn turn(m_trials, m_options.bounds.trial);
    if (!turn)
    {
        return Refuse(503, eKW_ACC_TIMEOUT, QStringLiteral("other trials take their time"));
    }
    const auto copy = KW_CopyTree(*m_root);
    if (!copy)
    {
        return Refuse(500, eKW_ACC_INTERNAL, QStringLiteral("the tree can not be copied"));
    }
    copy->SetSettingsFolder(m_root->GetSettingsFolder());
    const QStringList unlike = MakeAlike(*Top(), *copy->GetDbObject());
    CTreeDiffer differ(copy, true);
    const CRowWatch rows(*copy->GetDbObject());
    CJsonWriter reports;
    const NJson::t_Written written = NJson::Write(reports, copy, {writes, false, {}});
    CJsonWriter json;
    json.BeginObject();
    NJson::AddCode(json, written.code);
    json.Key("writes").Raw(reports.GetText());
    json.Key("changes").BeginArray();
    for (const t_TreeChange& change : differ.Look())
    {
        WriteChange(json, change, rows);
    }
    json.EndArray();
    json.Key("unlike").Texts(unlike);
    json.EndObject();
    return {200, json.GetText()};
}
