// SPDX-License-Identifier: MIT
#include "CommonDatabase/Containers/DbContainerBase.h"
#include "DbSettings.h"
#include "KWTexts.h"
#include "LockManager.h"

namespace
{
INT32 SavedPatternOf(const CDbObject& node)
{
    return node.GetKind() == eKW_NODE_PROPERTY
               ? node.GetSaveRecallType()
               : dynamic_cast<const CDbPropertyGroup&>(node).GetSavedPattern();
}
} // namespace

bool CDbObject::SerializeXML(QXmlStreamWriter* writer, INT32 pattern) const
{
    const CLockGuard lock(eACCESS_READ);
    CDbXmlSettingsWriter out(*writer);
    Serialize(out, pattern);
    return out.IsGood();
}

bool CDbObject::SerializeCSV(QList<QString>& fields, INT32 pattern) const
{
    const CLockGuard lock(eACCESS_READ);
    CDbCsvSettingsWriter out(fields);
    Serialize(out, pattern);
    return out.IsGood();
}

bool CDbObject::DeSerializeXML(QXmlStreamReader* reader)
{
    CDbSettingsDocument document;
    return document.ReadXmlElement(*reader) && CDbRecall::Apply(*this, document).IsClean();
}

bool CDbObject::DeSerializeCSV(QListIterator<QString>& fields)
{
    CDbSettingsDocument document;
    return document.ReadCsvElement(fields) && CDbRecall::Apply(*this, document).IsClean();
}

void CDbObject::Serialize(CDbSettingsWriter& writer, INT32 pattern) const
{
    if ((m_saveRecallType & pattern) == 0)
    {
        return;
    }
    writer.StartElement(GetXMLElementName());
    SerializeBaseAttributes(writer);
    SerializeProp(writer);
    writer.EndElement();
}

void CDbObject::SerializeBaseAttributes(CDbSettingsWriter& writer) const
{
    writer.Attribute(KW_SETTINGS_NAME, m_nodeName);
}

bool CDbObject::SerializeProp(CDbSettingsWriter& /*writer*/) const
{
    return true;
}

void CDbObject::DeSerialize(const CDbSettingsElement& /*element*/, CDbRecall& /*recall*/) {}

bool CDbPropBase::SerializeProp(CDbSettingsWriter& writer) const
{
    writer.Attribute(KW_SETTINGS_VALUE, GetText());
    if (const QString wish = GetWishText(); !wish.isNull())
    {
        writer.Attribute(KW_SETTINGS_USER_VALUE, wish);
    }
    if (m_secret)
    {
        writer.NoteSecret();
    }
    return writer.IsGood();
}

void CDbPropBase::DeSerialize(const CDbSettingsElement& element, CDbRecall& recall)
{
    const QStringView text = element.Attribute(KW_SETTINGS_VALUE);
    CDbValue value;
    KW_ACCEPTANCE code = text.isNull() ? static_cast<KW_ACCEPTANCE>(eKW_ACC_BAD_TEXT)
                                       : ParseText(text.toString(), value);
    if (code <= eKW_ACC_WARNING)
    {
        code = WriteValue(std::move(value), eWRITEKIND::Recall);
    }
    if (code > eKW_ACC_WARNING)
    {
        const QString shown = m_secret ? KW_GetSecretText() : CDbRecall::Shortened(text.toString());
        recall.Skip(
            *this,
            QStringLiteral("Value \"%1\" skipped (%2)").arg(shown, KW_GetAcceptanceText(code)));
        return;
    }
    if (const QStringView wish = element.Attribute(KW_SETTINGS_USER_VALUE); !wish.isNull())
    {
        RestoreWish(wish);
    }
    recall.Took(*this);
}

void CDbPropertyGroup::Serialize(CDbSettingsWriter& writer, INT32 pattern) const
{
    if ((GetSavedPattern() & pattern) == 0)
    {
        return;
    }
    writer.StartElement(GetXMLElementName());
    SerializeBaseAttributes(writer);
    SerializeContents(writer, pattern);
    writer.EndElement();
}

void CDbPropertyGroup::SerializeContents(CDbSettingsWriter& writer, INT32 pattern) const
{
    for (const auto& property : m_properties)
    {
        property->Serialize(writer, pattern);
    }
    for (const auto& group : m_groups)
    {
        group->Serialize(writer, pattern);
    }
}

void CDbPropertyGroup::DeSerialize(const CDbSettingsElement& element, CDbRecall& recall)
{
    for (CDbSettingsElement child = element.FirstChild(); !child.IsNull(); child = child.Next())
    {
        DeSerializeChild(child, recall);
    }
}

void CDbPropertyGroup::DeSerializeChild(const CDbSettingsElement& element, CDbRecall& recall)
{
    CDbObject* const node = FindMember(element.Name());
    if (node == nullptr || node->GetXMLElementName() != element.Kind())
    {
        recall.Skip(*this, QStringLiteral("Unknown %1 \"%2\"")
                               .arg(element.Kind().toString(), element.Name().toString()));
        return;
    }
    // What Serialize leaves out of files of this pattern, none of them can touch.
    if ((SavedPatternOf(*node) & recall.GetPattern()) == 0)
    {
        recall.Skip(*this, QStringLiteral("No part of such settings: %1 \"%2\"")
                               .arg(element.Kind().toString(), element.Name().toString()));
        return;
    }
    node->DeSerialize(element, recall);
}

void CDbContainerBase::CopyContents(const CDbPropertyGroup& source, CDbPropertyGroup& target)
{
    QList<QString> fields;
    source.SerializeCSV(fields);
    QListIterator<QString> iterator(fields);
    CDbSettingsDocument document;
    if (document.ReadCsvElement(iterator))
    {
        CDbRecall::Apply(target, document);
    }
}
