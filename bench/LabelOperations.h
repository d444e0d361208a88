// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/FrameLog.h"
#include "LabelList/LabelListDecoder.h"
#include "LabelList/LabelListFile.h"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <string>
#include <vector>

// Operations on label lists; Operations.h says what they are for.

/** Frames of eight signals, as an engine sends them, one after the other. */
class CEngineFrames
{
public:
    static constexpr std::size_t kSignals = 8;
    using t_Payload = std::array<UINT8, 8>;

    CEngineFrames()
    {
        UINT32 number = 0;
        for (t_Payload& payload : m_payloads)
        {
            std::generate(payload.begin(), payload.end(),
                          [&number] { return static_cast<UINT8>((number += 2654435761U) >> 24U); });
        }
    }

    const t_Payload& Next() { return m_payloads[++m_next % m_payloads.size()]; }

private:
    std::array<t_Payload, 64> m_payloads{};
    std::size_t m_next = 0;
};

/** What an engineer writes for that very frame, with the same answers: of each signal what it is,
   its raw value, its physical value and its label. */
class COpDecodeByHand
{
public:
    std::size_t operator()()
    {
        const std::size_t count = Decode(m_frames.Next().data(), m_values.data());
        benchmark::DoNotOptimize(m_values);
        return count;
    }

private:
    using t_Value = CLabelListDecoder::t_Value;
    using t_Signal = CLabelListDecoder::t_Signal;

    [[gnu::noinline]] std::size_t Decode(const UINT8* p, t_Value* values) const
    {
        const auto give = [this, &values](std::size_t i, UINT32 raw, double value) {
            *values++ = {&m_signals[i], raw, value, nullptr};
        };
        const UINT32 speed = static_cast<UINT32>(p[0]) << 8U | p[1];
        give(0, speed, speed * 0.25);
        const UINT32 torque = p[2] | static_cast<UINT32>(p[3]) << 8U;
        give(1, torque, static_cast<INT16>(torque) * 0.5 - 10.0);
        give(2, p[4], p[4] - 40.0);
        const UINT32 oil = p[5] | (p[6] & 0x0fU) << 8U;
        give(3, oil, oil * 0.1);
        const UINT32 pedal = p[6] >> 4U & 0x07U;
        give(4, pedal, pedal * 12.5);
        const UINT32 gear = p[7] & 0x0fU;
        give(5, gear, gear);
        values[-1].label = gear < m_gears.size() ? &m_gears[gear] : nullptr;
        const UINT32 lamp = p[6] >> 7U;
        give(6, lamp, lamp);
        const UINT32 load = static_cast<UINT32>(p[7]) >> 4U;
        give(7, load, load * 6.25);
        return CEngineFrames::kSignals;
    }

    CEngineFrames m_frames;
    std::array<t_Signal, CEngineFrames::kSignals> m_signals{};
    std::array<std::string, 4> m_gears = {"Park", "Reverse", "Neutral", "Drive"};
    std::array<t_Value, CEngineFrames::kSignals> m_values{};
};

/** The same by a list. */
class COpDecodeFrame
{
public:
    std::size_t operator()()
    {
        const std::size_t count =
            CLabelListDecoder::Decode(*m_decoder.Find(11, kIdentifier), m_frames.Next(), m_values);
        benchmark::DoNotOptimize(m_values);
        return count;
    }

private:
    static constexpr UINT32 kIdentifier = 0x123;

    static KW_LabelList List()
    {
        KW_LabelEntry entry;
        entry.message.setParameters("Engine", "11", kIdentifier, 8);
        const auto add = [&entry](const char* name, UINT32 start, UINT32 length,
                                  KW_ENDIANNESS endianness, double factor, double offset,
                                  KW_SIGNAL_TRANSLATION_VALUE_TYPE type =
                                      eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT)
        {
            CLabelListSignal signal(name, start, length, endianness, type, factor, offset, 0, 0,
                                    "");
            if (type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM)
            {
                for (const auto& [raw, label] :
                     std::initializer_list<std::pair<UINT32, QByteArray>>{
                         {0, "Park"}, {1, "Reverse"}, {2, "Neutral"}, {3, "Drive"}})
                {
                    signal.addSignalEnumValue({raw, label});
                }
            }
            KW_AddSignal(entry, signal);
        };
        constexpr auto kLittle = eKW_ENDIANNESS_LITTLE_ENDIAN;
        add("Speed", 7, 16, eKW_ENDIANNESS_BIG_ENDIAN, 0.25, 0);
        add("Torque", 16, 16, kLittle, 0.5, -10, eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT);
        add("Coolant", 32, 8, kLittle, 1, -40);
        add("Oil", 40, 12, kLittle, 0.1, 0);
        add("Pedal", 52, 3, kLittle, 12.5, 0);
        add("Gear", 56, 4, kLittle, 1, 0, eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM);
        add("Lamp", 55, 1, kLittle, 1, 0);
        add("Load", 60, 4, kLittle, 6.25, 0);
        KW_LabelList list;
        list.messages.push_back(entry);
        return list;
    }

    CEngineFrames m_frames;
    CLabelListDecoder m_decoder{List()};
    std::array<CLabelListDecoder::t_Value, CEngineFrames::kSignals> m_values{};
};

/** A text of a value. */
class COpFormatValue
{
public:
    std::size_t operator()()
    {
        m_raw = (m_raw + 4099) & 0xffff;
        return CLabelListDecoder::Format(-40.0 + m_raw * 0.1, m_buffer).size();
    }

private:
    int m_raw = 0;
    CLabelListDecoder::t_TextBuffer m_buffer{};
};

/** A line of a log. */
class COpReadLogLine
{
public:
    auto operator()()
    {
        m_line[21] = static_cast<char>('0' + (++m_count & 7U));
        return m_reader.Read(m_line, m_frame);
    }

private:
    std::string m_line = "(1436509052.249713) can0 123#1122334455667788";
    unsigned m_count = 0;
    CFrameLogReader m_reader;
    KW_LoggedFrame m_frame;
};

/** What reading the same line takes at least, in C. */
class COpScanLogLine
{
public:
    int operator()()
    {
        long long seconds = 0;
        long microseconds = 0;
        char bus[16];
        unsigned identifier = 0;
        unsigned long long data = 0;
        const int count = std::sscanf(m_line.c_str(), "(%lld.%ld) %15s %x#%llx", &seconds,
                                      &microseconds, bus, &identifier, &data);
        return count;
    }

private:
    std::string m_line = "(1436509052.249713) can0 123#1122334455667788";
};

/** A database of 500 messages with ten signals each, commented and some of them labelled. */
inline QByteArray KW_DatabaseText()
{
    QByteArray text = "VERSION \"\"\n\nNS_ :\n\nBS_:\n\nBU_: ECU Gateway Dash\n\n";
    QByteArray behind;
    constexpr int kMessages = 500;
    constexpr int kSignals = 10;
    for (int message = 0; message < kMessages; ++message)
    {
        const QByteArray number = QByteArray::number(message);
        const QByteArray identifier = QByteArray::number(
            message % 2 == 0 ? 256U + static_cast<UINT32>(message)
                             : 0x80000000U + 0x18fe0000U + static_cast<UINT32>(message));
        text += "BO_ " + identifier + " Message" + number + ": 8 ECU\n";
        for (int i = 0; i < kSignals; ++i)
        {
            const QByteArray name = "Signal" + QByteArray::number(i) + "_Of" + number;
            text += " SG_ " + name + " : " + QByteArray::number(6 * i) +
                    "|6@1+ (0.25,-40) [-40|-24.25] \"degC\" Gateway,Dash\n";
            behind += "CM_ SG_ " + identifier + ' ' + name +
                      " \"What the signal is, in the words of whoever made it.\";\n";
            if (i % 5 == 0)
            {
                behind += "VAL_ " + identifier + ' ' + name +
                          " 0 \"Off\" 1 \"On\" 2 \"Standby\" 3 \"Fault\" ;\n";
            }
        }
        text += '\n';
    }
    return text + behind;
}

class COpReadDatabase
{
public:
    std::size_t operator()()
    {
        KW_LabelList list;
        std::vector<KW_LabelReport> reports;
        KW_ReadLabelText(m_text, eKW_LABEL_FILE_FORMAT_DBC, list, reports);
        return list.messages.size();
    }

private:
    QByteArray m_text = KW_DatabaseText();
};

/** What a reader does with every text at least: parts it into words. */
class COpSplitDatabase
{
public:
    qsizetype operator()()
    {
        qsizetype words = 0;
        for (const QByteArray& line : m_text.split('\n'))
        {
            words += line.split(' ').size();
        }
        return words;
    }

private:
    QByteArray m_text = KW_DatabaseText();
};
