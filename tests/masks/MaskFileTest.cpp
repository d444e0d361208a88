// SPDX-License-Identifier: MIT
#include "Masks/MaskFile.h"
#include "FileText.h"
#include "masks/MaskRecords.h"

#include <QTemporaryDir>

namespace
{
struct t_ReadMask
{
    KW_Mask mask;
    KW_ACCEPTANCE code = eKW_ACC_OK;
    std::string report; ///< the first one
};

t_ReadMask Read(const QByteArray& text)
{
    t_ReadMask read;
    std::vector<KW_LabelReport> reports;
    read.code = KW_ReadMaskText(text, read.mask, reports);
    if (!reports.empty())
    {
        read.report = KW_FormatLabelReport(QStringLiteral("f"), reports.front()).toStdString();
    }
    return read;
}

QByteArray Written(const KW_Mask& mask)
{
    QByteArray text;
    std::vector<KW_LabelReport> reports;
    EXPECT_EQ(KW_WriteMaskText(mask, text, reports), eKW_ACC_OK);
    return text;
}

const QByteArray kHead = "<Mask Version='1.0' Unit='LEVEL_V' Left='0' TimeScale='1' Middle='0' "
                         "LevelScale='1'>\n";

/** What is wrong with a file, and the report that it gives. */
struct t_BadFile
{
    const char* name;
    QByteArray text;
    const char* report;
};

const t_BadFile kBadFiles[] = {
    {"Empty", "", "f:1:1: Premature end of document"},
    {"OtherElement", "<Masks/>", "f:1:1: no mask: its element is Masks"},
    {"NoVersion", "<Mask/>", "f:1:1: Version is missing"},
    {"Newer", "<Mask Version='2.0'/>", "f:1:7: Version: 2.0 is newer than what is read here, 1.0"},
    {"Unit", "<Mask Version='1.0' Unit='Volt' Left='0' TimeScale='1' Middle='0' LevelScale='1'/>",
     "f:1:21: Unit: \"Volt\" is none"},
    {"Scale", "<Mask Version='1' Unit='LEVEL_V' Left='0' TimeScale='0' Middle='0' LevelScale='1'/>",
     "f:1:1: TimeScale and LevelScale have to be above 0"},
    {"Comma", "<Mask Version='1' Unit='LEVEL_V' Left='0,5' TimeScale='1'/>",
     "f:1:34: Left: \"0,5\" is no number"},
    {"NoLevel", kHead + "<Upper>\n  <Point X='1'/></Upper></Mask>", "f:3:3: Y is missing"},
    {"Infinite", kHead + "<Upper><Point X='inf' Y='1'/></Upper></Mask>",
     "f:2:15: X: \"inf\" is no number"},
    {"FarAway", kHead + "<Upper><Point X='2e6' Y='1'/></Upper></Mask>",
     "f:2:8: a point more than 1000000 divisions away"},
    {"Backwards", kHead + "<Lower><Point X='2' Y='1'/><Point X='1' Y='1'/></Lower></Mask>",
     "f:2:28: a point to the left of the one before it"},
    {"Gap", kHead + "<Lower><Point X='2' Y='1' Gap='maybe'/></Lower></Mask>",
     "f:2:27: Gap is neither true nor false"},
    {"TwoLines", kHead + "<Upper/><Upper/></Mask>", "f:2:9: Upper stands here already"},
    {"Digest", kHead + "<Digest Value='0'/></Mask>",
     "f:2:1: it is not what was saved: its digest does not fit"},
};

KW_Mask RandomMask(t_Random& random)
{
    KW_Mask mask;
    mask.frame = RandomFrame(random);
    mask.frame.unit = eKW_UNIT_LEVEL_A;
    for (KW_MaskLine* const line : {&mask.upper, &mask.lower})
    {
        double x = random.Real(-1, 1);
        for (UINT32 i = random.Below(200); i > 0; --i)
        {
            line->push_back({x, random.Real(-5, 5), random.Below(5) == 0});
            x += random.Below(4) == 0 ? 0.0 : random.Real(0, 0.1);
        }
    }
    return mask;
}
} // namespace

class MaskFiles : public testing::TestWithParam<t_BadFile>
{
};

TEST_P(MaskFiles, IsTakenOrRefusedWithoutItsPlace)
{
    const t_ReadMask read = Read(GetParam().text);
    EXPECT_EQ(read.code, eKW_ACC_FILE_NOT_UNDERSTOOD);
    EXPECT_EQ(read.report, GetParam().report);
    EXPECT_EQ(read.mask, KW_Mask());
}

INSTANTIATE_TEST_SUITE_P(Bad, MaskFiles, testing::ValuesIn(kBadFiles),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(MaskFile, LosesPointsOrBytes)
{
    t_Random random(1);
    for (int round = 0; round < 50; ++round)
    {
        const KW_Mask mask = RandomMask(random);
        const QByteArray text = Written(mask);
        const t_ReadMask read = Read(text);
        EXPECT_EQ(read.report, "");
        EXPECT_EQ(read.code, eKW_ACC_OK);
        EXPECT_EQ(read.mask, mask);
        EXPECT_EQ(Written(read.mask), text);
    }
}

TEST(MaskFile, TakesWhatWasDamaged)
{
    t_Random random(2);
    KW_Mask mask = RandomMask(random);
    mask.upper.resize(5);
    mask.lower.resize(5);
    const QByteArray text = Written(mask);
    for (int i = 0; i < text.size() - 1; ++i)
    {
        EXPECT_NE(Read(text.left(i)).code, eKW_ACC_OK) << i;
        QByteArray spoilt = text;
        spoilt[i] = static_cast<char>(text.at(i) ^ (1U << random.Below(7)));
        const t_ReadMask read = Read(spoilt);
        EXPECT_TRUE(read.code != eKW_ACC_OK || read.mask == mask) << i;
    }
}

TEST(MaskFile, ExampleIsNotWhatIsWritten)
{
    const QByteArray text = ContentsOf(QStringLiteral(KWI_MASK_EXAMPLES "/pulse.xml"));
    const t_ReadMask read = Read(text);
    EXPECT_EQ(read.code, eKW_ACC_OK) << read.report;
    EXPECT_EQ(read.mask.upper.size(), 6U);
    EXPECT_EQ(Written(read.mask), text);
}

TEST(MaskFile, HandWrittenFileIsRefused)
{
    const t_ReadMask read = Read(kHead + "<Upper><Point X='1' Y='2'/></Upper><Note/></Mask>");
    EXPECT_EQ(read.code, eKW_ACC_WARNING);
    EXPECT_EQ(read.report, "f:2:36: element Note is not known here and left out");
    EXPECT_EQ(read.mask.upper.size(), 1U);
}

TEST(MaskFile, BadMaskReplacesFile)
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("m.xml"));
    std::vector<KW_LabelReport> reports;
    KW_Mask mask;
    ASSERT_EQ(KW_WriteMaskFile(name, mask, reports), eKW_ACC_OK);
    mask.lower = {{1, 0}, {0, 0}};
    EXPECT_EQ(KW_WriteMaskFile(name, mask, reports), eKW_ACC_LIMITS_CROSSED);
    mask.lower.clear();
    mask.frame.unit = static_cast<KW_UNIT>(-5);
    EXPECT_EQ(KW_WriteMaskFile(name, mask, reports), eKW_ACC_UNKNOWN_VALUE);
    EXPECT_EQ(KW_WriteMaskFile(QStringLiteral("/missing/m.xml"), {}, reports),
              eKW_ACC_FILE_NOT_WRITABLE);
    EXPECT_EQ(reports.size(), 3U);
    EXPECT_EQ(KW_ReadMaskFile(name, mask, reports), eKW_ACC_OK);
    EXPECT_EQ(mask, KW_Mask());
    EXPECT_EQ(KW_ReadMaskFile(QStringLiteral("/missing/m.xml"), mask, reports),
              eKW_ACC_FILE_NOT_READABLE);
}
