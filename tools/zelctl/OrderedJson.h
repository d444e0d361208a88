// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

/** A value of JSON whose members stand in the order of the document and whose numbers are the text
    that was written: the order of a tree and all its digits are kept. */
class COrderedJson
{
public:
    using t_Member = std::pair<QString, COrderedJson>;

    /** Nothing for what is no document of JSON. */
    static std::optional<COrderedJson> Parse(const QByteArray& text);
    /** An object without members. */
    static COrderedJson Object();

    bool IsObject() const { return m_kind == eKIND::Object; }
    bool IsNull() const { return m_kind == eKIND::Null; }
    /** Members of an object, or elements of an array, which have no names. */
    const std::vector<t_Member>& GetMembers() const { return m_members; }
    std::vector<t_Member>& Members() { return m_members; }
    bool Has(const char* name) const { return Find(name) != nullptr; }
    /** A null value where there is no such member. */
    const COrderedJson& operator[](const char* name) const;
    /** A text, or a number as it was written; empty for all else. */
    const QString& GetText() const { return m_text; }
    /** The texts of the elements. */
    QStringList GetTexts() const;
    bool IsTrue() const { return m_kind == eKIND::True; }
    int GetInt() const { return m_text.toInt(); }
    /** Puts the members of another object in the place of those with their names. */
    void Merge(const COrderedJson& other);

private:
    enum class eKIND
    {
        Null,
        False,
        True,
        Number,
        Text,
        Array,
        Object
    };
    class CBuilder;

    const COrderedJson* Find(const char* name) const;

    eKIND m_kind = eKIND::Null;
    QString m_text;
    std::vector<t_Member> m_members;
};
