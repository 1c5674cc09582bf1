// Archives made, read and unpacked by runs of workbench-cli.
#include "cli/clitest.h"
#include "support/fulldisk.h"

#include <gmock/gmock.h>

#include <map>
#include <random>

namespace wb
{

namespace
{

using Tree = std::map<std::string, std::string>; // a folder's bytes are "/"

Tree TreeBelow(const TempFolder &folder, const std::string &root)
{
    Tree tree;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder.Native(root))) {
        const std::string path = entry.path().lexically_relative(folder.Native(root));
        tree[path] = entry.is_directory()
                         ? "/"
                         : folder.Get(entry.path().lexically_relative(folder.Native()).string());
    }
    return tree;
}

// Files around every size at which packing changes, one that does not shrink, and what is hidden.
Tree MakeTree(const TempFolder &folder)
{
    std::string noise(3'000'000, 0);
    std::ranges::generate(noise, std::mt19937(1));
    folder.MakeFolder("Игра/.Скрытая/Внутри");
    folder.MakeFolder("Игра/Пустая");
    for (const std::size_t size : {0, 1, 127, 128, 65536, 65537, 200000})
        folder.Put("Игра/" + std::to_string(size) + ".txt", std::string(size, 'w'));
    folder.Put("Игра/Шум.dat", noise);
    folder.Put("Игра/Снимок.png", noise.substr(0, 500));
    folder.Put("Игра/.Скрытая/Внутри/Ёлка.txt", std::string(70'000, 'z') + noise.substr(0, 70'000));
    Tree tree = TreeBelow(folder, "Игра");
    folder.Put("Игра/.скрытый.txt", "left out");
    return tree;
}

} // namespace

TEST_F(CliTest, WhatIsPackedComesBack)
{
    const Tree tree = MakeTree(folder);
    for (const auto &[option, packed] : {std::pair(u""_qs, 6), std::pair(u" --store"_qs, 0)}) {
        const Result packing = Run(u"pack Игра Игра.pkg --force"_qs + option);
        EXPECT_THAT(packing.out + packing.errors, testing::EndsWith("%\nЗавершено.\n"));
        EXPECT_EQ(0, packing.status);
        const std::string list = Run(u"list Игра.pkg --recursive"_qs).out;
        EXPECT_EQ(tree.size(), std::size_t(std::ranges::count(list, '\n')));
        EXPECT_EQ(packed, QString::fromStdString(list).count(u"packed "_qs));
        EXPECT_EQ(0, Run(u"unpack Игра.pkg Новая/Папка"_qs).status);
        EXPECT_TRUE(tree == TreeBelow(folder, "Новая/Папка"));
        for (const auto &[path, bytes] : tree) {
            const Result file = Run(u"extract Игра.pkg -o - "_qs + QString::fromStdString(path));
            EXPECT_TRUE(bytes == "/" ? file.status == 1 : file.out == bytes) << path;
        }
    }
    EXPECT_EQ("FLDR: Внутри\nFILE:  Внутри\\Ёлка.txt\nЗавершено.\n",
              Run(u"unpack Игра.pkg Часть --folder /.скрытая/"_qs).out);
    EXPECT_EQ((Tree{{"Внутри", "/"}, {"Внутри/Ёлка.txt", tree.at(".Скрытая/Внутри/Ёлка.txt")}}),
              TreeBelow(folder, "Часть"));
    EXPECT_EQ(1, RunInShell(u"\"$0\" pack Игра закрыто.pkg --store <&- >&- 2>&-"_qs)) << "has no log";
    EXPECT_TRUE(folder.Get("Игра.pkg") == folder.Get("закрыто.pkg")) << "the log is in the archive";
    folder.Put("диск.pkg", "older");
    OnAFullDisk(100'000, [&] { EXPECT_EQ(1, Run(u"pack Игра диск.pkg --force"_qs).status); });
    EXPECT_EQ("older", folder.Get("диск.pkg"));
    EXPECT_EQ(6U, folder.EntryCount());
}

TEST_F(CliTest, AHostileArchiveStaysInsideTheTarget)
{
    PutArchive("а.pkg", "cli/hostile.txt");
    const Result run = Run(u"unpack а.pkg Цель/Папка"_qs);
    EXPECT_EQ(1, run.status);
    EXPECT_EQ(ReadFixture("cli/hostile.log"), run.out + run.errors);
    const Tree unpacked = {{"Папка", "/"},      {"Папка/петля", "/"}, {"Папка/ложь", "abc"},
                           {"Папка/длина", ""}, {"Папка/минус", ""},  {"Папка/А.txt", "abc"}};
    EXPECT_EQ(unpacked, TreeBelow(folder, "Цель"));
    EXPECT_EQ(2U, folder.EntryCount());
    EXPECT_EQ(9, std::ranges::count(Run(u"list а.pkg --recursive"_qs).out, '\n'));
}

TEST_F(CliTest, OnlyATerminalSeesProgress)
{
    folder.Put("b");
    const auto call = QCoreApplication::applicationDirPath() + u"/workbench-cli pack . /dev/null --force"_qs;
    for (const auto &[option, pattern] : {std::pair(u""_qs, "^\r\x1b\\[K\\[\\.+].*\r\x1b\\[KFILE:  b\r\n"),
                                          std::pair(u" --quiet"_qs, "^FILE:  b\r\n")}) {
        QProcess terminal;
        terminal.setWorkingDirectory(folder.NativeText());
        terminal.start(u"script"_qs, {u"-qec"_qs, call + option, u"/dev/null"_qs});
        EXPECT_TRUE(terminal.waitForFinished());
        EXPECT_THAT(terminal.readAllStandardOutput().toStdString(), testing::ContainsRegex(pattern));
    }
}

} // namespace wb
