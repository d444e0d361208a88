// SPDX-License-Identifier: MIT
#pragma once

#include "EnumNameInfo.h"
#include "IKWFunctionBase.h"
#include "IKWFunctionRootBase.h"
#include "IKWProperties.h"

#include <QString>
#include <cstdio>
#include <set>
#include <string>
#include <vector>

/** How many values of a type the release knows. */
template <typename T>
inline constexpr INT32 KNOWN_VALUES = 0;

/** Visits the members of groups, each through the accessor that was declared for it. */
class CWalk
{
public:
    enum class ePASS
    {
        Fill,
        Read,
        Write
    };

    CWalk(const IKWFunctionBase& root, ePASS pass) : m_root(root), m_pass(pass) {}

    void Reach(const char* group) { s_reached.insert(group); }
    /** Whether any walk has met a group of the class. */
    static bool IsReached(const char* group) { return s_reached.count(group) > 0; }

    /** A value is called by the number that the release gave it. */
    template <typename T>
    void Value(const char* enumerator, T value)
    {
        Tell(QLatin1String(enumerator), GetStaticEnumNameInfo<T>().GetSerialName(value));
    }

    template <typename H>
    void Member(const char* group, const std::shared_ptr<H>& handle, const char* name)
    {
        const QString path = m_path.isEmpty() ? name : m_path + QLatin1Char('/') + name;
        const auto node = handle->GetDbObject();
        if (node->GetNodeName() != QLatin1String(name))
        {
            std::printf("%s: answers as %s\n", qPrintable(path), qPrintable(node->GetNodeName()));
        }
        else if (!m_isRemoved && m_root.GetDbObject()->Find(path) == nullptr)
        {
            std::printf("removed %s/%s %s\n", group, name, qPrintable(path));
            m_isRemoved = true;
            Visit(*handle, QLatin1String(name));
            m_isRemoved = false;
        }
        else
        {
            Visit(*handle, path);
        }
    }

private:
    static QString Text(double number) { return QString::number(number, 'g', 17); }

    void Tell(const QString& path, const QString& answer) const
    {
        if (!m_isRemoved)
        {
            std::printf("%s: %s\n", qPrintable(path), qPrintable(answer));
        }
    }

    void TellWrite(const QString& path, KW_ACCEPTANCE code) const
    {
        Tell(path, QString::number(code));
    }

    /** What was removed takes nothing, and answers nothing but its default. */
    static void CheckRemoved(const QString& path, bool isDefault, KW_ACCEPTANCE code)
    {
        if (!isDefault || code != eKW_ACC_DETACHED)
        {
            std::printf("%s: removed, but answers code %u\n", qPrintable(path), code);
        }
    }

    template <typename H>
    void Tell(const QString& path, const H& handle, const QString& answer) const
    {
        const auto node = handle.GetDbObject();
        Tell(path, QStringLiteral("%1 %2 %3 %4")
                       .arg(node->GetTypeName(), node->GetText(), answer)
                       .arg(node->GetAvailability()));
        if (m_isRemoved)
        {
            CheckRemoved(path, node->GetText() == node->GetDefaultText(), node->SetToDefault());
        }
    }

    template <typename T>
    void Visit(IKWEnumProperty<T>& handle, const QString& path)
    {
        if (m_pass == ePASS::Write)
        {
            TellWrite(path, handle.Set(static_cast<T>((handle.Get() + 1) % KNOWN_VALUES<T>)));
        }
        QString states;
        for (INT32 value = 0; value < KNOWN_VALUES<T>; ++value)
        {
            states += QString::number(static_cast<int>(handle.GetValueState(value)));
        }
        Tell(path, handle, QString::number(handle.GetDefault()) + QLatin1Char(' ') + states);
    }

    template <typename T>
    void Visit(IKWNumericProperty<T>& handle, const QString& path)
    {
        if (m_pass == ePASS::Write)
        {
            TellWrite(path, handle.Inc());
        }
        Tell(path, handle,
             QStringLiteral("%1 … %2, %3, %4, %5, %6")
                 .arg(Text(handle.GetMin()), Text(handle.GetMax()), Text(handle.GetDefault()),
                      Text(handle.GetStep()), Text(handle.GetUserValue()))
                 .arg(handle.GetUnit()));
    }

    template <typename H>
    void VisitText(H& handle, const QString& path, const decltype(handle.Get())& next)
    {
        if (m_pass == ePASS::Write)
        {
            TellWrite(path, handle.Set(next));
        }
        Tell(path, handle, QStringLiteral(""));
    }

    void Visit(IKWStringProperty& handle, const QString& path)
    {
        VisitText(handle, path, handle.Get() + QLatin1Char('1'));
    }
    void Visit(IKWBitPatternProperty& handle, const QString& path)
    {
        VisitText(handle, path, QStringLiteral("01X1"));
    }
    void Visit(IKWBlobProperty& handle, const QString& path)
    {
        VisitText(handle, path, QByteArray("kept"));
    }
    void Visit(IKWFilePathProperty& handle, const QString& path)
    {
        VisitText(handle, path, handle.CreateNewFileName());
    }
    void Visit(IKWReferenceProperty& handle, const QString& path)
    {
        VisitText(handle, path, QString());
    }

    template <typename H>
    void VisitAction(H& handle, const QString& path)
    {
        if (m_isRemoved)
        {
            CheckRemoved(path, true, handle.Set());
        }
        Tell(path, QString::number(handle.GetDbObject()->GetAvailability()));
    }
    void Visit(IKWAction& handle, const QString& path) { VisitAction(handle, path); }
    void Visit(IKWOperation& handle, const QString& path) { VisitAction(handle, path); }

    template <typename I>
    void Visit(IKWArray<I>& array, const QString& path)
    {
        if (m_pass == ePASS::Fill && array.GetCount() == 0)
        {
            const KW_ACCEPTANCE code = array.Insert(0);
            TellWrite(path, code > eKW_ACC_WARNING ? array.Grow(1) : code);
        }
        Tell(path, QString::number(array.GetCount()));
        for (INT32 i = 0; i < array.GetCount(); ++i)
        {
            Visit(*array.GetItem(i), path + QStringLiteral("[%1]").arg(i));
        }
    }

    template <typename I>
    void Visit(IKWMap<I>& map, const QString& path)
    {
        if (m_pass == ePASS::Fill && map.GetCount() == 0)
        {
            TellWrite(path, map.Insert(QStringLiteral("Kept")));
        }
        for (const QString& name : map.GetNames())
        {
            Visit(*map.GetItem(name), path + QStringLiteral("[%1]").arg(name));
        }
    }

    /** A group; what is not one has a form of its own above. */
    template <typename I>
    void Visit(I& group, const QString& path)
    {
        const QString above = std::exchange(m_path, path);
        Walk(*this, group);
        m_path = above;
    }

    const IKWFunctionBase& m_root;
    ePASS m_pass;
    QString m_path;
    /** Below a member that the tree has no more. */
    bool m_isRemoved = false;
    inline static std::set<std::string> s_reached;
};

/** Made from the headers of the release (scripts/growth.py): calls every accessor of a group, or
    asks for every value; names all groups. */
///@{
class IKWFunctionZEL;
void Walk(CWalk& walk, const IKWFunctionZEL& root);
void WalkValues(CWalk& walk);
const std::vector<const char*>& KeptGroups();
///@}
