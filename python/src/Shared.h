// SPDX-License-Identifier: MIT
#pragma once

#include "Buffers.h"
#include "Nodes.h"

#include "LabelList/LabelListFile.h"
#include "Streams/Record.h"

/** What the parts of the module beyond the tree share. */

/** Throws the refusal of a code, and warns of code 1 and of texts.
    @param value what was asked for, or null */
void CheckCode(KW_ACCEPTANCE code, const std::vector<QString>& texts = {},
               PyObject* value = nullptr);

/** The same of a file and of what was said to it; without a file's name of a node. */
void CheckFile(KW_ACCEPTANCE code, const QString& file, const std::vector<KW_LabelReport>& reports,
               py::handle node = py::none());

/** Throws an IndexError for a place that the record has not. */
void CheckTrace(const CKWRecord& record, UINT32 trace);

/** Throws a TypeError unless the bytes are points of a format. */
void CheckPoints(const CBytes& bytes, KW_SAMPLE_FORMAT format);

inline std::optional<CKWRecord> OrNone(CKWRecord record)
{
    return record ? std::optional(std::move(record)) : std::nullopt;
}

/** Something that is for one thread at a time is in use while this lives. Python's lock sees to
    that but while a call has given it back. Made and destroyed under Python's lock. */
class CInUse
{
public:
    explicit CInUse(bool& isInUse) : m_isInUse(isInUse)
    {
        if (isInUse)
        {
            throw std::runtime_error("another thread uses this object: take one each");
        }
        isInUse = true;
    }
    ~CInUse() { m_isInUse = false; }
    CInUse(const CInUse&) = delete;
    CInUse& operator=(const CInUse&) = delete;

private:
    bool& m_isInUse;
};

/** The typed handle of a group of the tree. Throws a TypeError for anything else. */
template <typename Handle>
CHeld<Handle> HandleOf(py::handle group, const char* wanted)
{
    if (PyObject_IsInstance(group.ptr(), Registered().group) == 1)
    {
        const auto node = Of<CGroup>(group.ptr()).node;
        std::shared_ptr<Handle> found =
            Released([&node] { return std::dynamic_pointer_cast<Handle>(node->GetHandle()); });
        if (found)
        {
            return found;
        }
    }
    throw py::type_error(std::string("wanted is a ") + wanted + " of the tree");
}

/** The root of the tree of a node. Throws a refusal when it was closed. */
inline CHeld<IKWFunctionZEL> RootOf(py::handle root)
{
    if (PyObject_IsInstance(root.ptr(), Registered().root) != 1)
    {
        throw py::type_error("wanted is the root of the tree");
    }
    return Of<CGroup>(root.ptr()).Root();
}
