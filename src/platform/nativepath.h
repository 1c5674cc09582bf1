// Paths of the program and paths of the machine.
//
// A path of the program is text: a drive letter, a colon, and names with backslashes between them
// ("C:\x\y.gi"). A native path is what the machine's file calls take, as bytes. On Linux C: is "/" and other
// volumes have the letters of drives.h.
//
// Every native name has exactly one text. A byte that can't stand for itself there, because it is one of
// \ * ? : or part of no valid UTF-8, is written as the character U+F000 + byte.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace wb
{

// The native path of `path`. "/" counts as "\"; ".." never leads above the drive's root; a path without a
// drive is taken from the current folder, one that begins with "\" from C:. A name that does not exist in
// this case is looked up ignoring case, component by component; what is not found either stays as it is
// written, so that new files get the name they were given. Empty (no file call accepts that) when nothing can
// be called so: an unknown drive, or a name with * ? : or NUL. Looking up a new file lists its folder: who
// makes many files in one folder translates the folder once and goes on with NativeChild.
std::string ToNativePath(const QString &path);

// The path of `native`, made absolute from the current folder, with "//", "." and ".." resolved. The drive
// with the longest mount point that leads to it wins.
QString FromNativePath(std::string_view native);

// What a person typed, pasted, dropped or gave as an argument: "/home/u", "file:///home/u", "C:\x" and "C:/x"
// all give the path of that place; any other text, as a relative one or the address of another machine, only
// gets backslashes.
QString PathFromUserText(const QString &text);

// One name, without a path. ToNativeName gives an empty name for a text that can't be a name: empty, ".",
// "..", or holding a separator, * ? : or NUL.
QString FromNativeName(std::string_view name);
std::string ToNativeName(QStringView name);

// Bytes that the machine hands over or takes whole, as an argument of a command line, and back: only what is
// no valid UTF-8 is written by characters of that range, so that nothing is lost.
QString FromNativeText(std::string_view bytes);
std::string ToNativeText(QStringView text);

// `folder`/`name` without any look-up; empty when `name` can't be a name or `folder` is empty.
std::string NativeChild(const std::string &folder, QStringView name);

// `name` as a person should see it: the characters that had to be replaced stand for themselves again, and
// stray bytes show as Windows-1251. Only for showing.
QString DisplayName(const QString &name);

} // namespace wb
