// DAT files written down in short: "N2" and "P2" begin a node list or pair list of two children; a child is
// "v7,8:Name=Value", "b7,8:Name" with its block behind it (Id 7, Aux 8), or "1:Name=Value" in a pair list.
#pragma once

#include "dat/datwriter.h"

#include <QStringList>

#include <string>

namespace wb
{

inline ByteArray MadeDat(const QString &notation)
{
    ByteArray bytes;
    const auto add = [&bytes](std::int64_t value, int size) {
        for (int shift = 0; shift < 8 * size; shift += 8)
            bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    };
    for (const QString &word : notation.split(u' ', Qt::SkipEmptyParts)) {
        const QChar sort = word[0];
        if (sort == u'N' || sort == u'P') {
            add(sort == u'N', 1);
            add(word.mid(1).toInt(), 4);
            continue;
        }
        const QString head = word.section(u':', 0, 0), texts = word.section(u':', 1);
        if (sort == u'v' || sort == u'b') {
            add(head.mid(1).section(u',', 0, 0).toInt(), 4);
            add(head.section(u',', 1).toInt(), 4);
        }
        add(sort == u'v' ? 1 : sort == u'b' ? 2 : head.toInt(), 1);
        DatWriteText(bytes, texts.section(u'=', 0, 0));
        if (sort != u'b')
            DatWriteText(bytes, texts.section(u'=', 1));
    }
    return bytes;
}

// A block in a block, so many times.
inline QString NestedDat(int depth)
{
    return QStringLiteral("N1 b1:a ").repeated(depth) + QStringLiteral("P1 1:b=c");
}

} // namespace wb
