// SPDX-License-Identifier: MIT
#pragma once

#include "CouplingRows.h"
#include "Session.h"
#include "Snapshot.h"

#include <QHash>
#include <QSet>
#include <vector>

class CTreeWatch;

/** A setting that was seen to move another node, with the first write that did. */
struct t_Coupling
{
    QString source;         ///< path of the setting
    QString target;         ///< path of what moved
    QStringList moved;      ///< "value", "maximum", … in the order seen
    QStringList conditions; ///< "PATH = VALUE": writes that made the setting available before
    t_ShownValue from;      ///< the setting's value before the example
    t_ShownValue to;        ///< and after
    t_Change example;       ///< what became of the target
    t_Steps steps;          ///< of the rules that did it
};

/**
 * The couplings of the instrument, observed: every setting is written to other values that are
 * legal in the present state, and each write is taken back before the next. A setting that becomes
 * available by such a write is tried while it stands. Couplings that need another state all the
 * same (a mode in which a rule works, a setting that several others must release) stay unseen.
 */
class CCouplings
{
public:
    /** Tries everything. The state is afterwards as before; what could be redone is forgotten, and
        what the library reports about values that are tried is not shown. Fails inside a
        transaction. */
    explicit CCouplings(CSession& session);
    ~CCouplings();
    CCouplings(const CCouplings&) = delete;
    CCouplings& operator=(const CCouplings&) = delete;

    /** In the order of the tree; what became available stands behind the setting that did it. */
    const std::vector<t_Coupling>& Get() const { return m_couplings; }
    /** Settings that took another value, and all that were tried. */
    int GetMovable() const { return m_movable; }
    int GetTried() const { return static_cast<int>(m_known.size()); }

private:
    using t_Settings = std::vector<std::shared_ptr<IDbProperty>>;

    /** Knows the present state. One for each number of conditions, as long as this lives: the state
        without the last condition comes back. */
    CTreeWatch& GetWatch();
    void TryAll(const t_Settings& settings);
    void Try(CTreeWatch& watch, IDbProperty& property);
    void TryReleased(const IDbProperty& by, const std::vector<t_Change>& changes);
    /** Settings at or below a node that can be written and were not collected before. */
    void Collect(const std::shared_ptr<IDbObject>& node, t_Settings& settings);
    void Record(const IDbProperty& source, const t_ShownValue& from,
                const std::vector<t_Change>& changes);

    CSession& m_session;
    CRowWatch m_rows;
    std::vector<std::unique_ptr<CTreeWatch>> m_watches;
    std::vector<t_Coupling> m_couplings;
    QHash<QString, std::size_t> m_byPair;
    QSet<QString> m_known;
    QStringList m_conditions;
    int m_movable = 0;
};
