#include "archive/joblog.h"

#include "platform/nativepath.h"

#include <QPixmap>

#include <numeric>

namespace wb
{

namespace
{

constexpr qsizetype MostCharacters = 128 << 20;

bool IsError(const QString &line)
{
    return line.startsWith(QStringLiteral("ERR: ")) || line.startsWith(QStringLiteral("Ошибка: "));
}

qsizetype CharactersIn(const std::vector<QString> &lines)
{
    return std::accumulate(lines.begin(), lines.end(), qsizetype(0),
                           [](qsizetype sum, const QString &line) { return sum + line.size(); });
}

} // namespace

// The lines there were at one moment; later ones only come behind them.
class JobLog::Rows : public RowSource
{
public:
    explicit Rows(const JobLog &log)
        : m_lines(log.m_lines), m_count(int(log.m_lines->size())), m_errorPicture(log.m_errorPicture),
          m_noPicture(log.m_noPicture)
    {
    }

    int Count() const override { return m_count; }
    QString Text(int row) const override { return DisplayName((*m_lines)[std::size_t(row)]); }
    QIcon Picture(int row) const override
    {
        return IsError((*m_lines)[std::size_t(row)]) ? m_errorPicture : m_noPicture;
    }

private:
    std::shared_ptr<const Lines> m_lines;
    int m_count;
    QIcon m_errorPicture;
    QIcon m_noPicture;
};

JobLog::JobLog(const QString &name, QWidget *parent)
    : ListBox(name, parent), m_lines(std::make_shared<Lines>()),
      m_errorPicture(QStringLiteral(":/buttons/error.png"))
{
    setIconSize(QSize(16, 16));
    // Texts begin at the same place with and without a picture.
    QPixmap none(iconSize());
    none.fill(Qt::transparent);
    m_noPicture = QIcon(none);
    setTextElideMode(Qt::ElideMiddle);
}

void JobLog::Clear()
{
    m_lines = std::make_shared<Lines>();
    m_characters = 0;
    m_isShown = false;
}

void JobLog::Add(const QString &line)
{
    m_lines->push_back(line);
    m_characters += line.size();
    m_isShown = false;
    if (m_characters > MostCharacters)
        DropOldest();
}

// A small archive can hold a million entries below a path of thousands of characters.
void JobLog::DropOldest()
{
    m_lines = std::make_shared<Lines>(m_lines->begin() + std::ssize(*m_lines) / 2, m_lines->end());
    m_characters = CharactersIn(*m_lines);
}

void JobLog::ShowNews()
{
    if (m_isShown)
        return;
    m_isShown = true;
    SetRows(std::make_shared<Rows>(*this), -1);
    SetTopIndex(ListCount());
}

} // namespace wb
