// SPDX-License-Identifier: MIT
#include "LockManager.h"

#include <mutex>

#ifdef KWI_CHECK_LOCK_ORDER
#include "ErrorReport.h"

#include <QString>
#include <vector>
#endif

namespace
{
std::recursive_mutex& Mutex(CS_TYPE section)
{
    static auto* const mutexes = new std::recursive_mutex[eCS_COUNT];
    return mutexes[section];
}

#ifdef KWI_CHECK_LOCK_ORDER
struct t_Holder
{
    CS_TYPE section;
    ACCESS_TYPE access;
    const char* file;
    long line;
};

thread_local std::vector<t_Holder> t_holders;

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
    if (t_holders.empty())
    {
        KW_REPORT_ERROR(QStringLiteral("Unlock without a lock: ") + Describe(wanted),
                        "support/LockManager");
        return false;
    }
    const t_Holder held = t_holders.back();
    t_holders.pop_back();
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

CLockManager& CLockManager::instance()
{
    static auto& manager = *new CLockManager;
    return manager;
}

void CLockManager::Lock(CS_TYPE section, [[maybe_unused]] ACCESS_TYPE access,
                        [[maybe_unused]] const char* file, [[maybe_unused]] long line)
{
    Mutex(section).lock();
#ifdef KWI_CHECK_LOCK_ORDER
    t_holders.push_back({section, access, file, line});
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
    Mutex(section).unlock();
}
