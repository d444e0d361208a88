// SPDX-License-Identifier: MIT
#pragma once

#include "FilesFolder.h"
#include "IKWFunctionRootBase.h"
#include "JsonWriter.h"

#include <QJsonArray>
#include <memory>

namespace NJson
{
/** What is to be written, and how. */
struct t_Writing
{
    QJsonArray writes; ///< each {"path": …} with a "value", with "default": true, or with "steps"
    bool together = true; ///< one transaction: the first that is refused ends it, nothing is kept
    QString text;         ///< name of its step for undo
};

/** How writes of one request ended. */
struct t_Written
{
    KW_ACCEPTANCE code = eKW_ACC_OK; ///< of the first that was refused, else the largest
    bool isKept = true;              ///< false when all were taken back
};

/** Carries out writes as a client of whatever origin the thread has. Each is reported as an element
    of an array: what stands now, and where it was refused what would have been taken. Files are
    those that clients may name. */
t_Written Write(CJsonWriter& json, const std::shared_ptr<IKWFunctionRootBase>& root,
                const t_Writing& writing);

/** Whether an array holds what Write takes; says else what is wrong. */
bool AreWrites(const QJsonArray& writes, int most, QString& wrong);
} // namespace NJson
