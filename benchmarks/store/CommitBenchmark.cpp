// What a jump pays for its settings: one key (the remembered positions) or two (a shortcut's code and mask), on the
// file system that TMPDIR names.
#include <benchmark/benchmark.h>
#include <glib.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Vantrel/Desktop/Store/SQLiteUserDefaults.hpp"

namespace {

using vantrel::DefaultsData;
using vantrel::desktop::SQLiteUserDefaults;

class TemporaryStore {
  public:
    TemporaryStore() {
        std::string name = (std::filesystem::temp_directory_path() / "vantrel-bench-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            std::abort();
        }
        directory_ = name;
    }
    ~TemporaryStore() { std::filesystem::remove_all(directory_); }
    TemporaryStore(const TemporaryStore&) = delete;
    TemporaryStore& operator=(const TemporaryStore&) = delete;

    [[nodiscard]] std::filesystem::path file() const { return directory_ / "vantrel" / "defaults.sqlite3"; }

  private:
    std::filesystem::path directory_;
};

void serveLoop() {
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
}

/// Runs the write once for each iteration and reports the distribution, because a mean hides what a person feels.
template <typename Write>
void measure(benchmark::State& state, Write write) {
    const TemporaryStore temporary;
    SQLiteUserDefaults store(temporary.file());
    std::vector<double> microseconds;
    microseconds.reserve(1'000'000);
    std::int64_t number = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        write(store, ++number);
        const std::chrono::duration<double, std::micro> duration = std::chrono::steady_clock::now() - start;
        microseconds.push_back(duration.count());
        state.PauseTiming();
        serveLoop();
        state.ResumeTiming();
    }
    std::ranges::sort(microseconds);
    const auto at = [&](double share) {
        return microseconds[static_cast<std::size_t>(share * static_cast<double>(microseconds.size() - 1))];
    };
    state.counters["p50_us"] = at(0.5);
    state.counters["p99_us"] = at(0.99);
    state.counters["max_us"] = at(1);
}

void commitOfOneKey(benchmark::State& state) {
    std::string positions(static_cast<std::size_t>(state.range(0)), 'x');
    measure(state, [&](SQLiteUserDefaults& store, std::int64_t number) {
        // Other bytes from end to end: SQLite does not write a page that stays as it was.
        std::ranges::fill(positions, static_cast<char>('a' + number % 26));
        store.setObjects({{"rememberedPositions", DefaultsData{positions}}});
    });
}
// Two displays, and a thousand.
BENCHMARK(commitOfOneKey)->Arg(80)->Arg(40'000)->Iterations(20'000);

void commitOfTwoKeys(benchmark::State& state) {
    measure(state, [](SQLiteUserDefaults& store, std::int64_t number) {
        store.setObjects({{"primaryHotKeyCode", number}, {"primaryHotKeyModifiers", number}});
    });
}
BENCHMARK(commitOfTwoKeys)->Iterations(20'000);

void launch(benchmark::State& state) {
    const TemporaryStore temporary;
    { SQLiteUserDefaults(temporary.file()).setObjects({{"mode", std::string("manual")}}); }
    for (auto _ : state) {
        auto store = std::make_unique<SQLiteUserDefaults>(temporary.file());
        for (const char* key : {"mode", "animation", "soundEnabled", "primaryHotKeyCode", "primaryHotKeyModifiers",
                                "savedPoints", "rememberedPositions"}) {
            benchmark::DoNotOptimize(store->objectForKey(key));
        }
        // Closing waits for the disk, which a launch does not.
        state.PauseTiming();
        store.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(launch)->Iterations(200);

}  // namespace

BENCHMARK_MAIN();
