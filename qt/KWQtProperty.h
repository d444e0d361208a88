// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <QObject>
#include <QVariant>
#include <memory>

class CKWQtTree;
class IPropertyAccess;
struct t_Marks;

/**
 * A property of the tree for a page: what moves tells so by a signal. CKWQtTree makes it and owns
 * it; it belongs to the thread of that. Values are the tree's own whenever they are asked for;
 * signals come after a write through this object, and for all other writes with the next poll.
 *
 * It stands for the node, not for the path: when an item moves in its array or is renamed, `path`
 * follows. When the item is removed, or the tree let go, it is detached: `attached` and `valid` are
 * false, it keeps the last value, and refuses writes with eKW_ACC_DETACHED. When undo brings the
 * item back, it is attached again.
 */
class KW_EXPORT CKWQtProperty : public QObject
{
    Q_OBJECT
    /** Numbers as numbers (64-bit integers too, of which scripts keep 53 bits), enumerations as
        their number, byte blocks as bytes, all else as text; of a secret only dots. A write takes
        the same, or a text as for `text`. */
    Q_PROPERTY(QVariant value READ GetValue WRITE SetValue NOTIFY valueChanged)
    /** For people: with prefix and unit, display names of enumerations. A write takes what a user
        writes: "2 mV/div", any name of an enumeration's value. */
    Q_PROPERTY(QString text READ GetText WRITE SetText NOTIFY valueChanged)
    /** Present limits and step in `unit`; undefined where the kind has none. */
    ///@{
    Q_PROPERTY(QVariant minimum READ GetMinimum NOTIFY limitsChanged)
    Q_PROPERTY(QVariant maximum READ GetMaximum NOTIFY limitsChanged)
    Q_PROPERTY(QVariant step READ GetStep NOTIFY limitsChanged)
    ///@}
    /** The unit's display name, such as "V/div"; empty for bare numbers and other kinds. */
    Q_PROPERTY(QString unit READ GetUnit NOTIFY limitsChanged)
    /** What can be selected now, each with "value" and "text"; empty where anything can. */
    Q_PROPERTY(QVariantList choices READ GetChoices NOTIFY choicesChanged)
    /** Whether the value means anything: attached, and not invalid by the tree. */
    Q_PROPERTY(bool valid READ IsValid NOTIFY stateChanged)
    /** Whether the node is part of a tree. */
    Q_PROPERTY(bool attached READ IsAttached NOTIFY stateChanged)
    /** KW_AVAILABILITY: 0 available, 1 shown but read only, 2 neither shown nor writable. */
    Q_PROPERTY(int availability READ GetAvailability NOTIFY stateChanged)
    /** Whether it can be written as far as the node tells: an available setting of a tree. */
    Q_PROPERTY(bool writable READ IsWritable NOTIFY stateChanged)
    /** KW_ACCEPTANCE of the last write through this object; 0 before the first. */
    Q_PROPERTY(int code READ GetCode NOTIFY refusalChanged)
    /** Why the last write was refused, with the limit that it met; empty when it was taken. */
    Q_PROPERTY(QString refusal READ GetRefusal NOTIFY refusalChanged)
    /** Way from the root. Of a detached one the last that it had. */
    Q_PROPERTY(QString path READ GetPath NOTIFY pathChanged)
    /** Last part of the path. */
    Q_PROPERTY(QString name READ GetName CONSTANT)
    /** The model's sentence about it. */
    Q_PROPERTY(QString meaning READ GetMeaning CONSTANT)

public:
    ~CKWQtProperty() override;

    QVariant GetValue() const;
    void SetValue(const QVariant& value);
    QString GetText() const;
    void SetText(const QString& text);
    QVariant GetMinimum() const;
    QVariant GetMaximum() const;
    QVariant GetStep() const;
    QString GetUnit() const;
    QVariantList GetChoices() const;
    bool IsValid() const;
    bool IsAttached() const { return m_attached; }
    int GetAvailability() const;
    bool IsWritable() const;
    int GetCode() const { return static_cast<int>(m_code); }
    QString GetRefusal() const;
    QString GetPath() const { return m_path; }
    QString GetName() const;
    QString GetMeaning() const;
    /** The node, for whoever needs more. */
    std::shared_ptr<IDbProperty> GetNode() const { return m_node; }

    // Writes by the names that pages call them by. Each answers the code, and leaves it in `code`.
    /** Takes the nearest legal number: for what a finger drags. */
    Q_INVOKABLE int setLimited(double value);
    /** Steps up (positive) or down, as the property does: for wheels and knobs. */
    Q_INVOKABLE int stepBy(int steps);
    /** Back to the default. */
    Q_INVOKABLE int reset();

Q_SIGNALS:
    void valueChanged();
    void limitsChanged();
    void choicesChanged();
    void stateChanged();
    void pathChanged();
    void refusalChanged();
    /** A write through this object was refused: each time, so that a control can go back. */
    void refused(int code, const QString& why);
    /** Once after the others of a poll or write. */
    void changed();

private:
    friend class CKWQtTree;
    friend class CGroupWatch;

    CKWQtProperty(std::shared_ptr<IDbProperty> node, QObject* parent);
    /** Looks for what has changed since the last look, and says it in bits; `moved` also at what
        other nodes decide: path, and whether it is attached. Emits nothing. */
    unsigned Look(bool moved, bool attached);
    void Tell(unsigned what);
    int Wrote(KW_ACCEPTANCE code);

    std::shared_ptr<IDbProperty> m_node;
    std::unique_ptr<IPropertyAccess> m_access;
    std::unique_ptr<t_Marks> m_marks;
    QString m_path;
    KW_VALIDITY m_validity;
    KW_AVAILABILITY m_availability;
    KW_ACCEPTANCE m_code = 0;
    bool m_attached = true;
};
