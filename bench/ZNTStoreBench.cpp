// What a start costs with a well-filled database, and the single operations on it.

#include "ZNTDatabaseHelper.h"
#include "ZNTText.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>

namespace
{

struct SilentLog final : ZNTPlatformLog {
    void log(std::string_view) override {}
};

/// A home whose database holds `count` macros, in groups of 100, and `count` active triggers.
class FilledHome
{
public:
    explicit FilledHome(std::int64_t count)
    {
        places.home = (std::filesystem::temp_directory_path() / "zantor-bench-XXXXXX").string();
        if (!::mkdtemp(places.home.data()))
            std::abort();
        ZNTDatabaseHelper store(places, log);
        const auto oneTo =
            "with recursive number(n) as (select 1 union all select n + 1 from number where n < " +
            std::to_string(count) + ") ";
        store.runSQL(
            oneTo +
            "insert into ZNTMacroGroup (groupName) select 'group' || n from number where n % 100 = 1");
        store.runSQL(oneTo +
                     "insert into ZNTMacro (name, dataToExecute, zntMacroGroupFK) "
                     "select 'macro' || n, 'say hello %1 from number ' || n, 1 + (n - 1) / 100 from number");
        store.runSQL(oneTo +
                     "insert into ZNTTrigger (name, checkString, action, enabled, gag) "
                     "select 'trigger' || n, 'The (\\w+) number ' || n || ' attacks *', 'kick %1', 1, 0 "
                     "from number");
    }
    ~FilledHome() { std::filesystem::remove_all(places.home); }
    FilledHome(const FilledHome&) = delete;
    FilledHome& operator=(const FilledHome&) = delete;

    ZNTFilePlaces places = ZNTFilePlaces::forThisProcess();
    SilentLog log;
};

/// Opening it and reading all that a session, the preferences and the sheets ask for.
void openAndReadEverything(benchmark::State& state)
{
    FilledHome home(state.range(0));
    for (auto _ : state) {
        ZNTDatabaseHelper store(home.places, home.log);
        auto triggers = store.loadTriggers();
        auto names = store.getAllMacroNames();
        std::size_t macros = 0;
        for (const auto& group : store.getAllMacroGroupsFromDatabase())
            macros += store.getAllMacrosFromDatabaseByMacroGroupId(group.oid).size();
        auto muds = store.getAllMudsFromMudList();
        const auto count = static_cast<std::size_t>(state.range(0));
        if (triggers.size() != count || names.size() != count || macros != count || muds.empty())
            state.SkipWithError("rows are missing");
    }
}
BENCHMARK(openAndReadEverything)->Arg(100)->Arg(10'000)->Unit(benchmark::kMillisecond);

/// What running a macro waits for.
void findAMacroByName(benchmark::State& state)
{
    FilledHome home(state.range(0));
    ZNTDatabaseHelper store(home.places, home.log);
    const auto name = u"macro" + znt::decimalText(state.range(0) / 2);
    for (auto _ : state)
        benchmark::DoNotOptimize(store.getMacroFromDatabaseByName(name));
}
BENCHMARK(findAMacroByName)->Arg(100)->Arg(10'000)->Unit(benchmark::kMicrosecond);

/// Storing waits for the disk: a trigger that was told to be kept is kept, whatever happens next.
void storeATrigger(benchmark::State& state)
{
    FilledHome home(state.range(0));
    ZNTDatabaseHelper store(home.places, home.log);
    ZNTTrigger trigger{.oid = 0,
                       .name = u"new",
                       .check = u"The (\\w+) arrives",
                       .action = u"greet %1",
                       .soundFileToPlay = std::nullopt,
                       .gag = false,
                       .active = true};
    for (auto _ : state)
        store.insertTrigger(trigger);
}
BENCHMARK(storeATrigger)->Arg(10'000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
