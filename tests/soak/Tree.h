// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionZEL.h"

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

/** What was found wrong, from any thread. */
class CVerdict
{
public:
    void Violated(const QString& what);
    bool IsGood() const { return m_count == 0; }
    /** The first few, one a line. */
    void Print() const;

private:
    static constexpr int kPrinted = 10;

    mutable std::mutex m_mutex;
    std::vector<QString> m_first;
    std::atomic<int> m_count{0};
};

using t_Root = std::shared_ptr<IKWFunctionZEL>;
using t_Property = std::shared_ptr<IDbProperty>;
using t_Group = std::shared_ptr<IDbGroup>;

/** The groups right below the root. */
std::vector<t_Group> Functions(const t_Root& root);
/** All properties below a group, items of containers included where they are there now. */
std::vector<t_Property> Properties(const t_Group& group);
/** Each number lies within its limits, each enumeration has a value that exists. Several values
    that belong together are only consistent inside a read bracket. */
void CheckLimits(const std::vector<t_Property>& properties, CVerdict& verdict);
/** The user's settings as a file holds them. */
QByteArray SavedText(const t_Root& root, const QString& fileName, CVerdict& verdict);
