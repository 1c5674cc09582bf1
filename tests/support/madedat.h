// DAT files written down in short: "N2" and "P2" begin a node list or pair list of two children; a child is
// "v7,8:Name=Value", "b7,8:Name" with its block behind it (Id 7, Aux 8), or "1:Name=Value" in a pair list.
#pragma once

#include "dat/datwriter.h"

#include <QStringList>

namespace wb
{

inline ByteArray MadeDat(const QString &notation)
{
    ByteArray bytes;
    const auto add = [&bytes](const QString &number, int size) {
        for (int shift = 0; shift < 8 * size; shift += 8)
            bytes.push_back(static_cast<std::uint8_t>(number.toInt() >> shift));
    };
    for (const QString &word : notation.split(u' ', Qt::SkipEmptyParts)) {
        const QString head = word.section(u':', 0, 0), texts = word.section(u':', 1);
        const auto sort = int(QStringLiteral("PNvb").indexOf(word[0]));
        add(sort < 0 ? head : QString::number(sort % 2 + sort / 2), sort < 2 ? 1 : 0);
        if (sort >= 0)
            add(head.mid(1).section(u',', 0, 0), 4);
        if (sort >= 2) {
            add(head.section(u',', 1), 4);
            add(QString::number(sort - 1), 1);
        }
        if (sort < 0 || sort >= 2)
            DatWriteText(bytes, texts.section(u'=', 0, 0));
        if (sort < 0 || sort == 2)
            DatWriteText(bytes, texts.section(u'=', 1));
    }
    return bytes;
}

} // namespace wb
