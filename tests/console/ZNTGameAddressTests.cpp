#include "ZNTGameAddress.h"
#include "ZNTPlayArguments.h"
#include "ZNTProgramArguments.h"

#include <gtest/gtest.h>

namespace
{

TEST(ZNTGameAddress, ALinkNamesAHostAndAPortAndNothingElse)
{
    const std::string longest(253, 'a');
    const std::vector<std::pair<std::string, ZNTGameAddress>> rows{
        {"telnet://mud.example:4000", {"mud.example", 4000}},
        {"TelNet://MUD_1.example:65535/", {"MUD_1.example", 65535}},
        {"telnet://mud.example", {"mud.example", 23}},
        {"telnet://mud.example:/", {"mud.example", 23}},
        {"telnet://192.0.2.7:1", {"192.0.2.7", 1}},
        {"telnet://[2001:db8::7]:4000/", {"2001:db8::7", 4000}},
        {"telnet://[::1]", {"::1", 23}},
        {"telnet://" + longest + ":4000", {longest, 4000}},
    };
    for (const auto& [link, expected] : rows) {
        SCOPED_TRACE(link);
        const auto address = ZNTGameAddress::fromLink(link);
        ASSERT_TRUE(address) << address.error().description;
        EXPECT_EQ(address.value(), expected);
    }
}

TEST(ZNTGameAddress, OtherLinksAreRefusedWithTheReason)
{
    const std::vector<std::pair<std::string, const char*>> rows{
        {"telnet:mud.example:4000", "telnet://"},
        {"telnets://mud.example", "telnet://"},
        {"mud.example:4000", "telnet://"},
        {"telnet://", "no host"},
        {"telnet:///", "no host"},
        {"telnet://:4000", "no host"},
        {"telnet://-x", "no host"},
        {"telnet://mud.-x:4000", "no host"},
        {"telnet://--demo:4000", "no host"},
        {"telnet://mud..example", "no host"},
        {"telnet://m\xC3\xBC.example", "no host"},
        {"telnet://" + std::string(254, 'a'), "no host"},
        {"telnet://::1:23", "no host"},
        {"telnet://[mud.example]:23", "no host"},
        {"telnet://[::1", "no host"},
        {"telnet://[fe80::1%25eth0]", "percent"},
        {"telnet://mud%2eexample", "percent"},
        {"telnet://[::1]x:23", "more after"},
        {"telnet://mud.example:0", "1 to 65535"},
        {"telnet://mud.example:65536", "1 to 65535"},
        {"telnet://mud.example:+4", "1 to 65535"},
        {"telnet://mud.example:4000:1", "1 to 65535"},
        {"telnet://mud.example:99999999999999999999", "1 to 65535"},
        {"telnet://bank.example:23@mud.example", "password"},
        {"telnet://mud.example:4000/quest", "more after"},
        {"telnet://mud.example//", "more after"},
        {"telnet://mud.example?--demo", "more after"},
        {"telnet://mud.example#1", "more after"},
        {"telnet://mud.example --demo", "blank"},
        {"telnet://mud.example\n", "control"},
        {std::string("telnet://mud.example\0x", 22), "control"},
    };
    for (const auto& [link, why] : rows) {
        SCOPED_TRACE(link);
        const auto address = ZNTGameAddress::fromLink(link);
        ASSERT_FALSE(address);
        EXPECT_NE(address.error().description.find(why), std::string::npos) << address.error().description;
    }
}

TEST(ZNTPlayArguments, AFurtherInstanceReadsItsGameFromTheArgumentsThatItIsGiven)
{
    const std::tuple<std::string, std::int64_t, std::string> rows[] = {
        {" \x7F-mud.example\t", 65535, "-mud.example 65535"},
        {"mud.example", 1, "mud.example 1"},
        {" ", 23, "The game needs an address such as mud.example.org."},
        {"mud .example", 23, "The game needs an address such as mud.example.org."},
        {"telnet://mud.example", 23, "The game needs an address such as mud.example.org."},
        {"mud.example", 0, "The game needs a port from 1 to 65535."},
        {"mud.example", 65536, "The game needs a port from 1 to 65535."},
    };
    for (const auto& [host, port, expected] : rows) {
        const auto words = znt::argumentsForGame(host, port);
        if (!words) {
            EXPECT_EQ(words.error().description, expected);
            continue;
        }
        ZNTPlayArguments read;
        ZNTProgramArguments arguments("zantor", "");
        read.addTo(arguments);
        const char* given[] = {"zantor", words.value()[0].c_str(), words.value()[1].c_str(),
                               words.value()[2].c_str()};
        EXPECT_EQ(arguments.parse(std::size(given), given), std::nullopt);
        EXPECT_EQ(read.host + " " + std::to_string(read.port), expected);
    }
}

} // namespace
