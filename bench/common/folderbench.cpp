// Listing a folder of 50,000 files, against what the system itself needs to tell their names.
//
// Every iteration is one round of both sides in turn; the counter is the median of the rounds' ratios, so
// that a machine that slows down meanwhile slows both.
#include "common/folderrows.h"
#include "platform/folderwatch.h"
#include "platform/nativepath.h"
#include "support/tempfolder.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <dirent.h>
#include <functional>

namespace
{

constexpr int FileCount = 50'000;
constexpr int Rounds = 41;

const wb::TempFolder &Folder()
{
    static const wb::TempFolder folder;
    static const bool isFilled = [] {
        char name[32];
        // A stride that is prime to the count: the folder is not in the order of its names.
        for (int index = 0; index < FileCount; ++index) {
            const int number = int(std::int64_t(index) * 7919 % FileCount);
            std::snprintf(name, sizeof name, "Frame%05d.%s", number, number % 3 == 0 ? "gi" : "GAI");
            folder.Put(name, "");
        }
        return true;
    }();
    benchmark::DoNotOptimize(isFilled);
    return folder;
}

std::vector<std::string> BareNames(const std::string &path)
{
    std::vector<std::string> names;
    DIR *folder = ::opendir(path.c_str());
    while (const dirent *entry = folder != nullptr ? ::readdir(folder) : nullptr)
        names.emplace_back(entry->d_name);
    if (folder != nullptr)
        ::closedir(folder);
    return names;
}

std::vector<std::string> SortedNames(const std::string &path)
{
    std::vector<std::string> names = BareNames(path);
    std::sort(names.begin(), names.end());
    return names;
}

double SecondsOf(const std::function<std::size_t()> &work)
{
    const auto start = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(work());
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Times `ours` and reports yardstick time : our time.
void Compare(benchmark::State &state, const std::function<std::size_t()> &ours,
             const std::function<std::size_t()> &yardstick)
{
    std::vector<double> ratios;
    for ([[maybe_unused]] const auto round : state) {
        const double bare = SecondsOf(yardstick);
        const double own = SecondsOf(ours);
        state.SetIterationTime(own);
        ratios.push_back(bare / own);
    }
    std::nth_element(ratios.begin(), ratios.begin() + std::ptrdiff_t(ratios.size() / 2), ratios.end());
    state.counters["ratio"] = ratios[ratios.size() / 2];
}

std::size_t ListAll(const QString &pattern)
{
    return wb::ListRows(Folder().Path(), pattern, 0).size();
}

void ListAgainstSortedNames(benchmark::State &state)
{
    Compare(
        state, [] { return ListAll(QStringLiteral("*.*")); },
        [] { return SortedNames(Folder().Native()).size(); });
}
BENCHMARK(ListAgainstSortedNames)->Iterations(Rounds)->UseManualTime()->Unit(benchmark::kMillisecond);

void ListByPatternsAgainstSortedNames(benchmark::State &state)
{
    Compare(
        state, [] { return ListAll(QStringLiteral("*.gi;*.gai;*.hai;*.aft;*.png")); },
        [] { return SortedNames(Folder().Native()).size(); });
}
BENCHMARK(ListByPatternsAgainstSortedNames)
    ->Iterations(Rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void ListAgainstBareNames(benchmark::State &state)
{
    Compare(
        state, [] { return ListAll(QStringLiteral("*.*")); },
        [] { return BareNames(Folder().Native()).size(); });
}
BENCHMARK(ListAgainstBareNames)->Iterations(Rounds)->UseManualTime()->Unit(benchmark::kMillisecond);

void UnchangedRefreshAgainstBareNames(benchmark::State &state)
{
    wb::FolderWatch watch;
    watch.Watch(Folder().Native());
    Compare(
        state, [&watch] { return watch.MayHaveChanged() ? ListAll(QStringLiteral("*.*")) : 0; },
        [] { return BareNames(Folder().Native()).size(); });
}
BENCHMARK(UnchangedRefreshAgainstBareNames)
    ->Iterations(Rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
