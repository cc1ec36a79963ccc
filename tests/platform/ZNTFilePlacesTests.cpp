#include "ZNTFilePlaces.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>
#include <pwd.h>
#include <string>
#include <unistd.h>

namespace
{

/// Sets or unsets a variable of the environment for as long as it lives.
class Environment
{
public:
    Environment(const char* name, const char* value) : name(name)
    {
        if (const char* present = std::getenv(name))
            before = present;
        set(value);
    }
    ~Environment() { set(before ? before->c_str() : nullptr); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    void set(const char* value) const
    {
        if (value)
            ::setenv(name, value, 1);
        else
            ::unsetenv(name);
    }
    const char* name;
    std::optional<std::string> before;
};

TEST(ZNTFilePlaces, WithoutAUsableHomeThatOfTheUserDatabaseIsTaken)
{
    const passwd* user = ::getpwuid(::getuid());
    ASSERT_TRUE(user) << "the tests' user is in no database";
    const Environment noCache("XDG_CACHE_HOME", nullptr);
    for (const char* unusable : {static_cast<const char*>(nullptr), "", "relative", "./home"}) {
        SCOPED_TRACE(unusable ? unusable : "unset");
        const Environment home("HOME", unusable);
        EXPECT_EQ(ZNTFilePlaces::forThisProcess().home, user->pw_dir);
        EXPECT_EQ(ZNTFilePlaces::forThisProcess().cache, user->pw_dir + std::string("/.cache/zantor"));
    }
    const Environment home("HOME", "/home/player//");
    EXPECT_EQ(ZNTFilePlaces::forThisProcess().soundFolder(), "/home/player/Music/Zantor/sounds/");
}

} // namespace
