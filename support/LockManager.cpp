// SPDX-License-Identifier: MIT
#include "LockManager.h"

#include <mutex>
#include <type_traits>

#ifdef KWI_CHECK_LOCK_ORDER
#include "ErrorReport.h"

#include <QString>
#include <algorithm>
#endif

namespace
{
// There before the first static constructor and after the last destructor, without a look at each
// lock whether it is: trees are released while the process ends.
constinit std::mutex s_mutexes[eCS_COUNT];
static_assert(std::is_trivially_destructible_v<std::mutex>);

// How often this thread has taken a section that it has not given back. A write nests some hundred
// locks: all but the outermost are a count here, at a sixth of what a recursive mutex takes.
#if defined(__ELF__) && !defined(KWI_CHECK_LOCK_ORDER)
// A few bytes: they fit where a library loaded late gets them. With the holders below they do not.
[[gnu::tls_model("initial-exec")]]
#endif
constinit thread_local UINT32 t_depth[eCS_COUNT] = {};

#ifdef KWI_CHECK_LOCK_ORDER
struct t_Holder
{
    CS_TYPE section;
    ACCESS_TYPE access;
    const char* file;
    long line;
};

/** Holders of this thread, innermost last. Neither memory nor a destructor: trees are released, and
    locked for it, when memory is gone and while the process ends. */
class CHolders
{
public:
    bool IsEmpty() const { return m_count == 0; }
    void Push(const t_Holder& holder)
    {
        m_holders[std::min(m_count, kDepth - 1)] = holder;
        ++m_count;
    }
    /** Those above the depth share a place: only their number is checked. */
    bool Pop(t_Holder& holder)
    {
        --m_count;
        holder = m_holders[std::min(m_count, kDepth - 1)];
        return m_count < kDepth - 1;
    }

private:
    static constexpr std::size_t kDepth = 128;

    t_Holder m_holders[kDepth];
    std::size_t m_count;
};

thread_local CHolders t_holders;

QString Describe(const t_Holder& holder)
{
    return QStringLiteral("section %1, access %2, taken at %3:%4")
        .arg(holder.section)
        .arg(holder.access)
        .arg(QLatin1String(holder.file))
        .arg(holder.line);
}

/** Tells whether the innermost holder is given back; reports the holder where it is not. */
bool GiveBack(const t_Holder& wanted)
{
    if (t_holders.IsEmpty())
    {
        KW_REPORT_ERROR(QStringLiteral("Unlock without a lock: ") + Describe(wanted),
                        "support/LockManager");
        return false;
    }
    t_Holder held{};
    const bool isKnown = t_holders.Pop(held);
    if (!isKnown)
    {
        return true;
    }
    if (held.section != wanted.section || held.access != wanted.access ||
        held.line != wanted.line || qstrcmp(held.file, wanted.file) != 0)
    {
        KW_REPORT_ERROR(QStringLiteral("Lock not given back in order: held ") + Describe(held) +
                            QStringLiteral("; given back ") + Describe(wanted),
                        "support/LockManager");
    }
    return true;
}
#endif
} // namespace

constinit CLockManager CLockManager::s_instance;

void CLockManager::Lock(CS_TYPE section, [[maybe_unused]] ACCESS_TYPE access,
                        [[maybe_unused]] const char* file, [[maybe_unused]] long line)
{
    if (t_depth[section] == 0)
    {
        s_mutexes[section].lock();
    }
    ++t_depth[section];
#ifdef KWI_CHECK_LOCK_ORDER
    t_holders.Push({section, access, file, line});
#endif
}

void CLockManager::Unlock(CS_TYPE section, [[maybe_unused]] ACCESS_TYPE access,
                          [[maybe_unused]] const char* file, [[maybe_unused]] long line)
{
#ifdef KWI_CHECK_LOCK_ORDER
    if (!GiveBack({section, access, file, line}))
    {
        return;
    }
#endif
    // A bracket that ends without having begun gives nothing back, least of all another thread's.
    if (t_depth[section] > 0 && --t_depth[section] == 0)
    {
        s_mutexes[section].unlock();
    }
}
