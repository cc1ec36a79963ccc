#include "ZNTDatabaseHelper.h"
#include "ZNTStoredFiles.h"
#include "ZNTTestPlatform.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <linux/capability.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

using testing::ElementsAre;

/// Runs `task` in a child process, which shares the files and whose limits end with it. What it answers.
int inChild(const std::function<int()>& task)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(task());
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// From now on no file of this process grows beyond `bytes`, as on a disk that is full.
void fillDisk(std::uintmax_t bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

/// From now on a file's mode binds this process, even where root runs the tests.
void giveUpPrivileges()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct none[2]{};
    ::syscall(SYS_capset, &header, none);
}

class ZNTDatabaseFaults : public testing::Test
{
protected:
    ZNTDatabaseFaults()
    {
        ZNTDatabaseHelper store(places, machine.log);
        storeMacro(store, u"kept", u"north");
        machine.log.lines.clear();
    }
    static std::int64_t storeMacro(ZNTDatabaseHelper& store, const std::u16string& name,
                                   const std::u16string& text)
    {
        ZNTMacro macro{.oid = 0, .groupOid = 1, .name = name, .dataToExecute = text};
        store.insertMacroSetWithMacroGroup(macro);
        return macro.oid;
    }
    std::vector<std::u16string> storedNames()
    {
        return ZNTDatabaseHelper(places, machine.log).getAllMacroNames();
    }

    ZNTTestPlatform machine;
    ZNTFilePlaces places = machine.platform.places;
    ZNTStoredFiles files{machine.home};
};

TEST_F(ZNTDatabaseFaults, AFileLockedByAnotherProcessIsWaitedFor)
{
    using Clock = std::chrono::steady_clock;
    constexpr auto lockedFor = std::chrono::milliseconds(300);
    ZNTDatabaseHelper store(places, machine.log);
    EXPECT_EQ(store.getAllMacroNames().size(), 1u) << "open, with a statement that is compiled";

    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t other = ::fork();
    if (other == 0) {
        sqlite3* connection = nullptr;
        sqlite3_open(machine.home.path(files.database).c_str(), &connection);
        sqlite3_exec(connection, "begin exclusive", nullptr, nullptr, nullptr);
        const auto told = ::write(ready[1], "x", 1);
        std::this_thread::sleep_for(lockedFor);
        sqlite3_exec(connection, "insert into ZNTMacro (name) values ('other'); commit", nullptr, nullptr,
                     nullptr);
        sqlite3_close(connection);
        ::_exit(told == 1 ? 0 : 1);
    }
    char heard;
    ASSERT_EQ(::read(ready[0], &heard, 1), 1);
    const auto start = Clock::now();
    EXPECT_THAT(store.getAllMacroNames(), ElementsAre(u"kept", u"other")); // meets the lock when it steps
    EXPECT_GE(Clock::now() - start, lockedFor / 2) << "or the file was not locked";
    EXPECT_GT(storeMacro(store, u"mine", u"south"), 0);
    int status = 0;
    ::waitpid(other, &status, 0);
    EXPECT_EQ(status, 0);
    ::close(ready[0]);
    ::close(ready[1]);
    EXPECT_THAT(storedNames(), ElementsAre(u"kept", u"other", u"mine"));
}

TEST_F(ZNTDatabaseFaults, AFullDiskRefusesTheNewAndKeepsTheOldAtEverySizeOfIt)
{
    const auto size = std::filesystem::file_size(machine.home.path(files.database));
    for (const std::uintmax_t room : {std::uintmax_t{0}, std::uintmax_t{600}, std::uintmax_t{5000}, size}) {
        SCOPED_TRACE(room);
        EXPECT_EQ(inChild([&] {
                      fillDisk(room);
                      ZNTDatabaseHelper store(places, machine.log);
                      storeMacro(store, u"too large", std::u16string(100'000, u'x'));
                      return store.getMacroFromDatabaseByName(u"kept") ? 0 : 1;
                  }),
                  0);
        EXPECT_THAT(storedNames(), ElementsAre(u"kept"));
        EXPECT_EQ(files.value("pragma integrity_check"), "ok");
    }
}

TEST_F(ZNTDatabaseFaults, AFirstRunOnAFullDiskLeavesNoHalfOfAFile)
{
    std::filesystem::remove_all(machine.home.path("Library"));
    EXPECT_EQ(inChild([&] {
                  fillDisk(100);
                  ZNTDatabaseHelper store(places, machine.log);
                  const bool isSilent = store.getAllMudsFromMudList().empty();
                  return isSilent && machine.log.lines.size() == 1 &&
                                 machine.log.lines[0].starts_with("File copy issue ")
                             ? 0
                             : 1;
              }),
              0);
    EXPECT_FALSE(machine.home.has(files.properties));
    EXPECT_EQ(machine.home.read(files.database), "");
}

TEST_F(ZNTDatabaseFaults, TheOldCounterStandsWhereTheNewOneCannotBeWritten)
{
    files.writeProperties(files.counter(1));
    EXPECT_EQ(inChild([&] {
                  giveUpPrivileges();
                  ::chmod(machine.home.path(files.folder).c_str(), 0500);
                  ZNTDatabaseHelper store(places, machine.log);
                  const bool isReadable = store.getMacroFromDatabaseByName(u"kept").has_value();
                  ::chmod(machine.home.path(files.folder).c_str(), 0700);
                  return isReadable ? 0 : 1;
              }),
              0);
    EXPECT_EQ(files.readProperties(), files.counter(1));
    EXPECT_THAT(storedNames(), ElementsAre(u"kept"));
}

TEST_F(ZNTDatabaseFaults, AForeignFileMakesNoStatementEndless)
{
    // With a limit, so that the test ends without the client's own.
    const std::string counting =
        "with recursive c(oid) as (select 1 union all select oid + 1 from c limit 2000000) ";
    for (const auto& statement :
         {"create trigger slow after insert on ZNTMacroGroup begin select count(*) from (" + counting +
              "select oid from c); end",
          std::string("drop table ZNTMacro"),
          "create view ZNTMacro as " + counting +
              "select oid, 'x' name, 'y' dataToExecute, 1 zntMacroGroupFK from c limit 3"})
        EXPECT_TRUE(files.rows(statement).empty());
    ZNTDatabaseHelper store(places, machine.log);
    EXPECT_TRUE(store.getAllMacroNames().empty());
    ZNTMacroGroup group{.oid = 0, .groupName = u"friends", .macrosList = {}};
    store.insertMacroGroup(group);
    EXPECT_TRUE(store.getAllMacroGroupsFromDatabase().empty());
    EXPECT_EQ(store.getAllMudsFromMudList().size(), 16u) << "other statements have their own time";
}

TEST_F(ZNTDatabaseFaults, AReadOnlyDatabaseIsReadAndNotChanged)
{
    ::chmod(machine.home.path(files.database).c_str(), 0400);
    EXPECT_EQ(inChild([&] {
                  giveUpPrivileges();
                  ZNTDatabaseHelper store(places, machine.log);
                  storeMacro(store, u"new", u"south");
                  const bool saysSo = !store.didLastChangeSucceed();
                  store.deleteMacroByOid(1);
                  return saysSo && store.getAllMacroNames().size() == 1 && machine.log.lines.empty() ? 0 : 1;
              }),
              0);
    EXPECT_THAT(storedNames(), ElementsAre(u"kept"));
}

} // namespace
