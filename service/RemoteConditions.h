// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <memory>
#include <vector>

class IKWEnumPropertyBase;

/** The conditions of the subsystem STATus, bits as SCPI-1999 names them. */
struct t_RemoteConditions
{
    UINT16 operation = 0;
    UINT16 questionable = 0;
};

/** Reads the conditions of a tree. Whoever reads them often keeps it, as it finds its nodes once.
 */
class CRemoteConditions
{
public:
    explicit CRemoteConditions(const IDbGroup& root);
    t_RemoteConditions Read() const;

private:
    struct t_Source
    {
        std::shared_ptr<IKWEnumPropertyBase> property;
        INT32 value;
        UINT16 operation; ///< bits while the property has the value
        UINT16 questionable;
    };
    std::vector<t_Source> m_sources;
};
