// SPDX-License-Identifier: MIT
#include "LabelList/FrameLog.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace
{
using e_Line = CFrameLogReader::e_Line;

/** "1.000000001 can0 123 11 22": an "x" behind the identifier of an extended frame, then "fd",
    "error", or "remote" with the length that it asks for. */
std::string TextOf(const KW_LoggedFrame& frame)
{
    char text[32] = "-";
    if (frame.hasTime)
    {
        std::snprintf(text, sizeof text, "%lld.%09lld",
                      static_cast<long long>(frame.nanoseconds / 1000000000),
                      static_cast<long long>(frame.nanoseconds % 1000000000));
    }
    std::string all = text + (' ' + std::string(frame.bus));
    std::snprintf(text, sizeof text, " %X%s", frame.identifier, frame.isExtended ? "x" : "");
    all += text;
    all += frame.isFd ? " fd" : frame.isError ? " error" : "";
    all += frame.isRemote ? " remote " + std::to_string(frame.length) : "";
    for (const UINT8 byte : frame.Payload())
    {
        std::snprintf(text, sizeof text, " %02X", byte);
        all += text;
    }
    return all;
}

std::string Read(CFrameLogReader& reader, const std::string& line)
{
    KW_LoggedFrame frame;
    switch (reader.Read(line, frame))
    {
    case e_Line::Frame:
        return TextOf(frame);
    case e_Line::Nothing:
        return "nothing";
    case e_Line::NotUnderstood:
        return "not understood";
    }
    return "";
}

struct t_Line
{
    std::string line;
    const char* text;
};

void Check(const std::vector<t_Line>& lines)
{
    CFrameLogReader reader;
    for (const t_Line& line : lines)
    {
        EXPECT_EQ(Read(reader, line.line), line.text) << line.line.substr(0, 99);
    }
}

TEST(FrameLog, CompactLineIsReadAsAnother)
{
    Check({{"(1436509052.249713) can0 123#11223344", "1436509052.249713000 can0 123 11 22 33 44"},
           {"(1436509052.249713) can0 123#1122 R\r\n", "1436509052.249713000 can0 123 11 22"},
           {"(0.1) can0 00000123#", "0.100000000 can0 123x"},
           {"(9000000000.123456789123) v 7FF#11.22", "9000000000.123456789 v 7FF 11 22"},
           {"can0 1FFFFFFF#R", "- can0 1FFFFFFFx remote 0"},
           {"can0 123#R4", "- can0 123 remote 4"},
           {"can0 123##311223344556677889900", "- can0 123 fd 11 22 33 44 55 66 77 88 99 00"},
           {"can0 123##0", "- can0 123 fd"},
           {"can0 20000004#0001000000000000", "- can0 4x error 00 01 00 00 00 00 00 00"},
           {"can0 123#1122334455667788_F", "- can0 123 11 22 33 44 55 66 77 88"},
           {"can0 123##0" + std::string(130, '1'), "not understood"},
           {"can0 123#112233445566778899", "not understood"},
           {"can0 123#112", "not understood"},
           {"can0 123#11_F", "not understood"},
           {"can0 123#RX", "not understood"},
           {"can0 123##", "not understood"},
           {"can0 12#11", "not understood"},
           {"can0 800#11", "not understood"},
           {"can0 40000000#11", "not understood"},
           {"can0 123#11 extra", "not understood"},
           {"(99999999999.0) can0 123#11", "not understood"},
           {"(1.x) can0 123#11", "not understood"},
           {"(1.5 can0 123#11", "not understood"},
           {"(-1.5) can0 123#11", "not understood"},
           {"(1.5)", "not understood"},
           {"#", "not understood"},
           {" \t\r\n", "nothing"},
           {"can0 123#11" + std::string(4096, ' '), "not understood"}});
}

TEST(FrameLog, PrintedLineIsReadAsAnother)
{
    Check({{"  can0  123   [4]  11 22 33 44", "- can0 123 11 22 33 44"},
           {" (1436509052.249713)  can0  123   [2]  11 22", "1436509052.249713000 can0 123 11 22"},
           {" (2015-07-10 06:17:32.249713)  can0  123   [0] ", "1436509052.249713000 can0 123"},
           {" (000.000100)  can0       123   [1]  11", "0.000100000 can0 123 11"},
           {"  can0  RX - -  00000123   [2]  11 22", "- can0 123x 11 22"},
           {"  can0  TX B E  123  [12]  11 22 33 44 55 66 77 88 99 00 AA BB",
            "- can0 123 fd 11 22 33 44 55 66 77 88 99 00 AA BB"},
           {"  can0  123  [08]  11 22 33 44 55 66 77 88", "- can0 123 fd 11 22 33 44 55 66 77 88"},
           {"  can0  123   [2]  41 27   'A''", "- can0 123 41 27"},
           {"  can0  123   [0]  remote request", "- can0 123 remote 0"},
           {"  can0  12345678   [4]  remote request", "- can0 12345678x remote 4"},
           {"  can0  20000004   [8]  00 01 00 00 00 00 00 00   ERRORFRAME",
            "- can0 4x error 00 01 00 00 00 00 00 00"},
           {"\tcontroller-problem{rx-overflow}", "nothing"},
           {"can0  123   [1]  11", "- can0 123 11"},
           {"\tcontroller-problem{rx-overflow}", "not understood"},
           {"  can0  123   [4]  11 22 33", "not understood"},
           {"  can0  123   [2]  11 22 33", "not understood"},
           {"  can0  123   [9]  11 22 33 44 55 66 77 88 99", "not understood"},
           {"  can0  123   [65]  11", "not understood"},
           {"  can0  123   [16]  remote request", "not understood"},
           {"  can0  123   [2]  22`11", "not understood"},
           {"  can0  123   [1]  00010001", "not understood"},
           {"  can0  123   []", "not understood"},
           {"  can0  123", "not understood"},
           {"(2015-02-30 06:17:32.2)  can0  123   [0]", "not understood"},
           {"(1969-12-31 23:59:59.2)  can0  123   [0]", "not understood"},
           {"(2015-07-10 06:17)  can0  123   [0]", "not understood"}});
}

TEST(FrameLog, AscLineIsReadAsAnother)
{
    Check({{"date Fri Jul 10 06:17:32 2015", "nothing"},
           {"base hex  timestamps absolute", "nothing"},
           {"no internal events logged", "nothing"},
           {"// version 9.0.0", "nothing"},
           {"Begin Triggerblock Fri Jul 10 06:17:32 2015", "nothing"},
           {"   0.000000 Start of measurement", "nothing"},
           {"   0.100000 1  123             Rx   d 4 11 22 33 44", "0.100000000 1 123 11 22 33 44"},
           {"   1.300001 1  1FFFFFFFx       Tx   d 0", "1.300001000 1 1FFFFFFFx"},
           {"   1.3 1  123  Rx   d 2 11 22  Length = 0 BitCount = 64 ID = 291",
            "1.300000000 1 123 11 22"},
           {"   1.3 1  123  Rx   d f 1 2 3 4 5 6 7 8", "1.300000000 1 123 01 02 03 04 05 06 07 08"},
           {"   1.200001 2  123             Rx   r", "1.200001000 2 123 remote 0"},
           {"   1.200001 2  123             Rx   r 4", "1.200001000 2 123 remote 4"},
           {"   1.600001 1  ErrorFrame", "1.600001000 1 0 error"},
           {"   1.400001 CANFD   1 Rx        123                                   1 0 9 12 "
            "11 22 33 44 55 66 77 88 99 AA BB CC   130000  130     3000 0 0 0 0 0",
            "1.400001000 1 123 fd 11 22 33 44 55 66 77 88 99 AA BB CC"},
           {"   1.4 CANFD 1 Tx 123x Engine 1 0 1 1 11", "1.400000000 1 123x fd 11"},
           {"   1.4 CANFD 1 Rx 123 0 0 1 1 11 130000 130 0 0 0 0 0 0", "1.400000000 1 123 11"},
           {"   1.4 CANFD 1 Rx 123 0 0 4 0 130000 130 10 0 0 0 0 0", "1.400000000 1 123 remote 4"},
           {"   1.4 1  123  TxRq d 1 11", "nothing"},
           {"   1.4 CANFD 1 TxRq 123 0 0 1 1 11", "nothing"},
           {"   1.4 1  Statistic: D 0 R 0 XD 0 XR 0 E 0 O 0 B 0.00%", "nothing"},
           {"   1.4 CAN 1 Status:chip status error active", "nothing"},
           {"End TriggerBlock", "nothing"},
           {"   1.4 1  123  Rx   d 4 11 22 33", "not understood"},
           {"   1.4 1  123  Rx   e 1 11", "not understood"},
           {"   1.4 1  Engine  Rx   d 1 11", "not understood"},
           {"   1.4 1  123", "not understood"},
           {"   1.4 1", "not understood"},
           {"   1.4", "not understood"},
           {"   1.4 CANFD 1 Rx 123 1 0 9 12 11", "not understood"},
           {"   1.4 CANFD 1 Rx 123 0 0 9 12 1 2 3 4 5 6 7 8 9 1 2 3 13 13 0", "not understood"},
           {"   1.4 CANFD 1 Rx 123 Engine Name 1 0 1 1 11", "not understood"},
           {"   1.4 CANFD", "not understood"}});
    Check({{"base dec  timestamps relative", "nothing"},
           {"0.5 1 291x Rx d 2 16 255", "0.500000000 1 123x 10 FF"},
           {"0.25 Start of measurement", "nothing"},
           {"0.000001 1 291 Rx d 1 256", "not understood"},
           {"0.000001 1 291 Rx d 0", "0.750002000 1 123"},
           {"9000000000 1 291 Rx d 0", "9000000000.750002000 1 123"},
           {"9000000000 1 291 Rx d 0", "not understood"}});
}

/** Cut off anywhere, a line is no shorter frame, unless what is missing says nothing of it. */
TEST(FrameLog, CutLineIsAnotherFrame)
{
    const std::string lines[] = {
        "  can0  TX B E  123  [12]  11 22 33 44 55 66 77 88 99 00 AA BB",
        "   0.100000 1  123             Rx   d 4 11 22 33 44",
        "   1.4 CANFD 1 Rx 123 1 0 9 12 11 22 33 44 55 66 77 88 99 AA BB CC"};
    for (const std::string& line : lines)
    {
        for (std::size_t length = 0; length + 1 < line.size(); ++length)
        {
            CFrameLogReader reader;
            KW_LoggedFrame frame;
            EXPECT_NE(reader.Read(line.substr(0, length), frame), e_Line::Frame) << length;
        }
    }
}
} // namespace
