// SPDX-License-Identifier: MIT
#include "Failure.h"

void CFailure::AddData(const QJsonObject& data)
{
    for (auto entry = data.begin(); entry != data.end(); ++entry)
    {
        m_data[entry.key()] = entry.value();
    }
}

void CFailure::AddPlace(const QString& file, int line)
{
    m_text.prepend(QStringLiteral("%1:%2: ").arg(file).arg(line));
    // Of scripts that run each other the innermost is where it happened.
    if (!m_data.contains(QStringLiteral("file")))
    {
        AddData({{QStringLiteral("file"), file}, {QStringLiteral("line"), line}});
    }
}
