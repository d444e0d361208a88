// SPDX-License-Identifier: MIT
#pragma once

#include "EnumNameInfo.h"
#include "IDbObject.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <memory>

/**
 * Handles of properties, actions and containers. A handle keeps its node alive and forwards every
 * call to it; it has no state of its own, and every request for the same node's handle returns the
 * same object. Reading numbers, enumerations and limits never blocks; everything else takes the
 * tree's lock for its own duration. A handle that outlives its tree answers the last value and
 * refuses writes with eKW_ACC_DETACHED; so does one whose node a newer library has no more.
 *
 * The interfaces are complete: programs that are built rely on the places of their virtual
 * functions, and what comes is a free function.
 *
 * Client writes (Set, SetLimited, …) answer, beside the codes named at each call:
 * eKW_ACC_READ_ONLY for results, eKW_ACC_NOT_AVAILABLE, eKW_ACC_NO_WRITE_ACCESS,
 * eKW_ACC_DETACHED. A write that is taken runs the rules of its group and of everything that
 * depends on it before it returns, and is one step for undo together with all that it moved.
 *
 * The library throws nothing of its own. When memory runs out, std::bad_alloc reaches the caller;
 * the lock is free again, and the write with all that it moved is undone, so that it can be asked
 * for again. With history switched off there is nothing to undo it from: the written value may
 * stand, and what depends on it follows with the next write.
 */

/** Base of all property handles: lets handles of different kinds have one owner list. */
class KW_EXPORT IKWPropertyBase
{
public:
    virtual ~IKWPropertyBase();
};

/** An enumeration property handled as an integer. */
class KW_EXPORT IKWEnumPropertyBase : public IKWPropertyBase
{
public:
    ~IKWEnumPropertyBase() override;

    /** Number of the present value. Never blocks. */
    virtual INT32 GetAsInt() const = 0;
    /** eKW_ACC_UNKNOWN_VALUE outside the type, eKW_ACC_NOT_ENABLED for a value that can not be
        selected now. */
    virtual KW_ACCEPTANCE SetAsInt(INT32 value) = 0;
    /** The type's name table. */
    virtual const CEnumNameInfo& GetEnumNameInfo() const = 0;
    /** Whether a value can be selected now. */
    virtual KW_VALUE_STATE GetValueState(INT32 value) const = 0;
    /** Steps over the selectable values; stops at the ends with code 1. */
    virtual KW_ACCEPTANCE IncDec(INT32 steps) = 0;

    /** The node itself, for generic access. */
    virtual std::shared_ptr<IDbProperty> GetDbObject() const = 0;
};

/** An enumeration property of type T. */
template <typename T>
class KW_EXPORT IKWEnumProperty : public IKWEnumPropertyBase
{
public:
    /** The present value. Never blocks. */
    virtual T Get() const = 0;
    /** As SetAsInt. */
    virtual KW_ACCEPTANCE Set(T value) = 0;
    /** The declared default. */
    virtual T GetDefault() const = 0;
    /** Whether a value can be selected now. */
    virtual bool IsValueEnabled(T value) const = 0;
    /** Delivers a result from the acquisition: not a user's write, so not undone. Refused with
        eKW_ACC_READ_ONLY where the property is a setting. */
    virtual KW_ACCEPTANCE SetResult(T value) = 0;
};

/** A numeric property; T is one of INT16, UINT16, INT32, UINT32, INT64, UINT64, double. Values,
    limits and steps are in GetUnit(). */
template <typename T>
class KW_EXPORT IKWNumericProperty : public IKWPropertyBase
{
public:
    /** The value, its present limits, its default and its step. Never block. */
    ///@{
    virtual T Get() const = 0;
    virtual T GetMin() const = 0;
    virtual T GetMax() const = 0;
    virtual T GetDefault() const = 0;
    virtual T GetStep() const = 0;
    ///@}
    /** The last value a client asked for; differs from Get() while limits hold the value back. */
    virtual T GetUserValue() const = 0;
    /** Unit of all that this handle takes and answers. */
    virtual KW_UNIT GetUnit() const = 0;

    /** eKW_ACC_BELOW_MINIMUM, eKW_ACC_ABOVE_MAXIMUM, eKW_ACC_NOT_A_NUMBER or
        eKW_ACC_NOT_IN_VALUE_LIST; code 1 when the value was rounded to the resolution. */
    virtual KW_ACCEPTANCE Set(T value) = 0;
    /** Takes the nearest legal value: code 1 when that is another one. NaN is refused. */
    virtual KW_ACCEPTANCE SetLimited(T value) = 0;
    /** As SetLimited, and remembers the wish: when limits open again, the value follows it. */
    virtual KW_ACCEPTANCE SetUserValue(T value) = 0;
    /** Set to the present limit. */
    ///@{
    virtual KW_ACCEPTANCE SetToMin() = 0;
    virtual KW_ACCEPTANCE SetToMax() = 0;
    ///@}
    /** Steps, up when positive, by the property's step mode and behaviour at the ends; linear ones
        lead to multiples of the step. Inc is one step up, Dec one down. */
    ///@{
    virtual KW_ACCEPTANCE Inc() = 0;
    virtual KW_ACCEPTANCE Dec() = 0;
    virtual KW_ACCEPTANCE IncDec(INT32 steps) = 0;
    ///@}
    /** Delivers a result from the acquisition: not a user's write, so not undone. Refused with
        eKW_ACC_READ_ONLY where the property is a setting. */
    virtual KW_ACCEPTANCE SetResult(T value) = 0;

    /** The node itself, for generic access. */
    virtual std::shared_ptr<IDbProperty> GetDbObject() const = 0;
};

/** A text property. */
class KW_EXPORT IKWStringProperty : public IKWPropertyBase
{
public:
    ~IKWStringProperty() override;
    /** The present text. */
    virtual QString Get() const = 0;
    /** eKW_ACC_TOO_LONG, eKW_ACC_BAD_TEXT for characters that no settings file can hold, or
        eKW_ACC_NOT_IN_VALUE_LIST. */
    virtual KW_ACCEPTANCE Set(const QString& text) = 0;
    /** The declared default. */
    virtual QString GetDefault() const = 0;
    /** Most characters that Set takes. */
    virtual INT32 GetMaxLength() const = 0;
    /** As IKWNumericProperty::SetResult. */
    virtual KW_ACCEPTANCE SetResult(const QString& text) = 0;
    /** The node itself, for generic access. */
    virtual std::shared_ptr<IDbProperty> GetDbObject() const = 0;
};

/** A pattern of "0", "1" and "X" (don't care), most significant bit first. */
class KW_EXPORT IKWBitPatternProperty : public IKWPropertyBase
{
public:
    ~IKWBitPatternProperty() override;
    /** The present pattern. */
    virtual QString Get() const = 0;
    /** eKW_ACC_BAD_TEXT for any other character, eKW_ACC_TOO_LONG above GetMaxLength bits. */
    virtual KW_ACCEPTANCE Set(const QString& pattern) = 0;
    /** The declared default. */
    virtual QString GetDefault() const = 0;
    /** Most characters that Set takes. */
    virtual INT32 GetMaxLength() const = 0;
    /** How a display should group the bits. */
    virtual E_NUMBERFORMAT GetFormat() const = 0;
    /** eKW_ACC_UNKNOWN_VALUE for anything but hex and binary. Results take it, too. */
    virtual KW_ACCEPTANCE SetFormat(E_NUMBERFORMAT format) = 0;
    /** As IKWNumericProperty::SetResult. */
    virtual KW_ACCEPTANCE SetResult(const QString& pattern) = 0;
    /** The node itself, for generic access. */
    virtual std::shared_ptr<IDbProperty> GetDbObject() const = 0;
};

/** An opaque block of bytes. */
class KW_EXPORT IKWBlobProperty : public IKWPropertyBase
{
public:
    ~IKWBlobProperty() override;
    /** The present bytes. */
    virtual QByteArray Get() const = 0;
    /** eKW_ACC_TOO_LONG above GetMaxSize bytes. */
    virtual KW_ACCEPTANCE Set(const QByteArray& bytes) = 0;
    /** Most bytes that Set takes. */
    virtual INT32 GetMaxSize() const = 0;
    /** As IKWNumericProperty::SetResult. */
    virtual KW_ACCEPTANCE SetResult(const QByteArray& bytes) = 0;
    /** The node itself, for generic access. */
    virtual std::shared_ptr<IDbProperty> GetDbObject() const = 0;
};

/** A path of a file: a folder, a stem for new names, and the extensions for open and save. */
class KW_EXPORT IKWFilePathProperty : public IKWPropertyBase
{
public:
    ~IKWFilePathProperty() override;
    /** The file name, relative to the folder unless absolute. */
    virtual QString Get() const = 0;
    /** eKW_ACC_BAD_NAME when the name leaves the folder, has an unknown extension, or holds
        characters that no settings file can hold. */
    virtual KW_ACCEPTANCE Set(const QString& fileName) = 0;
    /** Folder of names that are not absolute. */
    virtual QString GetFolder() const = 0;
    /** Extensions, without the dot, of files that can be opened and of those that can be written.
     */
    ///@{
    virtual QStringList GetOpenExtensions() const = 0;
    virtual QStringList GetSaveExtensions() const = 0;
    ///@}
    /** Folder and file name joined. */
    virtual QString GetFullPath() const = 0;
    /** A file name from the stem and the lowest free number, such as "Wave003.csv"; empty when no
        number is free or no save extension exists. */
    virtual QString CreateNewFileName() const = 0;
    /** Reads the whole file: eKW_ACC_FILE_NOT_READABLE when missing, too large, no regular file. */
    virtual KW_ACCEPTANCE Load(QByteArray& contents) const = 0;
    /** Writes the file whole or not at all: eKW_ACC_FILE_NOT_WRITABLE keeps the old one. */
    virtual KW_ACCEPTANCE Write(const QByteArray& contents) = 0;
    /** The node itself, for generic access. */
    virtual std::shared_ptr<IDbProperty> GetDbObject() const = 0;
};

/** Refers to an item of a container. */
class KW_EXPORT IKWReferenceProperty : public IKWPropertyBase
{
public:
    ~IKWReferenceProperty() override;
    /** Path of the referenced item; empty when inactive. */
    virtual QString Get() const = 0;
    /** eKW_ACC_NOT_FOUND when the path leads to no item of a container. */
    virtual KW_ACCEPTANCE Set(const QString& path) = 0;
    /** Whether it refers to an item. */
    virtual bool IsActive() const = 0;
    /** The referenced item; null when inactive. */
    virtual std::shared_ptr<IDbGroup> GetReferencedGroup() const = 0;
    /** The node itself, for generic access. */
    virtual std::shared_ptr<IDbProperty> GetDbObject() const = 0;
};

/** An action that runs at once. */
class KW_EXPORT IKWAction
{
public:
    virtual ~IKWAction();
    /** Runs the action as a client; the code is the action's own. */
    virtual KW_ACCEPTANCE Set() = 0;
    /** The same, for callers outside the group that owns the action. */
    virtual KW_ACCEPTANCE ExternalApply() = 0;
    /** How often the action ran since the tree was built: a layer that carries the request out
        polls this. Never blocks. */
    virtual UINT64 GetRunCount() const = 0;
    /** The node itself, for generic access. */
    virtual std::shared_ptr<IDbAction> GetDbObject() const = 0;
};

/**
 * An operation that another layer (the executor, such as the acquisition) carries out. Requests
 * and completions pass through the operation; no callback ever runs in a client. Without an
 * executor a started operation ends at once with success, so that the model works without hardware.
 */
class KW_EXPORT IKWOperation
{
public:
    virtual ~IKWOperation();
    /** Runs as ExternalSetEventAndWaitForCompletion(start, success). */
    virtual KW_ACCEPTANCE Set() = 0;
    /** Sends an event and waits for the end: code 0 when it ended with `expected`,
        eKW_ACC_OPERATION_FAILED when it ended otherwise, eKW_ACC_TIMEOUT after the timeout. Must
        not be called by the executor itself. */
    virtual KW_ACCEPTANCE ExternalSetEventAndWaitForCompletion(KW_OP_EVENT event,
                                                               KW_OP_RESULT expected) = 0;
    /** Longest wait in milliseconds, 1 … 600000; 5000 at first. */
    virtual KW_ACCEPTANCE SetTimeout(UINT32 milliseconds) = 0;

    /** Executor's side: announces or withdraws an executor. */
    virtual void AttachExecutor(bool attached) = 0;
    /** Executor's side: takes the pending event (none when there is none). What Complete ends is
        every request up to this one. */
    virtual KW_OP_EVENT TakeEvent() = 0;
    /** Executor's side: ends the operation whose event was taken. */
    virtual void Complete(KW_OP_RESULT result) = 0;
    /** How the last operation ended. */
    virtual KW_OP_RESULT GetResult() const = 0;
    /** The node itself, for generic access. */
    virtual std::shared_ptr<IDbAction> GetDbObject() const = 0;
};
