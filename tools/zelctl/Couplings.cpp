// SPDX-License-Identifier: MIT
#include "Couplings.h"

#include "TreeWalk.h"
#include "TreeWatch.h"

#include <algorithm>
#include <functional>

namespace
{
using t_Write = std::function<KW_ACCEPTANCE(IDbProperty&)>;

bool IsSettable(const IDbProperty& property)
{
    return property.GetObjectType() != eOBJECTTYPE_RESULT &&
           property.GetAvailability() == eAVAILABILITY_AVAILABLE;
}

/** Another text of the same form. */
QString GetOtherText(const IDbProperty& property)
{
    const QString text = property.GetText();
    if (property.GetTypeName() == QLatin1String("bitpattern"))
    {
        const bool isOne = text.startsWith(QLatin1Char('1'));
        return (isOne ? QLatin1Char('0') : QLatin1Char('1')) + text.mid(1);
    }
    return text == QLatin1String("A") ? QStringLiteral("B") : QStringLiteral("A");
}

/** The writes to try, the smallest step first: its consequences are the easiest to read. */
std::vector<t_Write> GetWrites(const IDbProperty& property)
{
    QStringList texts;
    if (property.GetMinText().isEmpty() && property.GetEnumNameInfo() == nullptr)
    {
        texts.append(GetOtherText(property));
    }
    texts << property.GetMinText() << property.GetMaxText();
    const QStringList values = property.GetValueTexts();
    texts += property.GetEnumNameInfo() != nullptr || values.isEmpty()
                 ? values
                 : QStringList{values.front(), values.back()};
    texts.removeAll(QString());
    texts.removeAll(property.GetText());
    texts.removeDuplicates();
    std::vector<t_Write> writes{[](IDbProperty& p) { return p.IncDec(1); },
                                [](IDbProperty& p) { return p.IncDec(-1); }};
    for (const QString& text : texts)
    {
        writes.emplace_back([text](IDbProperty& p) { return p.SetText(text); });
    }
    return writes;
}

} // namespace

CCouplings::CCouplings(CSession& session) : m_session(session)
{
    if (session.IsInTransaction())
    {
        throw CFailure(eSTATUS_REFUSED,
                       QStringLiteral("couplings are observed outside of transactions only"));
    }
    const COutput::CSilence silence(session.GetOutput());
    t_Settings settings;
    Collect(session.Find({}), settings);
    TryAll(settings);
}

CCouplings::~CCouplings() = default;

void CCouplings::Collect(const std::shared_ptr<IDbObject>& node, t_Settings& settings)
{
    const auto property = std::dynamic_pointer_cast<IDbProperty>(node);
    if (property && IsSettable(*property) && !m_known.contains(property->GetPath()))
    {
        m_known.insert(property->GetPath());
        settings.push_back(property);
    }
    if (auto* const group = dynamic_cast<IDbGroup*>(node.get()))
    {
        WalkTree(*group, 1,
                 [&](const std::shared_ptr<IDbObject>& member, int) { Collect(member, settings); });
    }
}

CTreeWatch& CCouplings::GetWatch()
{
    const auto depth = static_cast<std::size_t>(m_conditions.size());
    if (depth < m_watches.size())
    {
        m_watches[depth]->Update();
        return *m_watches[depth];
    }
    const auto root = std::dynamic_pointer_cast<IDbGroup>(m_session.Find({}));
    return *m_watches.emplace_back(std::make_unique<CTreeWatch>(root));
}

void CCouplings::TryAll(const t_Settings& settings)
{
    if (settings.empty())
    {
        return;
    }
    CTreeWatch& watch = GetWatch();
    for (const auto& setting : settings)
    {
        Try(watch, *setting);
    }
}

void CCouplings::Try(CTreeWatch& watch, IDbProperty& property)
{
    const t_ShownValue from = GetShownValue(property);
    bool taken = false;
    for (const t_Write& write : GetWrites(property))
    {
        m_rows.Forget();
        const KW_ACCEPTANCE code = write(property);
        const std::vector<t_Change> changes = watch.GetChanges();
        if (!KW_IsAccepted(code) || changes.empty())
        {
            continue;
        }
        // A rule may have turned the write back: what else it did is no coupling of a value.
        if (property.GetText() != from.text)
        {
            taken = true;
            Record(property, from, changes);
            TryReleased(property, changes);
        }
        m_session.GetRoot().Undo();
        // As it follows, it need not look again at what changed and came back.
        const std::vector<t_Change> left = watch.Update();
        if (!left.empty())
        {
            throw CFailure(eSTATUS_REFUSED,
                           QStringLiteral("a write of %1 could not be taken back: %2")
                               .arg(property.GetPath(), ShowChange(left.front(), true)));
        }
    }
    m_movable += taken ? 1 : 0;
}

void CCouplings::TryReleased(const IDbProperty& by, const std::vector<t_Change>& changes)
{
    t_Settings released;
    for (const t_Change& change : changes)
    {
        if (change.kind == eCHANGE::Availability &&
            change.after.availability == eAVAILABILITY_AVAILABLE)
        {
            Collect(m_session.Find(change.after.path), released);
        }
    }
    m_conditions.append(by.GetPath() + QStringLiteral(" = ") + ShowValue(GetShownValue(by), false));
    TryAll(released);
    m_conditions.removeLast();
}

void CCouplings::Record(const IDbProperty& source, const t_ShownValue& from,
                        const std::vector<t_Change>& changes)
{
    const QString path = source.GetPath();
    for (const t_Change& change : changes)
    {
        if (change.after.path == path)
        {
            continue;
        }
        const QString pair = path + QLatin1Char('\n') + change.after.path;
        if (!m_byPair.contains(pair))
        {
            m_byPair.insert(pair, m_couplings.size());
            m_couplings.push_back({path,
                                   change.after.path,
                                   {},
                                   m_conditions,
                                   from,
                                   GetShownValue(source),
                                   change,
                                   {}});
        }
        t_Coupling& coupling = m_couplings[m_byPair[pair]];
        AddSteps(coupling.steps, m_rows.GetSteps(change.after.path));
        QStringList& moved = coupling.moved;
        const QString kind = GetKindName(change.kind);
        if (!moved.contains(kind))
        {
            moved.append(kind);
        }
    }
}
