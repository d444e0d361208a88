// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "IKWFunctionChannel.h"
#include "IKWFunctionFFT.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionSpectrum.h"
#include "IKWFunctionVertical.h"
#include "IKWFunctionZEL.h"
#include "LabelOperations.h"
#include "StreamOperations.h"

#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <array>
#include <atomic>
#include <malloc.h>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

// The operations of the budgets, each with its baseline: what is timed is what is counted. The
// constructor sets up, a call runs the operation once and returns what must not be optimised away.

class COpAtomicLoad
{
public:
    double operator()() const { return m_value.load(std::memory_order_acquire); }

private:
    std::atomic<double> m_value{1.0};
};

class COpVirtualCall
{
public:
    double operator()() const { return m_called->Get(); }

private:
    struct t_Virtual
    {
        virtual ~t_Virtual() = default;
        virtual double Get() const { return m_value; }
        double m_value = 1.0;
    };

    /** The same again, so that the compiler can not know which of the two is called. */
    struct t_OtherVirtual final : t_Virtual
    {
        double Get() const override { return -m_value; }
    };

    volatile std::size_t m_which = 0;
    const std::array<std::unique_ptr<t_Virtual>, 2> m_objects = {
        std::make_unique<t_Virtual>(), std::make_unique<t_OtherVirtual>()};
    const t_Virtual* m_called = m_objects[m_which].get();
};

class COpRecursiveMutex
{
public:
    int operator()()
    {
        const std::lock_guard<std::recursive_mutex> lock(m_mutex);
        return 0;
    }

private:
    std::recursive_mutex m_mutex;
};

class COpGetNumber
{
public:
    double operator()() const { return m_position->Get(); }

private:
    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    decltype(m_root->GetPgHorizontal()->GetPrPosition()) m_position =
        m_root->GetPgHorizontal()->GetPrPosition();
};

class COpGetEnumeration
{
public:
    auto operator()() const { return m_mode->Get(); }

private:
    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    decltype(m_root->GetPgHorizontal()->GetPrZELMode()) m_mode =
        m_root->GetPgHorizontal()->GetPrZELMode();
};

/** A poll of an unchanged subtree. */
class COpHasChanged
{
public:
    bool operator()() { return m_group->HasChanged(m_counter); }

private:
    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    decltype(m_root->GetPgHorizontal()) m_group = m_root->GetPgHorizontal();
    long long m_counter = 0;
};

/** A number with limits, four levels deep, on which nothing depends. */
class COpClientSet
{
public:
    explicit COpClientSet(bool history) { m_root->EnableHistory(history); }

    KW_ACCEPTANCE operator()() { return m_number->Set(m_value = 180.0 - m_value); }

private:
    static std::shared_ptr<IKWNumericProperty<double>> Find(const IKWFunctionZEL& root)
    {
        const auto property = std::dynamic_pointer_cast<IDbProperty>(root.GetDbObject()->Find(
            QStringLiteral("Setup/HwConfig/BatteryAndPower/AutoPowerOffTime")));
        return std::dynamic_pointer_cast<IKWNumericProperty<double>>(property->GetHandle());
    }

    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    std::shared_ptr<IKWNumericProperty<double>> m_number = Find(*m_root);
    double m_value = 60.0;
};

/** A rule that writes eight others, each with limits, in the same write. */
class COpClientSetWithEightDependants
{
public:
    explicit COpClientSetWithEightDependants(bool history)
    {
        m_root.AddPropGroupToList(m_group, QStringLiteral("Eight"));
        if (history)
        {
            m_root.EnableHistoryObjects();
        }
    }

    KW_ACCEPTANCE operator()() { return m_group->m_source->Set(m_value = 1.0 - m_value); }

private:
    /** A source and the eight that follow it, each one written by the rule. */
    class CPgEight final : public CZELPropertyGroup
    {
    public:
        CPgEight()
        {
            AddPropertyToList(m_source = Number(), QStringLiteral("Source"));
            for (std::size_t i = 0; i < m_followers.size(); ++i)
            {
                AddPropertyToList(m_followers[i] = Number(), QStringLiteral("Follower%1").arg(i));
            }
        }

        KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override
        {
            double value = m_source->Get();
            for (CDbPropNumDouble* const follower : m_followers)
            {
                follower->DbSet(value += 1.0);
            }
            return CZELPropertyGroup::OnPropertySet(property);
        }

        CDbPropNumDouble* m_source;

    private:
        static CDbPropNumDouble* Number()
        {
            auto* const number = new CDbPropNumDouble;
            number->DeclareMinAndMax(-1e6, 1e6);
            return number;
        }

        std::array<CDbPropNumDouble*, 8> m_followers{};
    };

    CDbPgRoot m_root;
    CPgEight* m_group = new CPgEight; // the root's
    double m_value = 0.0;
};

/** One write of the time scale, with all that follows from it. */
class COpHorizontalChain
{
public:
    static constexpr INT32 kScales = 36;

    explicit COpHorizontalChain(bool history) { m_root->EnableHistory(history); }

    KW_ACCEPTANCE operator()()
    {
        const INT32 index = m_index;
        m_index = (m_index + 1) % kScales;
        return m_scale->SetAsInt(index);
    }

private:
    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    decltype(m_root->GetPgHorizontal()->GetPrScaleGUI()) m_scale =
        m_root->GetPgHorizontal()->GetPrScaleGUI();
    INT32 m_index = 0;
};

/** Two spans in Hz that take turns, with all that follows from them. */
class COpSpanChange
{
public:
    COpSpanChange(bool history, double from, double to) : m_spans{from, to}
    {
        m_root->EnableHistory(history);
        // An idle spectrum would leave the down-converter off.
        m_root->GetPgFFT()->GetPrState()->SetAsInt(1);
    }

    KW_ACCEPTANCE operator()()
    {
        m_turn = 1 - m_turn;
        return m_span->Set(m_spans[m_turn]);
    }

private:
    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    decltype(m_root->GetPgSpectrum()->GetPrHorizontalSpan()) m_span =
        m_root->GetPgSpectrum()->GetPrHorizontalSpan();
    std::array<double, 2> m_spans;
    std::size_t m_turn = 1;
};

class COpGetRootAlive
{
public:
    auto operator()() const { return GetZELRoot(); }

private:
    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
};

/** Builds the whole tree; whoever drops what is returned releases it. */
class COpGetRootCold
{
public:
    auto operator()() const { return GetZELRoot(); }
};

/** The settings of a fresh tree in a file of this process. */
struct t_SavedTree
{
    QTemporaryDir folder;
    QString name = folder.filePath(QStringLiteral("settings.xml"));
    std::shared_ptr<IKWFunctionZEL> root = GetZELRoot();

    t_SavedTree() { root->Save(name); }

    QByteArray Read() const
    {
        QFile file(name);
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }
};

class COpSave
{
public:
    KW_ACCEPTANCE operator()() { return m_saved.root->Save(m_saved.name); }

private:
    t_SavedTree m_saved;
};

class COpRecall
{
public:
    KW_ACCEPTANCE operator()() { return m_saved.root->Recall(m_saved.name); }

private:
    t_SavedTree m_saved;
};

/** What a save takes at least: the bare writer over the same elements and attributes. */
class COpXmlWriter
{
public:
    bool operator()()
    {
        QByteArray text;
        QXmlStreamWriter writer(&text);
        writer.setAutoFormatting(true);
        writer.setAutoFormattingIndent(1);
        writer.writeStartDocument();
        for (const t_Token& token : m_tokens)
        {
            Write(writer, token);
        }
        writer.writeEndDocument();
        QFile file(m_saved.folder.filePath(QStringLiteral("bare.xml")));
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
    }

private:
    /** The start of an element, or its end. */
    struct t_Token
    {
        bool start;
        QString name;
        std::vector<std::pair<QString, QString>> attributes;
    };

    static void Write(QXmlStreamWriter& writer, const t_Token& token)
    {
        if (!token.start)
        {
            writer.writeEndElement();
            return;
        }
        writer.writeStartElement(token.name);
        for (const auto& [name, value] : token.attributes)
        {
            writer.writeAttribute(name, value);
        }
    }

    static std::vector<t_Token> Tokens(const QByteArray& text)
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

    t_SavedTree m_saved;
    std::vector<t_Token> m_tokens = Tokens(m_saved.Read());
};

/** What a recall takes at least: the bare reader over the same bytes. */
class COpXmlReader
{
public:
    qsizetype operator()()
    {
        QXmlStreamReader reader(m_saved.Read());
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
        return length;
    }

private:
    t_SavedTree m_saved;
};

/**
 * Calls with each operation's name, with how often it must run until a count says something (each
 * value takes its turn, the history is full and drops steps), and with what makes it.
 */
template <class TVisitor>
void KW_VisitOperations(TVisitor&& visit)
{
    constexpr int kOften = 20 * COpHorizontalChain::kScales;
    constexpr int kWholeTrees = 4;
    visit("BaselineAtomicLoad", kOften, [] { return COpAtomicLoad(); });
    visit("BaselineVirtualCall", kOften, [] { return COpVirtualCall(); });
    visit("BaselineRecursiveMutex", kOften, [] { return COpRecursiveMutex(); });
    visit("FrameGetNumber", kOften, [] { return COpGetNumber(); });
    visit("FrameGetEnumeration", kOften, [] { return COpGetEnumeration(); });
    visit("FrameHasChangedUnchangedSubtree", kOften, [] { return COpHasChanged(); });
    visit("FrameClientSet/history:0", kOften, [] { return COpClientSet(false); });
    visit("FrameClientSet/history:1", kOften, [] { return COpClientSet(true); });
    visit("FrameClientSetWithEightDependants/history:0", kOften,
          [] { return COpClientSetWithEightDependants(false); });
    visit("FrameClientSetWithEightDependants/history:1", kOften,
          [] { return COpClientSetWithEightDependants(true); });
    visit("HorizontalChain/history:0", kOften, [] { return COpHorizontalChain(false); });
    visit("HorizontalChain/history:1", kOften, [] { return COpHorizontalChain(true); });
    visit("SpanChange/history:0", kOften, [] { return COpSpanChange(false, 1e6, 2e6); });
    visit("SpanChange/history:1", kOften, [] { return COpSpanChange(true, 1e6, 2e6); });
    visit("TreeAliveGetRoot", kOften, [] { return COpGetRootAlive(); });
    visit("TreeColdGetRootAndRelease", kWholeTrees, [] { return COpGetRootCold(); });
    visit("BaselineXmlWriterToFile", kWholeTrees, [] { return COpXmlWriter(); });
    visit("TreeSaveXml", kWholeTrees, [] { return COpSave(); });
    visit("BaselineXmlReader", kWholeTrees, [] { return COpXmlReader(); });
    visit("TreeRecallXml", kWholeTrees, [] { return COpRecall(); });
    visit("StreamPublish", kOften, [] { return COpPublish(); });
    visit("StreamPublish200Points", kOften, [] { return COpPublishPoints(); });
    visit("StreamGetLatest", kOften, [] { return COpGetLatest(); });
    visit("StreamHasNew", kOften, [] { return COpHasNew(); });
    visit("StreamColumns", kWholeTrees, [] { return COpColumns(); });
    visit("AcquisitionArm", kOften, [] { return COpArm(); });
    visit("BaselineDecodeByHand", kOften, [] { return COpDecodeByHand(); });
    visit("LabelDecodeFrame", kOften, [] { return COpDecodeFrame(); });
    visit("LabelFormatValue", kOften, [] { return COpFormatValue(); });
    visit("BaselineScanLogLine", kOften, [] { return COpScanLogLine(); });
    visit("LabelReadLogLine", kOften, [] { return COpReadLogLine(); });
    visit("BaselineSplitDatabase", kWholeTrees, [] { return COpSplitDatabase(); });
    visit("LabelReadDatabase", kWholeTrees, [] { return COpReadDatabase(); });
}

struct t_HeapOfTree
{
    std::size_t bytes;
    int properties;
};

inline int KW_CountProperties(const std::shared_ptr<IDbGroup>& group)
{
    int count = group->GetPropertyCount();
    for (INT32 i = 0; i < group->GetGroupCount(); ++i)
    {
        count += KW_CountProperties(group->GetGroup(i));
    }
    IDbContainer* const container = group->AsContainer();
    for (INT32 i = 0; container != nullptr && i < container->GetCount(); ++i)
    {
        count += KW_CountProperties(container->GetItemByPosition(i));
    }
    return count;
}

inline t_HeapOfTree KW_MeasureHeapOfTree()
{
    GetZELRoot(); // name tables and other statics are not part of the tree
    const std::size_t before = mallinfo2().uordblks;
    const auto root = GetZELRoot();
    const std::size_t bytes = mallinfo2().uordblks - before;
    return {bytes, KW_CountProperties(root->GetDbObject())};
}
