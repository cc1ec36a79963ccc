#include "ZNTStoreMaker.h"
#include "ZNTStoreWait.h"
#include "ZNTStoredFiles.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// Runs `task` in a child process, which shares the files and whose limits end with it. The task is to answer
/// true.
void expectInChild(const std::function<bool()>& task)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(task() ? 0 : 1);
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

/// From now on no file of this process grows beyond `bytes`, as on a disk that is full.
void fillDisk(std::uintmax_t bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

/// A clock by which another program locks a database. A pause takes a millisecond at least, as on a busy
/// machine.
struct LockingClock final : ZNTClock { // one for each test, never copied
    double seconds = 0;

    explicit LockingClock(const std::string& path) { sqlite3_open(path.c_str(), &other); }
    ~LockingClock() override
    {
        release();
        sqlite3_close(other);
    }

    void lockFor(double duration)
    {
        run("begin exclusive; insert into ZNTMacro (name) values ('other')");
        isLocked = true;
        end = seconds + duration;
    }
    void release()
    {
        if (std::exchange(isLocked, false))
            run("commit");
    }
    [[nodiscard]] std::chrono::system_clock::time_point timeOfDay() const override
    {
        return std::chrono::system_clock::time_point(
            std::chrono::hours(500'000) +
            std::chrono::microseconds(static_cast<std::int64_t>(seconds * 1e6)));
    }
    void sleepFor(double pause) override
    {
        seconds += std::max(pause, 0.001);
        if (seconds >= end)
            release();
    }

private:
    void run(const char* sql) { EXPECT_EQ(sqlite3_exec(other, sql, nullptr, nullptr, nullptr), SQLITE_OK); }
    sqlite3* other = nullptr;
    bool isLocked = false;
    double end = 0;
};

class ZNTDatabaseFaults : public ZNTStoreFixture
{
protected:
    ZNTDatabaseFaults()
    {
        ZNTDatabaseHelper store(places, machine.log);
        storedMacro(store, u"kept", u"north");
        machine.log.lines.clear();
    }
    std::vector<std::u16string> storedNames()
    {
        return ZNTDatabaseHelper(places, machine.log).getAllMacroNames();
    }

    const std::string database = machine.home.path(files.database);
};

TEST_F(ZNTDatabaseFaults, WaitsForALockedFileAndSaysSoAfterASecond)
{
    std::vector<double> notices;
    int timesOver = 0;
    auto ownClock = std::make_unique<LockingClock>(database);
    auto& clock = *ownClock;
    clock.lockFor(2.5);
    ZNTDatabaseHelper store(places, machine.log, std::move(ownClock));
    store.setWaitNotice({.waiting = [&] { notices.push_back(clock.seconds); }, .over = [&] { ++timesOver; }});
    store.open();
    EXPECT_GE(clock.seconds, 2.5) << "the store is open when it can be read";
    ASSERT_GT(notices.size(), 20u) << "often enough to draw by";
    EXPECT_NEAR(notices.front(), 1.05, 0.05);
    EXPECT_THAT(machine.log.lines,
                ElementsAre("Another program has locked the database; waiting until it is free.",
                            "The wait for the database is over."));
    EXPECT_THAT(store.getAllMacroNames(), ElementsAre(u"kept", u"other"));

    clock.seconds += 3600;
    clock.lockFor(0.9);
    EXPECT_GT(storedMacro(store, u"mine", u"south").oid, 0);
    EXPECT_EQ(store.getAllMacroNames().size(), 4u) << "a statement that is compiled already waits, too";
    EXPECT_EQ(machine.log.lines.size(), 2u) << "a short wait is not logged";
    EXPECT_EQ(timesOver, 1);
}

TEST_F(ZNTDatabaseFaults, AWaitLastsAboutAsLongAlsoIfTheMachinesClockIsSet)
{
    LockingClock clock(database);
    ZNTStoreWait wait(clock, machine.log);
    wait.setPatience(3.05);
    for (const double change : {0, 3600, -3600, 3600, 0}) { // a pause counts half a second, or one
        clock.seconds += change;
        EXPECT_TRUE(wait.pause(0.5)) << change;
    }
    EXPECT_FALSE(wait.pause(0.5));
}

TEST_F(ZNTDatabaseFaults, MendingPutsOnlyABrokenStoreAside)
{
    LockingClock clock(database);
    const auto mend = [&] {
        ZNTStoreWait wait(clock, machine.log);
        return ZNTStoreMaker(places, machine.log, wait).mend();
    };
    const auto sound = machine.home.read(files.database);
    EXPECT_TRUE(mend().succeeded);
    clock.lockFor(60);
    EXPECT_FALSE(mend().succeeded) << "it may well be sound";
    clock.release();
    EXPECT_THAT(storedNames(), ElementsAre(u"kept", u"other"));

    auto damaged = sound;
    std::fill(damaged.begin() + 5000, damaged.begin() + 9000, 'x');
    const std::vector<std::function<void()>> breaks{
        [&] {
            std::filesystem::remove(database);
            std::filesystem::create_directory(database);
        },
        [&] { machine.home.write(files.database, damaged); },
        [&] { static_cast<void>(files.rows("drop table ZNTMacro")); },
    };
    for (std::size_t at = 0; at < breaks.size(); ++at) {
        SCOPED_TRACE(at);
        const std::string folder = files.folder, aside = folder + ".broken-" + std::to_string(at + 1);
        std::filesystem::remove_all(database);
        machine.home.write(files.database, sound);
        breaks[at]();
        expectInChild([&] {
            fillDisk(5000);
            return !mend().succeeded;
        });
        EXPECT_FALSE(machine.home.has(aside) || machine.home.has(folder + ".unfinished"))
            << "a full disk changes nothing";
        machine.home.write(folder + ".unfinished/left", "by a program that was killed");
        EXPECT_TRUE(mend().succeeded);
        EXPECT_TRUE(machine.home.has(aside) && !machine.home.has(folder + "/left"));
        EXPECT_EQ(files.value("select count(*) from ZNTMacro"), "0");
        EXPECT_EQ(files.value("select count(*) from ZNTMudList where name = 'QuestMud'"), "1");
    }
    std::filesystem::remove_all(machine.home.path("Library"));
    EXPECT_TRUE(mend().succeeded) << "there is no store yet";
    EXPECT_FALSE(machine.home.has("Library"));
}

TEST_F(ZNTDatabaseFaults, AFullDiskKeepsWhatIsStored)
{
    const auto size = std::filesystem::file_size(database);
    for (const std::uintmax_t room : {std::uintmax_t{600}, size}) {
        SCOPED_TRACE(room);
        expectInChild([&] {
            fillDisk(room);
            ZNTDatabaseHelper store(places, machine.log);
            storedMacro(store, u"too large", std::u16string(100'000, u'x'));
            return store.getMacroFromDatabaseByName(u"kept").has_value();
        });
        EXPECT_THAT(storedNames(), ElementsAre(u"kept"));
        EXPECT_EQ(files.value("pragma integrity_check"), "ok");
    }
}

TEST_F(ZNTDatabaseFaults, ATriggerOfAnotherFileReachesItsTablesAloneAndAViewIsNotRead)
{
    EXPECT_THAT(files.rows("create trigger spy after insert on ZNTMacro begin update ZNTMacro set "
                           "dataToExecute = (select file from pragma_database_list); end"),
                IsEmpty());
    ZNTDatabaseHelper store(places, machine.log);
    storedMacro(store, u"new", u"south");
    EXPECT_EQ(store.getMacroFromDatabaseByName(u"kept")->dataToExecute, u"north");
    EXPECT_THAT(files.rows("alter table ZNTMacro rename to other"), IsEmpty());
    EXPECT_THAT(files.rows("create view ZNTMacro as select * from other"), IsEmpty());
    EXPECT_THAT(storedNames(), IsEmpty()) << "another file's view could be endless";
}

} // namespace
