// SPDX-License-Identifier: MIT
#include "Rules/FunctionMemory.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Files/DbSettings.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "CommonDatabase/Properties/DbPropText.h"
#include "CommonDatabase/Values/NumberText.h"

#include <QStringList>

#include <algorithm>
#include <map>
#include <optional>

namespace NRules
{
namespace
{
using t_Function = std::initializer_list<t_FunctionPart>;
using t_Settings = std::initializer_list<CDbPropBase*>;
/** Texts of values by the names of their settings. */
using t_Values = std::map<QString, QString>;

const QString kBetweenFunctions = QStringLiteral("; ");

/** A memory, read. */
struct t_Memory
{
    QString present; ///< whose settings stand now; empty where nothing was ever set
    std::map<QString, t_Values> valuesOf;
};

QString NameOf(t_Function function)
{
    QStringList names;
    for (const t_FunctionPart& part : function)
    {
        names.append(part.names.GetSerialName(part.value));
    }
    return names.join(u'/');
}

/** Whether this is the name of a function that is told by the same things as `like`. */
bool IsFunction(const QString& name, t_Function like)
{
    const QStringList names = name.split(u'/');
    return std::equal(like.begin(), like.end(), names.begin(), names.end(),
                      [](const t_FunctionPart& part, const QString& text)
                      {
                          return !text.isEmpty() && part.names.GetSerialName(
                                                        part.names.ConvertName(text).value) == text;
                      });
}

bool IsLegal(const CDbPropBase& setting, const QString& text)
{
    CDbValue value;
    const bool isRead = KW_IsAccepted(setting.ParseText(text, value));
    const auto* const number = dynamic_cast<const CDbPropNumDouble*>(&setting);
    const double* const real = std::get_if<double>(&value);
    const bool isWithin =
        number == nullptr ||
        (real != nullptr && *real >= number->GetDeclaredMin() && *real <= number->GetDeclaredMax());
    return isRead && isWithin;
}

/** Reads "AutoRange=OFF Range=100", whole or not at all. */
bool ReadValues(const QString& text, t_Settings settings, t_Values& values)
{
    for (const QString& assignment : text.split(u' '))
    {
        const QString name = assignment.section(u'=', 0, 0);
        const QString value = assignment.section(u'=', 1);
        const auto* const setting = std::find_if(settings.begin(), settings.end(),
                                                 [&name](const CDbPropBase* candidate)
                                                 { return candidate->NodeName() == name; });
        if (setting == settings.end() || !IsLegal(**setting, value) ||
            !values.emplace(name, value).second)
        {
            return false;
        }
    }
    return true;
}

/** One entry; the first one may be a function alone. */
bool ReadEntry(const QString& entry, bool isFirst, t_Function like, t_Settings settings,
               t_Memory& memory)
{
    const QString name = entry.section(u' ', 0, 0);
    t_Values values;
    if (!IsFunction(name, like) || name == memory.present || memory.valuesOf.count(name) > 0 ||
        !((isFirst && entry == name) || ReadValues(entry.section(u' ', 1), settings, values)))
    {
        return false;
    }
    memory.present = isFirst ? name : memory.present;
    if (!values.empty())
    {
        memory.valuesOf.emplace(name, std::move(values));
    }
    return true;
}

t_Memory ReadMemory(const CDbPropString& text, t_Function like, t_Settings settings)
{
    t_Memory memory;
    bool isFirst = true;
    for (const QString& entry : text.Get().split(kBetweenFunctions))
    {
        if (!text.Get().isEmpty() && !ReadEntry(entry, isFirst, like, settings, memory))
        {
            CDbPresentRecall::Skip(text, QStringLiteral("Remembered settings \"%1\" skipped")
                                             .arg(CDbRecall::Shortened(entry)));
        }
        isFirst = false;
    }
    return memory;
}

QString TextOf(const QString& function, const t_Values& values)
{
    QStringList words{function};
    for (const auto& [name, value] : values)
    {
        words.append(name + u'=' + value);
    }
    return words.join(u' ');
}

/** Empty where no function has anything else than defaults. */
QString TextOf(const t_Memory& memory)
{
    QStringList entries{TextOf(memory.present, memory.valuesOf.at(memory.present))};
    for (const auto& [function, values] : memory.valuesOf)
    {
        if (function != memory.present && !values.empty())
        {
            entries.append(TextOf(function, values));
        }
    }
    const bool isEmpty = entries.size() == 1 && entries.first() == memory.present;
    return isEmpty ? QStringLiteral("") : entries.join(kBetweenFunctions);
}

/** A file that was written by hand may name more functions than there is room for: then those that
    are not present are forgotten, as a memory that can take nothing would hold the settings. */
QString FittingText(t_Memory& memory, const CDbPropString& property)
{
    QString text = TextOf(memory);
    if (text.size() > property.GetMaxLength())
    {
        CDbPresentRecall::Skip(property, QStringLiteral("No room for remembered settings of other "
                                                        "functions"));
        std::erase_if(memory.valuesOf,
                      [&memory](const auto& entry) { return entry.first != memory.present; });
        text = TextOf(memory);
    }
    return text;
}

/** What the user set, whatever holds it back now; nothing where that is the default. */
std::optional<QString> WishOf(const CDbPropBase& setting)
{
    if (const auto* const choice = dynamic_cast<const CDbPropEnumIntAccess*>(&setting))
    {
        const INT32 wish = choice->GetUserValueAsInt();
        return wish != choice->GetDefaultAsInt() ? std::optional(choice->GetSerialName(wish))
                                                 : std::nullopt;
    }
    if (const auto* const number = dynamic_cast<const CDbPropNumDouble*>(&setting))
    {
        const double wish = number->GetUserValue();
        return wish != number->GetDefault() ? std::optional(KW_NumberToText(wish)) : std::nullopt;
    }
    return setting.GetValue() != setting.GetDefaultValue() ? std::optional(setting.GetText())
                                                           : std::nullopt;
}

t_Values ValuesOf(t_Settings settings)
{
    t_Values values;
    for (const CDbPropBase* const setting : settings)
    {
        if (auto wish = WishOf(*setting))
        {
            values.emplace(setting->NodeName(), std::move(*wish));
        }
    }
    return values;
}

/** Limits follow, as in a recall. */
void Restore(const t_Values& values, t_Settings settings)
{
    for (CDbPropBase* const setting : settings)
    {
        const auto kept = values.find(setting->NodeName());
        if (CDbPresentRecall::Names(*setting))
        {
            continue;
        }
        CDbValue value = setting->GetDefaultValue();
        if (kept != values.end())
        {
            KW_CHECKED(setting->ParseText(kept->second, value));
        }
        KW_CHECKED(setting->WriteValue(std::move(value), eWRITEKIND::Recall));
    }
}
} // namespace

void FollowFunction(CDbPropString& memory, std::initializer_list<t_FunctionPart> function,
                    std::initializer_list<CDbPropBase*> settings)
{
    memory.SetAvailability(eAVAILABILITY_READ_ONLY);
    t_Values values = ValuesOf(settings);
    if (memory.Get().isEmpty() && values.empty())
    {
        return; // as mostly: nothing was ever set by hand
    }
    t_Memory kept = ReadMemory(memory, function, settings);
    const QString name = NameOf(function);
    if (!kept.present.isEmpty() && kept.present != name)
    {
        Restore(kept.valuesOf[name], settings);
        values = ValuesOf(settings);
    }
    kept.present = name;
    kept.valuesOf[name] = std::move(values);
    KW_CHECKED(memory.DbSet(FittingText(kept, memory)));
}
} // namespace NRules
