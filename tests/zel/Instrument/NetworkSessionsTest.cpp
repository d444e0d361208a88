// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
// Networks: what a country permits, and addresses that are set by hand.
const t_Session kNetworkSessions[] = {
    {"TravelCostsTheChannel",
     {{"Setup/Wireless/Country = US; .WirelessAccesspoint/Channel = 149",
       "Setup/Wireless/WirelessAccesspoint/Channel = 149"},
      {"Setup/Wireless/Country = DE", "Setup/Wireless/WirelessAccesspoint/Channel = 140"},
      {"Setup/Wireless/Country = WORLD", "Setup/Wireless/WirelessAccesspoint/Channel = 11"},
      {"Setup/Wireless/Country = CN", "Setup/Wireless/WirelessAccesspoint/Channel = 149"}}},
    {"ChannelsAreThoseOfNoCountry",
     {{"Setup/Wireless/Country = FR",
       "Setup/Wireless/WirelessAccesspoint/Channel.values = 1|2|3|4|5|6|7|8|9|10|11|12|13|"
       "36|40|44|48|52|56|60|64|100|104|108|112|116|120|124|128|132|136|140"},
      {"Setup/Wireless/Country = CA",
       "Setup/Wireless/WirelessAccesspoint/Channel.values = 1|2|3|4|5|6|7|8|9|10|11|"
       "36|40|44|48|52|56|60|64|100|104|108|112|116|132|136|140|144|149|153|157|161|165"},
      {"Setup/Wireless/Country = PK; .WirelessAccesspoint/Channel = 149",
       "Setup/Wireless/WirelessAccesspoint/Channel.values = "
       "1|2|3|4|5|6|7|8|9|10|11|12|13|149|153|157|161|165"}}},
    {"FixedAddressHasNoNetwork",
     {{"Setup/Wireless/WirelessClient/AutomaticAddress = OFF; .FixedAddress = 192.168.7.20; "
       ".NetworkMask = 255.255.0.0; .Gateway = 192.168.0.1; .NameServer = 9.9.9.9",
       "Setup/Wireless/WirelessClient/Gateway = 192.168.0.1"},
      {"Setup/Wireless/WirelessClient/AutomaticAddress = ON",
       "Setup/Wireless/WirelessClient/FixedAddress = 192.168.7.20!; .NetworkMask = 255.255.0.0!; "
       ".Gateway = 192.168.0.1!; .NameServer = 9.9.9.9!"}}},
    {"WiredInstrumentHasNoAddress",
     {{"Setup/EthernetAutomaticAddress = OFF; .EthernetFixedAddress = 10.0.0.5; "
       ".EthernetGateway = 10.0.0.1",
       "Setup/EthernetFixedAddress = 10.0.0.5; .EthernetNetworkMask = 255.255.255.0"}}},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Network, Sessions, testing::ValuesIn(kNetworkSessions), Sessions::Name);

TEST(RadioChannels, CountryHasNoneAt5GHz)
{
    const CRuleTree tree;
    for (const QString& country : Property(tree.root, "Setup/Wireless/Country")->GetValueTexts())
    {
        tree.DoAll("Setup/Wireless/Country = " + country.toLatin1());
        EXPECT_EQ(tree.State("Setup/Wireless/WirelessAccesspoint/Channel.values").count(u'|') > 12,
                  country != QLatin1String("WORLD"))
            << country.toStdString();
    }
}
