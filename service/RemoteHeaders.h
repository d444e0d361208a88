// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <QByteArray>
#include <memory>
#include <vector>

namespace NRemote
{
/** Whether words (in capitals) are a header such as "SYSTem:ERRor", each in its long or short form.
 */
bool IsHeader(const char* header, const std::vector<QByteArray>& words);

/** The headers of all nodes, a line for each: items as "<n>", settings that are only read with
    "/qonly/", actions with "/nquery/". Of a container without items nothing is listed below it. */
QByteArray ListHeaders(const std::shared_ptr<IDbGroup>& root);
} // namespace NRemote
