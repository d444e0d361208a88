// SPDX-License-Identifier: MIT
// The whole tree: what does it cost to find it, to build it, to save and recall it, to keep it, and
// how much of that would the bare XML classes take over the same bytes?

#include "IKWFunctionHorizontal.h"
#include "IKWFunctionZEL.h"

#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <vector>

namespace
{
int CountProperties(const std::shared_ptr<IDbGroup>& group)
{
    int count = group->GetPropertyCount();
    for (INT32 i = 0; i < group->GetGroupCount(); ++i)
    {
        count += CountProperties(group->GetGroup(i));
    }
    IDbContainer* const container = group->AsContainer();
    for (INT32 i = 0; container != nullptr && i < container->GetCount(); ++i)
    {
        count += CountProperties(container->GetItemByPosition(i));
    }
    return count;
}

/** The settings of a fresh tree in a file of this process. */
struct t_Saved
{
    QTemporaryDir folder;
    QString name = folder.filePath(QStringLiteral("settings.xml"));
    QByteArray text;

    t_Saved()
    {
        GetZELRoot()->Save(name);
        QFile file(name);
        file.open(QIODevice::ReadOnly);
        text = file.readAll();
    }
};

void CountBytes(benchmark::State& state, const t_Saved& saved)
{
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(saved.text.size()));
}

/** What a writer is told for one document. */
struct t_Token
{
    bool start;
    QString name;
    std::vector<std::pair<QString, QString>> attributes;
};

std::vector<t_Token> Tokens(const QByteArray& text)
{
    std::vector<t_Token> tokens;
    QXmlStreamReader reader(text);
    while (!reader.atEnd())
    {
        reader.readNext();
        if (!reader.isStartElement() && !reader.isEndElement())
        {
            continue;
        }
        t_Token token{reader.isStartElement(), reader.name().toString(), {}};
        const QXmlStreamAttributes attributes = reader.attributes();
        for (const QXmlStreamAttribute& attribute : attributes)
        {
            token.attributes.emplace_back(attribute.name().toString(),
                                          attribute.value().toString());
        }
        tokens.push_back(std::move(token));
    }
    return tokens;
}
} // namespace

static void TreeAliveGetRoot(benchmark::State& state)
{
    const auto keep = GetZELRoot();
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(GetZELRoot());
    }
}
BENCHMARK(TreeAliveGetRoot);

static void TreeColdGetRootAndRelease(benchmark::State& state)
{
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(GetZELRoot());
    }
}
BENCHMARK(TreeColdGetRootAndRelease)->Unit(benchmark::kMillisecond);

static void TreeHeapPerProperty(benchmark::State& state)
{
    GetZELRoot(); // name tables and other statics are not part of the tree
    int properties = 0;
    std::size_t bytes = 0;
    for (auto _ : state)
    {
        const std::size_t before = mallinfo2().uordblks;
        const auto root = GetZELRoot();
        bytes = mallinfo2().uordblks - before;
        properties = CountProperties(root->GetDbObject());
    }
    state.counters["properties"] = properties;
    state.counters["bytes_per_property"] = static_cast<double>(bytes) / properties;
}
BENCHMARK(TreeHeapPerProperty)->Iterations(1);

static void TreeSaveXml(benchmark::State& state)
{
    const t_Saved saved;
    const auto root = GetZELRoot();
    for (auto _ : state)
    {
        root->Save(saved.name);
    }
    CountBytes(state, saved);
}
BENCHMARK(TreeSaveXml)->Unit(benchmark::kMillisecond);

static void BaselineXmlWriterToFile(benchmark::State& state)
{
    const t_Saved saved;
    const std::vector<t_Token> tokens = Tokens(saved.text);
    for (auto _ : state)
    {
        QByteArray text;
        QXmlStreamWriter writer(&text);
        writer.setAutoFormatting(true);
        writer.setAutoFormattingIndent(1);
        writer.writeStartDocument();
        for (const t_Token& token : tokens)
        {
            if (!token.start)
            {
                writer.writeEndElement();
                continue;
            }
            writer.writeStartElement(token.name);
            for (const auto& [name, value] : token.attributes)
            {
                writer.writeAttribute(name, value);
            }
        }
        writer.writeEndDocument();
        QFile file(saved.folder.filePath(QStringLiteral("bare.xml")));
        file.open(QIODevice::WriteOnly);
        file.write(text);
    }
    CountBytes(state, saved);
}
BENCHMARK(BaselineXmlWriterToFile)->Unit(benchmark::kMillisecond);

static void TreeRecallXml(benchmark::State& state)
{
    const t_Saved saved;
    const auto root = GetZELRoot();
    for (auto _ : state)
    {
        root->Recall(saved.name);
    }
    CountBytes(state, saved);
}
BENCHMARK(TreeRecallXml)->Unit(benchmark::kMillisecond);

static void BaselineXmlReader(benchmark::State& state)
{
    const t_Saved saved;
    for (auto _ : state)
    {
        QFile file(saved.name);
        file.open(QIODevice::ReadOnly);
        QXmlStreamReader reader(file.readAll());
        qsizetype length = 0;
        while (!reader.atEnd())
        {
            reader.readNext();
            const QXmlStreamAttributes attributes = reader.attributes();
            for (const QXmlStreamAttribute& attribute : attributes)
            {
                length += attribute.value().size();
            }
        }
        benchmark::DoNotOptimize(length);
    }
    CountBytes(state, saved);
}
BENCHMARK(BaselineXmlReader)->Unit(benchmark::kMillisecond);

static void HorizontalChain(benchmark::State& state)
{
    const auto root = GetZELRoot();
    root->EnableHistory(state.range(0) != 0);
    const auto scale = root->GetPgHorizontal()->GetPrScaleGUI();
    INT32 index = 0;
    for (auto _ : state)
    {
        scale->SetAsInt(index);
        index = (index + 1) % 36;
    }
}
BENCHMARK(HorizontalChain)->ArgName("history")->Arg(0)->Arg(1);
