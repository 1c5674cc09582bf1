// A DAT of a million items, in one run against what bounds the work.
//
//   parse      simdjson's DOM parse of the same tree as JSON over ours; both into fresh memory
//   write      memcpy of the file over serialising
//   expand     zlib's bare uncompress over expanding the compressed form, and over opening it in all (parsed)
//   list       milliseconds until the editor has the rows of a block of 100,000 children
#include "archive/zlblock.h"
#include "dat/dateditorstate.h"
#include "dat/datjson.h"
#include "dat/datreader.h"
#include "dat/datwriter.h"
#include "support/ratio.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <optional>
#include <random>
#include <simdjson.h>
#include <zlib.h>

namespace
{

using namespace wb;
using namespace wb::bench;

constexpr int Blocks = 2500;
constexpr int BlockItems = 399; // with the block itself, a million items in all
constexpr int Rounds = 15;

void Require(bool isTrue)
{
    if (!isTrue)
        std::abort();
}

// A node list of `count` nodes, without them.
std::string Head(int count)
{
    return '\1' + std::string(reinterpret_cast<const char *>(&count), 4);
}

std::string Text(const std::string &text)
{
    ByteArray bytes;
    DatWriteText(bytes, QString::fromStdString(text));
    return {bytes.begin(), bytes.end()};
}

std::string Node(int id, char type, const std::string &name)
{
    return std::string(reinterpret_cast<const char *>(&id), 4) + std::string(4, '\0') + type + Text(name);
}

// As the game's files are: a few words again and again as names, and as values numbers, words and sentences.
std::string MadeValue(std::mt19937 &random)
{
    static constexpr const char *words[] = {"корабль", "планета", "система", "оружие", "торговля", "капитан",
                                            "станция", "звезда",  "награда", "пират",  "двигатель"};
    if (random() % 4 != 0)
        return std::to_string(random() % 100'000) + (random() % 3 == 0 ? ".25" : "");
    std::string text = words[random() % std::size(words)];
    for (auto more = random() % 4; more > 0; --more)
        text += ' ' + std::string(words[random() % std::size(words)]);
    return text;
}

ByteArray MakeFile(int blocks, int items)
{
    static constexpr const char *names[] = {"Name", "Race",  "Price", "Weight", "Описание",
                                            "Tech", "Range", "Speed", "Damage", "Требования"};
    std::mt19937 random(1);
    std::string file = Head(blocks);
    for (int block = 0; block < blocks; ++block) {
        file += Node(block, DatBlock, "Item " + std::to_string(block)) + Head(items);
        for (int item = 0; item < items; ++item)
            file += Node(item, DatValue, names[item % std::size(names)] + std::to_string(item / 10)) +
                    Text(MadeValue(random));
    }
    return {file.begin(), file.end()};
}

std::size_t HeapBytes()
{
    const auto used = mallinfo2();
    return used.uordblks + used.hblkhd;
}

void Parse(benchmark::State &state, const ByteArray &file)
{
    const ByteArray json = DatToJson(DatParse(file));
    std::optional<simdjson::dom::parser> parser;
    const simdjson::padded_string text(reinterpret_cast<const char *>(json.data()), json.size());
    std::optional<DatTree> tree;
    ByteArray bytes;
    const auto prepare = [&] {
        parser.reset();
        tree.reset();
        bytes = file;
    };
    for ([[maybe_unused]] auto _ : state)
        state.counters["ratio"] =
            MedianRatio([&] { Require(parser.emplace().parse(text).error() == simdjson::SUCCESS); },
                        [&] { tree.emplace(DatParse(std::move(bytes))); }, Rounds, prepare);
    Require(tree->Count() == Blocks * (BlockItems + 1) + 1);
    prepare();
    const std::size_t before = HeapBytes();
    state.counters["ms"] = TimeOf([&] { tree.emplace(DatParse(std::move(bytes))); }) * 1e3;
    state.counters["bytes_an_item"] = double(HeapBytes() - before) / tree->Count();
    state.counters["megabytes"] = double(file.size()) / 1e6;
}

void Write(benchmark::State &state, const ByteArray &file)
{
    const DatTree tree = DatParse(file);
    ByteArray copy, written;
    const auto prepare = [&] {
        copy = ByteArray();
        written = ByteArray();
    };
    for ([[maybe_unused]] auto _ : state)
        state.counters["ratio"] = MedianRatio(
            [&] {
                copy.resize(file.size());
                std::memcpy(copy.data(), file.data(), file.size());
            },
            [&] { written = DatSerialize(tree); }, Rounds, prepare);
    Require(written == file);
}

void Expand(benchmark::State &state, const ByteArray &file)
{
    ByteArray packed;
    ZlBlockPack(packed, file);
    ByteArray plain, bytes;
    DatTree tree;
    const auto bare = [&] {
        uLongf length = file.size();
        plain.resize(length);
        Require(uncompress(plain.data(), &length, packed.data() + ZlHeaderSize,
                           packed.size() - ZlHeaderSize) == Z_OK);
    };
    const auto prepare = [&] {
        plain = ByteArray();
        tree = DatTree();
        bytes = packed;
    };
    for ([[maybe_unused]] auto _ : state) {
        state.counters["ratio"] = MedianRatio(
            bare, [&] { Require(ZlBlockUnpack(plain, packed, -1, 0)); }, Rounds, prepare);
        state.counters["parsed"] = MedianRatio(
            bare, [&] { tree = DatParse(std::move(bytes)); }, Rounds, prepare);
    }
    Require(tree.Count() == Blocks * (BlockItems + 1) + 1);
    state.counters["megabytes"] = double(packed.size()) / 1e6;
}

void List(benchmark::State &state)
{
    DatEditorState editor;
    editor.Open(DatParse(MakeFile(1, 100'000)), {});
    for ([[maybe_unused]] auto _ : state)
        state.counters["ms"] = TimeOf([&] { Require(editor.Enter(1)); }) * 1e3;
    Require(editor.Rows().size() == 100'000);
}

[[maybe_unused]] const bool IsRegistered = [] {
    static const ByteArray file = MakeFile(Blocks, BlockItems);
    benchmark::RegisterBenchmark("parse", Parse, file)->Iterations(1);
    benchmark::RegisterBenchmark("write", Write, file)->Iterations(1);
    benchmark::RegisterBenchmark("expand", Expand, file)->Iterations(1);
    benchmark::RegisterBenchmark("list", List)->Iterations(1);
    return true;
}();

} // namespace
