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
    }

    void Error(const QString &text, const QString &title) override
    {
        ASSERT_FALSE(expectedErrors.empty()) << "unexpected box: " << text.toStdString();
        EXPECT_EQ(Box({text, title}), expectedErrors.front());
        expectedErrors.pop_front();
        if (behindBox)
            behindBox();
    }

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
    std::deque<std::optional<std::int32_t>> colours;
    std::vector<std::int32_t> askedColours;
    std::function<void()> behindBox; // what happens while an error box is open
};

} // namespace wb
