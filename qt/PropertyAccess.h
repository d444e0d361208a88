// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <QVariant>
#include <memory>

/** What a display shows of a property, as numbers where it is one: equal marks are an equal
    property, and are read without the tree's lock but for availability. */
struct t_Marks
{
    UINT64 value = 0;
    UINT64 minimum = 0;
    UINT64 maximum = 0;
    UINT64 step = 0;
    UINT64 selectable = 0; ///< the states of all values of an enumeration, folded
    QString text;          ///< of kinds that are no number
    KW_UNIT unit{};
};

/** A property as values of Qt, for one kind of handle. */
class IPropertyAccess
{
public:
    virtual ~IPropertyAccess() = default;

    virtual t_Marks Read() const = 0;
    virtual QVariant GetValue() const = 0;
    /** For people: with unit, by display name; secrets as dots. */
    virtual QString GetText() const = 0;
    /** Texts are read as a user writes them. eKW_ACC_BAD_TEXT for what is no value of the kind. */
    virtual KW_ACCEPTANCE SetValue(const QVariant& value) = 0;
    /** The nearest legal value of a number; eKW_ACC_WRONG_KIND for other kinds. */
    virtual KW_ACCEPTANCE SetLimited(double value) = 0;
    /** Invalid where the kind has none. */
    ///@{
    virtual QVariant GetMinimum() const { return {}; }
    virtual QVariant GetMaximum() const { return {}; }
    virtual QVariant GetStep() const { return {}; }
    ///@}
    /** What can be selected now, as maps of "value" and "text"; empty where anything can. */
    virtual QVariantList GetChoices() const = 0;
};

std::unique_ptr<IPropertyAccess> MakePropertyAccess(const std::shared_ptr<IDbProperty>& node);
