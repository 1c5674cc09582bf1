// The built program, run in a folder of the test's own.
#pragma once

#include "archive/pkgformat.h"
#include "gfx/pixels.h"
#include "support/samplefolder.h"
#include "support/table.h"
#include "viewer/documentloader.h"

#include <QCoreApplication>
#include <QProcess>
#include <gtest/gtest.h>

namespace wb
{

class CliTest : public testing::Test
{
protected:
    struct Result {
        int status = -1; // -1: it did not start, hung or crashed
        std::string out;
        std::string errors;
    };

    // Runs in the folder, with arguments as a shell would part them.
    Result Run(const QString &line, const QString &output = {}) const
    {
        QProcess program;
        program.setWorkingDirectory(folder.NativeText());
        if (!output.isEmpty())
            program.setStandardOutputFile(output);
        program.start(QCoreApplication::applicationDirPath() + u"/workbench-cli"_qs,
                      line.split(u' ', Qt::SkipEmptyParts));
        const bool ended = program.waitForFinished() && program.exitStatus() == QProcess::NormalExit;
        return {ended ? program.exitCode() : -1, program.readAllStandardOutput().toStdString(),
                program.readAllStandardError().toStdString()};
    }

    // Runs a line of the shell in the folder, where "$0" is the program. Gives its status.
    int RunInShell(const QString &line) const
    {
        QProcess shell;
        shell.setWorkingDirectory(folder.NativeText());
        shell.start(u"sh"_qs,
                    {u"-c"_qs, line, QCoreApplication::applicationDirPath() + u"/workbench-cli"_qs});
        return shell.waitForFinished() ? shell.exitCode() : -1;
    }

    void ExpectDone(const QString &line) const
    {
        const Result run = Run(line);
        EXPECT_EQ(0, run.status) << line.toStdString();
        EXPECT_EQ("", run.out + run.errors) << line.toStdString();
    }

    void ExpectFails(const QString &line, const std::string &message, const QString &output = {}) const
    {
        const Result run = Run(line, output);
        EXPECT_EQ(1, run.status) << line.toStdString();
        EXPECT_EQ("", run.out) << line.toStdString();
        EXPECT_EQ("workbench-cli: " + message + '\n', run.errors) << line.toStdString();
    }

    // An archive whose root directory lies as a table beside the tests. Behind it come the directory of a
    // folder that holds x.gi, and a stored file of the bytes "abc".
    void PutArchive(std::string_view name, const std::string &table) const
    {
        PkgEntryList root;
        for (const TableRow &row : ReadTable(table, 5))
            root.push_back({row.Text(0), {}, row.Int(1), row.Int(2), row.Int(3), row.Int(4)});
        const ByteArray inner = PkgDirectoryBytes({{u"x.gi"_qs, {}, 0, 0, 825, PkgStored}});
        folder.Put(name, std::string("\4\0\0\0", 4) + TextOf(PkgDirectoryBytes(root)) + TextOf(inner) +
                             std::string("\3\0\0\0abc", 7));
    }

    FrameBuf ReadBack(const QString &name, const char *kind) const
    {
        const FrameSet document = OpenDocumentFile(folder.Path(name));
        EXPECT_EQ(kind, document.Kind);
        return document.Count == 0 ? FrameBuf() : DibToFrameBuf(document.Pictures[0]);
    }

    SampleFolder folder;
};

} // namespace wb
