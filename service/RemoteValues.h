// SPDX-License-Identifier: MIT
#pragma once

#include "FilesFolder.h"
#include "IDbObject.h"
#include "RemoteMessage.h"

/** Parameters and answers of properties, as IEEE 488.2 and SCPI-1999 write them. */
namespace NRemote
{
/** Writes a parameter as a client: a value of the property's kind, or MIN, MAX, DEF, UP, DOWN.
    A file is one of those that clients may name. */
t_RemoteError Write(IDbProperty& property, const t_RemoteData& data, const CFilesFolder& files);

/** Reads the value, or with one of these words behind the query the limit, the default or the step.
    A number that is not valid reads as 9.91E37. Refused for secrets. */
t_RemoteError Read(IDbProperty& property, const std::vector<t_RemoteData>& data,
                   QByteArray& answer);

/** A text as an answer: in quotes, or as a block where it has characters that would end a line. */
QByteArray Quoted(const QString& text);

/** Bytes as a block of definite length. */
QByteArray Block(const QByteArray& bytes);

/** A text from quotes or a block; refused where it is none, or no UTF-8. */
t_RemoteError ReadText(const t_RemoteData& data, QString& text);

/** A whole number: decimal, hexadecimal, octal or binary, rounded where it has a fraction. */
t_RemoteError ReadWhole(const t_RemoteData& data, INT64& number);
} // namespace NRemote
