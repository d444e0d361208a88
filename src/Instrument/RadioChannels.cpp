// SPDX-License-Identifier: MIT
#include "Instrument/RadioChannels.h"

#include "EnumNameInfo.h"
#include "KWEnumerationsSystem.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace NRadioChannels
{
namespace
{
struct t_Range
{
    int first;
    int last;
};

/** Channels and the countries that permit them. */
struct t_Plan
{
    std::array<t_Range, 4> channels; ///< {0, 0} for none
    std::string_view countries;
};

// From the public table of regulatory domains that open systems use, as it stood in 2021. Bands
// for short-range devices of 25 mW, such as 5725 to 5875 MHz in Europe, are no bands of networks.
constexpr t_Plan kPlans[] = {
    {{{{36, 64}, {100, 140}}},
     "AL AT BA BE BG BY CH CY CZ DE DK EE ES FI FR GB GR HR HU IE IS IT JP LI LT LU LV MC MD ME MK "
     "MT NL NO OM PL PT RO RS SA SE SI SK TR ZA"},
    {{{{36, 64}, {100, 144}, {149, 165}}},
     "AE AR BR CO CR EC HN JM LB LK MO MX NZ PE PH PR PY TH TT TW US VN"},
    {{{{36, 64}, {100, 140}, {149, 165}}}, "HK IN KR KZ PA QA SG UA"},
    {{{{36, 64}, {149, 165}}}, "BH CL CN DO GT NP SV UY VE"},
    {{{{36, 64}}}, "AM AZ EG GE IL KW MA TN UZ"},
    {{{{36, 64}, {100, 116}, {132, 144}, {149, 165}}}, "AU CA"},
    {{{{52, 64}, {149, 165}}}, "BO NG"},
    {{{{149, 165}}}, "BD PK"},
    {{{{36, 64}, {100, 132}}}, "DZ"},
    {{{{36, 64}, {149, 161}}}, "ID"},
    {{{{36, 48}, {149, 165}}}, "JO"},
    {{{{36, 48}, {100, 112}, {149, 153}}}, "KE"},
    {{{{36, 64}, {100, 128}, {149, 165}}}, "MY"},
    {{{{36, 64}, {132, 144}, {149, 165}}}, "RU"},
};

/** The rules of these countries, and so what holds everywhere, end the lower band at 2472 MHz. */
constexpr std::string_view kEndsAt2472 = "WORLD CA CO DO GT PA PR TW US";

bool Lists(std::string_view countries, KW_WIRELESS_COUNTRY country)
{
    const std::string code =
        GetStaticEnumNameInfo<KW_WIRELESS_COUNTRY>().GetSerialName(country).toStdString();
    return countries.find(code) != std::string_view::npos;
}

bool IsInUpperBand(KW_WIRELESS_COUNTRY country, int channel)
{
    const t_Plan* const plan =
        std::find_if(std::begin(kPlans), std::end(kPlans),
                     [country](const t_Plan& row) { return Lists(row.countries, country); });
    return plan != std::end(kPlans) &&
           std::any_of(plan->channels.begin(), plan->channels.end(),
                       [channel](const t_Range& range)
                       { return channel >= range.first && channel <= range.last; });
}
} // namespace

bool IsPermitted(KW_WIRELESS_COUNTRY country, int channel)
{
    constexpr int kFirstOfUpperBand = 36;
    const int highest = Lists(kEndsAt2472, country) ? 11 : 13;
    return channel < kFirstOfUpperBand ? channel <= highest : IsInUpperBand(country, channel);
}
} // namespace NRadioChannels
