// Writes what the fuzzer begins with, one folder of small files a target: fuzz_seeds BUILD-FOLDER.
#include "anim/gaiwriter.h"
#include "anim/haiwriter.h"
#include "archive/zlblock.h"
#include "common/bytes.h"
#include "dat/datjson.h"
#include "dat/datreader.h"
#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "gi/giencoder.h"
#include "gi/giformat.h"
#include "platform/programfolder.h"
#include "rastgl/picturefile.h"
#include "services/settings.h"
#include "support/madedat.h"
#include "support/madepkg.h"
#include "support/madesound.h"
#include "support/samplefolder.h"
#include "support/table.h"

#include <cstdio>

namespace wb
{

namespace
{

class SeedFolders
{
public:
    explicit SeedFolders(std::string folder) : m_folder(std::move(folder))
    {
        std::filesystem::create_directories(m_folder + "/findings");
    }

    // One more file for the target, behind what the target takes in front of a file.
    void Add(const std::string &target, ByteView bytes, std::string_view lead = {})
    {
        const std::string folder = m_folder + "/seeds/fuzz_" + target;
        std::filesystem::create_directories(folder);
        std::filesystem::create_directories(m_folder + "/corpus/fuzz_" + target);
        std::ofstream(folder + '/' + std::to_string(m_count++), std::ios::binary) << lead << TextOf(bytes);
    }

private:
    std::string m_folder;
    int m_count = 0;
};

void AddPictures(SeedFolders &seeds)
{
    for (const std::string kind : {"bmp", "dds", "jpeg", "png", "psd"})
        for (const picturefile::Case &file : picturefile::LoadCases((kind + ".txt").c_str()))
            seeds.Add("read_" + kind, file.file);
}

std::vector<FrameBuf> Sprites()
{
    std::vector<FrameBuf> frames;
    for (const int transClass : {0, 1, 2})
        for (std::int32_t type = 0; type <= 4; ++type)
            if (GiTypeAllowed(type, transClass)) {
                FrameBuf &frame = frames.emplace_back(MakeSprite(transClass));
                frame.GiType = type;
                frame.TransType = transClass;
                frame.X = frame.Y = type;
            }
    return frames;
}

void AddGi(SeedFolders &seeds)
{
    for (const FrameBuf &frame : Sprites()) {
        ByteArray bytes;
        EncodeGi(bytes, frame, frame.GiType, frame.TransType, frame.GiType % 2 == 0);
        seeds.Add("read_gi", bytes);
        seeds.Add("read_gicanvas", bytes, std::string_view("\0\0\0\0\0\0\0\0\x30\x30\x04", 11));
    }
}

void AddGai(SeedFolders &seeds)
{
    for (const GaiWriting writing :
         {GaiWriting{}, GaiWriting{.Background = true, .Crop = true}, GaiWriting{.Packed = true}}) {
        const ByteArray bytes = WriteGai({0, 0, 48, 32}, Sprites(), writing);
        seeds.Add("read_gaiproject", bytes);
        for (const std::string_view kind : {"\x02", "\x03"})
            seeds.Add("read_gai", bytes, kind);
    }
}

void AddHai(SeedFolders &seeds)
{
    FrameBuf frame;
    frame.Width = frame.Height = 128;
    frame.Pixels.assign(std::size_t(128) * 128, 3);
    frame.Palette.assign(1024, 0x80);
    ByteArray bytes = WriteHai(std::vector<FrameBuf>(2, frame));
    seeds.Add("read_hai", bytes);
    for (const auto &[place, value] : {std::pair(4, 4), {8, 2}, {20, 40}, {48, 32}}) // a small one
        PutLong(bytes, place, value);
    bytes.resize(52 + 2 * 40);
    seeds.Add("read_hai", bytes);
}

std::string Mixed(int length)
{
    std::string bytes;
    for (int i = 0; i < length; ++i)
        bytes += char(i * i / 7);
    return bytes;
}

void AddArchives(SeedFolders &seeds)
{
    const std::string text(3000, 'w');
    const auto name = [](char letter) { return QString(QLatin1Char(letter)); };
    for (const bool packed : {false, true}) {
        const MadeFolder inner = {name('c'), {{name('a'), text, packed}}, {{name('d')}}};
        const MadeFolder root = {
            {}, {{name('a'), "1", packed}, {name('b'), text, packed}}, {inner, {name('e')}}};
        for (const char *target : {"read_pkg", "read_unpack"})
            seeds.Add(target, BytesOf(MakePkg(root)));
    }
    ByteArray packed;
    for (const std::string &plain : {Mixed(4000), std::string("w"), text}) {
        ZlBlockPack(packed, BytesOf(plain));
        seeds.Add("read_zlblock", packed);
    }
    ByteArray lengths(8);
    PutLong(lengths, 0, std::int32_t(text.size()));
    PutLong(lengths, 4, ZlChunkStreamPack(packed, BytesOf(text)));
    seeds.Add("read_chunkstream", packed, TextOf(lengths));
}

void AddDat(SeedFolders &seeds)
{
    const ByteArray plain =
        MadeDat(QStringLiteral("N3 v1,2:Имя=Значение b3,4:Блок N1 b5,6:Блок P2 1:a=b 9:= b3,5:Блок P1 1:c="));
    ByteArray packed;
    ZlBlockPack(packed, plain);
    for (const ByteArray &bytes : {plain, packed}) {
        seeds.Add("read_dat", bytes);
        seeds.Add("write_dat", bytes, std::string_view("\1\4\0\2\0ab", 7));
    }
    seeds.Add("read_datjson", DatToJson(DatParse(plain)));
}

void AddSounds(SeedFolders &seeds)
{
    const std::vector<short> samples(600, 1000);
    for (const int coding : {SF_FORMAT_PCM_16, SF_FORMAT_PCM_U8, SF_FORMAT_IMA_ADPCM, SF_FORMAT_ULAW})
        seeds.Add("read_sound", BytesOf(MakeSound(SF_FORMAT_WAV | coding, 8000, 2, samples)));
    seeds.Add("read_sound", BytesOf(MakeTone(Mp3Format, 44100, 2, 0.1)));
}

void AddWriters(SeedFolders &seeds)
{
    for (const char *target : {"gai", "gi", "hai", "jpeg", "pkg", "png", "settings", "zl"})
        for (const int length : {40, 4000})
            seeds.Add(std::string("write_") + target, BytesOf(Mixed(length)));
}

} // namespace

} // namespace wb

int main(int argc, char **argv)
{
    if (argc != 2 || !wb::LoadGraphicsLibrary(QString::fromStdString(wb::NativeProgramFolder()))) {
        std::fprintf(stderr, "usage: fuzz_seeds BUILD-FOLDER\n");
        return 2;
    }
    wb::SeedFolders seeds(argv[1]);
    wb::AddPictures(seeds);
    wb::AddGi(seeds);
    seeds.Add("read_aft", wb::BytesOf(wb::ReadTable("cli/font.txt", 1).at(0).Bytes(0)));
    wb::AddGai(seeds);
    wb::AddHai(seeds);
    wb::AddArchives(seeds);
    wb::AddDat(seeds);
    wb::AddSounds(seeds);
    wb::AddWriters(seeds);
    seeds.Add("read_settings", wb::FormatSettings(wb::DefaultSettings()));
    return 0;
}
