// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelReports.h"

#include <QByteArray>
#include <QXmlStreamReader>
#include <string>
#include <string_view>
#include <vector>

/**
 * The elements of an XML text, with the places of their tags and attributes: Qt's reader knows
 * where a token ends, in characters. Document types and entities of their own are not taken, nor
 * elements beyond the bounds of LabelBounds.h; all of this breaks off, and is reported.
 */
class CLabelXmlTokens
{
public:
    /** An attribute of the element; those of other namespaces, which editors add, are left out. */
    struct t_Attribute
    {
        std::string name;
        std::string text;
        t_TextPlace place; ///< of its name
        bool isTaken = false;
    };

    /** `text` is UTF-8. */
    CLabelXmlTokens(const QByteArray& text, CLabelReports& reports);

    /** Goes to the next child of the open element and opens it. False at the end of the element,
        which closes it, and when it is broken off. */
    bool Next();

    bool IsBroken() const { return m_isBroken; }
    void BreakOff() { m_isBroken = true; } ///< reported by the caller

    /** Of the element that was opened last, until the next is. */
    ///@{
    const std::string& Name() const { return m_name; }
    t_TextPlace Place() const { return m_place; }
    std::vector<t_Attribute>& Attributes() { return m_attributes; }
    ///@}

    /** The attribute of that name; null when there is none. */
    const t_Attribute* Take(std::string_view name);

    /** Ends an element that has no children: warns of attributes that nobody took, and of children,
        which are passed over with all that is in them. */
    void EndLeaf();

    /** Warns of attributes that nobody took. */
    void WarnOfRest();

    /** Warns of the element, which nobody knows, and passes over all that is in it. */
    void PassOver();

private:
    void Open();
    void ReadAttributes();
    bool CheckBounds();
    bool Break(const QString& what);
    bool BreakAt(t_TextPlace place, const QString& what);
    void WalkTo(qint64 character);

    const QByteArray m_text;        ///< without a byte order mark
    const std::string_view m_bytes; ///< of m_text
    CLabelReports& m_reports;
    QXmlStreamReader m_reader;
    bool m_isBroken = false;
    int m_depth = 0;
    int m_elements = 0;
    std::string m_name;
    t_TextPlace m_place;
    std::vector<t_Attribute> m_attributes;

    // How far the text has been walked: to a byte, which is a character as Qt counts them.
    std::size_t m_byte = 0;
    qint64 m_character = 0;
    std::size_t m_lineStart = 0;
    UINT32 m_line = 1;
    std::size_t m_tag = 0; ///< byte of the last "<": within a tag there is no other
    t_TextPlace m_tagPlace;
};
