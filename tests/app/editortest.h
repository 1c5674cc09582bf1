// The pages that make animations, driven step by step.
#pragma once

#include "gfx/pixels.h"
#include "support/table.h"
#include "support/windowtest.h"
#include "viewer/display.h"
#include "widgets/listbox.h"

#include <QLineEdit>
#include <vector>

namespace wb
{

using namespace Qt::StringLiterals;

class EditorTest : public WindowTest
{
protected:
    // The page's index, the part of the names of its controls, and where groups of buttons end in State.
    EditorTest(int page, QString tag, std::vector<int> groups)
        : m_page(page), m_tag(std::move(tag)), m_groups(std::move(groups))
    {
    }
    void SetUp() override
    {
        folder.AddSprites();
        settingsFolder.Put("Options.ini", "BackColor2=#00FF00");
        OpenWindow();
        window->ShowPage(m_page);
    }
    // Clicks and types, or what the step says; "drop2" and "row2" mean the second list. Each answer is
    // "asked=proposed=given", or "text=title" of an error box; "@" stands for the folder.
    void Do(const QString &what, QString answers = {})
    {
        for (const QString &text : answers.replace(u'@', folder.Path()).split(u'&', Qt::SkipEmptyParts)) {
            const QStringList answer = text.trimmed().split(u'=');
            answer.size() == 2 ? dialogs.expectedErrors.push_back({answer[0], answer[1]})
                               : dialogs.answers.push_back({answer[0], answer[1], answer[2]});
        }
        const QString where = what.section(u' ', 0, 0), rest = what.section(u' ', 1);
        auto *list = Find<ListBox>(Name("lst%1_List") + (where.endsWith(u'2') ? "2" : ""));
        where.startsWith(u"drop"_s) ? Drop(rest.split(u' '), list->viewport())
        : where.startsWith(u"row"_s)
            ? ClickRow(list, rest.toInt())
            : QTest::mouseClick(Find(qPrintable(where)), Qt::LeftButton, {}, {12, 12});
        if (where.startsWith(u"sld"_s))
            QTest::keyClick(Find(qPrintable(where)), Qt::Key_End);
        if (auto *box = window->findChild<QLineEdit *>(where)) {
            box->selectAll();
            QTest::keyClicks(box, rest);
        }
        QCoreApplication::processEvents();
    }
    // Shows pictures in the viewer, as a document of that path.
    void View(const QString &path, const std::vector<FrameBuf> &pictures)
    {
        FrameSet document;
        for (; document.Count < int(pictures.size()); ++document.Count)
            document.Pictures.push_back(FrameBufToDib(pictures[std::size_t(document.Count)]));
        window->ShowPage(0);
        window->findChild<Display *>()->Open(path, [&] { return std::move(document); });
    }
    // What can be pressed, the numbers, the lines (> is selected), and the texts below the frame.
    std::string State() const
    {
        const auto *page = Find(qPrintable(u"picPage(%1)"_s.arg(m_page)));
        QString state = Find(Name("sld%1_Slider"))->isEnabled() ? u"o"_s : u"-"_s;
        for (const auto *button : page->findChildren<QAbstractButton *>())
            state += u"-=ox"_s[(button->isEnabled() ? 2 : 0) + (button->isChecked() ? 1 : 0)];
        for (const int place : m_groups)
            state.insert(place, u' ');
        for (const auto *box : page->findChildren<QLineEdit *>())
            state += (box->isEnabled() ? u" "_s : u" -"_s) + box->text();
        for (const auto *list : page->findChildren<ListBox *>()) {
            state += list->objectName().endsWith(u'2') ? u" /"_s : QString();
            for (int i = 0; i < list->ListCount(); ++i)
                state += (i == list->ListIndex() ? u" >"_s : u" "_s) +
                         list->model()->index(i, 0).data().toString();
        }
        for (const char *label : {"lbl%1_Frames", "lbl%1_Size", "lbl%1_Info"})
            state += u' ' + Text(Name(label));
        return state.remove(u'|').simplified().toStdString();
    }
    QByteArray Name(const char *name) const { return QString::fromLatin1(name).arg(m_tag).toLatin1(); }

private:
    int m_page;
    QString m_tag;
    std::vector<int> m_groups;
};

} // namespace wb
