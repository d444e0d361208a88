// SPDX-License-Identifier: MIT
// Pictures of records for those who draw them elsewhere.

#include "WavePictures.h"
#include "IKWFunctionChannel.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionVertical.h"
#include "IKWFunctionZEL.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

namespace
{
class WavePictures : public testing::Test
{
protected:
    /** A record whose points are their numbers, from 0. */
    void Acquire()
    {
        ASSERT_TRUE(KW_IsAccepted(m_acquisition->Arm()));
        for (UINT32 place = 0; place < eKW_PLACE_COUNT; ++place)
        {
            const std::span<std::byte> room = m_acquisition->Reserve(place);
            const UINT32 size = KW_GetPointSize(m_acquisition->GetArmed().traces[place].format);
            for (std::size_t i = 0; i < room.size() / size; ++i)
            {
                const auto sample = static_cast<INT16>(i);
                std::memcpy(&room[i * size], &sample, std::min<std::size_t>(size, sizeof sample));
            }
            m_acquisition->Advance(place, static_cast<UINT32>(room.size() / size));
        }
        ASSERT_EQ(m_acquisition->Publish({}), eKW_ACC_OK);
    }

    CWavePictures::t_Message Make(const t_WaveWish& wish)
    {
        return m_pictures.Make({wish}).front();
    }

    static QJsonObject HeadOf(const QByteArray& message)
    {
        quint32 length = 0;
        std::memcpy(&length, message.constData(), sizeof length);
        EXPECT_EQ(length % 4, 0U);
        return QJsonDocument::fromJson(message.mid(4, static_cast<int>(length))).object();
    }
    static float NumberOf(const QByteArray& message, int index)
    {
        quint32 length = 0;
        float number = 0;
        std::memcpy(&length, message.constData(), sizeof length);
        std::memcpy(&number, message.constData() + 4 + length + 4 * index, sizeof number);
        return number;
    }

    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    std::shared_ptr<IKWAcquisition> m_acquisition = KW_MakeAcquisition(m_root, 1U << 20U);
    CWavePictures m_pictures{m_root, {m_acquisition, nullptr}};
    const t_WaveWish m_screen{{100, false, 0.0, 0.0}, {}};
};

TEST_F(WavePictures, ColumnsAreNotThoseOfTheRecord)
{
    Acquire();
    const auto message = Make(m_screen);
    const QJsonObject record = HeadOf(*message)[QStringLiteral("record")].toObject();
    EXPECT_EQ(record[QStringLiteral("left")].toDouble(), -5e-7);
    EXPECT_EQ(record[QStringLiteral("right")].toDouble(), 5e-7);
    const QJsonArray traces = record[QStringLiteral("traces")].toArray();
    ASSERT_FALSE(traces.isEmpty());
    EXPECT_EQ(traces[0][QStringLiteral("name")].toString(), QStringLiteral("C1"));

    const auto reader = m_acquisition->GetStream()->MakeReader();
    const CKWRecord shown = m_acquisition->GetShown(*reader);
    const KW_TraceInfo trace = shown.GetTrace(eKW_PLACE_C1);
    std::vector<KW_MinMax> columns(100);
    const double first = (-5e-7 - trace.start) / trace.interval;
    ASSERT_EQ(shown.GetColumns(eKW_PLACE_C1, first, 1e-6 / trace.interval, columns), eKW_ACC_OK);
    const int begin = traces[0][QStringLiteral("begin")].toInt();
    for (int i = 0; i < 100; ++i)
    {
        EXPECT_FLOAT_EQ(NumberOf(*message, begin + 2 * i),
                        static_cast<float>(columns[static_cast<std::size_t>(i)].minimum));
        EXPECT_FLOAT_EQ(NumberOf(*message, begin + 2 * i + 1),
                        static_cast<float>(columns[static_cast<std::size_t>(i)].maximum));
    }
}

TEST_F(WavePictures, SettlingPointsAreDrawn)
{
    Acquire();
    const KW_TraceInfo trace = m_acquisition->GetArmed().traces[eKW_PLACE_C1];
    ASSERT_GT(trace.settlingPoints, 0U);
    const double settled = trace.start + trace.settlingPoints * trace.interval;
    const auto message = Make({{10, true, trace.start, settled + 0.5 * trace.interval}, {}});
    EXPECT_TRUE(std::isnan(NumberOf(*message, 0)));
    EXPECT_FALSE(std::isnan(NumberOf(*message, 18)));
}

TEST_F(WavePictures, SamePictureIsMadeAgainOrAnotherOneIsMissed)
{
    const auto none = Make(m_screen);
    EXPECT_TRUE(
        HeadOf(*none)[QStringLiteral("record")][QStringLiteral("traces")].toArray().isEmpty());
    Acquire();
    const auto first = Make(m_screen);
    EXPECT_NE(first, none);
    EXPECT_EQ(Make(m_screen), first);
    const t_WaveWish other{{50, true, 0.0, 1e-7}, {}};
    const auto both = m_pictures.Make({other, m_screen});
    EXPECT_NE(both[0], first);
    EXPECT_EQ(both[1], first);
    m_root->GetPgHorizontal()->GetPrNumberOfAverages()->Set(4);
    EXPECT_EQ(Make(m_screen), first) << "of a setting that nobody sees";
    m_root->GetPgVertical()->GetPgChannel()->GetItem(0)->GetPrScale()->Set(0.5);
    const auto scaled = Make(m_screen);
    const auto top = HeadOf(*scaled)[QStringLiteral("record")][QStringLiteral("traces")][0];
    EXPECT_EQ(top[QStringLiteral("top")].toDouble(), 2.0);
    Acquire();
    EXPECT_NE(Make(m_screen), scaled);
}

TEST_F(WavePictures, MaskIsToldTwiceOrNotAtAll)
{
    const auto before = m_pictures.MakeMasks();
    ASSERT_TRUE(before);
    EXPECT_EQ(m_pictures.MakeMasks(), before);
    EXPECT_EQ(CWavePictures(m_root, {}).MakeMasks(), nullptr);
}

TEST(WaveWishes, WishThatCanNotBeDrawnIsTaken)
{
    QString wrong;
    for (const char* const wish :
         {"{}", R"({"traces":{"columns":1}})", R"({"traces":{"columns":4096,"from":-1,"to":1}})",
          R"({"spectrum":{"columns":9,"from":0,"to":1e9}})"})
    {
        EXPECT_TRUE(NJson::ReadWaveWish(wish, 4096, wrong)) << wish;
    }
    for (const char* const wish :
         {"", "[]", R"({"traces":{}})", R"({"traces":{"columns":0}})",
          R"({"traces":{"columns":4097}})", R"({"traces":{"columns":1.5}})",
          R"({"traces":{"columns":9,"from":0}})", R"({"traces":{"columns":9,"from":1,"to":1}})",
          R"({"traces":{"columns":9,"from":-1e300,"to":1}})", R"({"traces":true})",
          R"({"spectrum":{"columns":9,"from":"0","to":"1"}})"})
    {
        wrong.clear();
        EXPECT_FALSE(NJson::ReadWaveWish(wish, 4096, wrong)) << wish;
        EXPECT_FALSE(wrong.isEmpty());
    }
}
} // namespace
