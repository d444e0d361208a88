// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"
#include "KWTexts.h"

class IKWFilePathProperty;

/** What commands know of a node beyond its interface, of this process's tree and of a living one.
   The functions of the library, of which these have the names, know its own nodes alone. */
///@{
QString GetMeaning(const IDbObject& node);
bool IsSecret(const IDbObject& node);
KW_ValueText GetValueText(const IDbProperty& property);
KW_ValueText GetUserValueText(const IDbProperty& property);
QString GetFormText(const IDbProperty& property);
///@}

/** Whether a setting has its default. Of a living tree's secrets nobody is told: they count so. */
bool IsAtDefault(const IDbProperty& property);

/** Most characters, bits or bytes; 0 where the kind of property has no such limit. */
INT32 GetMostLength(const IDbProperty& property);

/** Folder and endings of a property that names a file; null for others. */
std::shared_ptr<IKWFilePathProperty> GetFileForm(const IDbProperty& property);
