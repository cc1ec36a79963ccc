#include "ZNTFilePlaces.h"
#include "ZNTPrivateFiles.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace
{

TEST(ZNTFilePlaces, WithoutAUsableHomeThatOfTheUserDatabaseIsTaken)
{
    const passwd* user = ::getpwuid(::getuid());
    ASSERT_TRUE(user) << "the tests' user is in no database";
    ::unsetenv("XDG_CACHE_HOME");
    for (const char* unusable : {"", "./home"}) {
        ::setenv("HOME", unusable, 1);
        EXPECT_EQ(ZNTFilePlaces::forThisProcess().home, user->pw_dir);
        EXPECT_EQ(ZNTFilePlaces::forThisProcess().cache, user->pw_dir + std::string("/.cache/zantor"));
    }
    ::unsetenv("HOME");
    EXPECT_EQ(ZNTFilePlaces::forThisProcess().home, user->pw_dir);
    ::setenv("HOME", "/home/player//", 1);
    EXPECT_EQ(ZNTFilePlaces::forThisProcess().soundFolder(), "/home/player/Music/Zantor/sounds/");
}

TEST(PrivateFiles, AFolderWhereNoneCanBeMadeIsAFailureUnlessItIsThere)
{
    EXPECT_TRUE(znt::makePrivateFolder("/proc/self"));
    EXPECT_FALSE(znt::makePrivateFolder("/proc/self/none/below"));
}

} // namespace
