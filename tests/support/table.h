// Tables of cases that lie as text beside the tests, where a new case costs no code.
//
// A line is one case: fields parted by "|", with blanks around them that do not count. "<D4>" is the byte
// of that hexadecimal number, "<D4*9>" nine of them, "<F0D4>" (four digits and more) that character. A line
// of "# " is for people.
#pragma once

#include <QByteArrayList>
#include <QString>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace wb
{

struct TableRow {
    std::string line; // for messages
    std::vector<std::string> fields;

    const std::string &Bytes(std::size_t field) const { return fields.at(field); }
    QString Text(std::size_t field) const { return QString::fromStdString(fields.at(field)); }
    int Int(std::size_t field) const { return std::stoi(fields.at(field)); }
    std::int64_t Number(std::size_t field) const { return std::stoll(fields.at(field)); }
};

inline std::string WithoutEscapes(std::string_view field)
{
    std::string plain;
    for (std::size_t at = 0; at < field.size(); ++at) {
        if (field[at] != '<') {
            plain += field[at];
            continue;
        }
        const std::string_view digits = field.substr(at + 1, field.find('>', at) - at - 1);
        const auto code = char32_t(std::stoul(std::string(digits), nullptr, 16));
        const bool isByte = digits.size() == 2 || digits[2] == '*';
        const std::size_t count = isByte && digits.size() > 2 ? std::stoul(std::string(digits.substr(3))) : 1;
        plain += isByte ? std::string(count, char(code)) : QString::fromUcs4(&code, 1).toStdString();
        at += digits.size() + 1;
    }
    return plain;
}

// A file below tests/, as it is.
inline std::string ReadFixture(const std::string &name)
{
    std::ostringstream text;
    text << std::ifstream(TESTS_FOLDER "/" + name, std::ios::binary).rdbuf();
    EXPECT_FALSE(text.str().empty()) << name;
    return text.str();
}

// A table below tests/ whose rows all have that many fields.
inline std::vector<TableRow> ReadTable(const std::string &name, std::size_t fieldCount)
{
    std::vector<TableRow> rows;
    std::istringstream text(ReadFixture(name));
    for (std::string line; std::getline(text, line);) {
        if (line.empty() || line.starts_with("# "))
            continue;
        TableRow row{line, {}};
        for (const QByteArray &field : QByteArray::fromStdString(line).split('|'))
            row.fields.push_back(WithoutEscapes(field.trimmed().toStdString()));
        EXPECT_EQ(fieldCount, row.fields.size()) << name << ": " << line;
        rows.push_back(row);
    }
    EXPECT_FALSE(rows.empty()) << name;
    return rows;
}

} // namespace wb
