#include "archive/corpus.h"

#include "gi/giencoder.h"
#include "support/pictures.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <string_view>

namespace wb::bench
{

namespace
{

constexpr std::size_t TextSize = 1'500'000;
constexpr std::size_t SoundSize = 1'500'000;
constexpr std::size_t TableSize = 1'000'000;
constexpr std::size_t WantedSize = 104'857'600;

ByteArray EncodedGi(const MadePicture &made, std::int32_t type, std::int32_t transClass)
{
    FrameBuf frame;
    frame.Width = made.width;
    frame.Height = made.height;
    frame.Pixels.assign(made.pixels.begin(), made.pixels.end());
    ByteArray bytes;
    EncodeGi(bytes, frame, type, transClass, true);
    return bytes;
}

ByteArray MakeText(std::mt19937 &random)
{
    static constexpr std::string_view syllables[] = {"ко", "ра",  "бль", "пла", "не",  "та", "звез", "да",
                                                     "пи", "рат", "тор", "го",  "вец", "ми", "р ",   " ",
                                                     ". ", ", ",  "ст",  "ан",  "ци",  "я ", "о",    "\r\n"};
    ByteArray text;
    while (text.size() < TextSize) {
        const std::string_view syllable = syllables[random() % std::size(syllables)];
        text.insert(text.end(), syllable.begin(), syllable.end());
    }
    return text;
}

ByteArray MakeSound(std::mt19937 &random)
{
    ByteArray sound(SoundSize);
    for (std::uint8_t &byte : sound)
        byte = std::uint8_t(random());
    return sound;
}

// Long runs of zeroes with a small number here and there.
ByteArray MakeTable(std::mt19937 &random)
{
    ByteArray table(TableSize, 0);
    for (std::size_t at = 0; at < TableSize; at += 1 + random() % 300)
        table[at] = std::uint8_t(random() % 16);
    return table;
}

// What every folder of the corpus holds.
Corpus MakeFolderFiles()
{
    std::mt19937 random(1);
    Corpus files;
    const MadePicture sprite = MakeSprite();
    const MadePicture graded = MakeGraded();
    for (std::int32_t type = 1; type <= 4; ++type) {
        files.push_back({"sprite" + std::to_string(type) + ".gi", EncodedGi(sprite, type, 1)});
        files.push_back({"graded" + std::to_string(type) + ".gi", EncodedGi(graded, type, 2)});
    }
    files.push_back({"photo.gi", EncodedGi(MakePhoto(), 0, 0)});
    files.push_back({"text.txt", MakeText(random)});
    files.push_back({"sound.mp3", MakeSound(random)});
    files.push_back({"table.dat", MakeTable(random)});
    return files;
}

} // namespace

Corpus MakeCorpus()
{
    const Corpus files = MakeFolderFiles();
    Corpus corpus;
    while (SizeOf(corpus) < WantedSize) {
        const std::string folder = std::to_string(corpus.size() / files.size()) + '/';
        for (const CorpusFile &file : files)
            corpus.push_back({folder + file.name, file.bytes});
    }
    return corpus;
}

Corpus MakeSmallFiles(int count)
{
    std::mt19937 random(2);
    const Corpus files = MakeFolderFiles();
    Corpus pieces;
    for (int i = 0; i < count; ++i) {
        const ByteArray &bytes = files[random() % files.size()].bytes;
        const std::size_t size = 200 + random() % 3801;
        const auto start = bytes.begin() + std::ptrdiff_t(random() % (bytes.size() - size));
        pieces.push_back({std::to_string(i / 100) + '/' + std::to_string(i) + ".dat",
                          ByteArray(start, start + std::ptrdiff_t(size))});
    }
    return pieces;
}

std::size_t SizeOf(const Corpus &corpus)
{
    std::size_t size = 0;
    for (const CorpusFile &file : corpus)
        size += file.bytes.size();
    return size;
}

void WriteFiles(const Corpus &corpus, const std::string &folder)
{
    for (const CorpusFile &file : corpus) {
        const std::filesystem::path path = std::filesystem::path(folder) / file.name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char *>(file.bytes.data()), std::streamsize(file.bytes.size()));
    }
}

} // namespace wb::bench
