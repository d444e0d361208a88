// SPDX-License-Identifier: MIT
// Remote control without a network: messages, what they answer, and what they leave in the queue.

#include "RemoteSession.h"
#include "IKWFunctionControl.h"
#include "IKWFunctionSMScope.h"
#include "IKWFunctionSpectrum.h"
#include "IKWFunctionTrigger.h"
#include "IKWFunctionZEL.h"
#include "IKWProperties.h"
#include "KWBrackets.h"

#include <QTemporaryDir>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <ostream>
#include <random>
#include <thread>

namespace
{
/** Whether something comes true in time. */
template <typename TCondition>
bool Within(const TCondition& condition)
{
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition())
    {
        if (std::chrono::steady_clock::now() > limit)
        {
            return false;
        }
        std::this_thread::yield();
    }
    return true;
}

/** A connection to a fresh tree. */
class RemoteSessions : public testing::Test
{
protected:
    void SetUp() override { m_root->SetSettingsFolder(m_folder.path()); }

    std::unique_ptr<CRemoteSession> Connect(const t_RemoteOptions& options = {})
    {
        return std::make_unique<CRemoteSession>(m_root, m_tasks, options, [this] { ++m_woken; });
    }

    /** What can be answered before anything else ends, however slow the machine is. */
    static QByteArray TakeAll(CRemoteSession& session)
    {
        QByteArray answers = session.TakeAnswers();
        while (session.HasMore())
        {
            session.Continue();
            answers += session.TakeAnswers();
        }
        return answers;
    }

    /** What a message answers when everything that it started has ended. */
    std::string Ask(CRemoteSession& session, const std::string& message)
    {
        session.Receive(message.data(), message.size());
        QByteArray answers = session.TakeAnswers();
        EXPECT_TRUE(Within(
            [&]
            {
                session.Continue();
                answers += session.TakeAnswers();
                return !session.IsWaiting() && !session.HasMore();
            }))
            << message;
        return answers.toStdString();
    }

    std::string Ask(const std::string& message) { return Ask(*m_session, message); }

    /** The numbers of all errors that wait, "0" for none. */
    std::string Errors()
    {
        std::string numbers;
        const QByteArray all = QByteArray::fromStdString(Ask("SYST:ERR:ALL?\n"));
        for (const QByteArray& part : all.split('\n')[0].split('"'))
        {
            const QByteArray number = part.startsWith(',') ? part.mid(1) : part;
            if (number.endsWith(','))
            {
                numbers += (numbers.empty() ? "" : " ") + number.chopped(1).toStdString();
            }
        }
        return numbers;
    }

    QTemporaryDir m_folder;
    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    std::shared_ptr<CRemoteTasks> m_tasks = std::make_shared<CRemoteTasks>();
    std::atomic<int> m_woken{0};
    std::unique_ptr<CRemoteSession> m_session = Connect();
};

struct t_Row
{
    const char* name;
    const char* message;      ///< without its end
    const char* answer;       ///< without its end; empty for none
    const char* errors = "0"; ///< numbers that the queue holds then
};

std::ostream& operator<<(std::ostream& out, const t_Row& row)
{
    return out << row.message;
}

class RemoteRows : public RemoteSessions, public testing::WithParamInterface<t_Row>
{
public:
    static std::string Name(const testing::TestParamInfo<t_Row>& info) { return info.param.name; }
};

const t_Row kHeaders[] = {
    {"LongForm", "VERTICAL:CHANNEL2:OFFSET 1;:Vertical:Channel2:Offset?", "1"},
    {"ShortForm", "vert:chan2:offs 1;offs?", "1"},
    {"NeitherForm", "VERTI:CHAN2:OFFS?", "", "-113"},
    {"NumberIsPlaceFromOne", "VERT:CHAN1:OFFS 1;:VERT:CHAN:OFFS?;:VERT:CHAN2:OFFS?", "1;0"},
    {"NumberBeyond", "VERT:CHAN5:OFFS?", "", "-114"},
    {"NumberZero", "VERT:CHAN0:OFFS?", "", "-114"},
    {"NumberOfNoArray", "HOR2:SCAL?", "", "-114"},
    {"NumberIsTooLarge", "VERT:CHAN99999999999999999999:OFFS?", "", "-114"},
    {"PathGoesOn", "VERT:CHAN1:OFFS 1;PROB:FACT?;:VERT:CHAN2:OFFS?", "", "-113"},
    {"CommonKeepsPath", "VERT:CHAN2:OFFS 1;*OPC?;OFFS?", "1;1"},
    {"MessageBeginsAtRoot", "SCAL?", "", "-113"},
    {"GroupAlone", "VERT?", "", "-113"},
    {"ItemAlone", "VERT:CHAN2?", "", "-113"},
    {"BelowProperty", "HOR:SCAL:MORE?", "", "-113"},
    {"ActionHasNoQuery", "PRES?", "", "-113"},
    {"ActionWithParameter", "PRES 1", "", "-108"},
    {"NoParameter", "HOR:SCAL", "", "-109"},
    {"TwoParameters", "HOR:SCAL 1,2", "", "-108"},
    {"QueryWithoutSeparator", "HOR:SCAL?;;:HOR:SCAL?;", "1E-07;1E-07"},
    {"DigitsOfItsOwn", "CURS:X2 0;:CURS:X2?;:CURS:X3?", "0", "-113"},
    {"BlanksAround", "\t HOR:SCAL \t 1e-3 ; SCAL?", "0.001"},
    {"EmptyMessage", "", ""},
    {"MistakeEndsMessage", "HOR:SCAL 1e-3;NONE 1;SCAL 1e-4", "", "-113"},
    {"RefusalDoesNot", "HOR:SCAL 1e99;SCAL 1e-4;SCAL?", "1E-04", "-222"},
};

const t_Row kNumbers[] = {
    {"Exponent", "HOR:SCAL 1 E -3;SCAL?", "0.001"},
    {"Milli", "HOR:SCAL 1ms;SCAL?", "0.001"},
    {"Micro", "HOR:SCAL 1US;SCAL?", "1E-06"},
    {"MegaHertz", "SPEC:HORCENT 1MHZ;HORCENT?", "1E+06"},
    {"MegaHertzAsMa", "SPEC:HORCENT 1maHz;HORCENT?", "1E+06"},
    {"KiloHertz", "SPEC:HORCENT 500 kHz;HORCENT?", "5E+05"},
    {"OtherQuantity", "HOR:SCAL 1V", "", "-131"},
    {"PrefixAlone", "HOR:SCAL 1M", "", "-131"},
    {"UnitWhereNoneIs", "SETUP:REMCONT:PORT 5026 HZ", "", "-138"},
    {"NoNumber", "HOR:SCAL FAST", "", "-141"},
    {"TextForNumber", "HOR:SCAL \"1\"", "", "-104"},
    {"NaN", "SPEC:HORCENT NAN", "", "-224"},
    {"Below", "SPEC:HORCENT -1", "", "-222"},
    {"NotInList", "HOR:SCAL 1.5e-3", "", "-224"},
    {"HugeExponent", "HOR:SCAL 1e99999", "", "-123"},
    {"TwoPoints", "HOR:SCAL 1.2.3", "", "-131"},
    {"SignAlone", "HOR:SCAL +", "", "-121"},
    {"Hexadecimal", "HOR:NUMBOFAVER #H10;NUMBOFAVER?", "16"},
    {"Binary", "HOR:NUMBOFAVER #B1000;NUMBOFAVER?", "8"},
    {"Octal", "HOR:NUMBOFAVER #q20;NUMBOFAVER?", "16"},
    {"OctalWithNine", "HOR:NUMBOFAVER #Q9", "", "-121"},
    {"Beyond64Bits", "HOR:NUMBOFAVER #HFFFFFFFFFFFFFFFFF", "", "-222"},
    {"MaximumAndQuery", "HOR:NUMBOFAVER MAX;NUMBOFAVER?;NUMBOFAVER? MAX", "8192;8192"},
};

const t_Row kValues[] = {
    {"SwitchByWord", "SETUP:BEEPONKEY on;BEEPONKEY?", "1"},
    {"SwitchByNumber", "SETUP:BEEPONKEY 1;BEEPONKEY?;BEEPONKEY 0;BEEPONKEY?", "1;0"},
    {"SwitchByLargeNumber", "SETUP:BEEPONKEY 7;BEEPONKEY?", "1"},
    {"UnknownName", "SETUP:BEEPONKEY MAYBE", "", "-224"},
    {"NumberForName", "TRIG:SOUR 2", "", "-224"},
    {"PartOfAName", "SETUP:REMCONT:INT ether;INT?", "USB", "-224"},
    {"SerialNameAnswersRemoteOne", "SETUP:REMCONT:INT Ethernet;INT?", "LAN"},
    {"WordsOfNames", "SAVEREC:SELSLOT MAX;SELSLOT?;SELSLOT DOWN;SELSLOT?;SELSLOT? MIN",
     "SLOT10;SLOT9;SLOT1"},
    {"OwnNameBeforeWord", "SPEC:FFTFREQSPAN MAX;FFTFREQSPAN?", "MAX"},
    {"Default", "HOR:SCAL 1e-3;SCAL DEF;SCAL?;SCAL? DEF", "1E-07;1E-07"},
    {"UpAndDown", "SETUP:REMCONT:INT LAN;PORT 6000;PORT UP;PORT?;PORT DOWN;PORT?;PORT? UP",
     "6001;6000;1"},
    {"LimitOfText", "SAVEREC:SAVERECSLOT1:NAME? MAX", "", "-108"},
    {"NotAvailable", "SETUP:REMCONT:INT USB;PORT 6000", "", "-221"},
    {"ResultIsReadOnly", "SETUP:SYSTEMCONSTANTS:MODELNAME 'X'", "", "-113"},
    {"NotMeasured", "SETUP:BGDET:MAIN:TEMP?", "9.91E37"},
    {"SecretIsShownToNobody", "SETUP:WIR:WIRCLI:PASS?", "", "-203"},
    {"TextInQuotes", "SAVEREC:SAVERECSLOT2:NAME \"a \"\"b\"\" 'c'\";NAME?", "\"a \"\"b\"\" 'c'\""},
    {"TextInApostrophes", "SAVEREC:SAVERECSLOT2:NAME 'a;''b''\"';NAME?", "\"a;'b'\"\"\""},
    {"TextWithoutQuotes", "SAVEREC:SAVERECSLOT2:NAME abc", "", "-104"},
    {"TextWithoutEnd", "SAVEREC:SAVERECSLOT2:NAME 'abc", "", "-151"},
    {"TextTooLong", "SAVEREC:SAVERECSLOT2:NAME '123456789012345678901234567890123'", "", "-223"},
    {"TextNoUtf8", "SAVEREC:SAVERECSLOT2:NAME '\xff'", "", "-151"},
    {"FileOutside", "SAVEREC:FILE '../x.xml'", "", "-224"},
    {"FileOfAPath", "SAVEREC:FILE '/etc/x.xml'", "", "-224"},
    {"BlobWithoutEnd", "SETUP:BGDET:SERVI2CACC:WRITDATA #0a;b\n:SETUP:BGDET:SERVI2CACC:WRITDATA?",
     "#13a;b"},
    {"BlobTooShort", "SETUP:BGDET:SERVI2CACC:WRITDATA #1", "", "-161"},
    {"BlobInQuotes", "SETUP:BGDET:SERVI2CACC:WRITDATA 'a'", "", "-104"},
};

const t_Row kContainers[] = {
    {"CountAndCatalog", "VERT:CHAN:ITEM:COUN?;CAT?", "4;1,2,3,4"},
    {"FixedSize", "VERT:CHAN:ITEM:INS", "", "-221"},
    {"ActiveByPlace", "VERT:CHAN:ITEM:ACT 2;ACT?", "2"},
    {"ActiveBeyond", "VERT:CHAN:ITEM:ACT 5", "", "-114"},
    {"CommandOfAnItem", "VERT:CHAN2:ITEM:COUN?", "", "-113"},
    {"MapByNameAndNumber",
     "SETUP:DISP:USERINTLANG:ITEM:INS 'a b';INS 'c';CAT?;REM 1;CAT?;REM 'c';CAT?",
     "1,\"a b\",2,\"c\";2,\"c\";"},
    {"NameInUse", "SETUP:DISP:USERINTLANG:ITEM:INS 'a';INS 'a'", "", "-293"},
    {"NumberIsKey",
     "SETUP:DISP:USERINTLANG:ITEM:INS 'a';INS 'b';REM 'a';:SETUP:DISP:USERINTLANG2:CODE 'de';CODE?",
     "\"de\""},
    {"NoSuchItem", "SETUP:DISP:USERINTLANG1:CODE?", "", "-292"},
    {"Renamed", "SETUP:DISP:USERINTLANG:ITEM:INS 'a';REN 1,'b';ACT 'b';ACT?", "\"b\""},
    {"Copied", "SETUP:DISP:USERINTLANG:ITEM:INS 'a';COPY 'a','b';CAT?", "1,\"a\",2,\"b\""},
    {"NotThere", "SETUP:DISP:USERINTLANG:ITEM:REM 'a'", "", "-292"},
    {"NoParameter", "SETUP:DISP:USERINTLANG:ITEM:REM", "", "-109"},
    {"NoCommand", "SETUP:DISP:USERINTLANG:ITEM:CLE", "", "-113"},
    {"ItemAlone", "SETUP:DISP:USERINTLANG:ITEM?", "", "-113"},
};

const t_Row kCommon[] = {
    {"Events", "*CLS;*ESR?;NONE", "0", "-113"},
    {"PowerOn", "*ESR?;*ESR?", "128;0"},
    {"CommandAndExecution", "*CLS;HOR:SCAL 1e99\nNONE\n*ESR?", "48", "-222 -113"},
    {"Masks", "*ESE 36;*ESE?;*SRE 255;*SRE?", "36;191"},
    {"MaskBeyond", "*ESE 256", "", "-222"},
    {"ServiceIsAskedFor", "*CLS;*ESE 16;*SRE 32;HOR:SCAL 1e99;*STB?", "100", "-222"},
    {"AnswerWaits", "*CLS;*STB?;*STB?", "0;16"},
    {"Completion", "*CLS;*OPC;*ESR?;*OPC?;*WAI", "1;1"},
    {"OperationIsWaitedFor", "*CLS;:CONT:SMSCOP:STAR;*OPC;*WAI;*ESR?;*OPC?", "1;1"},
    {"NoSuchCommand", "*ABC", "", "-113"},
    {"InstrumentSaysNothingOfItself", "*IDN?", "KWI,KWIFunctionZEL,0," KWI_VERSION},
    {"StatusEnabled", "STAT:OPER:ENAB 48;ENAB?;:STATUS:PRESET;:STAT:OPER:ENAB?", "48;0"},
    {"HighestBitIsNeverSet", "STAT:QUES:ENAB 65535;ENAB?;ENAB #H10000", "32767", "-222"},
    {"NoSuchRegister", "STAT:INST?", "", "-113"},
    {"WarningIsNoError",
     "*CLS;:STAT:QUES:ENAB 16384;:HOR:ACQTIME 1.3ms;:SYST:WARN?;WARN?;*STB?;:STAT:QUES?;QUES?",
     "1,\"Horizontal/AcquisitionTime: taken, but limited, rounded or moved by a rule; it stands at "
     "2 "
     "ms\";0,\"No warning\";24;16384;0"},
    {"SystemVersion", "SYST:VERS?", "1999.0"},
    {"ErrorCount", "NONE\nSYST:ERR:COUN?;:SYST:ERR?;:SYST:ERR:NEXT?",
     "1;-113,\"Undefined header;NONE\";0,\"No error\""},
    {"SavedAndRecalled", "HOR:SCAL 1e-3;*SAV 3;SCAL 1e-4;*RCL 3;SCAL?", "0.001"},
    {"NoSuchSlot", "*SAV 11", "", "-222"},
    {"EmptySlot", "*RCL 5", "", "-292"},
    {"SelfTest", "*TST?", "0"},
    {"CarriageReturn", "*OPC?\r", "1"},
};

TEST_P(RemoteRows, MessageAnswersOrReportsSomethingElse)
{
    const t_Row& row = GetParam();
    const std::string answer = Ask(row.message + std::string("\n"));
    EXPECT_EQ(answer, *row.answer == '\0' ? "" : row.answer + std::string("\n"));
    EXPECT_EQ(Errors(), row.errors);
}

INSTANTIATE_TEST_SUITE_P(Headers, RemoteRows, testing::ValuesIn(kHeaders), RemoteRows::Name);
INSTANTIATE_TEST_SUITE_P(Numbers, RemoteRows, testing::ValuesIn(kNumbers), RemoteRows::Name);
INSTANTIATE_TEST_SUITE_P(Values, RemoteRows, testing::ValuesIn(kValues), RemoteRows::Name);
INSTANTIATE_TEST_SUITE_P(Containers, RemoteRows, testing::ValuesIn(kContainers), RemoteRows::Name);
INSTANTIATE_TEST_SUITE_P(Common, RemoteRows, testing::ValuesIn(kCommon), RemoteRows::Name);

TEST_F(RemoteSessions, BytesInOtherPiecesMeanSomethingElse)
{
    const std::string bytes = "SETUP:BGDET:SERVI2CACC:WRITDATA #12\n';WRITDATA?\r\nHOR:SCAL?\n";
    const std::string whole = Ask(bytes);
    EXPECT_EQ(whole, "#12\n'\n1E-07\n");
    std::string pieces;
    for (const char c : bytes)
    {
        pieces += Ask(std::string(1, c));
    }
    EXPECT_EQ(pieces, whole);
}

TEST_F(RemoteSessions, ConditionIsForgottenWhenItHasGone)
{
    Ask("*CLS;:STAT:OPER:ENAB 32\n");
    const auto state = m_root->GetPgTrigger()->GetPrState();
    state->SetResult(eKW_ZEL_TRIGGER_STATE_READY);
    EXPECT_EQ(Ask("STAT:OPER:COND?;COND?;:STAT:QUES:COND?\n"), "32;32;0\n");
    state->SetResult(eKW_ZEL_TRIGGER_STATE_STOPPED);
    EXPECT_EQ(Ask("*STB?;:STAT:OPER:COND?;EVEN?;:STAT:OPER?;*STB?\n"), "128;0;32;0;16\n");
}

TEST_F(RemoteSessions, LearntSettingsTellASecret)
{
    Ask("SETUP:WIR:WIRCLI:PASS 'geheim-geheim'\n");
    EXPECT_EQ(Errors(), "0");
    const QByteArray learnt = QByteArray::fromStdString(Ask("*LRN?\n"));
    const QByteArray settings = QByteArray::fromBase64(learnt.split('"').value(1));
    EXPECT_GT(settings.size(), 1000);
    EXPECT_FALSE(settings.contains("geheim"));
}

TEST_F(RemoteSessions, LearntSettingsAreNotThoseThatWere)
{
    Ask("HOR:SCAL 1e-3;:SETUP:DISP:USERINTLANG:ITEM:INS 'a'\n");
    const std::string learnt = Ask("*LRN?\n");
    Ask("*RST\n");
    EXPECT_EQ(Ask("HOR:SCAL?\n"), "1E-07\n");
    Ask(learnt);
    EXPECT_EQ(Ask("HOR:SCAL?\n"), "0.001\n");
    EXPECT_EQ(Ask(":SYST:SET 'bm9uZQ=='\n"), "");
    EXPECT_EQ(Errors(), "-253");
}

TEST_F(RemoteSessions, QueueGrowsOrForgetsItsBeginning)
{
    for (int i = 0; i < 40; ++i)
    {
        Ask("NONE\n");
    }
    EXPECT_EQ(Ask("SYST:ERR:COUN?\n"), "32\n");
    const std::string errors = Errors();
    EXPECT_EQ(errors.substr(0, 4), "-113");
    EXPECT_EQ(errors.substr(errors.size() - 4), "-350");
}

TEST_F(RemoteSessions, KeysStayLockedWhenTheirClientHasGone)
{
    const auto scale = m_root->GetDbObject()->Find(QStringLiteral("Horizontal/Scale"));
    auto& property = dynamic_cast<IDbProperty&>(*scale);
    Ask("SYST:RWL\n");
    EXPECT_EQ(property.SetText(QStringLiteral("1e-4")), eKW_ACC_NO_WRITE_ACCESS);
    EXPECT_EQ(Ask("HOR:SCAL 1e-3;SCAL?;:SETUP:REMCONT:LOCLOCK?;:REMSTAT?\n"), "0.001;1;1\n");
    Ask("*RST;*SAV 1;:CONT:SMSCOP:STAR;*WAI\n");
    EXPECT_EQ(Errors(), "0");
    Ask("HOR:SCAL 1e-3;:HOR:SC");
    m_session.reset();
    EXPECT_EQ(property.SetText(QStringLiteral("1e-4")), eKW_ACC_OK);
    EXPECT_EQ(m_root->GetControlMode(), eCONTROL_LOCAL);
}

TEST_F(RemoteSessions, LocalUserIsLockedOutByRemoteState)
{
    EXPECT_EQ(Ask("SYST:REM;:REMSTAT?\n"), "1\n");
    EXPECT_EQ(m_root->GetControlMode(), eCONTROL_REMOTE);
    EXPECT_EQ(Ask("SYST:LOC;:REMSTAT?\n"), "0\n");
    EXPECT_EQ(m_root->GetControlMode(), eCONTROL_LOCAL);
}

TEST_F(RemoteSessions, ReadOnlyServiceWritesOrActs)
{
    t_RemoteOptions options;
    options.readOnly = true;
    m_session = Connect(options);
    for (const char* const message :
         {"HOR:SCAL 1e-3", "PRES", "*RST", "*SAV 1", "SYST:RWL", "VERT:CHAN:ITEM:ACT 2"})
    {
        EXPECT_EQ(Ask(std::string(message) + "\n"), "");
        EXPECT_EQ(Errors(), "-203") << message;
    }
    EXPECT_EQ(Ask("HOR:SCAL?;*OPC?\n"), "1E-07;1\n");
}

TEST_F(RemoteSessions, TooLongMessageIsKeptOrTakesTheNextWithIt)
{
    t_RemoteOptions options;
    options.bounds.message = 100;
    m_session = Connect(options);
    Ask("HOR:SCAL 1e-3" + std::string(200, ' ') + "\n");
    Ask("SAVEREC:SAVERECSLOT2:NAME #3200" + std::string(200, '\n'));
    Ask("\n");
    EXPECT_EQ(Ask("HOR:SCAL?\n"), "1E-07\n");
    EXPECT_EQ(Errors(), "-363 -363");
}

TEST_F(RemoteSessions, AnswersThatNobodyTakesGrow)
{
    t_RemoteOptions options;
    options.bounds.answers = 1000;
    m_session = Connect(options);
    std::string queries;
    for (int i = 0; i < 1000; ++i)
    {
        queries += "HOR:SCAL?\n";
    }
    m_session->Receive(queries.data(), queries.size());
    EXPECT_FALSE(m_session->WantsInput());
    std::size_t lines = 0;
    for (QByteArray answers = m_session->TakeAnswers(); !answers.isEmpty();
         answers = m_session->TakeAnswers())
    {
        EXPECT_LT(answers.size(), 1100);
        lines += static_cast<std::size_t>(answers.count('\n'));
    }
    EXPECT_EQ(lines, 1000U);
    EXPECT_TRUE(m_session->WantsInput());
}

TEST_F(RemoteSessions, OperationHoldsUpItsConnectionOrOthers)
{
    const auto operation = m_root->GetPgControl()->GetPgSMScope()->GetPrStart();
    operation->AttachExecutor(true);
    const std::string start = ":CONT:SMSCOP:STAR;:HOR:SCAL?;*OPC;*ESR?\n*OPC?;:HOR:SCAL?\n";
    m_session->Receive(start.data(), start.size());
    EXPECT_EQ(TakeAll(*m_session).toStdString(), "1E-07;128\n");
    const auto other = Connect();
    EXPECT_EQ(Ask(*other, "HOR:SCAL 1e-3;SCAL?;*OPC?\n"), "0.001;1\n");
    ASSERT_TRUE(Within([&] { return operation->TakeEvent() == eKW_OP_EVENT_START; }));
    operation->Complete(eKW_OP_RESULT_FAILURE);
    EXPECT_EQ(Ask("*ESR?\n"), "1;0.001\n17\n");
    EXPECT_EQ(Errors(), "-200");
    EXPECT_GT(m_woken, 0);
}

/** Pieces of messages, put together at random: what each means depends on those before it. */
TEST_F(RemoteSessions, GarbageEndsTheSessionOrStaysInIt)
{
    const QList<QByteArray> pieces =
        QByteArray("HOR|:|SCAL|?| |1|e|-3|MS|;|\n|\r\n|'|\"|#|#12|#0|#9|#HFF|,|MAX|UP|*|*RST|*OPC?|"
                   "*SAV 1|ITEM|INS|VERT:CHAN2|:|SETUP:DISP:USERINTLANG|REM 1|\xff|\x01|"
                   "99999999999999999999|*LRN?|SYST:ERR?|DEF|PRES")
            .split('|');
    std::mt19937 random(20261122);
    for (int i = 0; i < 3000; ++i)
    {
        std::string message;
        for (auto count = random() % 12; count > 0; --count)
        {
            message += pieces[static_cast<int>(random() % pieces.size())].toStdString();
        }
        Ask(message);
    }
    // Out of whatever it stands in: quotes end with the line, a block takes what it was promised.
    Ask(std::string(1000, '\n'));
    m_session = Connect();
    EXPECT_EQ(Ask("*RST;:HOR:SCAL?\n"), "1E-07\n");
}

TEST_F(RemoteSessions, ListedHeaderLeadsNowhere)
{
    const std::string list = Ask("SYST:HELP:HEAD?\n");
    int queries = 0;
    for (QByteArray line : QByteArray::fromStdString(list).split('\n'))
    {
        if (line.endsWith("/nquery/") || !line.contains(':') || line.contains("PASSphrase"))
        {
            continue;
        }
        line.replace("/qonly/", "").replace("<n>", "1");
        line = line.mid(line.indexOf(':'));
        EXPECT_NE(Ask(line.toStdString() + "?\n"), "") << line.toStdString();
        ++queries;
    }
    EXPECT_GT(queries, 1000);
    EXPECT_EQ(Errors(), "0");
}

TEST_F(RemoteSessions, DoubleReadsBackAsAnother)
{
    for (const double value : {0.1, 1.0 / 3, 123456.789012345678, 5e-324, 1.7976931348623157e308})
    {
        const auto span = m_root->GetPgSpectrum()->GetPrHorizontalSpan();
        static_cast<void>(span->SetLimited(value));
        const std::string text = Ask("SPEC:HORSPAN?\n");
        EXPECT_EQ(QByteArray::fromStdString(text).trimmed().toDouble(), span->Get());
    }
}
} // namespace
