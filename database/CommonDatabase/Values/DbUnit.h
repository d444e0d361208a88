// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <QString>

enum KW_UNIT : INT32;

/** Physical unit of a numeric property. */
class CDbUnit
{
public:
    /** "Not defined". */
    CDbUnit();
    explicit CDbUnit(KW_UNIT unit) : m_unit(unit) {}

    void SetUnit(KW_UNIT unit) { m_unit = unit; }
    KW_UNIT GetUnit() const { return m_unit; }
    /** True when both stand for the same unit. */
    bool Compare(const CDbUnit& other) const { return m_unit == other.m_unit; }
    /** Display name, such as "V"; empty for "not defined" and "none". */
    QString GetName() const;

private:
    KW_UNIT m_unit; ///< always a value of the catalogue: who sets it has checked
};
