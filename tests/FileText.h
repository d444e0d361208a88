// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>

/** What a file holds; nothing where there is none. */
inline QByteArray ContentsOf(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/** Makes a file, or its contents anew; answers its name. */
inline QString WriteFile(const QString& name, const QByteArray& text)
{
    QFile file(name);
    file.open(QIODevice::WriteOnly);
    file.write(text);
    return name;
}
