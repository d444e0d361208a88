// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace NJson
{
/** Parameters, schemas and ways to authorize of the OpenAPI document. */
QByteArray Components();
} // namespace NJson
