// SPDX-License-Identifier: MIT
#include "Nodes.h"

#include "KWCouplings.h"
#include "KWRemoteNames.h"

#include <pybind11/stl.h>

#include <vector>

namespace
{
template <typename Work>
auto Locked(py::handle self, Work&& work)
{
    const CHeld node(OpenGroup(self).node); // another thread may close the root meanwhile
    return Released([&] { return work(*node.Get()); });
}

/** Members of all groups begin with a capital, what Python adds does not. */
bool MayBeMember(PyObject* name)
{
    const Py_UCS4 first = PyUnicode_GET_LENGTH(name) > 0 ? PyUnicode_READ_CHAR(name, 0) : 0;
    return first >= 'A' && first <= 'Z';
}

/** Runs what may throw where Python waits for a result. */
template <typename Work, typename Result>
Result Guarded(Result failure, Work&& work) noexcept
{
    try
    {
        return work();
    }
    catch (py::error_already_set& error)
    {
        error.restore();
    }
    catch (const py::builtin_exception& error)
    {
        error.set_error();
    }
    catch (const std::bad_alloc&)
    {
        PyErr_NoMemory();
    }
    catch (const std::exception& error)
    {
        PyErr_SetString(PyExc_RuntimeError, error.what());
    }
    return failure;
}

/** A member; null without an exception where there is none. */
PyObject* FindMember(PyObject* self, PyObject* name)
{
    return MayBeMember(name) ? PyDict_GetItemWithError(Of<CGroup>(self).Members(), name) : nullptr;
}

bool IsProperty(PyObject* member)
{
    return reinterpret_cast<PyObject*>(Py_TYPE(member)) == Registered().property;
}

PyObject* GetAttribute(PyObject* self, PyObject* name)
{
    return Guarded(static_cast<PyObject*>(nullptr),
                   [&]() -> PyObject*
                   {
                       PyObject* const member = FindMember(self, name);
                       if (member == nullptr)
                       {
                           return PyErr_Occurred() != nullptr ? nullptr
                                                              : PyObject_GenericGetAttr(self, name);
                       }
                       if (IsProperty(member))
                       {
                           return ReadValue(Of<CProperty>(member));
                       }
                       Py_INCREF(member);
                       return member;
                   });
}

int SetAttribute(PyObject* self, PyObject* name, PyObject* value)
{
    return Guarded(-1,
                   [&]
                   {
                       PyObject* const member = FindMember(self, name);
                       if (member == nullptr)
                       {
                           return PyErr_Occurred() != nullptr
                                      ? -1
                                      : PyObject_GenericSetAttr(self, name, value);
                       }
                       if (!IsProperty(member) || value == nullptr)
                       {
                           PyErr_Format(PyExc_TypeError, "%U can not be %s", name,
                                        value == nullptr ? "deleted" : "set");
                           return -1;
                       }
                       // The members stay, whatever runs while Python's lock is given back.
                       WriteValue(Of<CProperty>(member), member, value, e_Write::Set);
                       return 0;
                   });
}

/** What a group is made of, before there are Python objects. */
struct t_Members
{
    std::vector<std::pair<QString, t_PropertySeed>> properties;
    std::vector<std::pair<QString, CHeld<IDbGroup>>> groups;
    std::vector<std::pair<QString, CHeld<IDbAction>>> actions;
};

t_Members Collect(const std::shared_ptr<t_Tree>& tree, const IDbGroup& group)
{
    t_Members members;
    for (INT32 i = 0; const auto property = group.GetProperty(i); ++i)
    {
        members.properties.emplace_back(property->GetNodeName(), t_PropertySeed(tree, property));
    }
    for (INT32 i = 0; const auto child = group.GetGroup(i); ++i)
    {
        members.groups.emplace_back(child->GetNodeName(), child);
    }
    for (INT32 i = 0; const auto action = group.GetAction(i); ++i)
    {
        members.actions.emplace_back(action->GetNodeName(), action);
    }
    return members;
}

/** Every call of a container of the group, without Python's lock. */
template <typename Work>
void AskContainer(py::handle self, py::handle value, Work&& work)
{
    IDbContainer& container = OpenGroup(self).Container();
    Ask(self, value, [&] { return work(container); });
}

py::object ItemAt(py::handle self, INT32 position)
{
    CGroup& group = OpenGroup(self);
    IDbContainer& container = group.Container();
    const CHeld<IDbGroup> item = Released([&] { return container.GetItemByPosition(position); });
    if (!item)
    {
        throw py::index_error("no item has this index");
    }
    return group.Item(py::int_(position), item.Get());
}

CHeld<IKWMapBase> MapOf(py::handle self)
{
    auto& node = *OpenGroup(self).node;
    CHeld<IKWMapBase> map =
        Released([&] { return std::dynamic_pointer_cast<IKWMapBase>(node.GetHandle()); });
    if (!map)
    {
        throw py::type_error("only maps have names");
    }
    return map;
}

py::object ItemOf(py::handle self, const py::str& name)
{
    CGroup& group = OpenGroup(self);
    const CHeld<IKWMapBase> map = MapOf(self);
    const QString text = TextOf(name.ptr());
    const CHeld<IDbGroup> item = Released(
        [&]() -> std::shared_ptr<IDbGroup>
        {
            const auto found = map->GetMapItem(text);
            return found ? found->GetGroup()->GetDbObject() : nullptr;
        });
    return item ? group.Item(name, item.Get()) : py::none();
}

/** Name of the item of a numeric key, or the numeric key of a name; None where there is none. */
///@{
py::object NameOfKey(py::handle self, INT32 key)
{
    const CHeld<IKWMapBase> map = MapOf(self);
    const QString name = Released(
        [&]
        {
            const auto found = map->GetMapItem(key);
            return found ? found->GetName() : QString();
        });
    return name.isNull() ? py::none() : py::cast(name);
}

py::object KeyOfName(py::handle self, const QString& name)
{
    const CHeld<IKWMapBase> map = MapOf(self);
    const INT32 key = Released(
        [&]
        {
            const auto found = map->GetMapItem(name);
            return found ? found->GetNumericKey() : -1;
        });
    return key < 0 ? py::none() : py::cast(key);
}
///@}

QStringList Names(py::handle self)
{
    const CHeld<IKWMapBase> map = MapOf(self);
    return Released([&] { return map->GetNames(); });
}

py::list Couplings(py::handle self)
{
    py::list rows;
    for (const KW_CouplingRow& row : Locked(self, [](auto& n) { return KW_GetCouplingRows(n); }))
    {
        rows.append(py::make_tuple(row.group, row.number, row.word, row.sources, row.what,
                                   row.steps, KW_FormatCouplingWhen(row)));
    }
    return rows;
}

} // namespace

void CGroup::CheckOpen() const
{
    if (!node)
    {
        ThrowRefusal(eKW_ACC_DETACHED);
    }
}

PyObject* CGroup::Members()
{
    if (m_members != nullptr)
    {
        return m_members;
    }
    CheckOpen();
    const CHeld held(node);
    const t_Members found = Released([&] { return Collect(tree, *held.Get()); });
    py::dict members;
    const auto add = [&members](const QString& name, const py::object& member)
    {
        PyObject* text = NewText(name);
        PyUnicode_InternInPlace(&text); // as names of attributes in sources are
        members[py::reinterpret_steal<py::object>(text)] = member;
    };
    for (const auto& [name, seed] : found.properties)
    {
        add(name, py::handle(Registered().property)(seed));
    }
    for (const auto& [name, child] : found.groups)
    {
        add(name, NewGroup(tree, child.Get()));
    }
    for (const auto& [name, action] : found.actions)
    {
        add(name, py::handle(Registered().action)(CAction(tree, action.Get())));
    }
    // Another thread may have been quicker; then its objects stand.
    if (m_members == nullptr)
    {
        m_members = members.release().ptr();
    }
    return m_members;
}

py::object CGroup::Item(const py::object& key, const std::shared_ptr<IDbGroup>& item)
{
    if (m_items.contains(key))
    {
        py::object known = m_items[key];
        if (Of<CGroup>(known.ptr()).node == item)
        {
            return known;
        }
    }
    // What was removed or renamed meanwhile is not kept.
    if (Released([this] { return static_cast<std::size_t>(Container().GetCount()); }) <=
        m_items.size())
    {
        m_items = py::dict();
    }
    py::object made = NewGroup(tree, item);
    m_items[key] = made;
    return made;
}

IDbContainer& CGroup::Container() const
{
    IDbContainer* const container = node->AsContainer();
    if (container == nullptr)
    {
        throw py::type_error("the group is no container");
    }
    return *container;
}

CHeld<IKWFunctionZEL> CGroup::Root() const
{
    if (!tree->root)
    {
        ThrowRefusal(eKW_ACC_DETACHED);
    }
    return tree->root;
}

py::object NewGroup(const std::shared_ptr<t_Tree>& tree, const std::shared_ptr<IDbGroup>& group)
{
    const t_Registered& registered = Registered();
    PyObject* type = registered.group;
    switch (group->GetKind())
    {
    case eKW_NODE_ARRAY:
        type = registered.array;
        break;
    case eKW_NODE_MAP:
        type = registered.map;
        break;
    default:
        break;
    }
    const CGroup seed(tree, group);
    return py::handle(type)(py::cast(&seed, py::return_value_policy::reference));
}

namespace
{
void AddContainer(py::class_<CGroup>& type)
{
    type.def("_count",
             [](py::handle self)
             {
                 const auto& container = OpenGroup(self).Container();
                 return Released([&] { return container.GetCount(); });
             })
        .def("_max_count",
             [](py::handle self)
             {
                 const auto& container = OpenGroup(self).Container();
                 return Released([&] { return container.GetMaxCount(); });
             })
        .def("_is_dynamic",
             [](py::handle self)
             {
                 const auto& container = OpenGroup(self).Container();
                 return Released([&] { return container.IsDynamic(); });
             })
        .def("_active",
             [](py::handle self)
             {
                 const auto& container = OpenGroup(self).Container();
                 return Released([&] { return container.GetActiveItem(); });
             })
        .def("_item_at", &ItemAt, py::arg("position"))
        .def("_item_of", &ItemOf, py::arg("name"))
        .def("_name_of_key", &NameOfKey, py::arg("key"))
        .def("_key_of_name", &KeyOfName, py::arg("name"))
        .def("_names", &Names)
        .def(
            "_insert",
            [](py::handle self, const QString& key)
            { AskContainer(self, py::cast(key), [&](auto& c) { return c.InsertItem(key); }); },
            py::arg("key"))
        .def(
            "_remove",
            [](py::handle self, const QString& key)
            { AskContainer(self, py::cast(key), [&](auto& c) { return c.RemoveItem(key); }); },
            py::arg("key"))
        .def(
            "_rename",
            [](py::handle self, const QString& key, const QString& name) {
                AskContainer(self, py::cast(name),
                             [&](auto& c) { return c.RenameItem(key, name); });
            },
            py::arg("key"), py::arg("name"))
        .def(
            "_copy",
            [](py::handle self, const QString& key, const QString& name)
            { AskContainer(self, py::cast(name), [&](auto& c) { return c.CopyItem(key, name); }); },
            py::arg("key"), py::arg("name"))
        .def(
            "_set_active",
            [](py::handle self, const QString& key)
            { AskContainer(self, py::cast(key), [&](auto& c) { return c.SetActiveItem(key); }); },
            py::arg("key"));
}

const CGroup& Checked(const CGroup& group)
{
    group.CheckOpen();
    return group;
}

const CAction& Checked(const CAction& action)
{
    return action;
}

template <typename Class>
void AddNode(py::class_<Class>& type)
{
    const auto locked = [](auto&& work)
    {
        return [work](py::handle self)
        {
            const CHeld node(Checked(Of<Class>(self.ptr())).node);
            return Released([&] { return work(*node.Get()); });
        };
    };
    type.def_property_readonly("name", locked([](auto& n) { return n.GetNodeName(); }))
        .def_property_readonly("path", locked([](auto& n) { return n.GetPath(); }))
        .def_property_readonly("meaning", locked([](auto& n) { return KW_GetMeaning(n); }))
        .def_property_readonly("remote_name",
                               locked([](auto& n) { return KW_GetRemoteNames(n).mnemonic; }))
        .def_property_readonly(
            "_availability", locked([](auto& n) { return static_cast<int>(n.GetAvailability()); }));
}

void AddAction(py::module_& module)
{
    py::class_<CAction> type(module, "Action", "An action of the tree in this process.");
    type.def(py::init<const CAction&>(), py::arg("seed"))
        .def("__call__",
             [](py::handle self)
             {
                 auto& action = Of<CAction>(self.ptr());
                 Ask(self, py::none(), [&] { return action.node->Execute(); });
             })
        .def_property_readonly(
            "is_operation", [](py::handle self)
            { return Of<CAction>(self.ptr()).node->GetKind() == eKW_NODE_OPERATION; });
    AddNode(type);
}

} // namespace

void AddGroup(py::module_& module)
{
    AddAction(module);
    py::class_<CGroup> type(module, "Group", "A group of the tree in this process.",
                            py::custom_type_setup(
                                [](PyHeapTypeObject* heap)
                                {
                                    heap->ht_type.tp_getattro = GetAttribute;
                                    heap->ht_type.tp_setattro = SetAttribute;
                                }));
    type.def(py::init<const CGroup&>(), py::arg("seed"))
        .def("_members", [](py::handle self)
             { return py::reinterpret_borrow<py::dict>(OpenGroup(self).Members()).attr("copy")(); })
        .def(
            "_member",
            [](py::handle self, const py::str& name) -> py::object
            {
                PyObject* const member = FindMember(self.ptr(), name.ptr());
                if (member == nullptr && PyErr_Occurred() != nullptr)
                {
                    throw py::error_already_set();
                }
                return member != nullptr ? py::reinterpret_borrow<py::object>(member) : py::none();
            },
            py::arg("name"))
        .def(
            "_has_changed",
            [](py::handle self, long long counter)
            {
                const bool changed = OpenGroup(self).node->HasChanged(counter);
                return std::pair(changed, counter);
            },
            py::arg("counter"))
        .def("_couplings", &Couplings)
        .def(
            "__eq__",
            [](py::handle self, py::handle other)
            {
                return PyObject_IsInstance(other.ptr(), Registered().group) == 1 &&
                       Of<CGroup>(self.ptr()).node == Of<CGroup>(other.ptr()).node;
            },
            py::arg("other"))
        .def("__hash__",
             [](py::handle self) { return std::hash<void*>()(Of<CGroup>(self.ptr()).node.get()); });
    AddNode(type);
    AddContainer(type);
    AddRoot(module, type);
}
