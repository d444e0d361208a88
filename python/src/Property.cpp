// SPDX-License-Identifier: MIT
#include "Nodes.h"

#include "KWRemoteNames.h"

namespace
{
template <typename T>
void* Cast(const std::shared_ptr<IKWPropertyBase>& handle)
{
    return dynamic_cast<T*>(handle.get());
}

struct t_KindName
{
    const char* name;
    e_Kind kind;
    void* (*cast)(const std::shared_ptr<IKWPropertyBase>&);
};
constexpr t_KindName kKinds[] = {
    {"double", e_Kind::Double, Cast<IKWNumericProperty<double>>},
    {"uint32", e_Kind::UInt32, Cast<IKWNumericProperty<UINT32>>},
    {"uint16", e_Kind::UInt16, Cast<IKWNumericProperty<UINT16>>},
    {"uint64", e_Kind::UInt64, Cast<IKWNumericProperty<UINT64>>},
    {"int16", e_Kind::Int16, Cast<IKWNumericProperty<INT16>>},
    {"int32", e_Kind::Int32, Cast<IKWNumericProperty<INT32>>},
    {"int64", e_Kind::Int64, Cast<IKWNumericProperty<INT64>>},
    {"string", e_Kind::String, Cast<IKWStringProperty>},
    {"bitpattern", e_Kind::Pattern, Cast<IKWBitPatternProperty>},
    {"blob", e_Kind::Blob, Cast<IKWBlobProperty>},
    {"filepath", e_Kind::FilePath, Cast<IKWFilePathProperty>},
    {"reference", e_Kind::Reference, Cast<IKWReferenceProperty>},
};

/** One of a number's attributes; None for other kinds. */
template <typename Get>
py::object OfNumber(const CProperty& property, Get&& get)
{
    PyObject* number = nullptr;
    property.WithNumber([&](auto& handle) { number = NewNumber(get(handle)); });
    return number != nullptr ? py::reinterpret_steal<py::object>(number) : py::none();
}

CProperty& Self(py::handle self)
{
    return Of<CProperty>(self.ptr());
}

/** A call of the property's node that takes the tree's lock. */
template <typename Work>
auto Locked(py::handle self, Work&& work)
{
    const CProperty& property = Self(self);
    return Released([&] { return work(*property.node); });
}

py::object GetLimit(py::handle self, bool isMaximum)
{
    const CProperty& property = Self(self);
    switch (property.kind)
    {
    case e_Kind::String: // the longest text
        return isMaximum ? py::cast(Released(
                               [&] { return property.As<IKWStringProperty>().GetMaxLength(); }))
                         : py::none();
    case e_Kind::Pattern:
        return isMaximum ? py::cast(Released(
                               [&] { return property.As<IKWBitPatternProperty>().GetMaxLength(); }))
                         : py::none();
    case e_Kind::Blob:
        return isMaximum
                   ? py::cast(Released([&] { return property.As<IKWBlobProperty>().GetMaxSize(); }))
                   : py::none();
    default:
        return OfNumber(property, [isMaximum](auto& handle)
                        { return isMaximum ? handle.GetMax() : handle.GetMin(); });
    }
}

py::object GetDefault(py::handle self)
{
    const CProperty& property = Self(self);
    if (property.kind == e_Kind::Enum)
    {
        const QString text = Locked(self, [](auto& node) { return node.GetDefaultText(); });
        INT32 value = 0;
        KW_ParseEnum(*property.node->GetEnumNameInfo(), text, value);
        return py::reinterpret_steal<py::object>(NewMember(property.Enumeration(), value));
    }
    if (property.kind == e_Kind::Blob)
    {
        const QString text = Locked(self, [](auto& node) { return node.GetDefaultText(); });
        const QByteArray bytes = QByteArray::fromBase64(text.toLatin1());
        return py::bytes(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    }
    const py::object number = OfNumber(property, [](auto& handle) { return handle.GetDefault(); });
    return number.is_none()
               ? py::cast(Locked(self, [](auto& node) { return node.GetDefaultText(); }))
               : number;
}

/** What can be selected now: members of an enumeration, entries of a value list. */
py::object GetValues(py::handle self)
{
    const CProperty& property = Self(self);
    py::list values;
    if (property.kind == e_Kind::Enum)
    {
        const t_Enumeration& enumeration = property.Enumeration();
        auto& handle = property.As<IKWEnumPropertyBase>();
        const auto count = static_cast<INT32>(PyTuple_GET_SIZE(enumeration.members));
        std::vector<INT32> selectable;
        Released(
            [&]
            {
                for (INT32 value = 0; value < count; ++value)
                {
                    if (handle.GetValueState(value) != eVALUESTATE_NOT_SELECTABLE)
                    {
                        selectable.push_back(value);
                    }
                }
            });
        for (const INT32 value : selectable)
        {
            values.append(py::reinterpret_steal<py::object>(NewMember(enumeration, value)));
        }
        return values;
    }
    const QStringList texts = Locked(self, [](auto& node) { return node.GetValueTexts(); });
    for (const QString& text : texts)
    {
        if (property.kind == e_Kind::Double)
        {
            values.append(text.toDouble());
        }
        else if (property.kind < e_Kind::Double)
        {
            values.append(py::reinterpret_steal<py::object>(
                PyLong_FromString(text.toUtf8().constData(), nullptr, 10)));
        }
        else
        {
            values.append(text);
        }
    }
    return values;
}

template <e_Write How>
void Write(py::handle self, py::handle value)
{
    const CProperty& property = Self(self);
    const bool isNumber = property.kind <= e_Kind::Double;
    if ((How == e_Write::Limited || How == e_Write::UserValue) && !isNumber)
    {
        ThrowRefusal(eKW_ACC_WRONG_KIND, self.ptr(), value.ptr());
    }
    if (How == e_Write::Deliver &&
        (property.kind == e_Kind::FilePath || property.kind == e_Kind::Reference))
    {
        ThrowRefusal(eKW_ACC_WRONG_KIND, self.ptr(), value.ptr());
    }
    WriteValue(property, self.ptr(), value.ptr(), How);
}

IKWFilePathProperty& FilePath(py::handle self)
{
    const CProperty& property = Self(self);
    if (property.kind != e_Kind::FilePath)
    {
        throw py::type_error("only paths of files have this");
    }
    return property.As<IKWFilePathProperty>();
}

py::bytes LoadFile(py::handle self)
{
    const auto& path = FilePath(self);
    QByteArray contents;
    Ask(self, py::none(), [&] { return path.Load(contents); });
    return {contents.constData(), static_cast<std::size_t>(contents.size())};
}

void WriteFile(py::handle self, const py::bytes& bytes)
{
    auto& path = FilePath(self);
    const std::string_view view = bytes;
    const QByteArray contents(view.data(), static_cast<int>(view.size()));
    Ask(self, bytes, [&] { return path.Write(contents); });
}
} // namespace

t_PropertySeed::t_PropertySeed(const std::shared_ptr<t_Tree>& ownTree,
                               std::shared_ptr<IDbProperty> property)
    : t_Node(ownTree, std::move(property)), handle(node->GetHandle()), kind(e_Kind::Enum),
      typed(dynamic_cast<IKWEnumPropertyBase*>(handle.get()))
{
    if (typed != nullptr)
    {
        return;
    }
    const QString name = node->GetTypeName();
    for (const t_KindName& known : kKinds)
    {
        if (name == QLatin1String(known.name))
        {
            kind = known.kind;
            typed = known.cast(handle);
        }
    }
}

const t_Enumeration& CProperty::Enumeration() const
{
    if (m_enumeration == nullptr)
    {
        m_enumeration = &EnumerationOf(
            *Released([this] { return &As<IKWEnumPropertyBase>().GetEnumNameInfo(); }));
    }
    return *m_enumeration;
}

void AddProperty(py::module_& module)
{
    py::class_<t_PropertySeed>(module, "PropertySeed", "Makes a property.");
    py::class_<CProperty>(module, "Property", "A property of the tree in this process.")
        .def(py::init<const t_PropertySeed&>(), py::arg("seed"))
        .def_property(
            "value",
            [](py::handle self)
            {
                PyObject* const value = ReadValue(Self(self));
                if (value == nullptr)
                {
                    throw py::error_already_set();
                }
                return py::reinterpret_steal<py::object>(value);
            },
            Write<e_Write::Set>)
        .def("set", Write<e_Write::Set>, py::arg("value"))
        .def("set_limited", Write<e_Write::Limited>, py::arg("value"))
        .def("set_user_value", Write<e_Write::UserValue>, py::arg("value"))
        .def("deliver", Write<e_Write::Deliver>, py::arg("value"))
        .def("reset", [](py::handle self)
             { Ask(self, py::none(), [&] { return Self(self).node->SetToDefault(); }); })
        .def(
            "step",
            [](py::handle self, INT32 steps)
            { Ask(self, py::int_(steps), [&] { return Self(self).node->IncDec(steps); }); },
            py::arg("steps") = 1)
        .def_property_readonly("min", [](py::handle self) { return GetLimit(self, false); })
        .def_property_readonly("max", [](py::handle self) { return GetLimit(self, true); })
        .def_property_readonly(
            "step_size", [](py::handle self)
            { return OfNumber(Self(self), [](auto& handle) { return handle.GetStep(); }); })
        .def_property_readonly(
            "user_value", [](py::handle self)
            { return OfNumber(Self(self), [](auto& handle) { return handle.GetUserValue(); }); })
        .def_property_readonly("default", &GetDefault)
        .def_property_readonly("values", &GetValues)
        .def_property_readonly("unit", [](py::handle self)
                               { return Locked(self, [](auto& n) { return n.GetUnitCode(); }); })
        .def_property_readonly(
            "unit_text", [](py::handle self)
            { return Locked(self, [](auto& n) { return KW_GetUnitText(n.GetUnitCode()); }); })
        .def_property_readonly("type_name", [](py::handle self)
                               { return Locked(self, [](auto& n) { return n.GetTypeName(); }); })
        .def_property_readonly("text", [](py::handle self)
                               { return Locked(self, [](auto& n) { return n.GetText(); }); })
        .def_property_readonly(
            "shown", [](py::handle self)
            { return Locked(self, [](auto& n) { return KW_FormatValue(KW_GetValueText(n)); }); })
        .def_property_readonly("form", [](py::handle self)
                               { return Locked(self, [](auto& n) { return KW_GetFormText(n); }); })
        .def_property_readonly("is_valid", [](py::handle self)
                               { return Self(self).node->GetValidity() == eKW_VALIDITY_VALID; })
        .def_property_readonly("is_secret", [](py::handle self)
                               { return Locked(self, [](auto& n) { return KW_IsSecret(n); }); })
        .def_property_readonly(
            "is_result",
            [](py::handle self) {
                return Locked(self,
                              [](auto& n) { return n.GetObjectType() == eOBJECTTYPE_RESULT; });
            })
        .def_property_readonly("full_path",
                               [](py::handle self)
                               {
                                   const auto& path = FilePath(self);
                                   return Released([&] { return path.GetFullPath(); });
                               })
        .def("new_file_name",
             [](py::handle self)
             {
                 const auto& path = FilePath(self);
                 return Released([&] { return path.CreateNewFileName(); });
             })
        .def("load", &LoadFile)
        .def("write", &WriteFile, py::arg("contents"))
        .def_property_readonly("name", [](py::handle self)
                               { return Locked(self, [](auto& n) { return n.GetNodeName(); }); })
        .def_property_readonly("path", [](py::handle self)
                               { return Locked(self, [](auto& n) { return n.GetPath(); }); })
        .def_property_readonly("meaning", [](py::handle self)
                               { return Locked(self, [](auto& n) { return KW_GetMeaning(n); }); })
        .def_property_readonly(
            "remote_name", [](py::handle self)
            { return Locked(self, [](auto& n) { return KW_GetRemoteNames(n).mnemonic; }); })
        .def_property_readonly(
            "_saved_with", [](py::handle self)
            { return Locked(self, [](auto& n) { return n.GetSaveRecallType(); }); })
        .def_property_readonly("_availability",
                               [](py::handle self) {
                                   return static_cast<int>(
                                       Locked(self, [](auto& n) { return n.GetAvailability(); }));
                               });
}
