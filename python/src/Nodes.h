// SPDX-License-Identifier: MIT
#pragma once

#include "Enumerations.h"
#include "PythonCalls.h"

#include "IKWFunctionZEL.h"

#include <memory>
#include <optional>

/** Whether the process ends: whoever has the tree's lock may never give it back. */
bool IsEnding();

/** Lets go of what takes a tree down when it goes; at the process's end nothing does. */
template <typename T>
void LetGoUnlessEnding(std::shared_ptr<T>& part)
{
    if (part && IsEnding())
    {
        new std::shared_ptr<T>(std::move(part)); // never let go
        part = nullptr;
    }
    LetGo(part);
}

/** What the nodes of one tree share: they keep it, until somebody closes it. */
struct t_Tree
{
    std::shared_ptr<IKWFunctionZEL> root; ///< read and written under Python's lock; null: closed

    ~t_Tree();
};

/** What all nodes have. Nodes are let go without Python's lock, as groups go under the tree's. */
template <typename I>
struct t_Node
{
    std::shared_ptr<t_Tree> tree;
    std::shared_ptr<I> node;

    t_Node(std::shared_ptr<t_Tree> ownTree, std::shared_ptr<I> ownNode)
        : tree(std::move(ownTree)), node(std::move(ownNode))
    {
    }
    t_Node(const t_Node&) = default;
    t_Node& operator=(const t_Node&) = delete;
    ~t_Node() { LetGo(node); }
};

/** How the value of a property is read and written. */
enum class e_Kind
{
    Int16,
    UInt16,
    Int32,
    UInt32,
    Int64,
    UInt64,
    Double,
    Enum,
    String,
    Pattern,
    Blob,
    FilePath,
    Reference,
};

/** What is known of a property before there is a Python object of it. */
struct t_PropertySeed : t_Node<IDbProperty>
{
    std::shared_ptr<IKWPropertyBase> handle;
    e_Kind kind;
    void* typed; ///< the handle as what `kind` says

    /** Takes the tree's lock. */
    t_PropertySeed(const std::shared_ptr<t_Tree>& ownTree, std::shared_ptr<IDbProperty> property);
    t_PropertySeed(const t_PropertySeed&) = default;
    ~t_PropertySeed() { LetGo(handle); }
};

/** A property. */
class CProperty : public t_PropertySeed
{
public:
    explicit CProperty(const t_PropertySeed& seed) : t_PropertySeed(seed) {}

    template <typename T>
    T& As() const
    {
        return *static_cast<T*>(typed);
    }
    /** Calls `work` with the typed handle of a number; false for other kinds. */
    template <typename Work>
    bool WithNumber(Work&& work) const
    {
        switch (kind)
        {
        case e_Kind::Int16:
            work(As<IKWNumericProperty<INT16>>());
            return true;
        case e_Kind::UInt16:
            work(As<IKWNumericProperty<UINT16>>());
            return true;
        case e_Kind::Int32:
            work(As<IKWNumericProperty<INT32>>());
            return true;
        case e_Kind::UInt32:
            work(As<IKWNumericProperty<UINT32>>());
            return true;
        case e_Kind::Int64:
            work(As<IKWNumericProperty<INT64>>());
            return true;
        case e_Kind::UInt64:
            work(As<IKWNumericProperty<UINT64>>());
            return true;
        case e_Kind::Double:
            work(As<IKWNumericProperty<double>>());
            return true;
        default:
            return false;
        }
    }
    /** The class of an enumeration's values. Throws what Python sets. */
    const t_Enumeration& Enumeration() const;

private:
    mutable const t_Enumeration* m_enumeration = nullptr;
};

/** What is written: as a user's write, or as a result that is delivered. */
enum class e_Write
{
    Set,
    Limited,   ///< numbers: the nearest legal value
    UserValue, ///< numbers: the same, and the wish is remembered
    Deliver,
};

/** A number of the library, a new reference. */
template <typename T>
PyObject* NewNumber(T number)
{
    if constexpr (std::is_floating_point_v<T>)
    {
        return PyFloat_FromDouble(number);
    }
    else if constexpr (std::is_signed_v<T>)
    {
        return PyLong_FromLongLong(number);
    }
    else
    {
        return PyLong_FromUnsignedLongLong(number);
    }
}

/** The value of a property, a new reference; null with a Python exception set. */
PyObject* ReadValue(const CProperty& property);
/** Writes a value. `self` is the property's Python object. Throws what Python sets. */
void WriteValue(const CProperty& property, PyObject* self, PyObject* value, e_Write how);

/** An action. */
class CAction : public t_Node<IDbAction>
{
public:
    using t_Node::t_Node;
};

/** A group, array, map or the root. */
class CGroup : public t_Node<IDbGroup>
{
public:
    CGroup(std::shared_ptr<t_Tree> ownTree, std::shared_ptr<IDbGroup> group)
        : t_Node(std::move(ownTree), std::move(group))
    {
    }
    explicit CGroup(const CGroup& other) : t_Node(other) {}
    ~CGroup() { Py_XDECREF(m_members); }

    /** Properties, actions and child groups by name, as Python objects: a borrowed reference.
        Throws what Python sets. */
    PyObject* Members();

    /** Python object of an item: the one that was made before, if it is still the same item. */
    py::object Item(const py::object& key, const std::shared_ptr<IDbGroup>& item);

    /** As a container. Throws a TypeError where it is none. */
    IDbContainer& Container() const;
    /** The tree's root. Throws a refusal when it was closed. */
    CHeld<IKWFunctionZEL> Root() const;
    /** Throws a refusal for the root of a tree that was closed: it has no node any more. */
    void CheckOpen() const;

private:
    PyObject* m_members = nullptr;
    py::dict m_items;
};

/** Python object of a group, of the class that its kind has. */
py::object NewGroup(const std::shared_ptr<t_Tree>& tree, const std::shared_ptr<IDbGroup>& group);

/** The C++ object of an instance of T, whose class has no other base of C++: by its place, as a
    lookup by type would cost more than the read of a number. Throws a TypeError for an instance
    whose class forgot to initialise it. */
template <typename T>
T& Of(PyObject* self)
{
    auto* const instance = reinterpret_cast<py::detail::instance*>(self);
    auto* const object = static_cast<T*>(instance->simple_value_holder[0]);
    if (object == nullptr)
    {
        throw py::type_error("the object was not initialised");
    }
    return *object;
}

/** The group of a Python object. Throws a refusal for the root of a tree that was closed. */
inline CGroup& OpenGroup(py::handle self)
{
    CGroup& group = Of<CGroup>(self.ptr());
    group.CheckOpen();
    return group;
}

/** What only the root has: calls, brackets. */
void AddRoot(py::module_& module, py::class_<CGroup>& group);
