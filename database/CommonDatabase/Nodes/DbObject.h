// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Values/DbTypes.h"
#include "IDbObject.h"

#include <QList>
#include <QListIterator>
#include <memory>

class CDbPgRoot;
class CDbPropertyGroup;
class CDbSettingsWriter;
class CDbSettingsElement;
class CDbRecall;
class QXmlStreamReader;
class QXmlStreamWriter;

/**
 * Base of every node: name, parent, object type, save/recall type, availability, serialization.
 *
 * Nodes are held by shared pointers; a parent owns its children, the way up is a plain pointer that
 * the parent clears when it goes. Everything that follows it runs under the tree's lock, and groups
 * are destroyed under that lock too (CDbNodeDeleter), so a pointer that was read is good until the
 * lock is given back.
 */
class CDbObject : public IDbObject, public std::enable_shared_from_this<CDbObject>
{
public:
    /** Which files an operation is about. */
    using SaveRecallPattern = KW_SAVE_RECALL;

    CDbObject();
    ~CDbObject() override;
    CDbObject(const CDbObject&) = delete;
    CDbObject& operator=(const CDbObject&) = delete;

    /** Each of these takes the lock where it reads what may change or lies above the node. */
    QString GetNodeName() const override;
    QString GetPath() const override;
    KW_OBJECT_TYPE GetObjectType() const override { return m_objectType; }
    INT32 GetSaveRecallType() const override { return m_saveRecallType; }
    KW_AVAILABILITY GetAvailability() const override;

    /** The name without the lock, for code that holds it. */
    const QString& NodeName() const { return m_nodeName; }
    void SetNodeName(const QString& name) { m_nodeName = name; }
    /** Setting (at first) or result. */
    void SetObjectType(KW_OBJECT_TYPE type) { m_objectType = type; }
    /** Files that carry `object`: bits of KW_SAVE_RECALL; `recursive` passes it to what it owns. */
    static void SetSaveRecallType(CDbObject* object, INT32 type, bool recursive);

    /** A top-level node is where paths begin. */
    void SetTopLevel(bool topLevel) { m_topLevel = topLevel; }

    /** What the configuration allows, and what the present state allows. */
    void SetMaxAvailability(KW_AVAILABILITY availability);
    virtual void SetAvailability(KW_AVAILABILITY availability);
    KW_AVAILABILITY GetCurrentAvailability() const { return m_availability; }
    /** True while nobody touched the maximum. */
    bool HasDefaultMaxAvailability() const { return !m_maxAvailabilityTouched; }

    /** A number for logs: unique in the process. */
    UINT32 GetDiagnosticId() const { return m_diagnosticId; }

    /** Where the node stands in its group's list of nodes of its kind, counted from 0. */
    UINT8 GetPlace() const { return m_place; }
    void SetPlace(std::size_t place) { m_place = static_cast<UINT8>(place); }
    /** Rows of rules that follow a property or action (CDependencies): their number among all that
        are followed, counted from 1, 0 for none, and their causes as bits. */
    UINT16 GetSourceNumber() const { return m_sourceNumber; }
    UINT8 GetFollowed() const { return m_followed; }
    void SetFollowed(UINT16 number, UINT8 causes)
    {
        m_sourceNumber = number;
        m_followed = causes;
    }

    /** The group above; to be had where groups are known, in DbPropertyGroup.h. */
    inline CDbPropertyGroup* GetParent() const;
    inline void SetParent(CDbPropertyGroup* parent);
    /** The topmost node above this one, itself if it has no parent. */
    CDbObject* GetTop();
    /** The tree's root; null while a subtree is not (or no longer) part of a tree. */
    CDbPgRoot* GetDbRoot() const;
    /** This node as a root, null for every other class. */
    virtual CDbPgRoot* AsDbRoot() = 0;

    /** "DbObject", "Prop", "PropGroup", "Array", "ArrayItem", "Map", "MapItem". */
    virtual QString GetXMLElementName() const;
    /** Writes the node as one element; false when the device could not take it. */
    bool SerializeXML(QXmlStreamWriter* writer, INT32 pattern = eSAVERECALL_ALL) const;
    /** Appends the same as a list of fields. */
    bool SerializeCSV(QList<QString>& fields, INT32 pattern = eSAVERECALL_ALL) const;
    /** Reads one element at (or before) the reader's position and applies it; code-less forms of
        the root's recall for single nodes. False when it was not understood. */
    bool DeSerializeXML(QXmlStreamReader* reader);
    bool DeSerializeCSV(QListIterator<QString>& fields);

    /** Passes the node's element to the writer, if `pattern` wants it. */
    virtual void Serialize(CDbSettingsWriter& writer, INT32 pattern) const;
    /** Writes what stands inside the element; a plain object writes nothing. */
    virtual bool SerializeProp(CDbSettingsWriter& writer) const;
    /** Applies an element read from a file; a plain object reads nothing. */
    virtual void DeSerialize(const CDbSettingsElement& element, CDbRecall& recall);

    /** The node's name; read back by whoever owns the node, which finds it by that name. */
    void SerializeBaseAttributes(CDbSettingsWriter& writer) const;

protected:
    virtual void OnSaveRecallTypeSet(INT32 type, bool recursive);
    /** The strictest of this node and all above it. Under the lock. */
    KW_AVAILABILITY AvailabilityUpToRoot() const;

private:
    QString m_nodeName;
    CDbObject* m_parent = nullptr; ///< a group
    UINT32 m_diagnosticId;
    /** As the save/recall type set before clients have the node. */
    KW_OBJECT_TYPE m_objectType : 8 = eOBJECTTYPE_SETTING;
    INT32 m_saveRecallType : 8 = eSAVERECALL_SETTINGS;
    KW_AVAILABILITY m_maxAvailability : 8 = eAVAILABILITY_AVAILABLE;
    KW_AVAILABILITY m_availability : 8 = eAVAILABILITY_AVAILABLE; ///< changes under the lock
    bool m_maxAvailabilityTouched = false;
    bool m_topLevel = false;
    UINT8 m_place = 0;
    UINT8 m_followed = 0;
    UINT16 m_sourceNumber = 0;
};

/**
 * A node with the client interface of its kind, which is a second IDbObject: one answer serves
 * both. A shared virtual base would say the same, but costs every node class a table for each of
 * its bases under construction: half of the library for 500 classes.
 */
template <typename TInterface>
class CDbNode : public CDbObject, public TInterface
{
public:
    CDbPgRoot* AsDbRoot() override { return nullptr; }
    QString GetNodeName() const final { return CDbObject::GetNodeName(); }
    QString GetPath() const final { return CDbObject::GetPath(); }
    KW_OBJECT_TYPE GetObjectType() const final { return CDbObject::GetObjectType(); }
    INT32 GetSaveRecallType() const final { return CDbObject::GetSaveRecallType(); }
    KW_AVAILABILITY GetAvailability() const final { return CDbObject::GetAvailability(); }
};

/** Destroys a group under the tree's lock, so that no walk up meets a half-destroyed parent. */
struct CDbNodeDeleter
{
    void operator()(CDbObject* node) const;
};
