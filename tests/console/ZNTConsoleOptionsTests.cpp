#include "ZNTConsoleOptions.h"

#include <gtest/gtest.h>

namespace
{

std::variant<ZNTConsoleOptions, int> parse(std::vector<const char*> arguments)
{
    arguments.insert(arguments.begin(), "zantor-console");
    return ZNTConsoleOptions::fromArguments(static_cast<int>(arguments.size()), arguments.data());
}

TEST(ZNTConsoleOptions, UsageErrorsExitWith2AndHelpWith0)
{
    const std::vector<std::pair<std::vector<const char*>, int>> cases{
        {{"--help"}, 0},
        {{"-h"}, 0},
        {{"mud.example"}, 2},
        {{"mud.example", "0"}, 2},
        {{"mud.example", "65536"}, 2},
        {{"mud.example", "port"}, 2},
        {{"mud.example", "4000", "more"}, 2},
        {{"--demo", "mud.example", "4000"}, 2},
        {{"--encoding", "utf-8"}, 2},
        {{"--encoding"}, 2},
        {{"--colour", "red"}, 2},
        {{"--set", "rate=fast"}, 2},
        {{"--set", "loudness=3"}, 2},
        {{"--set", "speech"}, 2},
        {{"--unknown"}, 2},
    };
    for (const auto& [arguments, exitCode] : cases) {
        SCOPED_TRACE(arguments.front());
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const auto parsed = parse(arguments);
        const auto out = testing::internal::GetCapturedStdout();
        const auto err = testing::internal::GetCapturedStderr();
        ASSERT_TRUE(std::holds_alternative<int>(parsed));
        EXPECT_EQ(std::get<int>(parsed), exitCode);
        EXPECT_EQ(out.empty(), exitCode != 0) << "the help is output, a mistake is not";
        EXPECT_EQ(err.empty(), exitCode == 0);
    }
}

} // namespace
