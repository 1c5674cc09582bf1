// The log of a job: as many lines as it likes, the newest in view.
#pragma once

#include "widgets/listbox.h"

#include <memory>
#include <vector>

namespace wb
{

class JobLog : public ListBox
{
    Q_OBJECT

public:
    JobLog(const QString &name, QWidget *parent);

    // Lines are shown by the next ShowNews, so that a job does not spend its time painting.
    void Clear();
    void Add(const QString &line);
    void ShowNews();

private:
    class Rows;
    using Lines = std::vector<QString>;

    void DropOldest();

    std::shared_ptr<Lines> m_lines;
    qsizetype m_characters = 0;
    bool m_isShown = true; // nothing is new
    QIcon m_errorPicture;
    QIcon m_noPicture;
};

} // namespace wb
