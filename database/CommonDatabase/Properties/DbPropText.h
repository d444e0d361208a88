// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Nodes/DbPropBase.h"
#include "CommonDatabase/Values/TextForm.h"

#include <initializer_list>

/** What all properties share that hold a text: value, default, history. Read under the lock. */
class CDbPropTextBase : public CDbPropBase
{
public:
    /** Declaration: default and initial value, taken as it is. */
    void DbSetDefault(const QString& text);
    /** Under the lock; the default never moves once the tree is complete, and needs none. */
    QString Get() const;
    QString GetDefault() const { return m_default; }
    KW_ACCEPTANCE Set(const QString& text) { return WriteValue(text, eWRITEKIND::Client); }
    KW_ACCEPTANCE DbSet(const QString& text) { return WriteValue(text, eWRITEKIND::Internal); }
    KW_ACCEPTANCE SetResult(const QString& text) { return WriteResult(text); }

    CDbValue GetValue() const override { return Get(); }
    CDbValue GetDefaultValue() const override { return m_default; }
    void MakeNewHistValueEntry(CDbUndoStep& step) override;
    bool FinishNewHistValueEntry(CDbPropBaseHist& record) const override;
    QString GetText() const override { return Get(); }
    QString GetDefaultText() const override { return m_default; }
    KW_ACCEPTANCE ParseText(const QString& text, CDbValue& value) const override;
    /** Characters of XML 1.0: no control characters but tab and line ends, no lone surrogates. */
    static bool IsSavable(const QString& text);

protected:
    KW_ACCEPTANCE Validate(CDbValue& value, eWRITEKIND kind) const override;
    /** What the kind asks of a text beyond that a file can hold it. Under the lock, and without
        effect: a recall tries texts, too. */
    virtual KW_ACCEPTANCE ValidateText(const QString& text) const = 0;
    void Store(const CDbValue& value, eWRITEKIND kind) override;
    void LoadState(const CDbPropBaseHist& record, bool newState) override;

    struct t_State
    {
        CDbPropBase::t_CommonState common;
        QString value;
        CDbValue AsValue() const { return value; }
        /** Of the text before the step: that after it is the tree's. */
        std::size_t HeldBytes() const
        {
            return sizeof(QChar) * static_cast<std::size_t>(value.size());
        }
        bool operator==(const t_State&) const = default;
    };
    /** What every kind of text records; kinds with more put it into a state of their own. */
    t_State GetState() const { return {GetCommonState(), m_value}; }
    void SetState(const t_State& state);

private:
    QString m_value = QStringLiteral("");
    QString m_default = QStringLiteral("");
};

/** Text property. Texts that no XML file can hold (control characters, lone surrogates) are
    refused, so that whatever is set can be saved. */
class CDbPropString : public CDbPropTextBase
{
public:
    static constexpr INT32 kDefaultMaxLength = 1024;

    /** Characters as QString counts them; eKW_ACC_TOO_LONG above. */
    void DeclareMaxLength(INT32 length) { m_maxLength = length; }
    /** eKW_ACC_BAD_TEXT for a text of another form: nothing is stored, and the former one stays. */
    void DeclareForm(eTEXTFORM form) { m_form = form; }
    eTEXTFORM GetForm() const { return m_form; }
    INT32 GetMaxLength() const { return m_maxLength; }
    std::shared_ptr<IKWStringProperty> GetFIMPointer();
    QString GetTypeName() const override { return QStringLiteral("string"); }

protected:
    KW_ACCEPTANCE ValidateText(const QString& text) const override;
    void CreateFIM(CHandlePlace<IKWPropertyBase>& place) override;

private:
    INT32 m_maxLength = kDefaultMaxLength;
    eTEXTFORM m_form = eTEXTFORM::Any;
};

/** A pattern of "0", "1" and "X", most significant bit first. */
class CDbPropBitPattern final : public CDbPropTextBase
{
public:
    /** The most bits; a shorter pattern is taken as it is. */
    void DeclareLength(INT32 bits) { m_maxLength = bits; }
    INT32 GetMaxLength() const { return m_maxLength; }
    void DeclareFormat(E_NUMBERFORMAT format) { m_format = format; }
    /** Client write: hex or binary display, of results too; eKW_ACC_UNKNOWN_VALUE for any other
        format, or the codes of access. The format of a result leaves no step for undo, which would
        take the measured pattern back. */
    KW_ACCEPTANCE SetFormat(E_NUMBERFORMAT format);
    E_NUMBERFORMAT GetFormat() const;
    std::shared_ptr<IKWBitPatternProperty> GetFIMPointer();
    QString GetTypeName() const override { return QStringLiteral("bitpattern"); }
    void MakeNewHistValueEntry(CDbUndoStep& step) override;
    bool FinishNewHistValueEntry(CDbPropBaseHist& record) const override;

protected:
    KW_ACCEPTANCE ValidateText(const QString& text) const override;
    void LoadState(const CDbPropBaseHist& record, bool newState) override;
    void CreateFIM(CHandlePlace<IKWPropertyBase>& place) override;

private:
    struct t_PatternState
    {
        t_State text;
        E_NUMBERFORMAT format;
        CDbValue AsValue() const { return text.AsValue(); }
        bool operator==(const t_PatternState&) const = default;
    };
    t_PatternState GetPatternState() const { return {GetState(), m_format}; }

    INT32 m_maxLength = 64; ///< bits, 1 for each character
    E_NUMBERFORMAT m_format = eNUMBERFORMAT_BINARY;
};

/**
 * File path property. The value is the file's name: relative names live in the folder and can not
 * leave it; absolute names are taken as they are. No name is a legal value. A name longer than any
 * path (NDbBounds) is refused: eKW_ACC_TOO_LONG.
 */
class CDbPropFilePath final : public CDbPropTextBase
{
public:
    static constexpr qint64 kMaxFileSize = 64 * 1024 * 1024;

    /** Where relative names live. Declaration: a tree that clients have reads it under the lock. */
    void DeclareFolder(const QString& folder) { m_folder = folder; }
    void DeclareStem(const QString& stem) { m_stem = stem; }
    /** Extensions without their dot, in any case; with neither list any name is taken. The first
        one for saving is that of new names. */
    void DeclareOpenExtensions(std::initializer_list<QString> list);
    void DeclareSaveExtensions(std::initializer_list<QString> list);
    QString GetFolder() const;
    QStringList GetOpenExtensions() const { return m_openExtensions; }
    QStringList GetSaveExtensions() const { return m_saveExtensions; }
    /** The name in its folder; an empty or absolute name as it is. */
    QString GetFullPath() const;
    /** Makes the folder of the path with all its parents; false where that is not possible. */
    bool CreateFullPath() const;
    /** "Stem001.ext" with the lowest number up to 999 that no file has; empty where all are taken,
        or nothing can be saved. */
    QString CreateNewFileName() const;
    /** Whole files, up to kMaxFileSize; `contents` stays as it is where the code is 2 or above.
        Takes the lock for the path only. */
    KW_ACCEPTANCE Load(QByteArray& contents) const;
    KW_ACCEPTANCE Write(const QByteArray& contents) const;
    std::shared_ptr<IKWFilePathProperty> GetFIMPointer();
    QString GetTypeName() const override { return QStringLiteral("filepath"); }

protected:
    KW_ACCEPTANCE ValidateText(const QString& text) const override;
    void CreateFIM(CHandlePlace<IKWPropertyBase>& place) override;

private:
    QString m_folder; ///< guarded by the tree's lock
    QString m_stem = QStringLiteral("File");
    QStringList m_openExtensions;
    QStringList m_saveExtensions;
};
