// SPDX-License-Identifier: MIT
// Names that clients, files and remote control know. They are typed in here once more, so that a
// slip in the model is seen.

#include "EnumNameInfo.h"
#include "KWEnumerations.h"

#include <QStringList>
#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <limits>
#include <thread>

namespace
{
struct t_Table
{
    const char* type;
    const CEnumNameInfo& (*info)();
    const char* names;
};

#define KW_TABLE(type) #type, &GetStaticEnumNameInfo < type>

// Of each value: display|remote|serial, and the short name where there is one.
const t_Table kTables[] = {
    {KW_TABLE(KW_ONOFF), "Off|OFF|OFF; On|ON|ON"},
    {KW_TABLE(KW_ZEL_ANALOG_CHANNEL), "C1|C1|C1; C2|C2|C2; C3|C3|C3; C4|C4|C4"},
    {KW_TABLE(KW_ZEL_ANALOG_SIGNAL_STREAM), "S1|S1|S1; S2|S2|S2; S3|S3|S3; S4|S4|S4"},
    {KW_TABLE(KW_ZEL_MODE), "ZEL_A|A|ZEL_A; ZEL_B|B|ZEL_B; ZEL_C|C|ZEL_C"},
    {KW_TABLE(KW_ZEL_TRIGGER_TYPE),
     "Edge|EDGE|EDGE; Glitch|GLIT|GLITCH; Width|WIDT|WIDTH; Video/TV|TV|VIDEO|TV; "
     "Pattern|PATT|PATTERN; State|STAT|STATE; Runt|RUNT|RUNT; Slew Rate|SLEW|SLEWRATE; "
     "Data2Clk|DAT|DATA_TO_CLOCK; Serial Pattern|SERP|SERIAL_PATTERN; "
     "Timeout|TIM|TIMEOUT; Interval|INT|INTERVAL; Window|WIND|WINDOW; "
     "Bus|PROT|PROTOCOL; External|EXT|EXTERNAL"},
    {KW_TABLE(KW_ZEL_ACQUISITION_MODE),
     "Sample|SAMP|SAMPLE; Peak Detect|PDET|PEAK; High Resolution|HRES|HIRES; "
     "Average|AVER|AVERAGE; Envelope|ENV|ENVELOPE"},
    {KW_TABLE(KW_VERTICAL_COUPLING), "DC|DCL|DC; AC|ACL|AC"},
    {KW_TABLE(KW_ZEL_DATASTREAM),
     "Samples a0 .. a4|DAT1|SAMPLES_FROM_0_TO_4; "
     "Samples a5 .. a9|DAT2|SAMPLES_FROM_5_TO_9; "
     "Samples a10 .. a14|DAT3|SAMPLES_FROM_10_TO_14; "
     "Samples a15 .. a19|DAT4|SAMPLES_FROM_15_TO_19; Unused|UNUS|UNUSED"},
    {KW_TABLE(KW_ZEL_DMM_METER_TYPE),
     "V AC|ACV|AC_VOLT; V DC|DCV|DC_VOLT; V AC+DC|ADV|AD_VOLT; A AC|ACC|AC_CURR; "
     "A DC|DCC|DC_CURR; A AC+DC|ADC|AD_CURR; Resistance|RES|OHM|Ω; "
     "Capacitance|CAP|CAPACITY|C; Frequency|FREQ|FREQ|F; Diode Test|DIOD|DIODE|Diode; "
     "Continuity Test|CONT|CONTINUITY|Cont; Temperature|TEMP|TEMP|T"},
    {KW_TABLE(KW_ZEL_METER_AUTORANGE), "Off|OFF|OFF; On|ON|ON; Once|ONCE|ONCE"},
    {KW_TABLE(KW_ZEL_LIMIT), "Inside|INS|INSIDE; Overflow|OVER|OVERFLOW; Underflow|UND|UNDERFLOW; "
                             "Over and underflow|OVUN|OVER_AND_UNDERFLOW"},
    {KW_TABLE(KW_SPECTRUM_MODE), "FFT|FFT|FFT; Spectrum Analysis|SPEC|SPA"},
    {KW_TABLE(KW_WINDOW_TYPE),
     "Rectangular|RECT|RECT; Flat-Top|FLAT|FLATTOP; Hamming|HAMM|HAMMING; "
     "Hann|HANN|HANN; Blackman|BLAC|BLACKMAN"},
    {KW_TABLE(KW_ABSREL), "Absolute|ABS|ABSOLUTE; Relative|REL|RELATIVE"},
    {KW_TABLE(KW_SWSTATE), "Official|OFFI|OFFICIAL; Beta|BETA|BETA"},
    {KW_TABLE(KW_ZEL_CHANNEL),
     "C1|C1|C1; C2|C2|C2; C3|C3|C3; C4|C4|C4; M|M1|M1; R|R1|R1; XY|XY|XY; D0|D0|D0; "
     "D1|D1|D1; D2|D2|D2; D3|D3|D3; D4|D4|D4; D5|D5|D5; D6|D6|D6; D7|D7|D7; S|S|S1; "
     "FFT 1|FFT1|FFT1; FFT 2|FFT2|FFT2; FFT 3|FFT3|FFT3; FFT 4|FFT4|FFT4; None|NONE|NONE"},
    {KW_TABLE(KW_ZEL_OPERATION_MODE),
     "NONE|NONE|NONE; YT|YT|SCOPE_YT; XY|XY|SCOPE_XY; Mask Test|MASK|MASKTEST_YT; "
     "Roll|ROLL|SCOPE_ROLL; Meter|MET|METER; FFT|FFT|FFT; Spectrum|SPEC|SPECTRUM; "
     "Logger|LOGG|LOGGER; Counter|COUN|COUNTER; Harmonic|HARM|HARMONIC; "
     "Protocol|PROT|PROTOCOL"},
    {KW_TABLE(KW_FFT_FREQUENCY_SPAN), "Narrow (8k FFT)|NARR|NARROW; Max (64k FFT)|MAX|MEDIUM"},
    {KW_TABLE(KW_FFT_INPUT_UNIT), "Volt|VOLT|VOLTAGE; Current|CURR|CURRENT"},
    {KW_TABLE(KW_FFT_MAGN_UNIT), "dBm|DBM|DBM; dBV|DBV|DBV; dBA|DBA|DBA"},
    {KW_TABLE(KW_SCALING_TYPE), "Linear|LIN|LINEAR|Lin; Logarithmic|LOG|LOGARITHMIC|Log"},
    {KW_TABLE(KW_SIGNAL_TRANSLATION_VALUE_TYPE),
     "Unsigned Int|UINT|UNSIGNED_INT|UINT; Enum|ENUM|ENUM|ENUM; "
     "Signed Int|SINT|SIGNED_INT|SINT; Float|FLOAT|FLOAT|FLOAT; "
     "Double|DOUBLE|DOUBLE|DOUBLE"},
};

#undef KW_TABLE

constexpr char kUnits[] =
    "LEVEL_DBM LEVEL_DB LEVEL_DB_HZ LEVEL_DB_GHZ LEVEL_DBC LEVEL_DBC_HZ LEVEL_DBPW_HZ "
    "LEVEL_DBW LEVEL_DBPW LEVEL_DBM_HZ LEVEL_DB_MILLI_W LEVEL_W LEVEL_MILLI_W LEVEL_W_HZ "
    "LEVEL_JOULE LEVEL_V_PER_S LEVEL_A_PER_S LEVEL_DBV LEVEL_DB_MILLI_V LEVEL_DB_MILLI_V_HZ "
    "LEVEL_DB_MILLI_V_MHZ LEVEL_DB_MIKRO_V LEVEL_DB_MIKRO_V_HZ LEVEL_DB_MIKRO_V_SQRT_HZ "
    "LEVEL_DB_MIKRO_V_MHZ LEVEL_DB_MIKRO_V_M LEVEL_DB_MIKRO_V_M_HZ LEVEL_DB_MIKRO_V_M_MHZ "
    "LEVEL_V LEVEL_MILLI_V LEVEL_MIKRO_V LEVEL_V_SQUARE LEVEL_MIKRO_V_HZ LEVEL_MIKRO_V_M_HZ "
    "LEVEL_V_SQRT_HZ LEVEL_DB_MIKRO_A LEVEL_DB_MIKRO_A_HZ LEVEL_DB_MIKRO_A_SQRT_HZ "
    "LEVEL_DB_MIKRO_A_MHZ LEVEL_DB_MIKRO_A_M LEVEL_DB_MIKRO_A_M_HZ LEVEL_DB_MIKRO_A_M_MHZ "
    "LEVEL_A LEVEL_MIKRO_A_HZ LEVEL_MIKRO_A_M_HZ LEVEL_A_SQRT_HZ LEVEL_PCT FIELD_DBPT "
    "FIELD_DBPT_HZ FIELD_HENRY FIELD_PHENRY_GHZ FIELD_FARAD FIELD_FFARAD_GHZ IMPEDANCE_OHM "
    "IMPEDANCE_SIEMENS FREQ_SEC FREQ_HZ SIZE_M ANGLE_DEG ANGLE_RAD COUNT_PCT COUNT_SYMB "
    "VA_LIN VA_LOG NOT_DEFINED NONE LEVEL_VIDEO_IRE SIZE_MILES FREQ_SYMB_S FREQ_MEGA_SYMB_S "
    "FREQ_MBIT_S FREQ_BIT_S FREQ_PPM LEVEL_DB_FIXED PER_SEC FREQ_S_DIV FREQ_HZ_DIV "
    "LEVEL_V_DIV LEVEL_A_DIV DIV BER SAMPLES SAMPLES_S BAUD TEMPERATURE_DEG TEMPERATURE_F "
    "TEMPERATURE_K V_S A_S USER LEVEL_W_DIV LEVEL_V_V LEVEL_A_V LEVEL_W_V BYTES LEVEL_V_A "
    "LEVEL_V_W LEVEL_VA FREQ_HZ_SAMPLE LEVEL_DBM_DIV LEVEL_DBV_DIV LEVEL_DBA LEVEL_DBA_DIV "
    "PIXEL LEVEL_DBV_HZ LEVEL_DBA_HZ METER_V METER_A METER_OHM COUNT SENT_SEC COUNT_TICKS";

QString Of(const char* text)
{
    return QString::fromUtf8(text);
}
} // namespace

class EnumTable : public testing::TestWithParam<t_Table>
{
};

TEST_P(EnumTable, NamesAreNotThoseThatClientsKnow)
{
    const CEnumNameInfo& info = GetParam().info();
    EXPECT_EQ(&info, &GetParam().info()) << "another table on the second call";
    EXPECT_EQ(info.GetType(), Of(GetParam().type));
    const QStringList values = Of(GetParam().names).split(QStringLiteral("; "));
    ASSERT_EQ(info.GetEnumSize(), static_cast<INT32>(values.size()));
    for (INT32 value = 0; value < info.GetEnumSize(); ++value)
    {
        const QStringList names = values[value].split(QLatin1Char('|'));
        EXPECT_EQ(info.GetName(value), names[0]) << value;
        EXPECT_EQ(info.GetRemoteName(value), names[1]) << value;
        EXPECT_EQ(info.GetSerialName(value), names[2]) << value;
        EXPECT_EQ(info.GetShortName(value), names.value(3)) << value;
        EXPECT_EQ(info.GetShortName(value).isNull(), names.size() == 3) << value;
    }
}

INSTANTIATE_TEST_SUITE_P(Known, EnumTable, testing::ValuesIn(kTables),
                         [](const auto& test) { return std::string(test.param.type); });

TEST(Enumerations, UnitIsMissingOrElsewhere)
{
    const CEnumNameInfo& units = GetStaticEnumNameInfo<KW_UNIT>();
    const QStringList known = Of(kUnits).split(QLatin1Char(' '));
    ASSERT_EQ(units.GetEnumSize(), static_cast<INT32>(known.size()));
    for (INT32 value = 0; value < units.GetEnumSize(); ++value)
    {
        EXPECT_EQ(units.GetSerialName(value), known[value]);
        EXPECT_EQ(units.ConvertName(known[value]).value, value);
        EXPECT_FALSE(units.GetName(value).isNull()) << value;
        EXPECT_FALSE(units.GetRemoteName(value).isNull()) << value;
    }
    const std::pair<KW_UNIT, const char*> displayed[] = {
        {eKW_UNIT_LEVEL_DBM, "dBm"},     {eKW_UNIT_LEVEL_DB_HZ, "dB/Hz"},
        {eKW_UNIT_LEVEL_V_SQUARE, "V²"}, {eKW_UNIT_LEVEL_DB_MIKRO_V_SQRT_HZ, "dBµV/√Hz"},
        {eKW_UNIT_IMPEDANCE_OHM, "Ω"},   {eKW_UNIT_TEMPERATURE_DEG, "°C"},
        {eKW_UNIT_SAMPLES_S, "Sa/s"},    {eKW_UNIT_FREQ_S_DIV, "s/div"},
        {eKW_UNIT_METER_V, "V"},         {eKW_UNIT_METER_A, "A"},
        {eKW_UNIT_METER_OHM, "Ω"}};
    for (const auto& [unit, text] : displayed)
    {
        EXPECT_EQ(units.GetName(unit), Of(text));
    }
    const std::pair<KW_UNIT, const char*> sent[] = {{eKW_UNIT_LEVEL_DB_HZ, "DBHZ"},
                                                    {eKW_UNIT_LEVEL_V_SQUARE, "VV"},
                                                    {eKW_UNIT_IMPEDANCE_OHM, "OHM"},
                                                    {eKW_UNIT_SAMPLES_S, "SS"},
                                                    {eKW_UNIT_FREQ_S_DIV, "SDIV"}};
    for (const auto& [unit, text] : sent)
    {
        EXPECT_EQ(units.GetRemoteName(unit), Of(text));
    }
}

TEST(Enumerations, AmbiguousNameIsAnsweredAsOne)
{
    using eMATCH = CEnumNameInfo::eMATCH;
    const CEnumNameInfo& units = GetStaticEnumNameInfo<KW_UNIT>();
    for (const auto& [text, lowest] :
         {std::pair{"%", eKW_UNIT_LEVEL_PCT}, {"dB", eKW_UNIT_LEVEL_DB}})
    {
        const auto found = units.ConvertName(Of(text), KW_ENUM_NAME::Display);
        EXPECT_EQ(found.match, eMATCH::Several) << text;
        EXPECT_EQ(found.value, lowest) << text;
    }
    EXPECT_EQ(units.ConvertName(QStringLiteral("COUNT_PCT")).value, eKW_UNIT_COUNT_PCT);
    EXPECT_EQ(units.ConvertName(QStringLiteral("LEVEL_DB_FIXED")).value, eKW_UNIT_LEVEL_DB_FIXED);
}

TEST(Enumerations, NameOfOneKindIsFoundAsAnother)
{
    const CEnumNameInfo& info = GetStaticEnumNameInfo<KW_ZEL_DMM_METER_TYPE>();
    const std::pair<KW_ENUM_NAME, const char*> names[] = {{KW_ENUM_NAME::Display, "Diode Test"},
                                                          {KW_ENUM_NAME::Short, "Diode"},
                                                          {KW_ENUM_NAME::Remote, "DIOD"},
                                                          {KW_ENUM_NAME::Serial, "DIODE"}};
    for (const auto& [kind, text] : names)
    {
        const auto found = info.ConvertName(Of(text), kind);
        EXPECT_EQ(found.value, eKW_ZEL_DMM_METER_TYPE_DIODE) << text;
        EXPECT_EQ(found.match, CEnumNameInfo::eMATCH::One) << text;
        EXPECT_EQ(info.ConvertName(Of(text).toLower(), kind).value, found.value) << text;
    }
    for (const char* text : {"Diode Test", "DIOD", "", "DIODE "})
    {
        EXPECT_EQ(info.ConvertName(Of(text)).match, CEnumNameInfo::eMATCH::None) << text;
        EXPECT_EQ(info.ConvertName(Of(text)).value, -1) << text;
    }
}

TEST(Enumerations, ValueOutsideTheTypeOrBlankEntryHasAName)
{
    const CEnumNameInfo& probes = GetStaticEnumNameInfo<KW_PROBE_TYPE>();
    for (const INT32 value : {-1, probes.GetEnumSize(), std::numeric_limits<INT32>::max()})
    {
        EXPECT_TRUE(probes.GetName(value).isNull());
        EXPECT_TRUE(probes.GetSerialName(value).isNull());
        EXPECT_FALSE(probes.IsValue(value));
        EXPECT_FALSE(probes.GetNumber(value));
    }
    EXPECT_EQ(probes.GetName(eKW_PROBE_TYPE_6), QStringLiteral(""));
    EXPECT_FALSE(probes.GetName(eKW_PROBE_TYPE_6).isNull()) << "blank, not missing";
    const CEnumNameInfo& sign = GetStaticEnumNameInfo<KW_SIGN>();
    EXPECT_TRUE(sign.GetName(0).isNull());
    EXPECT_TRUE(sign.GetRemoteName(1).isNull());
    EXPECT_EQ(sign.GetSerialName(0), QStringLiteral("NEGATIVE"));
    EXPECT_EQ(sign.GetSerialName(1), QStringLiteral("POSITIVE"));
}

TEST(Enumerations, ValueStandsAtAnotherNumber)
{
    const char* const probes[] = {"1:1",      "10:1",    "20:1",    "100:1",   "200:1",
                                  "1000:1",   "",        "100 V/A", "10 V/A",  "1 V/A",
                                  "100 mV/A", "10 mV/A", "1 mV/A",  "1 mV/°C", "1 mV/°F",
                                  "PT100",    "PT500",   "PT1000",  "User"};
    const CEnumNameInfo& info = GetStaticEnumNameInfo<KW_PROBE_TYPE>();
    ASSERT_EQ(info.GetEnumSize(), static_cast<INT32>(std::size(probes)));
    for (INT32 value = 0; value < info.GetEnumSize(); ++value)
    {
        EXPECT_EQ(info.GetName(value), Of(probes[value])) << value;
    }
    // Numbers that calculations, defaults and files rely on.
    const std::pair<INT32, INT32> numbers[] = {{eKW_REF_POINT_POSITION_LEFT, 0},
                                               {eKW_REF_POINT_POSITION_MIDDLE, 1},
                                               {eKW_REF_POINT_POSITION_RIGHT, 2},
                                               {eKW_UNIT_LEVEL_DBM, 0},
                                               {eKW_UNIT_LEVEL_V, 28},
                                               {eKW_UNIT_LEVEL_A, 42},
                                               {eKW_UNIT_FIELD_FARAD, 51},
                                               {eKW_UNIT_FREQ_HZ, 56},
                                               {eKW_UNIT_NONE, 65},
                                               {eKW_UNIT_LEVEL_V_DIV, 77},
                                               {eKW_UNIT_LEVEL_A_DIV, 78},
                                               {eKW_UNIT_TEMPERATURE_DEG, 84},
                                               {eKW_UNIT_TEMPERATURE_F, 85},
                                               {eKW_UNIT_METER_V, 106},
                                               {eKW_UNIT_METER_OHM, 108},
                                               {eKW_UNIT_COUNT_TICKS, 111},
                                               {eKW_ZEL_METER_RANGE_1, 7},
                                               {eKW_UART_BITRATE_USER, 20},
                                               {eKW_ZEL_CHANNEL_NONE, 20}};
    for (const auto& [present, known] : numbers)
    {
        EXPECT_EQ(present, known);
    }
    const std::pair<const CEnumNameInfo&, INT32> sizes[] = {
        {GetStaticEnumNameInfo<KW_ZEL_METER_RANGE>(), 16},
        {GetStaticEnumNameInfo<KW_ZEL_DMM_MEAS_TYPE>(), 9},
        {GetStaticEnumNameInfo<KW_ZEL_HISTORY_DEPTH>(), 3},
        {GetStaticEnumNameInfo<KW_ZEL_RECORD_LENGTH>(), 3},
        {GetStaticEnumNameInfo<KW_ZEL_CAL_FREQ>(), 6},
        {GetStaticEnumNameInfo<KW_ZEL_LPF_GAIN>(), 8},
        {GetStaticEnumNameInfo<KW_ZEL_DMM_CURRENT>(), 6},
        {GetStaticEnumNameInfo<KW_DATAFORMAT>(), 8},
        {GetStaticEnumNameInfo<KW_ENDIANNESS>(), 2}};
    for (const auto& [table, size] : sizes)
    {
        EXPECT_EQ(table.GetEnumSize(), size) << table.GetType().toStdString();
    }
}

TEST(Enumerations, OwnTableForgetsOrTakesTooMuch)
{
    CEnumNameInfo info(2, QStringLiteral("KW_TEST"));
    info.SetName(0, QStringLiteral("Zero"));
    info.SetShortName(0, QStringLiteral("0"));
    info.SetRemoteName(1, QStringLiteral("ONE"));
    info.SetSerialName(1, QStringLiteral("ONE"));
    info.SetName(2, QStringLiteral("Two"));
    info.SetName(-1, QStringLiteral("Minus"));
    EXPECT_EQ(info.GetName(0), QStringLiteral("Zero"));
    EXPECT_EQ(info.GetShortName(0), QStringLiteral("0"));
    EXPECT_TRUE(info.GetName(1).isNull());
    EXPECT_TRUE(info.GetName(2).isNull());
    EXPECT_EQ(info.ConvertName(QStringLiteral("Two"), KW_ENUM_NAME::Display).value, -1);
    EXPECT_EQ(info.ConvertName(QStringLiteral("ONE"), KW_ENUM_NAME::Remote).value, 1);
    EXPECT_EQ(CEnumNameInfo(-3, QString()).GetEnumSize(), 0);
}

TEST(Enumerations, FirstCallsOfTwoThreadsSeeHalfATable)
{
    // A type that no other test of this program asks for.
    std::array<QString, 2> names;
    std::atomic<int> ready{0};
    const auto first = [&](std::size_t i)
    {
        ++ready;
        while (ready < 2)
        {
        }
        const CEnumNameInfo& info = GetStaticEnumNameInfo<KW_WIRELESS_COUNTRY>();
        names[i] = info.GetSerialName(info.GetEnumSize() - 1);
    };
    std::thread other(first, 1);
    first(0);
    other.join();
    EXPECT_FALSE(names[0].isEmpty());
    EXPECT_EQ(names[0], names[1]);
}
