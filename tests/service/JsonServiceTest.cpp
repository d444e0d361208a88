// SPDX-License-Identifier: MIT
// The tree in JSON without a network: requests, what they answer, and what they leave.

#include "JsonService.h"
#include "HttpGuard.h"
#include "IKWFunctionChannel.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionMask.h"
#include "IKWFunctionSpectrum.h"
#include "IKWFunctionVertical.h"
#include "IKWFunctionZEL.h"
#include "JsonChanges.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <array>
#include <gtest/gtest.h>
#include <ostream>
#include <random>

namespace
{
constexpr char kJsonSecret[] = "correct horse";
const QString kPassphrase = QStringLiteral("Setup/Wireless/WirelessClient/Passphrase");

/** A value of a document by the names and numbers that lead to it, as compact JSON. */
std::string Pick(const QByteArray& document, const QString& way)
{
    QJsonValue value = QJsonDocument::fromJson(document).object();
    for (const QString& name : way.split(QLatin1Char('.'), Qt::SkipEmptyParts))
    {
        value = value.isArray() ? value.toArray().at(name.toInt()) : value[name];
    }
    const QByteArray json = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return json.mid(1, json.size() - 2).toStdString();
}

class JsonRequests : public testing::Test
{
protected:
    void SetUp() override { m_root->SetSettingsFolder(m_folder.path()); }

    /** "METHOD /path {body}". */
    t_JsonAnswer Ask(const QByteArray& request) const
    {
        const auto method = request.indexOf(' ');
        const QByteArray rest = request.mid(method + 1);
        const auto target = rest.indexOf(' ');
        return m_service.Answer({request.left(method), target < 0 ? rest : rest.left(target),
                                 target < 0 ? QByteArray() : rest.mid(target + 1)});
    }
    static QByteArray Write(const QByteArray& path, const QByteArray& value)
    {
        return R"(POST /write {"writes":[{"path":")" + path + R"(","value":)" + value + "}]}";
    }

    QTemporaryDir m_folder;
    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    CJsonService m_service{m_root, {}};
};

struct t_JsonRow
{
    const char* name;
    const char* request;
    int status;
    const char* way;              ///< to a value of the answer
    const char* value;            ///< of it, in JSON
    const char* before = nullptr; ///< a request that comes first
};

std::ostream& operator<<(std::ostream& out, const t_JsonRow& row)
{
    return out << row.request;
}

class JsonRows : public JsonRequests, public testing::WithParamInterface<t_JsonRow>
{
public:
    static std::string Name(const testing::TestParamInfo<t_JsonRow>& info)
    {
        return info.param.name;
    }
};

TEST_P(JsonRows, AnswerOtherwise)
{
    const t_JsonRow& row = GetParam();
    if (row.before != nullptr)
    {
        EXPECT_EQ(Ask(row.before).status, 200);
    }
    const t_JsonAnswer answer = Ask(row.request);
    EXPECT_EQ(answer.status, row.status) << answer.body.toStdString();
    EXPECT_EQ(Pick(answer.body, QString::fromLatin1(row.way)), row.value)
        << answer.body.left(2000).toStdString();
}

const t_JsonRow kJsonReads[] = {
    {"Escaped", "GET /tree?path=Vertical%2FChannel%5B1%5D%2FOffset", 200, "path",
     "\"Vertical/Channel[1]/Offset\""},
    {"SlashAtTheEnd", "GET /tree?path=Horizontal/&depth=0", 200, "kind", "\"group\""},
    {"Missing", "GET /tree?path=Horizontal/Nothing", 404, "name", "\"NOT_FOUND\""},
    {"DepthZero", "GET /tree?path=Horizontal&depth=0", 200, "properties", "null"},
    {"DepthOne", "GET /tree?path=Horizontal&depth=1", 200, "properties.Scale.unit", "\"s/div\""},
    {"Items", "GET /tree?path=Vertical/Channel&depth=1", 200, "items.3.path",
     "\"Vertical/Channel[3]\""},
    {"NotSelectable", "GET /tree?path=Horizontal/ZELMode&detail=full", 200, "values.0.selectable",
     "true"},
    {"DiffersFromDefault", "GET /tree?path=Horizontal/Scale&detail=full", 200, "isDefault", "false",
     R"(POST /write {"writes":[{"path":"Horizontal/Scale","value":"1 ms"}]})"},
    {"Why", "GET /why?path=Vertical/Channel[2]/Enabled", 200, "starts.0.sources.1",
     "\"Vertical/Channel[each]/Enabled\""},
    {"FilesOfANumber", "GET /files?path=Horizontal/Scale", 422, "name", "\"WRONG_KIND\""},
    {"FilesOfNoNode", "GET /files?path=none", 404, "name", "\"NOT_FOUND\""},
    {"Extensions", "GET /tree?path=SaveRecall/File&detail=full", 200, "openExtensions",
     R"(["xml","csv"])"},
    {"OtherPath", "GET /trees", 404, "code", "20"},
    {"OtherMethod", "POST /tree", 405, "code", "29"},
    {"Changes", "GET /changes", 426, "code", "29"},
};

const t_JsonRow kJsonWrites[] = {
    {"Number", R"(POST /write {"writes":[{"path":"Horizontal/Scale","value":0.002}]})", 200,
     "writes.0.now.value", "0.002"},
    {"WithUnit", R"(POST /write {"writes":[{"path":"Horizontal/Scale","value":"2 ms"}]})", 200,
     "writes.0.now.value", "0.002"},
    {"UnknownName", R"(POST /write {"writes":[{"path":"Horizontal/ZELMode","value":"x"}]})", 422,
     "writes.0.name", "\"UNKNOWN_VALUE\""},
    {"Result", R"(POST /write {"writes":[{"path":"Mask/TestedAcquisitions","value":1}]})", 403,
     "writes.0.name", "\"READ_ONLY\""},
    {"Group", R"(POST /write {"writes":[{"path":"Horizontal","value":1}]})", 422, "writes.0.name",
     "\"WRONG_KIND\""},
    {"OneByOne",
     R"(POST /write {"writes":[{"path":"x","value":1},{"path":"Horizontal/Scale","value":1}],
        "together":false})",
     200, "writes.1.code", "0"},
    {"RoundedWhole",
     R"(POST /write {"writes":[{"path":"Setup/SetupDateTime/RequestedTime","value":9007199254740993}]})",
     422, "writes.0.name", "\"BAD_TEXT\""},
    {"WholeAsText",
     R"(POST /write {"writes":[{"path":"Setup/SetupDateTime/RequestedTime","value":"9007199254740993"}]})",
     200, "writes.0.now.value", "\"9007199254740993\""},
    {"FileElsewhere", R"(POST /write {"writes":[{"path":"SaveRecall/File","value":"../x.xml"}]})",
     422, "writes.0.name", "\"BAD_NAME\""},
    {"NoWay", R"(POST /write {"writes":[{"path":"Horizontal/Scale"}]})", 400, "code", "9"},
    {"TwoWays", R"(POST /write {"writes":[{"path":"x","value":1,"steps":1}]})", 400, "code", "9"},
    {"NoJson", R"(POST /write {"writes":)", 400, "name", "\"BAD_TEXT\""},
    {"NoObject", "POST /write []", 400, "detail", "\"the body is no object\""},
    {"RemoveNone",
     R"(POST /items {"path":"Spectrum/SpectrumMarkers/SpectrumMarker","do":"remove","key":"7"})",
     422, "name", "\"BAD_INDEX\""},
    {"MoveNone",
     R"(POST /items {"path":"Spectrum/SpectrumMarkers/SpectrumMarker","do":"move","key":"0","to":"99"})",
     422, "name", "\"BAD_INDEX\""},
    {"MoveInMap",
     R"(POST /items {"path":"Setup/Display/UserInterfaceLanguage","do":"move","key":"0","to":"0"})",
     422, "name", "\"WRONG_KIND\""},
    {"ItemsOfGroup", R"(POST /items {"path":"Horizontal","do":"insert"})", 422, "name",
     "\"WRONG_KIND\""},
    {"Redo", "POST /redo", 409, "name", "\"NOTHING_TO_DO\""},
    {"RunSetting", R"(POST /run {"path":"Horizontal/Scale"})", 422, "name", "\"WRONG_KIND\""},
    {"SettingsOfNoFormat", "GET /settings?format=../a", 400, "name", "\"BAD_TEXT\""},
    {"DamagedSettings", R"(POST /settings {"format":"xml","settings":"<"})", 422, "name",
     "\"FILE_NOT_UNDERSTOOD\""},
    {"SaveElsewhere", R"(POST /save {"file":"../a.xml"})", 422, "name", "\"BAD_NAME\""},
    {"SaveOther", R"(POST /save {"file":"a.sh"})", 422, "name", "\"BAD_NAME\""},
    {"Recall", R"(POST /recall {"file":"a.xml"})", 200, "code", "0",
     R"(POST /save {"file":"a.xml"})"},
    {"RecallNone", R"(POST /recall {"file":"b.xml"})", 404, "name", "\"FILE_NOT_READABLE\""},
};

INSTANTIATE_TEST_SUITE_P(Reads, JsonRows, testing::ValuesIn(kJsonReads), JsonRows::Name);
INSTANTIATE_TEST_SUITE_P(Writes, JsonRows, testing::ValuesIn(kJsonWrites), JsonRows::Name);

TEST_F(JsonRequests, RefusedTransactionLeavesATrace)
{
    const t_JsonAnswer answer = Ask(R"(POST /write {"writes":[{"path":"Horizontal/Scale",)"
                                    R"("value":1},{"path":"Horizontal/Scale","value":-1}]})");
    EXPECT_EQ(Pick(answer.body, QStringLiteral("kept")), "false");
    EXPECT_EQ(m_root->GetPgHorizontal()->GetPrScale()->Get(), 1e-7);
    EXPECT_FALSE(m_root->CanUndo());
}

TEST_F(JsonRequests, DoubleReadsBackAsAnother)
{
    const auto span = m_root->GetPgSpectrum()->GetPrHorizontalSpan();
    for (const double value : {0.1, 1.0 / 3, 123456.789012345678, 5e-324, 1.7976931348623157e308})
    {
        static_cast<void>(span->SetLimited(value));
        const double present = span->Get();
        const std::string read =
            Pick(Ask("GET /tree?path=Spectrum/HorizontalSpan").body, QStringLiteral("value"));
        EXPECT_EQ(std::stod(read), present);
        EXPECT_LE(Ask(Write("Spectrum/HorizontalSpan", QByteArray::fromStdString(read))).status,
                  200);
        EXPECT_EQ(span->Get(), present);
    }
}

TEST_F(JsonRequests, LargeOrInfiniteNumberLosesItsValue)
{
    m_root->GetPgMask()->GetPrTestedAcquisitions()->SetResult(UINT64{18446744073709551615U});
    EXPECT_EQ(Pick(Ask("GET /tree?path=Mask/TestedAcquisitions").body, QStringLiteral("value")),
              "\"18446744073709551615\"");
    for (const char* const number : {"nan", "inf", "-inf"})
    {
        CJsonWriter json;
        NJson::WriteValue(json, QString::fromLatin1(number), QStringLiteral("double"));
        EXPECT_EQ(json.GetText(), "null");
    }
}

TEST_F(JsonRequests, SecretLeaves)
{
    const QByteArray path = kPassphrase.toLatin1();
    CTreeDiffer differ(m_root, true);
    QByteArray shown = Ask(Write(path, QByteArray("\"") + kJsonSecret + '"')).body;
    EXPECT_EQ(std::dynamic_pointer_cast<IDbProperty>(m_root->GetDbObject()->Find(kPassphrase))
                  ->GetText()
                  .toStdString(),
              kJsonSecret);
    shown += Ask("GET /tree?detail=full").body + Ask("GET /why?path=" + path).body;
    shown +=
        Ask(R"(POST /trial {"writes":[{"path":")" + path + R"(","value":"battery staple"}]})").body;
    shown += Ask(Write(path, "\"short\"")).body + Ask("GET /history").body;
    for (const t_TreeChange& change : differ.Look())
    {
        shown += change.before + change.now;
    }
    for (const char* const secret : {kJsonSecret, "battery staple", "\"short\""})
    {
        EXPECT_FALSE(shown.contains(secret)) << secret;
    }
}

TEST_F(JsonRequests, TrialTouchesTheTreeOrForgetsWhatIsInNoFile)
{
    EXPECT_EQ(Ask(Write("Horizontal/Scale", "0.002")).status, 200);
    long long counter = 0;
    m_root->HasChanged(counter);
    const t_JsonAnswer answer =
        Ask(R"(POST /trial {"writes":[{"path":"Horizontal/Scale","value":0.005},)"
            R"({"path":"Horizontal/Scale","value":1e99}]})");
    EXPECT_EQ(Pick(answer.body, QStringLiteral("changes.0.before.value")), "0.002");
    EXPECT_EQ(Pick(answer.body, QStringLiteral("changes.0.now.value")), "0.005");
    EXPECT_EQ(Pick(answer.body, QStringLiteral("changes.0.by")), "[]");
    EXPECT_EQ(Pick(answer.body, QStringLiteral("changes.1.by.0.group")), "\"Horizontal\"");
    EXPECT_EQ(Pick(answer.body, QStringLiteral("writes.1.name")), "\"ABOVE_MAXIMUM\"");
    EXPECT_EQ(Pick(answer.body, QStringLiteral("unlike")), "[]");
    EXPECT_FALSE(m_root->HasChanged(counter));
    EXPECT_EQ(GetZELRoot(), m_root);
}

TEST_F(JsonRequests, MovedItemIsAnotherOneOrNotActive)
{
    const QByteArray markers = "Spectrum/SpectrumMarkers/SpectrumMarker";
    const auto items = [&](const QByteArray& rest)
    { return Ask("POST /items {\"path\":\"" + markers + "\",\"do\":" + rest + "}").status; };
    for (int i = 0; i < 3; ++i)
    {
        ASSERT_EQ(items(R"("insert")"), 200);
    }
    const auto read = [&]
    {
        const QByteArray all = Ask("GET /tree?path=" + markers + "&depth=2").body;
        std::string found = Pick(all, QStringLiteral("active"));
        for (const char* const way : {"items.0", "items.1", "items.2"})
        {
            found += Pick(all, QLatin1String(way) + QStringLiteral(".properties.Frequency.value"));
        }
        return found;
    };
    for (const char* const index : {"0", "1", "2"})
    {
        ASSERT_EQ(Ask(Write(markers + "[" + index + "]/Frequency", QByteArray("1") + index + "000"))
                      .status,
                  200);
    }
    ASSERT_EQ(items(R"("activate","key":"0")"), 200);
    const std::string before = read();
    ASSERT_EQ(items(R"("move","key":"0","to":"2")"), 200);
    EXPECT_EQ(read(), "\"2\"110001200010000");
    ASSERT_EQ(items(R"("move","key":"2","to":"0")"), 200);
    EXPECT_EQ(read(), before);
    ASSERT_EQ(items(R"("move","key":"1","to":"0")"), 200);
    EXPECT_EQ(Ask("POST /undo").status, 200);
    EXPECT_EQ(read(), before) << "more than one step";
}

TEST_F(JsonRequests, ReadOnlyServiceWrites)
{
    t_JsonOptions options;
    options.readOnly = true;
    const CJsonService reader(m_root, options);
    const QJsonObject paths = QJsonDocument::fromJson(CJsonService::Describe())
                                  .object()[QStringLiteral("paths")]
                                  .toObject();
    int refused = 0;
    for (const QString& path : paths.keys())
    {
        if (paths[path].toObject().contains(QStringLiteral("post")) &&
            path != QLatin1String("/trial"))
        {
            EXPECT_EQ(reader.Answer({"POST", path.toLatin1(), "{}"}).status, 403)
                << path.toStdString();
            ++refused;
        }
    }
    EXPECT_EQ(refused, 9);
}

TEST_F(JsonRequests, GarbageEndsTheService)
{
    const QList<QByteArray> pieces =
        QByteArray(R"({ } [ ] : , " path writes value "path" "writes" 1e9 - null true)"
                   R"( Horizontal/Scale \u0 [[[[[[[ 9e999 "default":true do insert key file)"
                   " \xff")
            .split(' ');
    constexpr std::array kTargets{"/write", "/trial?",      "/items",          "/run",
                                  "/save",  "/tree?path=%", "/why?path=[[%00", "/preset"};
    std::mt19937 random(20261122);
    for (int i = 0; i < 4000; ++i)
    {
        QByteArray body = "{\"writes\":";
        for (auto count = random() % 10; count > 0; --count)
        {
            body += pieces[static_cast<int>(random() % pieces.size())];
        }
        const char* const target = kTargets[random() % kTargets.size()];
        const int status = m_service.Answer({i % 3 ? "POST" : "GET", target, body}).status;
        EXPECT_TRUE(status == 200 || (status >= 400 && status < 500)) << body.toStdString();
    }
    EXPECT_EQ(m_service.Answer({"POST", "/write", QByteArray(1 << 20, '[')}).status, 400);
}

struct t_Sender
{
    const char* name;
    t_HttpSender sender;
    int status;
};

TEST(HttpGuard, LetsInAPageOfAnotherHost)
{
    const t_Sender kSenders[] = {
        {"Address", {"127.0.0.1:5026", "", "", ""}, 200},
        {"Localhost", {"LocalHost:5026", "", "", ""}, 200},
        {"IPv6", {"[::1]:5026", "", "", ""}, 200},
        {"OwnPage", {"127.0.0.1:5026", "http://127.0.0.1:5026", "", ""}, 200},
        {"Rebound", {"evil.example:5026", "", "", ""}, 421},
        {"NoHost", {"", "", "", ""}, 421},
        {"Prefix", {"127.0.0.1.evil.example", "", "", ""}, 421},
        {"OtherPage", {"127.0.0.1:5026", "http://evil.example", "", ""}, 403},
        {"OtherPort", {"127.0.0.1:5026", "http://127.0.0.1:80", "", ""}, 403},
        {"Sandbox", {"127.0.0.1:5026", "null", "", ""}, 403},
    };
    for (const t_Sender& row : kSenders)
    {
        EXPECT_EQ(NHttp::Check(row.sender, nullptr), row.status) << row.name;
    }
}

class JsonChanges : public testing::Test
{
protected:
    void SetUp() override { m_changes.Look(); }

    void Offset(double value) const
    {
        m_root->GetPgVertical()->GetPgChannel()->GetItem(0)->GetPrOffset()->Set(value);
    }
    /** The next message; empty when there is none. */
    std::string Take(t_Subscription& subscription, const char* way)
    {
        m_changes.Look();
        const auto message = m_changes.Take(subscription);
        return message ? Pick(*message, QString::fromLatin1(way)) : std::string();
    }

    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    CJsonChanges m_changes{m_root, 1U << 20U};
    t_Subscription m_all{{QStringLiteral("Vertical/Channel[0]/Offset")}, 0};
};

TEST_F(JsonChanges, SlowSubscriberIsToldMoreThanTheLast)
{
    EXPECT_EQ(Take(m_all, "number"), "");
    for (const double offset : {0.1, 0.2, 0.3})
    {
        Offset(offset);
        m_changes.Look();
    }
    t_Subscription quick = m_all;
    const auto message = m_changes.Take(m_all);
    ASSERT_TRUE(message);
    EXPECT_EQ(Pick(*message, QStringLiteral("changes.0.now.value")), "0.3");
    EXPECT_EQ(Pick(*message, QStringLiteral("changes.1")), "null");
    EXPECT_EQ(Pick(*message, QStringLiteral("number")), "3");
    EXPECT_EQ(m_changes.Take(quick), message) << "made for each";
    EXPECT_EQ(Take(m_all, "number"), "");
}

TEST_F(JsonChanges, SubscriberIsToldOfOthersOrMissesWhatItLost)
{
    m_root->GetPgHorizontal()->GetPrScale()->Set(0.002);
    EXPECT_EQ(Take(m_all, "number"), "");
    Offset(0.5);
    m_changes.Look();
    t_Subscription again;
    const auto begin = [&](const QString& stream, const char* number)
    {
        const QString message =
            QStringLiteral(
                R"({"subscribe":["Vertical/Channel[0]/Offset"],"stream":"%1","number":%2})")
                .arg(stream, QLatin1String(number));
        return Pick(m_changes.Subscribe(again, message.toUtf8(), 1), QStringLiteral("resync"));
    };
    EXPECT_EQ(begin(m_changes.Stream(), "1"), "false");
    EXPECT_EQ(Take(again, "changes.0.now.value"), "0.5");
    EXPECT_EQ(begin(QStringLiteral("another"), "1"), "true");
    for (const char* const never : {"99", "-1", "1e300", "null", "\"1\""})
    {
        EXPECT_EQ(begin(m_changes.Stream(), never), "true") << never;
        EXPECT_EQ(Take(again, "number"), "");
    }
}

TEST_F(JsonChanges, WrongMessageChangesTheSubscription)
{
    for (const char* const wrong :
         {"", "[]", "{}", R"({"subscribe":"Vertical"})", R"({"subscribe":["none"]})",
          R"({"subscribe":[1]})", R"({"subscribe":["",""]})"})
    {
        t_Subscription subscription = m_all;
        EXPECT_EQ(Pick(m_changes.Subscribe(subscription, wrong, 1), QStringLiteral("name")),
                  "\"BAD_TEXT\"")
            << wrong;
        EXPECT_EQ(subscription.paths, m_all.paths);
    }
}

TEST_F(JsonChanges, BacklogGrowsOrIsForgottenInSilence)
{
    CJsonChanges small(m_root, 4096);
    small.Look();
    for (int i = 1; i < 50; ++i)
    {
        Offset(0.01 * i);
        small.Look();
    }
    const auto message = small.Take(m_all);
    ASSERT_TRUE(message);
    EXPECT_EQ(Pick(*message, QStringLiteral("resync")), "true");
    EXPECT_EQ(small.Take(m_all), nullptr) << "told twice";
    const QString stream = small.Stream();
    small.Rest();
    small.Look();
    EXPECT_NE(small.Stream(), stream) << "what moved during a rest is lost";
}

TEST_F(JsonChanges, LockoutComesAndGoesInSilence)
{
    EXPECT_EQ(Take(m_all, "control"), "");
    m_root->SetControlMode(eCONTROL_LOCAL_LOCKOUT);
    EXPECT_EQ(Take(m_all, "control"), "\"local lockout\"");
    EXPECT_EQ(Take(m_all, "control"), "") << "told again";
    m_root->SetControlMode(eCONTROL_LOCAL);
    m_changes.Look();
    Offset(0.7);
    m_changes.Look();
    t_Subscription quick = m_all;
    EXPECT_EQ(Take(quick, "control"), "\"local\"");
    EXPECT_EQ(Take(m_all, "changes.0.now.value"), "0.7");
    EXPECT_EQ(Pick(m_changes.Subscribe(m_all, R"({"subscribe":[]})", 1), QStringLiteral("control")),
              "\"local\"");
}

TEST_F(JsonChanges, ItemsComeAndGoInSilence)
{
    t_Subscription markers{{QStringLiteral("Spectrum/SpectrumMarkers")}, 0};
    IDbContainer* const array =
        std::dynamic_pointer_cast<IDbGroup>(
            m_root->GetDbObject()->Find(QStringLiteral("Spectrum/SpectrumMarkers/SpectrumMarker")))
            ->AsContainer();
    const std::string count = std::to_string(array->GetCount());
    ASSERT_EQ(array->InsertItem(QString()), eKW_ACC_OK);
    const QString path = QStringLiteral("Spectrum/SpectrumMarkers/SpectrumMarker[%1]");
    m_changes.Look();
    const auto came = m_changes.Take(markers);
    ASSERT_TRUE(came);
    EXPECT_TRUE(came->contains((path.arg(array->GetCount() - 1) + "/").toLatin1()));
    ASSERT_EQ(array->RemoveItem(QString::fromStdString(count)), eKW_ACC_OK);
    m_changes.Look();
    const auto gone = m_changes.Take(markers);
    ASSERT_TRUE(gone);
    EXPECT_TRUE(gone->contains(
        ("{\"path\":\"" + path.arg(array->GetCount()) + "\",\"removed\":true}").toLatin1()));
}
} // namespace
