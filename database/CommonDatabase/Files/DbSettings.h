// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Values/DbBounds.h"
#include "CommonDatabase/Values/DbTypes.h"

#include <QList>
#include <QListIterator>
#include <QString>
#include <QStringView>

#include <functional>
#include <vector>

class CDbObject;
class CDbPropBase;
class CDbPropertyGroup;
class QXmlStreamReader;
class QXmlStreamWriter;

// Element and attribute names of settings files. The document element "Settings" names the kind of
// tree and the version of the format; a reader refuses a newer major version. Its last element is
// the digest of all that stands before it: a file that was changed since it was saved is refused.
// A file without one, as one writes it by hand, is taken as it is.
inline const QString KW_SETTINGS_DOCUMENT = QStringLiteral("Settings");
inline const QString KW_SETTINGS_KIND = QStringLiteral("Kind");
inline const QString KW_SETTINGS_VERSION = QStringLiteral("Version");
inline const QString KW_SETTINGS_NAME = QStringLiteral("Name");
inline const QString KW_SETTINGS_VALUE = QStringLiteral("Value");
inline const QString KW_SETTINGS_USER_VALUE = QStringLiteral("User");
inline const QString KW_SETTINGS_COUNT = QStringLiteral("Count");
inline const QString KW_SETTINGS_KEY = QStringLiteral("Key");
inline const QString KW_SETTINGS_DISPLAY_NAME = QStringLiteral("DisplayName");
inline const QString KW_SETTINGS_DIGEST = QStringLiteral("Digest");
inline constexpr int kSettingsMajorVersion = 1;
inline constexpr int kSettingsMinorVersion = 0;

/** Takes a tree apart into elements with attributes; one implementation per file format. */
class CDbSettingsWriter
{
public:
    virtual ~CDbSettingsWriter() = default;
    virtual void StartElement(const QString& kind) = 0;
    /** Only between StartElement and the next StartElement or EndElement. */
    virtual void Attribute(const QString& key, const QString& value) = 0;
    virtual void EndElement() = 0;
    /** False when the device below refused something. */
    virtual bool IsGood() const = 0;

    /** Told by a property whose value only the file's owner may read. */
    void NoteSecret() { m_holdsSecret = true; }
    bool HoldsSecret() const { return m_holdsSecret; }

private:
    bool m_holdsSecret = false;
};

class CDbXmlSettingsWriter final : public CDbSettingsWriter
{
public:
    explicit CDbXmlSettingsWriter(QXmlStreamWriter& writer) : m_writer(writer) {}
    void StartElement(const QString& kind) override;
    void Attribute(const QString& key, const QString& value) override;
    void EndElement() override;
    bool IsGood() const override;

private:
    QXmlStreamWriter& m_writer; ///< the caller's, who begins and ends the document
};

/**
 * The fields of an element: its kind, the number of attributes, their keys and values in turn, the
 * elements inside it, and "End".
 */
class CDbCsvSettingsWriter final : public CDbSettingsWriter
{
public:
    explicit CDbCsvSettingsWriter(QList<QString>& fields) : m_fields(fields) {}
    void StartElement(const QString& kind) override;
    void Attribute(const QString& key, const QString& value) override;
    void EndElement() override;
    bool IsGood() const override { return true; }

    /** Fields as a text of RFC 4180, a line for each element. */
    static QByteArray ToText(const QList<QString>& fields);

private:
    void WriteAttributeCount();

    QList<QString>& m_fields;
    /** Takes the count of the open element's attributes. */
    QList<QString>::size_type m_countField = 0;
    int m_attributes = 0;
    bool m_open = false; ///< attributes may still come
};

class CDbSettingsDocument;

/** One element of a document: a view that is good as long as the document. */
class CDbSettingsElement
{
public:
    CDbSettingsElement(const CDbSettingsDocument& document, int index)
        : m_document(&document), m_index(index)
    {
    }
    bool IsNull() const { return m_index < 0; }
    /** Views into the document's text. */
    QStringView Kind() const;
    /** A null view when the element has no such attribute. */
    QStringView Attribute(const QString& key) const;
    QStringView Name() const { return Attribute(KW_SETTINGS_NAME); }
    /** A null element where there is none, as Next; nothing else may be asked of one. */
    CDbSettingsElement FirstChild() const;
    CDbSettingsElement Next() const;

private:
    const CDbSettingsDocument* m_document;
    int m_index;
};

/** Puts the digest of what it holds at the end of a settings file's text, which has none. */
void KW_AddDigest(QByteArray& text, bool csv);
/** The text of a settings file with its digest as the last element, in place of one that it has. A
    text that is no settings file gives one that can not be read. */
QByteArray KW_WithDigest(const QByteArray& text, bool csv);

/**
 * A settings file, read and checked whole before anything is applied. Memory and time are bounded
 * (NDbBounds); document type declarations are refused, so no entity can grow.
 */
class CDbSettingsDocument
{
public:
    /** Whole files. False with GetError() set when the text is damaged, of another kind than
        `kind` (a null text for any kind), of a newer major version, or does not fit its digest. */
    bool ReadXmlFile(const QByteArray& text, const QString& kind);
    bool ReadCsvFile(const QByteArray& text, const QString& kind);
    /** One element at, or next after, the position of a reader that the caller owns. */
    bool ReadXmlElement(QXmlStreamReader& reader);
    bool ReadCsvElement(QListIterator<QString>& fields);

    CDbSettingsElement Top() const { return {*this, m_elements.empty() ? -1 : 0}; }
    /** What is wrong and where: "line 12, column 3: …". */
    const QString& GetError() const { return m_error; }
    /** Whether nothing but the digest is wrong. */
    bool IsDigestWrong() const { return m_digestWrong; }

private:
    friend class CDbSettingsElement;
    /** Part of m_text: the text grows while the file is read, so no pointers into it are kept. */
    struct t_Text
    {
        int offset;
        int length;
    };
    struct t_Attribute
    {
        t_Text key;
        t_Text value;
    };
    /** By their indexes; −1 for none. Elements stand in the order of the file. */
    struct t_Element
    {
        t_Text kind;
        int firstAttribute;
        int attributeCount;
        int firstChild;
        int next;
    };

    t_Text Keep(QStringView text);
    QStringView View(t_Text text) const
    {
        return QStringView(m_text).mid(text.offset, text.length);
    }
    bool Fail(const QString& error);
    bool FailAt(const QXmlStreamReader& reader, const QString& error);
    bool Open(QStringView kind);
    void AddAttribute(QStringView key, QStringView value);
    void Close();
    bool ReadXmlTokens(QXmlStreamReader& reader);
    bool OpenXml(const QXmlStreamReader& reader);
    bool OpenCsv(const QString& kind, QListIterator<QString>& fields);
    bool CheckDocument(const QString& kind);
    bool CheckVersion(QStringView version);
    bool CheckDigest(const QByteArray& text, bool csv);
    static bool SplitCsv(const QString& text, QList<QString>& fields, QString& error);

    QString m_text;
    std::vector<t_Element> m_elements;
    std::vector<t_Attribute> m_attributes;
    struct t_Level
    {
        int element;
        int lastChild;
    };
    std::vector<t_Level> m_open;
    QString m_error;
    bool m_digestWrong = false;
};

/** One application of a document to a tree: reports and counts what had to be skipped. */
class CDbRecall
{
public:
    /** Applies the top element to `node`; limits follow values, nothing is recomputed. */
    static CDbRecall Apply(CDbObject& node, const CDbSettingsDocument& document);
    static CDbRecall Apply(CDbObject& node, const CDbSettingsElement& element, INT32 pattern);

    /** Reports "… in <path of node>", as long as there are not too many reports. */
    void Skip(const CDbObject& node, const QString& what);
    /** A text of the file as a report repeats it: not without end. */
    static QString Shortened(const QString& text);
    /** A property took a value of the file. */
    void Took(const CDbPropBase& property) { m_taken.push_back(&property); }
    /** Has every group derive the settings of which the file named the twin alone. */
    void SettleTwins(CDbPropertyGroup& top);
    /** Whether a property took a value of the file; once twins are settled. */
    bool HasTaken(const CDbPropBase& property) const;
    /** Whether the file may bring so many more nodes into being; they count when it may. */
    bool MayCreate(std::size_t nodes);
    /** Runs `apply` once everything else of the document was applied: what refers to other nodes
        must find them. */
    void Defer(std::function<void(CDbRecall&)> apply) { m_deferred.push_back(std::move(apply)); }
    /** For what is reported elsewhere: false when there are reports enough. */
    bool CountSkipped() { return ++m_skipped <= NDbBounds::kMaxReports; }
    bool IsClean() const { return m_skipped == 0; }
    /** Only nodes of this save/recall pattern are applied. */
    INT32 GetPattern() const { return m_pattern; }

private:
    void ReportRest(const CDbObject& node) const;

    /** Run in the order in which they came. */
    std::vector<std::function<void(CDbRecall&)>> m_deferred;
    /** Compared only: an item may be gone when twins are settled. */
    std::vector<const CDbPropBase*> m_taken;
    std::size_t m_created = 0; ///< nodes, against NDbBounds::kMaxNewNodes
    int m_skipped = 0;         ///< entries, reported or not
    INT32 m_pattern = eSAVERECALL_ALL;
};

/**
 * The recall of a whole tree that is under way, for rules that must tell what the file named from
 * what stood before: from the settling of twins until everything is computed. Guarded by the tree's
 * lock.
 */
class CDbPresentRecall
{
public:
    explicit CDbPresentRecall(CDbRecall& recall) { s_recall = &recall; }
    ~CDbPresentRecall() { s_recall = nullptr; }
    CDbPresentRecall(const CDbPresentRecall&) = delete;
    CDbPresentRecall& operator=(const CDbPresentRecall&) = delete;

    /** Whether the file named this property; false while no file is applied. */
    static bool Names(const CDbPropBase& property)
    {
        return s_recall != nullptr && s_recall->HasTaken(property);
    }
    /** Reports "… in <path of node>"; a recall that is under way answers code 1. */
    static void Skip(const CDbObject& node, const QString& what);

private:
    static CDbRecall* s_recall; ///< null while no file is applied
};
