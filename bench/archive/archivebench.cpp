// Packing, expanding and opening archives, against zlib alone in the same run.
//
//   one_thread  packing a tree of files on one thread, reading and writing them included: the time of bare
//               compress2 over the same bytes in memory over ours
//   speed_up    what a second thread gives us, over what it gives bare compress2
//   expand      reading the archive's files: the time of bare uncompress of the same chunks over ours
//   open_ms     opening an archive of 100,000 entries; list_ms a folder of 50,000 of them
#include "archive/corpus.h"
#include "archive/packjob.h"
#include "archive/pkgreader.h"
#include "archive/zlblock.h"
#include "support/ratio.h"
#include "support/tempfolder.h"

#include <array>
#include <atomic>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <thread>
#include <zlib.h>

namespace
{

using namespace wb;
using namespace wb::bench;

class NoProgress : public Progress
{
public:
    void ProgressStart(std::int32_t, const QString &) override {}
    void ProgressStep(std::int32_t, const QString &) override {}
    void ProgressWait() override {}
    void ProgressClear() override {}
};

void Pack(const QString &folder, const QString &archive, int threads)
{
    NoProgress progress;
    const auto ignore = [](const QString &) {};
    if (PackJob(progress, threads).Run({archive, folder}, {ignore, ignore, ignore}) != JobEnd::Done)
        std::abort();
}

std::vector<ByteView> ChunksOf(const Corpus &corpus)
{
    std::vector<ByteView> chunks;
    for (const CorpusFile &file : corpus)
        for (ByteView rest = file.bytes; !rest.empty();) {
            const std::size_t size = std::min<std::size_t>(rest.size(), ZlChunkSize);
            chunks.push_back(rest.first(size));
            rest = rest.subspan(size);
        }
    return chunks;
}

// zlib alone: every thread takes the next chunk and packs it into a buffer that it keeps.
void CompressBare(const std::vector<ByteView> &chunks, int threads)
{
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        std::vector<Bytef> target(compressBound(ZlChunkSize));
        for (std::size_t i = next++; i < chunks.size(); i = next++) {
            uLongf length = target.size();
            compress2(target.data(), &length, chunks[i].data(), chunks[i].size(), Z_DEFAULT_COMPRESSION);
        }
    };
    std::vector<std::thread> others;
    for (int i = 1; i < threads; ++i)
        others.emplace_back(work);
    work();
    for (std::thread &other : others)
        other.join();
}

void Packing(benchmark::State &state)
{
    constexpr int Rounds = 5;
    const TempFolder folder;
    const Corpus corpus = MakeCorpus();
    WriteFiles(corpus, folder.Native("tree"));
    const std::vector<ByteView> chunks = ChunksOf(corpus);
    const QString tree = folder.Path(QStringLiteral("tree"));
    int samples = 0;
    const auto timeOfPacking = [&](int threads) {
        // A new file each time, as replacing one costs a flush; its memory is that of the one before.
        if (samples > 0)
            std::filesystem::resize_file(folder.Native(std::to_string(samples)), 0);
        const QString archive = folder.Path(QString::number(++samples));
        return TimeOf([&] { Pack(tree, archive, threads); });
    };

    for ([[maybe_unused]] auto _ : state) {
        timeOfPacking(2);
        std::vector<double> oneThread;
        std::vector<double> speedUp;
        for (int round = 0; round < Rounds; ++round) {
            const double bare = TimeOf([&] { CompressBare(chunks, 1); });
            const double ours = timeOfPacking(1);
            const double bareOfTwo = TimeOf([&] { CompressBare(chunks, 2); });
            const double oursOfTwo = timeOfPacking(2);
            oneThread.push_back(bare / ours);
            speedUp.push_back((ours / oursOfTwo) / (bare / bareOfTwo));
        }
        state.counters["one_thread"] = Median(oneThread);
        state.counters["speed_up"] = Median(speedUp);
    }
    state.counters["megabytes"] = double(SizeOf(corpus)) / 1e6;
}
BENCHMARK(Packing)->Iterations(1)->Unit(benchmark::kSecond);

// The zlib streams of a packed entry.
std::vector<ByteArray> StreamsOf(const PkgArchive &archive, const PkgEntry &entry)
{
    std::vector<ByteArray> streams;
    std::int64_t position = std::int64_t(entry.Offset) + 4;
    while (position < std::int64_t(entry.Offset) + entry.PackedSize) {
        std::int32_t length = 0;
        archive.File.ReadAt(position, {reinterpret_cast<std::uint8_t *>(&length), sizeof length});
        streams.emplace_back(std::size_t(length - ZlHeaderSize));
        archive.File.ReadAt(position + 4 + ZlHeaderSize, streams.back());
        position += 4 + std::int64_t(length);
    }
    return streams;
}

void Expanding(benchmark::State &state)
{
    constexpr int Rounds = 7;
    const TempFolder folder;
    WriteFiles(MakeCorpus(), folder.Native("tree"));
    const QString path = folder.Path(QStringLiteral("a.pkg"));
    Pack(folder.Path(QStringLiteral("tree")), path, 2);
    FileError error = FileError::None;
    const PkgHandle archive = PkgOpenRead(path, error);
    std::vector<PkgEntry> entries;
    std::vector<ByteArray> streams;
    for (const PkgEntry &entry : PkgReadTree(*archive, archive->RootOffset))
        if (entry.Type == PkgPacked) {
            entries.push_back(entry);
            std::ranges::move(StreamsOf(*archive, entry), std::back_inserter(streams));
        }

    std::vector<Bytef> target(ZlChunkSize);
    ByteArray data;
    const auto bare = [&] {
        for (const ByteArray &stream : streams) {
            uLongf length = target.size();
            uncompress(target.data(), &length, stream.data(), stream.size());
        }
    };
    const auto ours = [&] {
        for (const PkgEntry &entry : entries)
            if (!PkgReadEntryData(*archive, data, entry))
                std::abort();
    };
    for ([[maybe_unused]] auto _ : state)
        state.counters["expand"] = MedianRatio(bare, ours, Rounds);
}
BENCHMARK(Expanding)->Iterations(1)->Unit(benchmark::kSecond);

// One folder of 50,000 files and fifty of 1,000, all empty.
void WriteLargeTree(const TempFolder &folder)
{
    const auto filesOf = [](int count) {
        PkgEntryList files;
        for (int i = 0; i < count; ++i)
            files.push_back({QStringLiteral("Frame%1.gi").arg(i * 7919 % count), {}, 0, 0, 0, PkgStored});
        return TextOf(PkgDirectoryBytes(files));
    };
    const std::string large = filesOf(50'000);
    const std::string small = filesOf(1'000);
    constexpr int SmallFolders = 50;
    std::int32_t offset = PkgHeaderSize + PkgDirectoryHeaderSize + (SmallFolders + 1) * PkgRecordSize;
    PkgEntryList root = {{QStringLiteral("large"), {}, 0, 0, offset, PkgFolder}};
    offset += std::int32_t(large.size());
    std::string rest = large;
    for (int i = 0; i < SmallFolders; ++i) {
        root.push_back({QStringLiteral("small%1").arg(i), {}, 0, 0, offset, PkgFolder});
        offset += std::int32_t(small.size());
        rest += small;
    }
    folder.Put("a.pkg", std::string("\4\0\0\0", 4) + TextOf(PkgDirectoryBytes(root)) + rest);
}

void Opening(benchmark::State &state)
{
    constexpr int Rounds = 11;
    const TempFolder folder;
    WriteLargeTree(folder);
    PkgEntryList tree;
    const auto open = [&] {
        FileError error = FileError::None;
        const PkgHandle archive = PkgOpenRead(folder.Path(QStringLiteral("a.pkg")), error);
        tree = PkgReadTree(*archive, archive->RootOffset);
    };
    const auto list = [&] {
        if (PkgListFolder(tree, QStringLiteral("large")).size() != 50'000)
            std::abort();
    };
    for ([[maybe_unused]] auto _ : state) {
        std::vector<double> opened;
        std::vector<double> listed;
        for (int round = 0; round < Rounds; ++round) {
            opened.push_back(TimeOf(open) * 1000);
            listed.push_back(TimeOf(list) * 1000);
        }
        state.counters["entries"] = double(tree.size());
        state.counters["open_ms"] = Median(opened);
        state.counters["list_ms"] = Median(listed);
    }
}
BENCHMARK(Opening)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
