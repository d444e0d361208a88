// SPDX-License-Identifier: MIT
// What grows with the tree, with a container, with the history, and what must not? The argument is
// the size; a figure that should not grow is the same in each row.

#include "CommonDatabase/Couplings/DbRules.h"
#include "CommonDatabase/Handles/DbHandles.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <vector>

// Not unnamed: a step is an argument of a template that a header defines.
namespace NScaling
{
/** A group of numbers. */
template <INT32 count>
class CPgNumbers : public CZELPropertyGroup
{
public:
    using Interface = IKWFunctionBase;

    CPgNumbers()
    {
        for (INT32 i = 0; i < count; ++i)
        {
            auto* const number = new CDbPropNumDouble;
            number->DeclareMinAndMax(-1e6, 1e6);
            AddPropertyToList(number, QStringLiteral("Number%1").arg(i));
            m_numbers.push_back(number);
        }
    }

    std::vector<CDbPropNumDouble*> m_numbers;

protected:
    std::unique_ptr<IKWFunctionBase> CreateFIM() override
    {
        return std::make_unique<CDbGroupHandle<IKWFunctionBase, CDbPropertyGroup>>(*this);
    }
};

using CPgTen = CPgNumbers<10>;
using CPgItem = CPgNumbers<1>;

/** Counts what follows its first number. */
class CPgCounting : public CPgTen
{
public:
    t_Couplings Rules() const override
    {
        static constexpr auto rows = NNames::Table<t_Names>(NNames::Changed(t_Names::First) >>
                                                            NNames::Do<&CPgCounting::Count>);
        return rows;
    }

    INT64 m_runs = 0;

private:
    struct t_Names
    {
        using t_Class = CPgCounting;
        static constexpr NNames::t_Way<t_Names, CDbPropNumDouble> First{
            {NNames::eNODE::Property, false, 1, {0}}};
    };
    void Count() { ++m_runs; }
};
} // namespace NScaling

using namespace NScaling;

namespace
{
/** Groups of ten properties, until the tree has as many nodes as asked for. */
template <typename TGroup = CPgTen>
struct t_Tree
{
    explicit t_Tree(INT64 nodes)
    {
        for (INT64 i = 0; i < std::max<INT64>(1, nodes / 11); ++i)
        {
            groups.push_back(new TGroup);
            root.AddPropGroupToList(groups.back(), QStringLiteral("Group%1").arg(i));
        }
        root.OnTreeCreated();
    }

    CDbPgRoot root;
    std::vector<TGroup*> groups;
};

using CArray = CDbPgArray<CPgItem, CDbPgArrayBase>;
using CMap = CDbPgMap<CPgItem>;

struct t_ArrayTree
{
    explicit t_ArrayTree(INT64 count)
    {
        root.AddPropGroupToList(array, QStringLiteral("Array"));
        array->DbSetSize(static_cast<INT32>(count));
        root.OnTreeCreated();
    }

    CDbPgRoot root;
    CArray* array = new CArray(1, 2'000'000);
};

struct t_MapTree
{
    explicit t_MapTree(INT64 count)
    {
        root.AddPropGroupToList(map, QStringLiteral("Map"));
        root.OnTreeCreated();
        for (INT64 i = 0; i < count; ++i)
        {
            map->Insert(QStringLiteral("Item%1").arg(i));
        }
    }

    CDbPgRoot root;
    CMap* map = new CMap(2'000'000);
};

void WriteTo(benchmark::State& state, CDbPropNumDouble& number)
{
    double value = 0.0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(number.Set(value = 1.0 - value));
    }
}

/** Adds the time of one of the `count` things that an iteration does. */
void CountEach(benchmark::State& state, const char* name, INT64 count)
{
    state.counters[name] = benchmark::Counter(static_cast<double>(count),
                                              benchmark::Counter::kIsIterationInvariantRate |
                                                  benchmark::Counter::kInvert);
}

void TreeSizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("nodes")->RangeMultiplier(10)->Range(100, 100000);
}

void ItemCounts(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("items")->RangeMultiplier(10)->Range(1, 100000);
}
} // namespace

static void ScaleWriteInTree(benchmark::State& state)
{
    t_Tree<> tree(state.range(0));
    tree.root.EnableHistoryObjects();
    WriteTo(state, *tree.groups.back()->m_numbers.back());
}
BENCHMARK(ScaleWriteInTree)->Apply(TreeSizes);

/** Every group has a row that follows its own first number; one of them is written. */
static void ScaleWriteBesideDependants(benchmark::State& state)
{
    t_Tree<CPgCounting> tree(state.range(0) * 11);
    tree.root.SetAutoUpdateDependencies(true);
    WriteTo(state, *tree.groups.front()->m_numbers.front());
    if (tree.groups.front()->m_runs != static_cast<INT64>(state.iterations()))
    {
        state.SkipWithError("the row did not run once for each write");
    }
}
BENCHMARK(ScaleWriteBesideDependants)->ArgName("dependants")->Arg(1)->Arg(100)->Arg(10000);

static void ScalePollUnchangedTree(benchmark::State& state)
{
    const t_Tree<> tree(state.range(0));
    long long counter = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(tree.root.HasChanged(counter));
    }
}
BENCHMARK(ScalePollUnchangedTree)->Apply(TreeSizes);

/** From nothing to the size in one call; the time is that of an item. */
static void ScaleArrayGrowPerItem(benchmark::State& state)
{
    for (auto _ : state)
    {
        state.PauseTiming();
        auto tree = std::make_unique<t_ArrayTree>(0);
        state.ResumeTiming();
        tree->array->Grow(static_cast<INT32>(state.range(0)));
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
    state.counters["per_item"] = benchmark::Counter(static_cast<double>(state.range(0)),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}
BENCHMARK(ScaleArrayGrowPerItem)->Apply(ItemCounts);

static void ScaleArrayItemAccess(benchmark::State& state)
{
    const t_ArrayTree tree(state.range(0));
    const auto handle = tree.array->GetFIMPointer();
    INT32 index = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(handle->GetItem(index));
        index = (index + 1) % std::min<INT32>(100, static_cast<INT32>(state.range(0)));
    }
}
BENCHMARK(ScaleArrayItemAccess)->Apply(ItemCounts);

static void ScaleArrayItemWrite(benchmark::State& state)
{
    t_ArrayTree tree(state.range(0));
    tree.root.EnableHistoryObjects();
    const auto last = static_cast<INT32>(state.range(0)) - 1;
    WriteTo(state, *tree.array->ItemDirect(last)->m_numbers.front());
}
BENCHMARK(ScaleArrayItemWrite)->Apply(ItemCounts);

static void ScaleArrayInsertAndRemoveAtEnd(benchmark::State& state)
{
    t_ArrayTree tree(state.range(0));
    const auto count = static_cast<INT32>(state.range(0));
    tree.array->Insert(count); // the room for one more is made now and then, not each time
    tree.array->Remove(count, 1);
    for (auto _ : state)
    {
        tree.array->Insert(count);
        tree.array->Remove(count, 1);
    }
}
BENCHMARK(ScaleArrayInsertAndRemoveAtEnd)->Apply(ItemCounts);

/** Grows by its nature: every item behind gets another index. */
static void ScaleArrayInsertAndRemoveAtFront(benchmark::State& state)
{
    t_ArrayTree tree(state.range(0));
    for (auto _ : state)
    {
        tree.array->Insert(0);
        tree.array->Remove(0, 1);
    }
}
BENCHMARK(ScaleArrayInsertAndRemoveAtFront)->Apply(ItemCounts);

static void ScaleMapItemAccessByName(benchmark::State& state)
{
    const t_MapTree tree(state.range(0));
    const auto handle = tree.map->GetFIMPointer();
    const QString name = QStringLiteral("Item%1").arg(state.range(0) / 2);
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(handle->GetItem(name));
    }
}
BENCHMARK(ScaleMapItemAccessByName)->Apply(ItemCounts);

static void ScaleMapInsertAndRemove(benchmark::State& state)
{
    t_MapTree tree(state.range(0));
    const QString name = QStringLiteral("Another");
    for (auto _ : state)
    {
        tree.map->Insert(name);
        tree.map->Remove(name);
    }
}
BENCHMARK(ScaleMapInsertAndRemove)->Apply(ItemCounts);

/** As a client fills a map whose names it leaves to the map; the time is that of an item. */
static void ScaleMapFillWithMadeNamesPerItem(benchmark::State& state)
{
    for (auto _ : state)
    {
        state.PauseTiming();
        auto tree = std::make_unique<t_MapTree>(0);
        state.ResumeTiming();
        for (INT64 i = 0; i < state.range(0); ++i)
        {
            tree->map->Insert(QString());
        }
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
    CountEach(state, "per_item", state.range(0));
}
BENCHMARK(ScaleMapFillWithMadeNamesPerItem)->Apply(ItemCounts);

static void ScaleWriteIntoHistory(benchmark::State& state)
{
    t_Tree<> tree(100);
    tree.root.EnableHistoryObjects();
    CDbPropNumDouble& number = *tree.groups.back()->m_numbers.back();
    for (INT64 i = 1; i < state.range(0); ++i)
    {
        number.Set(static_cast<double>(i));
    }
    WriteTo(state, number);
}
BENCHMARK(ScaleWriteIntoHistory)->ArgName("steps")->Arg(1)->Arg(10)->Arg(100);

/** The newest step, taken back and repeated. */
static void ScaleUndoAndRedo(benchmark::State& state)
{
    t_Tree<> tree(100);
    tree.root.EnableHistoryObjects();
    for (INT64 i = 1; i <= state.range(0); ++i)
    {
        tree.groups.back()->m_numbers.back()->Set(static_cast<double>(i));
    }
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(tree.root.Undo());
        benchmark::DoNotOptimize(tree.root.Redo());
    }
}
BENCHMARK(ScaleUndoAndRedo)->ArgName("steps")->Arg(1)->Arg(10)->Arg(100);

/** Back through the whole history and forth again; the time is that of one step. */
static void ScaleUndoAllPerStep(benchmark::State& state)
{
    t_Tree<> tree(100);
    tree.root.EnableHistoryObjects();
    for (INT64 i = 1; i <= state.range(0); ++i)
    {
        tree.groups.back()->m_numbers.back()->Set(static_cast<double>(i));
    }
    for (auto _ : state)
    {
        while (tree.root.Undo() == eKW_ACC_OK)
        {
        }
        while (tree.root.Redo() == eKW_ACC_OK)
        {
        }
    }
    state.counters["per_step"] = benchmark::Counter(2.0 * static_cast<double>(state.range(0)),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}
BENCHMARK(ScaleUndoAllPerStep)->ArgName("steps")->Arg(1)->Arg(10)->Arg(100);
