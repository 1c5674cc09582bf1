// Boxes and pickers answered by a test: an unexpected question fails it, and so does an answer nobody asked
// for.
#pragma once

#include "services/dialogs.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <vector>

namespace wb
{

class ScriptedDialogs : public Dialogs
{
public:
    struct Box {
        QString text;
        QString title;
        bool operator==(const Box &) const = default;
    };

    ~ScriptedDialogs() override
    {
        EXPECT_TRUE(expectedErrors.empty()) << "an error box did not come";
        EXPECT_TRUE(colours.empty()) << "a colour was not asked for";
        EXPECT_TRUE(answers.empty()) << "not asked: " << answers.front().asked.toStdString();
    }

    void Error(const QString &text, const QString &title) override
    {
        ASSERT_FALSE(expectedErrors.empty()) << "unexpected box: " << text.toStdString();
        EXPECT_EQ(Box({text, title}), expectedErrors.front());
        expectedErrors.pop_front();
        if (behindBox)
            behindBox();
    }

    // What a question, a file dialog or a folder dialog asks, and what it gets: "yes", "no" or a path;
    // several paths are parted by "|". An information box gets nothing.
    struct Answer {
        QString asked; // the text of the question, the filter, the prompt
        QString path;  // what is proposed; a question's title
        QString given;
    };

    bool Question(const QString &text, const QString &title) override
    {
        return Take(text, title) == QStringLiteral("yes");
    }
    bool Warning(const QString &text, const QString &title) override { return Question(text, title); }
    void Information(const QString &text, const QString &title) override
    {
        Take(text, title);
        if (behindBox)
            behindBox();
    }
    Choice YesNoCancel(const QString &text, const QString &title) override
    {
        const QString given = Take(text, title);
        return given == QStringLiteral("yes")  ? Choice::Yes
               : given == QStringLiteral("no") ? Choice::No
                                               : Choice::Cancel;
    }
    QString OpenFile(const QString &filter, const QString &path) override { return Take(filter, path); }
    QStringList OpenFiles(const QString &filter, const QString &path) override
    {
        return Take(filter, path).split(u'|', Qt::SkipEmptyParts);
    }
    QString SaveFile(const QString &filter, const QString &path) override { return Take(filter, path); }
    QString ChooseFolder(const QString &prompt, const QString &path) override { return Take(prompt, path); }

    std::optional<std::int32_t> ChooseColour(std::int32_t colour) override
    {
        askedColours.push_back(colour);
        if (colours.empty()) {
            ADD_FAILURE() << "unexpected colour dialog";
            return std::nullopt;
        }
        const auto answer = colours.front();
        colours.pop_front();
        return answer;
    }

    std::deque<Box> expectedErrors;
    std::deque<Answer> answers;
    std::deque<std::optional<std::int32_t>> colours;
    std::vector<std::int32_t> askedColours;
    std::function<void()> behindBox; // what happens while a box with one button is open

private:
    QString Take(const QString &asked, const QString &path)
    {
        if (answers.empty()) {
            ADD_FAILURE() << "unexpected question: " << asked.toStdString();
            return {};
        }
        const Answer answer = answers.front();
        answers.pop_front();
        EXPECT_EQ(answer.asked, asked);
        EXPECT_EQ(answer.path, path) << asked.toStdString();
        return answer.given;
    }
};

} // namespace wb
