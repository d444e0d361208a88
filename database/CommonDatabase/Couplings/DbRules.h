// SPDX-License-Identifier: MIT
#pragma once

#include "DbCouplings.h"

#include <string_view>
#include <type_traits>

/**
 * The rules of a group's class as one table that reads like its description:
 *
 *     t_Couplings CPgTrigger::Rules() const
 *     {
 *         static constexpr auto rows = Table<Trigger>(
 *             On(Trigger::ResetSettings) >> Do<&CPgTrigger::ResetSettings>,
 *             Changed(ZEL::FFT / FFT::State) >> Derive<&CPgTrigger::OfferSources>);
 *         return rows;
 *     }
 *
 * Left of ">>" stands when: settings and actions of the group itself (Trigger::…), below it, or
 * anywhere by their way from the root (ZEL::…). Right of it what: a reaction (Do), or a derivation,
 * which also runs whenever everything is computed: with its group (Derive), or when all groups have
 * been, for what rests on the settled numbers of others (Settle, after Changed). Rows run in their
 * order, the steps of a row in theirs; the rows of a written setting's own group before the rows of
 * others.
 *
 * A step is a member function that may take the written property (const CDbPropBase*, null where
 * none was) and may answer a code. The greatest code is the answer to a client: of a write at most
 * 1, since the value stands; an action ends with the first refusal.
 */
namespace NNames
{
// When ------------------------------------------------------------------------------------------

template <typename... TFrom>
struct t_When
{
    eCAUSE cause;
    std::array<t_Path, sizeof...(TFrom)> sources;
};

// What a way may lead to, so that a source that a word can not follow does not compile.
template <typename TNode>
constexpr bool kIsAction =
    std::is_same_v<TNode, CDbFunction> || std::is_same_v<TNode, CDbOperation>;
template <typename TNode>
constexpr bool kIsContainer = false;
template <typename TGroup>
constexpr bool kIsContainer<t_Items<TGroup>> = true;
template <typename TNode>
concept CGroupName = requires
{
    typename TNode::t_Class;
};
template <typename TNode>
concept CSettingName = !kIsAction<TNode> && !kIsContainer<TNode> && !CGroupName<TNode>;

/** A client wrote one of these settings, or ran one of these actions. */
template <typename... TFrom, typename... TNode>
requires((CSettingName<TNode> ||
          kIsAction<TNode>)&&...) constexpr t_When<TFrom...> On(const t_Way<TFrom, TNode>&... ways)
{
    return {eCAUSE::On, {ways.path...}};
}

/** A client wrote any setting of the group itself. */
constexpr t_When<> OnAny()
{
    return {eCAUSE::OnAny, {}};
}

/** The acquisition or a rule wrote one of these. */
template <typename... TFrom, typename... TNode>
requires(CSettingName<TNode>&&...) constexpr t_When<TFrom...> Delivered(
    const t_Way<TFrom, TNode>&... ways)
{
    return {eCAUSE::Delivered, {ways.path...}};
}

/** Whoever wrote one of these: once, when all that the write moved at once has settled. */
template <typename... TFrom, typename... TNode>
requires(CSettingName<TNode>&&...) constexpr t_When<TFrom...> Changed(
    const t_Way<TFrom, TNode>&... ways)
{
    return {eCAUSE::Changed, {ways.path...}};
}

/** Several lists of sources as one. */
template <typename... TFrom, typename... TFurther>
constexpr t_When<TFrom..., TFurther...> operator|(const t_When<TFrom...>& one,
                                                  const t_When<TFurther...>& other)
{
    t_When<TFrom..., TFurther...> all{one.cause, {}};
    std::size_t count = 0;
    for (const t_Path& path : one.sources)
    {
        all.sources[count++] = path;
    }
    for (const t_Path& path : other.sources)
    {
        all.sources[count++] = path;
    }
    return all;
}

/** Items of one of these containers of the group itself came, went or were renamed. */
template <typename... TFrom, typename... TGroup>
constexpr t_When<TFrom...> Items(const t_Way<TFrom, t_Items<TGroup>>&... containers)
{
    return {eCAUSE::Items, {containers.path...}};
}

// What ------------------------------------------------------------------------------------------

/** The class of a member function. */
template <typename T>
struct t_Member;
template <typename TGroup, typename TResult, typename... TArgs>
struct t_Member<TResult (TGroup::*)(TArgs...)>
{
    using Group = TGroup;
};
template <typename TGroup, typename TResult, typename... TArgs>
struct t_Member<TResult (TGroup::*)(TArgs...) const>
{
    using Group = TGroup;
};

/** A step as a plain function, whatever it takes and answers. Only tables of the group's own class
   have it (Table), so the cast is right. */
template <auto step>
KW_ACCEPTANCE RunStep(CDbPropertyGroup& group, [[maybe_unused]] const CDbPropBase* written)
{
    using Group = typename t_Member<decltype(step)>::Group;
    auto& self = static_cast<Group&>(group);
    const auto run = [&]() -> decltype(auto)
    {
        if constexpr (std::is_invocable_v<decltype(step), Group&, const CDbPropBase*>)
        {
            return (self.*step)(written);
        }
        else
        {
            return (self.*step)();
        }
    };
    if constexpr (std::is_void_v<decltype(run())>)
    {
        run();
        return eKW_ACC_OK;
    }
    else
    {
        return run();
    }
}

/** The name of a step without its class, out of what the compiler calls it. */
template <auto step>
constexpr std::string_view NameOf()
{
    std::string_view text = __PRETTY_FUNCTION__;
    text.remove_prefix(text.find("step = "));
    text = text.substr(0, text.find_first_of(";]"));
    text.remove_prefix(text.rfind("::") + 2);
    return text.substr(0, text.find_first_not_of("abcdefghijklmnopqrstuvwxyz"
                                                 "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_"));
}

/** The name with its own storage: the compiler's text is the function's. */
template <auto step>
struct t_StepName
{
    static constexpr auto text = []
    {
        constexpr std::string_view name = NameOf<step>();
        std::array<char, name.size() + 1> copy{};
        for (std::size_t i = 0; i < name.size(); ++i)
        {
            copy[i] = name[i];
        }
        return copy;
    }();
};

/** Steps in their order, and when they run without a cause. */
template <eAGAIN again, auto... step>
struct t_What
{
    static_assert(sizeof...(step) > 0);
    static constexpr t_Step steps[] = {{&RunStep<step>, t_StepName<step>::text.data()}...};
};

/** A reaction: nothing but its cause runs it. */
template <auto... step>
inline constexpr t_What<eAGAIN::Never, step...> Do;
/** A derivation: a second run changes nothing, so it may run whenever everything is computed. */
template <auto... step>
inline constexpr t_What<eAGAIN::WithGroup, step...> Derive;
/** A derivation from settled numbers of other groups: computed when all groups have been. */
template <auto... step>
inline constexpr t_What<eAGAIN::AtEnd, step...> Settle;

// Tables ----------------------------------------------------------------------------------------

/** Rows on their way into a table; TFrom are the groups that the sources are named from. */
template <std::size_t rowCount, typename... TFrom>
struct t_Rows
{
    std::array<t_Row, rowCount> rows;
    std::array<t_Path, sizeof...(TFrom)> sources;
};

/** When >> what: one row. */
template <typename... TFrom, eAGAIN again, auto... step>
constexpr t_Rows<1, TFrom...> operator>>(const t_When<TFrom...>& when,
                                         const t_What<again, step...>& /*what*/)
{
    return {{{{t_What<again, step...>::steps, 0, static_cast<UINT8>(sizeof...(TFrom)),
               static_cast<UINT8>(sizeof...(step)), when.cause, again}}},
            when.sources};
}

/** Runs once, when the group has become part of a whole tree. */
template <auto... step>
inline constexpr t_Rows<1> Fresh = t_When<>{eCAUSE::Fresh, {}} >> Do<step...>;

/** Two settings that say the same in two ways, both of the group itself, or both named from the
    root: where a file names one of them, that counts as written when everything else of the file is
    there, and derives the other. */
template <typename TFrom, typename TOne, typename TOther>
constexpr t_Rows<1, TFrom, TFrom> Twins(const t_Way<TFrom, TOne>& one,
                                        const t_Way<TFrom, TOther>& other)
{
    return {{{{nullptr, 0, 2, 0, eCAUSE::Twins, eAGAIN::Never}}}, {one.path, other.path}};
}

/** A derivation that nothing but computing everything starts. */
template <auto... step>
constexpr t_Rows<1> AsRows(const t_What<eAGAIN::WithGroup, step...>& what)
{
    return t_When<>{eCAUSE::None, {}} >> what;
}
template <std::size_t rowCount, typename... TFrom>
constexpr t_Rows<rowCount, TFrom...> AsRows(const t_Rows<rowCount, TFrom...>& rows)
{
    return rows;
}

/** Rows one behind the other; a row finds its sources by their place in the joined list. */
template <std::size_t rowCount, typename... TFrom, std::size_t moreCount, typename... TMore>
constexpr t_Rows<rowCount + moreCount, TFrom..., TMore...>
operator+(const t_Rows<rowCount, TFrom...>& rows, const t_Rows<moreCount, TMore...>& more)
{
    t_Rows<rowCount + moreCount, TFrom..., TMore...> all{};
    for (std::size_t i = 0; i < rowCount + moreCount; ++i)
    {
        all.rows[i] = i < rowCount ? rows.rows[i] : more.rows[i - rowCount];
        all.rows[i].firstSource =
            static_cast<UINT16>(all.rows[i].firstSource + (i < rowCount ? 0 : sizeof...(TFrom)));
    }
    for (std::size_t i = 0; i < all.sources.size(); ++i)
    {
        all.sources[i] =
            i < sizeof...(TFrom) ? rows.sources[i] : more.sources[i - sizeof...(TFrom)];
    }
    return all;
}

/** Rows that several classes share: a table takes them like one row. */
template <typename... TRows>
constexpr auto Rows(const TRows&... rows)
{
    return (AsRows(rows) + ...);
}

/** A table as constant data; what Rules() answers points into it, so it is static. */
template <std::size_t rowCount, std::size_t sourceCount>
struct t_Table
{
    std::array<t_Row, rowCount> rows;
    std::array<t_Path, sourceCount> sources;

    operator t_Couplings() const
    {
        return {rows.data(), sources.data(), static_cast<UINT16>(rowCount)};
    }
};

template <typename TGroup>
concept CRootName = requires
{
    TGroup::isRoot;
};

/** Refuses sources that are named from a group other than the table's own or the root: nobody would
    know where that group stands. */
template <typename TGroup, std::size_t rowCount, typename... TFrom>
constexpr t_Table<rowCount, sizeof...(TFrom)> MakeTable(t_Rows<rowCount, TFrom...> all)
{
    static_assert(((std::is_same_v<TGroup, TFrom> || CRootName<TFrom>)&&...),
                  "a source is named from the table's group or from the root");
    std::size_t i = 0;
    ((all.sources[i++].isFromRoot = !std::is_same_v<TGroup, TFrom>), ...);
    return {all.rows, all.sources};
}

/** The rules of a group's class, in their order. */
template <typename TGroup, typename... TRows>
constexpr auto Table(const TRows&... rows)
{
    return MakeTable<TGroup>(Rows(rows...));
}
} // namespace NNames
